// The set's digital routes: the type byte of each of the four DTV routes in the
// tuner's information, the live route, and the route the player comes up on.
#pragma once

#include <array>

#include "MTypes.h"
#include "SimSet.h"

namespace sim {

struct TvRouteState : Area {
    // The system byte of each route: 1 DVB-T, 0x20 DVB-T2, 2 cable, 4 and 0x40
    // satellite, 8 a further digital system, 0 no route. The demo set: T2, cable, satellite.
    std::array<MAPI_U8, 4> routeTypes{{0x20, 2, 0x40, 0}};
    MAPI_U8 route = 0;       // the live digital route
    MAPI_U8 routeOnDtv = 0;  // the route the player comes up on when DTV is selected
};

}  // namespace sim
