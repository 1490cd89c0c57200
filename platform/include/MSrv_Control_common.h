// Process-wide state of the platform's service control.
#pragma once

#include "MTypes.h"

class MSrv_Control_common {
public:
    // Set by the platform when the DRM/production keys have been written.
    static MAPI_BOOL m_isWriteKeydone;
    // Whether the serial fixture's AT-command work has finished.
    static MAPI_BOOL Is_ATCmd_Finished();
    // Switches the Wi-Fi dongle on (1) or off; the second flag asks to wait for it.
    static MAPI_BOOL EnableWiFiDongle(MAPI_BOOL enable, MAPI_BOOL wait);
};
