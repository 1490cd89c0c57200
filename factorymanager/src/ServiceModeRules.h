// The service-data editor's rules, free of the platform: how a value steps inside
// its range, how a bit toggles, how the current address moves, the panel's control
// step cycle and the binary text of a value.
#pragma once

#include "MTypes.h"

namespace ServiceMode {

// Service step commands of the remote's service protocol.
constexpr MAPI_U8 kStepUp = 28;
constexpr MAPI_U8 kStepDown = 29;
constexpr MAPI_U8 kStepUp4 = 30;
constexpr MAPI_U8 kStepDown4 = 31;

// The value after a step command: one step wraps at the range's ends, four steps stop
// short of them. A value outside [min, max] stays as it is.
MAPI_U8 StepValue(MAPI_U8 value, MAPI_U8 min, MAPI_U8 max, MAPI_U8 command, bool up);
// The value after a value key: one step, wrapping at both ends.
MAPI_U8 KeyValue(MAPI_U8 value, MAPI_U8 min, MAPI_U8 max, bool up);
// Toggles one bit, whatever the item's range.
MAPI_U8 ToggleBit(MAPI_U8 value, unsigned char bit);

// 0xFF (off) -> 2 -> 4 -> 3 -> 1 -> 0 -> 0xFF.
constexpr MAPI_U8 kControlStepOff = 0xFF;
MAPI_U8 NextControlStep(MAPI_U8 step);

// Binary text of value in len characters, most significant first, terminated at
// out[len]. Bits that do not fit in len characters are dropped.
template <class Char>
void BinaryText(unsigned long value, Char* out, signed char len) {
    if (len < 0) {
        return;
    }
    out[len] = 0;
    int i = len - 1;
    for (; value != 0 && i >= 0; --i, value >>= 1) {
        out[i] = (value & 1) != 0 ? '1' : '0';
    }
    for (; i >= 0; --i) {
        out[i] = '0';
    }
}

}  // namespace ServiceMode
