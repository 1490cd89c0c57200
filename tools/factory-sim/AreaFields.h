// The set/get fields over the simulated set's areas (system info, factory store,
// network, players, M-mode, web-application manager).
#pragma once

#include <vector>

#include "SetFields.h"

namespace factorysim {

std::vector<Field> AreaFields();

// The fields of each page family (Fields<Family>.cpp).
std::vector<Field> InfoPageFields();
std::vector<Field> ServiceModeFields();
std::vector<Field> ProductionTestFields();
std::vector<Field> ProductionTest2Fields();
std::vector<Field> ChannelToolFields();
std::vector<Field> SoundMediaFields();

}  // namespace factorysim
