// Simulated network service: the MAC addresses of the wired and wireless
// interfaces. Starts as the demo set.
#pragma once

#include <array>

#include "MTypes.h"
#include "SimSet.h"

namespace sim {

struct NetworkState : Area {
    std::array<MAPI_U8, 6> ethernetMac{{0x00, 0x1e, 0xb8, 0x4c, 0x2a, 0xf1}};
    std::array<MAPI_U8, 6> wifiMac{{0x70, 0x5a, 0xb6, 0x12, 0xc3, 0xde}};
};

}  // namespace sim
