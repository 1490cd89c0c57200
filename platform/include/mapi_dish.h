// The platform's hardware layer of the satellite dish: the 22 kHz tone.
#pragma once

#include "MTypes.h"

class mapi_dish {
public:
    MAPI_BOOL DTV_DVB_S_Get22KStatus(unsigned char* on);
    // Non-zero when the tone was switched.
    MAPI_BOOL DTV_DVB_S_Set22KOnOff(unsigned char on);
};

class mapi_interface_TV {
public:
    static mapi_dish* Get_mapi_dish();
};
