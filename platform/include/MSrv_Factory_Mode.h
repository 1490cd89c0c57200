// The platform's factory-mode service: the state of the set's serial port.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

class MSrv_Factory_Mode : public MSrv {
public:
    // 1 while the UART carries the console and the fixture's AT commands.
    MAPI_BOOL GetUart_ONOFF();
    MAPI_BOOL SetUart_ONOFF(MAPI_BOOL on);
};
