// The platform's network service.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

struct msrv_network_mac_s {
    MAPI_U8 mac[6];
};

// One access point found by a scan; the signal is a percentage.
struct ST_WIFI_AP_INFO {
    char szSSID[33];
    MAPI_U8 u8Signal;
};
class MSrv_Network : public MSrv {
public:
    MAPI_BOOL GetEthernetMACAddress(msrv_network_mac_s* mac);
    MAPI_BOOL GetWiFiMACAddress(msrv_network_mac_s* mac);
    // Whether the wired network is up (used by the line's key writing and LAN test).
    MAPI_BOOL DetectNetStatusForKeyWriting();
    // Scans for wireless access points; fills at most max entries, returns how many.
    int ScanWiFiAccessPoints(ST_WIFI_AP_INFO* list, int max);
    // 0 wireless, else the wired network.
    MAPI_U8 GetNetworkType();
};
