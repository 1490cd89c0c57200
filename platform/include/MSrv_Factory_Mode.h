// The platform's factory-mode service: the watchdog and the state of the serial port.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

class MSrv_Factory_Mode : public MSrv {
public:
    // The hardware watchdog; the line switches it off while a set is being worked on.
    MAPI_BOOL SetWDT_ONOFF(MAPI_BOOL on);
    // 1 while the UART carries the console and the fixture's AT commands.
    MAPI_BOOL GetUart_ONOFF();
    MAPI_BOOL SetUart_ONOFF(MAPI_BOOL on);
};
