// The hardware layer's video decoder.
#pragma once

#include "MTypes.h"

class mapi_vd {
public:
    // The analogue colour standard detected: 0, 2, 4, 5 PAL kinds; 1, 3, 6 NTSC kinds.
    MAPI_U8 GetVideoStandard();
};
