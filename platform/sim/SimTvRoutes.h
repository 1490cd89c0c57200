// The set's digital routes: the type byte of each of the four DTV routes in the
// tuner's information, the live route, and the route the player comes up on.
#pragma once

#include <array>

#include "MTypes.h"
#include "SimSet.h"

namespace sim {

struct TvRouteState : Area {
    // 1 DVB-T, 32 DVB-T2, 2 cable, 4 and 64 satellite; 0 no route.
    std::array<MAPI_U8, 4> routeTypes{{1, 32, 0, 0}};
    MAPI_U8 route = 0;       // the live digital route
    MAPI_U8 routeOnDtv = 0;  // the route the player comes up on when DTV is selected
};

}  // namespace sim
