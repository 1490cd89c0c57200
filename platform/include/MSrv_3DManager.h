// The platform's 3D manager: shutter timing of active 3D glasses.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

class MSrv_3DManager : public MSrv {
public:
    // Shutter lengths as two bytes, low and high.
    MAPI_BOOL GetLOpenLength(MAPI_U8* low, MAPI_U8* high);
    MAPI_BOOL GetLCloseLength(MAPI_U8* low, MAPI_U8* high);
    MAPI_BOOL GetROpenLength(MAPI_U8* low, MAPI_U8* high);
    MAPI_BOOL GetRCloseLength(MAPI_U8* low, MAPI_U8* high);
    MAPI_BOOL SetLOpenLength(MAPI_U8 low, MAPI_U8 high);
    MAPI_BOOL SetLCloseLength(MAPI_U8 low, MAPI_U8 high);
    MAPI_BOOL SetROpenLength(MAPI_U8 low, MAPI_U8 high);
    MAPI_BOOL SetRCloseLength(MAPI_U8 low, MAPI_U8 high);
    // Duty and phase of a PWM channel (the glasses' sync is channel 3).
    MAPI_BOOL GetPwmDutyPhase(MAPI_U8 channel, MAPI_U16* duty, MAPI_U16* phase);
    MAPI_BOOL SetPwmDutyPhase(MAPI_U8 channel, MAPI_U16 duty, MAPI_U16 phase);
    MAPI_BOOL Set3DTimingMode(MAPI_U8 mode);
    // Back to the platform's default timing.
    MAPI_BOOL Reset3DTiming();
};
