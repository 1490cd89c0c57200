// The platform's timer manager (TVManager): the on-timer that powers the set up.
#pragma once

#include "MTypes.h"

// A wall-clock time, 8 bytes.
struct ST_TIME {
    MAPI_U16 u16Year;
    MAPI_U8 u8Month;
    MAPI_U8 u8Day;
    MAPI_U8 u8Hour;
    MAPI_U8 u8Minute;
    MAPI_U8 u8Second;
    MAPI_U8 u8Reserved;
};

// What the set does at the on-time, 20 bytes.
struct ST_ON_TIME_TV_DES {
    MAPI_U8 u8Source;
    MAPI_U8 u8Volume;
    MAPI_U16 u16Program;
    MAPI_U8 au8Reserved[16];
};

class TimerManager {
public:
    // An all-zero time, period and description clears the on-timer.
    MAPI_BOOL setOnTime(const ST_TIME* time, int period, const ST_ON_TIME_TV_DES* des,
                        MAPI_BOOL enable);
};
