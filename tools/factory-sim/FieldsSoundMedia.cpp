// The set's fields of the PEQ, 3D timing, Audio ADV, media test.
#include "AreaFields.h"
#include "FieldMakers.h"

namespace factorysim {

std::vector<Field> SoundMediaFields() {
    return {};
}

}  // namespace factorysim
