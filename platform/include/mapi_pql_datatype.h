// The picture-quality layer's records.
#pragma once

#include "MTypes.h"

namespace mapi_pql_datatype {

// White balance of one colour temperature; 9 bytes.
struct MAPI_PQL_COLOR_TEMP_DATA {
    MAPI_U8 u8Reserved[3];
    MAPI_U8 u8RedGain;
    MAPI_U8 u8GreenGain;
    MAPI_U8 u8BlueGain;
    MAPI_U8 u8RedOffset;
    MAPI_U8 u8GreenOffset;
    MAPI_U8 u8BlueOffset;
};
static_assert(sizeof(MAPI_PQL_COLOR_TEMP_DATA) == 9, "the database fills 9 bytes");

}  // namespace mapi_pql_datatype
