// The hardware layer's system interface.
#pragma once

#include "MTypes.h"

class mapi_system {
public:
    // Runs a shell command line on the set.
    static MAPI_BOOL SystemCmd(const char* command);
};
