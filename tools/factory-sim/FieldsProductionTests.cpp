// The set's fields of the timed commands, shipout, signal and network tests.
#include "AreaFields.h"
#include "FieldMakers.h"

namespace factorysim {

std::vector<Field> ProductionTestFields() {
    return {};
}

}  // namespace factorysim
