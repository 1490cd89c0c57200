// The direct-tune sub-codes of the fixture: the panel each one shows and how it closes.
#pragma once

#include "MTypes.h"

struct DirectTuneRow {
    MAPI_U8 subCode;
    const char* page;  // data of "HideAllUIExcept"
    const char* cmd;   // the panel's row; "<cmd>-Show" closes it
    const char* data;
    bool startsCableRun;  // FT_DVBC_Manual_Tuning_ZYT after the notification
    unsigned long timer;  // closing timer; 0: the scan monitor closes the panel
    unsigned long delayMs;
    const char* delayLine;  // printed before the timer is armed
    bool playsProgram;      // the closing timer selects the first TV program
};

// Null for a sub-code not in the table.
const DirectTuneRow* FindDirectTune(unsigned long subCode);
