// The platform's digital TV player, the base of the broadcast-specific players.
#pragma once

#include "MSrv.h"

class MSrv_DTV_Player : public MSrv {};
