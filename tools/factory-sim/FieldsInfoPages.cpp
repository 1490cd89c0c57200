// The set's fields of the information and tuner pages.
#include "AreaFields.h"
#include "FieldMakers.h"

namespace factorysim {

std::vector<Field> InfoPageFields() {
    return {};
}

}  // namespace factorysim
