// The platform's analogue TV player.
#pragma once

#include "MSrv_Player.h"

class MSrv_ATV_Player : public MSrv_Player {
public:
    // Stores the channel found by the factory search as program number n.
    MAPI_BOOL ATVSaveProgram(unsigned char program);
};
