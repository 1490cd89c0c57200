// Simulated state behind the AT command channel: the serial port, teletext, the
// platform debug mask and the power request.
#pragma once

#include "SimSet.h"

namespace sim {

struct ATCmdState : Area {
    bool uartOn = true;  // a fixture's AT command turns it off until released
    bool tvPlayerPresent = true;
    bool teletextOpen = false;
    MAPI_BOOL openTeletextResult = 1;
    MAPI_BOOL powerOffResult = 1;
    bool poweredOff = false;
    unsigned long long debugMask = 0;
};

}  // namespace sim
