// The simulated set behind the network service.
#include "SimNetwork.h"

#include <algorithm>

#include "MSrv_Control.h"
#include "MSrv_Network.h"

using sim::ArgList;

namespace {

MAPI_BOOL CopyMac(const char* fn, const std::array<MAPI_U8, 6>& from, msrv_network_mac_s* to) {
    sim::Set::Instance().RecordCall(fn, ArgList());
    if (to == nullptr) {
        return 0;
    }
    std::copy(from.begin(), from.end(), to->mac);
    return 1;
}

}  // namespace

MSrv_Network* MSrv_Control::GetMSrvNetwork() {
    static MSrv_Network service;
    return &service;
}

MAPI_BOOL MSrv_Network::GetEthernetMACAddress(msrv_network_mac_s* mac) {
    return CopyMac("MSrv_Network::GetEthernetMACAddress",
                   sim::Set::Instance().Get<sim::NetworkState>().ethernetMac, mac);
}

MAPI_BOOL MSrv_Network::GetWiFiMACAddress(msrv_network_mac_s* mac) {
    return CopyMac("MSrv_Network::GetWiFiMACAddress",
                   sim::Set::Instance().Get<sim::NetworkState>().wifiMac, mac);
}
