// The set's fields of the service-mode editor.
#include "AreaFields.h"
#include "FieldMakers.h"

namespace factorysim {

std::vector<Field> ServiceModeFields() {
    return {};
}

}  // namespace factorysim
