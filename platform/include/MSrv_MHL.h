// The platform's MHL (mobile HDMI) service.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

class MSrv_MHL : public MSrv {
public:
    // 1: the set switches to the MHL input when a phone is plugged in.
    MAPI_BOOL SetAutoSwitch(MAPI_BOOL on);
};
