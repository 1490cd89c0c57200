#include "EditorSteps.h"

#include <cstdint>

namespace peq {

namespace {
// Next filter mode by current mode.
constexpr MAPI_U8 kFilterRight[] = {1, 2, 3, 0};
constexpr MAPI_U8 kFilterLeft[] = {2, 0, 3, 1};
constexpr MAPI_U32 kQStep = 10;
constexpr MAPI_U32 kQTop = 1550;
// The 28-band layout's bands that exist in the store but are never edited.
constexpr MAPI_U8 kHiddenBands[] = {7, 25};

bool Hidden(MAPI_U8 band) {
    for (MAPI_U8 h : kHiddenBands) {
        if (h == band) {
            return true;
        }
    }
    return false;
}
}  // namespace

MAPI_U8 StepBand(MAPI_U8 band, bool audyssey, bool right) {
    const MAPI_U8 last = audyssey ? 27 : 15;
    do {
        if (right) {
            band = band >= last ? 0 : static_cast<MAPI_U8>(band + 1);
        } else {
            band = band == 0 || band > last ? last : static_cast<MAPI_U8>(band - 1);
        }
    } while (audyssey && Hidden(band));
    return band;
}

MAPI_U8 StepFilterMode(MAPI_U8 mode, bool right) {
    if (mode >= sizeof(kFilterRight)) {
        return 0;
    }
    return right ? kFilterRight[mode] : kFilterLeft[mode];
}

MAPI_U32 StepWrap(MAPI_U32 value, MAPI_U32 max, bool right) {
    if (right) {
        return value >= max ? 0 : value + 1;
    }
    return value == 0 || value > max ? max : value - 1;
}

MAPI_U32 StepQ(MAPI_U32 q, bool right) {
    if (right) {
        return q < kQTop ? (q + kQStep) / kQStep * kQStep : 0;
    }
    return q > 9 ? (q - kQStep) / kQStep * kQStep : kQTop;
}

}  // namespace peq

namespace timing3d {

namespace {
constexpr MAPI_U8 S = kStay;
// Destination by item 0..10.
constexpr MAPI_U8 kMoves[4][kItemCount] = {
    /* Left  */ {4, 0, 1, 2, 3, S, S, S, S, S, S},
    /* Right */ {1, 2, 3, 4, 0, S, S, S, S, S, S},
    // Up from the default entry lands on RClose, not on Shift.
    /* Up    */ {8, S, S, S, S, 0, 5, 6, 7, 8, 9},
    /* Down  */ {5, S, S, S, S, 6, 7, 8, 9, 10, 0},
};
}  // namespace

MAPI_U8 Move(MAPI_U8 item, Arrow arrow) {
    if (item >= kItemCount) {
        return kStay;
    }
    return kMoves[static_cast<int>(arrow)][item];
}

MAPI_U32 StepWrap(MAPI_U32 value, bool right) {
    if (right) {
        return value >= 0xFFFF ? 0 : value + 1;
    }
    return value == 0 || value > 0xFFFF ? 0xFFFF : value - 1;
}

MAPI_U32 AddClamped(MAPI_U32 value, short delta, bool& negative) {
    // Read as signed: 0x8000 and above count as negative, so a small step down or
    // up from there clamps to 0.
    const int sum = static_cast<int16_t>(value & 0xFFFF) + delta;
    negative = sum < 0;
    if (negative) {
        return 0;
    }
    return sum > 0xFFFF ? 0xFFFF : static_cast<MAPI_U32>(sum);
}

}  // namespace timing3d
