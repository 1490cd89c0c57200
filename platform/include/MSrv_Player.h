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

// Timing of the signal on an external input.
struct ST_MAPI_TIMING_INFO {
    MAPI_U16 u16Width;
    MAPI_U16 u16Height;
    MAPI_U16 u16VFreq;  // tenths of a hertz
};
class MSrv_Player : public MSrv {
public:
    virtual MAPI_BOOL GetVideoInfo(ST_VIDEO_INFO* info);
    // The output's vertical frequency in tenths of a hertz.
    MAPI_U16 GetOutputVFreq();
    // Whether the source shows a stable signal, and its timing (vertical frequency in
    // tenths of a hertz).
    virtual MAPI_BOOL IsSignalStable();
    virtual MAPI_BOOL GetTimingInfo(ST_MAPI_TIMING_INFO* info);
};
