// The set's fields of the aging, pattern, direct tuning, configuration and scan tests.
#include "AreaFields.h"
#include "FieldMakers.h"

namespace factorysim {

std::vector<Field> ProductionTest2Fields() {
    return {};
}

}  // namespace factorysim
