// The platform's audio manager (TVManager).
#pragma once

#include "MTypes.h"

class AudioManager {
public:
    // 0 SNC, 1 IEC, 2 GW, 3 Estec.
    MAPI_BOOL selectAudysseySpeakerType(int type);
    int getVolume();
    MAPI_BOOL setVolume(int volume);
};
