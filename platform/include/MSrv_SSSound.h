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
    // One band of the sound processor's parametric equaliser.
    MAPI_BOOL SetPEQParam(MAPI_U8 band, MAPI_U8 gain, MAPI_U8 f0Index, MAPI_U8 f0Div100, MAPI_U8 q);
    // One band as a low-pass (type 0) or high-pass (type 1) filter.
    MAPI_BOOL SND_SetHLPFParm(MAPI_U8 band, MAPI_U8 type, MAPI_U8 f0Index, MAPI_U8 f0Div100);

    // The balance heard now, 0 (left only) to 100 (right only), 50 centred; the
    // user's saved sound settings are not touched.
    MAPI_U8 GetBalance();
    MAPI_BOOL SetBalance(MAPI_U8 balance);
    // Digital audio output format: 0 PCM, 2 automatic.
    MAPI_BOOL SetSPDIFmode(MAPI_U8 mode);
    // Sound mode of the analogue sound decoder (3, 4, 11 stereo; 7, 8, 10, 12, 13 dual).
    MAPI_U8 GetSifSoundMode();
};
