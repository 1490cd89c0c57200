// How the remote's arrows step the PEQ items and move around the 3D timing page:
// the tables the two editors walk.
#pragma once

#include "MTypes.h"

namespace peq {

// Band: +1/-1 with wrap; the 28-band layout skips its hidden bands 7 and 25.
MAPI_U8 StepBand(MAPI_U8 band, bool audyssey, bool right);
// Left is not the reverse of right: 0 goes to HPF.
MAPI_U8 StepFilterMode(MAPI_U8 mode, bool right);
// +1/-1 wrapping between 0 and max (f0 index, f0/100, gain index).
MAPI_U32 StepWrap(MAPI_U32 value, MAPI_U32 max, bool right);
// In tens, rounding down to a multiple of 10; past either end to the other.
MAPI_U32 StepQ(MAPI_U32 q, bool right);

}  // namespace peq

namespace timing3d {

constexpr MAPI_U8 kDefaultItem = 0;
constexpr MAPI_U8 kFirstMode = 1;
constexpr MAPI_U8 kLastMode = 4;
constexpr MAPI_U8 kFirstValue = 5;  // LOpen
constexpr MAPI_U8 kLastValue = 10;  // Shift
constexpr MAPI_U8 kItemCount = 11;
// No move: the key steps a value (left/right) or does nothing (up/down).
constexpr MAPI_U8 kStay = 0xFF;

enum class Arrow { Left, Right, Up, Down };
// The item an arrow moves to from `item`, or kStay.
MAPI_U8 Move(MAPI_U8 item, Arrow arrow);

// +1/-1 of a 16-bit value with wrap.
MAPI_U32 StepWrap(MAPI_U32 value, bool right);
// The coloured keys' ±16/±256 on the value read as signed 16-bit; clamps to
// 0..65535. `negative` tells a sum below 0.
MAPI_U32 AddClamped(MAPI_U32 value, short delta, bool& negative);

}  // namespace timing3d
