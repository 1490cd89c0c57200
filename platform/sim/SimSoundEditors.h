// Simulated sound processor settings behind the PEQ and advanced-sound editors: the
// advanced-sound option, what each equaliser band was last given, and the
// advanced-sound processor's parameters. Starts as the demo set (no option).
#pragma once

#include <array>
#include <map>

#include "MTypes.h"
#include "SimSet.h"

namespace sim {

struct SoundEditorState : Area {
    bool audyssey = false;
    // Last PEQ setting per band: gain, f0 index, f0/100, q.
    std::map<int, std::array<MAPI_U8, 4>> peq;
    // Last low/high-pass setting per band: type (0 LPF, 1 HPF), f0 index, f0/100.
    std::map<int, std::array<MAPI_U8, 3>> hlpf;
    // What the advanced-sound processor's two read operations answer, by index;
    // an index not listed reads 0.
    std::map<int, MAPI_U32> audyCLevel = {{0, 42}};
    std::map<int, MAPI_U32> audyParam = {{0, 7}};
    // Values written with the two set operations, by parameter.
    std::map<int, MAPI_U8> advSetParam;
    std::map<int, MAPI_U8> audySetParam;
};

}  // namespace sim
