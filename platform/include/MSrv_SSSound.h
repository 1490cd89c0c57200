// The platform's sound-system service.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

class MSrv_SSSound : public MSrv {
public:
    // Parameter 0 is the sound processor's version, one byte per field.
    MAPI_U32 ASF_GetParam(int param);

    MAPI_BOOL SetMuteStatus(MAPI_U8 muteType, MAPI_BOOL mute);
    MAPI_BOOL SetVolume(MAPI_U8 volume, MAPI_BOOL apply);
    // Sound mode of the analogue sound decoder (3, 4, 11 stereo; 7, 8, 10, 12, 13 dual).
    MAPI_U8 GetSifSoundMode();
};
