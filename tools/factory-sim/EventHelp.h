// What the console says about factory events beyond their names.
#pragma once

#include <string>

namespace factorysim {

// False for a handler that is still a placeholder in this build of the library.
// What the event's parameters mean where the library reads them; "" when it reads none.
std::string ParameterHelp(unsigned int id);

}  // namespace factorysim
