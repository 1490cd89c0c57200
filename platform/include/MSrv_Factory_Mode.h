// The platform's factory-mode service.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

class MSrv_Factory_Mode : public MSrv {
public:
    // The hardware watchdog; the line switches it off while a set is being worked on.
    MAPI_BOOL SetWDT_ONOFF(MAPI_BOOL on);
};
