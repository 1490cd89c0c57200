// The simulated pre-shared key service and the DVB player's CI+ usage rules.
#include "SimKeyData.h"

#include <cstring>
#include <system_error>

#include "MSrv_Control.h"
#include "MSrv_PreSharedKey.h"

using sim::ArgList;
using sim::Set;

MSrv_PreSharedKey* MSrv_Control::GetMSrvPreSharedKey() {
    static MSrv_PreSharedKey service;
    return &service;
}

MAPI_BOOL MSrv_PreSharedKey::CheckHmac(const char* path) {
    const std::string tvPath = path ? path : "";
    std::error_code ec;
    const bool exists = std::filesystem::is_regular_file(Set::Instance().GetRoot().Map(tvPath), ec);
    const bool ok =
        exists && Set::Instance().Get<sim::KeyDataState>().hmacFailing.count(tvPath) == 0;
    Set::Instance().RecordCall("MSrv_PreSharedKey::CheckHmac", ArgList(tvPath, ok));
    return ok ? 1 : 0;
}

MAPI_BOOL MSrv_DTV_Player_DVB::GetCCUriLicense(ST_CIPLUS_URI_LICENSE* record) {
    const sim::KeyDataState& state = Set::Instance().Get<sim::KeyDataState>();
    Set::Instance().RecordCall("MSrv_DTV_Player_DVB::GetCCUriLicense", ArgList(state.uriResult));
    if (record != nullptr && state.uriResult == 1) {
        std::memcpy(record, &state.uri, sizeof(*record));
    }
    return state.uriResult;
}
