// The set's fields of the ATV search, satellite tests and program banner.
#include "AreaFields.h"
#include "FieldMakers.h"

namespace factorysim {

std::vector<Field> ChannelToolFields() {
    return {};
}

}  // namespace factorysim
