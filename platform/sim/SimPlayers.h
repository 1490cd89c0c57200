// Simulated input source and players: which source is on, whether it has a
// player, what video timing that player shows, and the DVB player's OAD version.
// Starts as the demo set, watching a 1080i 50 Hz digital channel.
#pragma once

#include <map>
#include <set>

#include "MSrv_Player.h"
#include "MTypes.h"
#include "MapiInputSource.h"
#include "SimSet.h"

namespace sim {

struct PlayerState : Area {
    int currentSource = MAPI_INPUT_SOURCE_DTV;
    // Timing per source; a source not listed shows no signal (all 0).
    std::map<int, ST_VIDEO_INFO> timing = {{MAPI_INPUT_SOURCE_DTV, {1080, 5000, 1}}};
    std::set<int> sourcesWithoutPlayer;
    bool dtvPresent = true;  // false: a set without a digital tuner
    MAPI_U32 oadVersion = 0x1a2b;
};

}  // namespace sim
