// The platform's digital TV player.
#pragma once

#include "MSrv_Player.h"

class MSrv_DTV_Player : public MSrv_Player {
public:
    MAPI_BOOL PlayCurrentProgram(MAPI_BOOL force);
};
