// The platform's TV player: teletext of the programme being watched.
#pragma once

#include "MTypes.h"

enum EN_ZYT_TELETEXT_MODE {
    E_ZYT_TELETEXT_MODE_NORMAL = 0,
};

class TVPlayer {
public:
    MAPI_BOOL openTeletext(EN_ZYT_TELETEXT_MODE mode);
    MAPI_BOOL closeTeletext();
};
