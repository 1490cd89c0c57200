// The set/get fields over the simulated set's areas (system info, factory store,
// network, players, M-mode, web-application manager).
#pragma once

#include <vector>

#include "SetFields.h"

namespace factorysim {

std::vector<Field> AreaFields();

}  // namespace factorysim
