// The hardware layer's audio interface: the advanced-sound processor's operations.
#pragma once

#include "MTypes.h"

class mapi_audio {
public:
    virtual ~mapi_audio() = default;
    MAPI_BOOL ADVSND_SetParam(MAPI_U8 param, MAPI_U8 value, MAPI_U8 flag);
    virtual MAPI_BOOL ADVSND_SetAudyParam(MAPI_U8 param, MAPI_U8 value);
    virtual MAPI_U32 ADVSND_GetAudyCLevel(MAPI_U8 channel);
    virtual MAPI_U32 ADVSND_GetAudyParam(MAPI_U8 param);
};
