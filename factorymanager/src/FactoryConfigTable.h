// The factory configuration sub-codes of the fixture: the panel, the channel table
// and tuning mode of each, and how its panel closes.
#pragma once

#include "MSrv_Factory_Default.h"
#include "MTypes.h"

enum class FactoryConfigKind { Tuning, Setup, ChannelPreset };

struct FactoryConfigRow {
    MAPI_U8 subCode;
    FactoryConfigKind kind;
    bool alwaysShown;        // shown even when the serial fixture keeps the screen
    const char* page;        // data of "HideAllUIExcept"
    const char* cmd;         // the row of the texts
    const char* writing;     // shown on the event
    const char* result;      // shown when the work is done
    bool resultNeedsUartUi;  // the result, too, only while the fixture lets us
    MAPI_BOOL (MSrv_Factory_Default::*loadTable)();  // null for the set-up
    unsigned char tuningMode;                        // of ZYT_Factory_Tuning
    bool keepsDigitalSource;  // the source is only switched when it is not DTV already
    const char* closeCmd;     // sent with 0 when the panel closes
    bool playsProgram;        // the first TV program is played after closing
};

// Null for a sub-code not in the table.
const FactoryConfigRow* FindFactoryConfig(unsigned long subCode);
