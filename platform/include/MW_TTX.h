// The platform's teletext middleware.
#pragma once

#include "MTypes.h"

class MW_TTX {
public:
    static MW_TTX* GetInstance();
    // Forgets the pages of the program that was on.
    MAPI_BOOL Reset();
};
