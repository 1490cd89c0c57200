// Simulated sound-system service: the sound processor's parameters. Starts as the
// demo set.
#pragma once

#include <map>

#include "MTypes.h"
#include "SimSet.h"

namespace sim {

struct SSSoundState : Area {
    // Parameter 0 is the processor's version; an unknown parameter reads 0.
    std::map<int, MAPI_U32> asfParams = {{0, 0x00020105}};
};

}  // namespace sim
