// The platform's base of the per-source players.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

// Video timing of what a player shows now.
struct ST_VIDEO_INFO {
    MAPI_U16 u16VResolution;  // 0 while there is no signal
    MAPI_U16 u16FrameRate;    // in hundredths of a hertz
    MAPI_BOOL bInterlace;     // 1 interlaced
};

class MSrv_Player : public MSrv {
public:
    virtual MAPI_BOOL GetVideoInfo(ST_VIDEO_INFO* info);
    // The output's vertical frequency in tenths of a hertz.
    MAPI_U16 GetOutputVFreq();
};
