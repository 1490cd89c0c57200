// The platform's DVB player.
#pragma once

#include "MSrv_DTV_Player.h"

class MSrv_DTV_Player_DVB : public MSrv_DTV_Player {
public:
    // Version of the TV software as known to over-air download.
    MAPI_U32 OADGetTVversion();
};
