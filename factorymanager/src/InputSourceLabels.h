// The input-source switch display: the inputs the line may select and what the
// page calls them.
#pragma once

#include "MTypes.h"

struct InputSourceLabel {
    MAPI_U8 param;           // the event's parameter
    const char* identifier;  // logged
    const char* label;       // shown with "Switch-Video1"
};

// Null for a parameter outside 0x81..0x89.
const InputSourceLabel* FindInputSourceLabel(unsigned long param);
