#include "SimKeys.h"

namespace sim {

// This simulated set has no DirectFB display yet: the library sees a set whose
// DirectFB main interface is absent and logs each native drawing as failed.
IDirectFB* DisplayState::Dfb() { return nullptr; }

}  // namespace sim
