#include "ServiceModeRules.h"

namespace ServiceMode {

// Four steps are taken only when all four fit (max - 4 reaches max, max - 3 stays),
// as the set steps; a listed example of max - 3 reaching max would overshoot by one.
MAPI_U8 StepValue(MAPI_U8 value, MAPI_U8 min, MAPI_U8 max, MAPI_U8 command, bool up) {
    if (value < min || value > max) {
        return value;
    }
    if (up) {
        if (value < max) {
            if (command == kStepUp) {
                return static_cast<MAPI_U8>(value + 1);
            }
            if (command == kStepUp4 && value + 4 <= max) {
                return static_cast<MAPI_U8>(value + 4);
            }
        } else if (command == kStepUp) {
            return min;
        }
        return value;
    }
    if (value > min) {
        if (command == kStepDown) {
            return static_cast<MAPI_U8>(value - 1);
        }
        if (command == kStepDown4 && value - 4 >= min) {
            return static_cast<MAPI_U8>(value - 4);
        }
    } else if (command == kStepDown) {
        return max;
    }
    return value;
}

MAPI_U8 KeyValue(MAPI_U8 value, MAPI_U8 min, MAPI_U8 max, bool up) {
    if (value < min || value > max) {
        return value;
    }
    if (up) {
        return value < max ? static_cast<MAPI_U8>(value + 1) : min;
    }
    return value > min ? static_cast<MAPI_U8>(value - 1) : max;
}

MAPI_U8 ToggleBit(MAPI_U8 value, unsigned char bit) {
    if (bit >= 32) {
        return value;
    }
    const unsigned long mask = 1UL << bit;
    const unsigned long result = (value & mask) != 0 ? value - mask : value + mask;
    return static_cast<MAPI_U8>(result);
}

MAPI_U8 NextControlStep(MAPI_U8 step) {
    switch (step) {
        case kControlStepOff:
            return 2;
        case 2:
            return 4;
        case 4:
            return 3;
        case 3:
            return 1;
        case 1:
            return 0;
        default:
            return kControlStepOff;
    }
}

}  // namespace ServiceMode
