// The platform's network service.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

struct msrv_network_mac_s {
    MAPI_U8 mac[6];
};

class MSrv_Network : public MSrv {
public:
    MAPI_BOOL GetEthernetMACAddress(msrv_network_mac_s* mac);
    MAPI_BOOL GetWiFiMACAddress(msrv_network_mac_s* mac);
    // 0 wireless, else the wired network.
    MAPI_U8 GetNetworkType();
};
