// Simulated 3D manager: the glasses' shutter lengths, the sync PWM's duty and phase,
// the timing mode, and the output's vertical frequency. Starts as the demo set, at
// the platform's default timing on a 120 Hz output.
#pragma once

#include "MTypes.h"
#include "SimSet.h"

namespace sim {

struct Timing3DState : Area {
    static constexpr MAPI_U16 kDefaultOpen = 45 * 256 + 64;
    static constexpr MAPI_U16 kDefaultClose = 22 * 256 + 67;

    MAPI_U16 lOpen = kDefaultOpen;
    MAPI_U16 lClose = kDefaultClose;
    MAPI_U16 rOpen = kDefaultOpen;
    MAPI_U16 rClose = kDefaultClose;
    MAPI_U16 duty = 0x0200;
    MAPI_U16 phase = 0x0040;
    MAPI_U8 mode = 0;
    // Tenths of a hertz.
    MAPI_U16 outputVFreq = 1200;
};

}  // namespace sim
