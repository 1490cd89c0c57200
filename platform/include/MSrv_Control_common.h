// Process-wide state of the platform's service control.
#pragma once

#include "MTypes.h"

// Routes of the digital tuner: each has a system (a bit of the platform's
// delivery-system set) and the current one is the route being watched.
enum { MAXROUTECOUNT = 4 };
struct ST_MAPI_TV_INFO {
    MAPI_U8 u8RouteCount;
    MAPI_U8 aRouteSystem[MAXROUTECOUNT];
};

class MSrv_Control_common {
public:
    // Set by the platform when the DRM/production keys have been written.
    static MAPI_BOOL m_isWriteKeydone;
    // Whether the serial fixture's AT-command work has finished.
    static MAPI_BOOL Is_ATCmd_Finished();
    // The TV set's configuration; the system byte of each DTV route among it.
    static ST_MAPI_TV_INFO* GetTVInfo();
    // Switches the Wi-Fi dongle on (1) or off; the second flag asks to wait for it.
    static MAPI_BOOL EnableWiFiDongle(MAPI_BOOL enable, MAPI_BOOL wait);
};
