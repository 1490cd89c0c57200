// The platform's terrestrial DVB player.
#pragma once

#include "MSrv_DTV_Player_DVB.h"
#include "MTypes.h"

class MSrv_DTV_Player_DVBT : public MSrv_DTV_Player_DVB {
public:
    // The factory's own tuning run over the loaded channel table; the mode picks
    // the line's table (0 to 3).
    MAPI_BOOL ZYT_Factory_Tuning(unsigned char mode);
};
