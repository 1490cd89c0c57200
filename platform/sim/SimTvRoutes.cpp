// The control service's source and route calls over the set's routes.
#include "SimTvRoutes.h"
#include "MSrv_Control.h"
#include "SimPlayers.h"

using sim::Set;

namespace {
sim::TvRouteState& Routes() { return Set::Instance().Get<sim::TvRouteState>(); }
}  // namespace

MAPI_BOOL MSrv_Control::SetInputSource(MAPI_INPUT_SOURCE_TYPE source, MAPI_BOOL save,
                                       MAPI_BOOL lock, MAPI_BOOL check) {
    Set::Instance().RecordCall("MSrv_Control::SetInputSource",
                               sim::ArgList(source, save, lock, check));
    Set::Instance().Get<sim::PlayerState>().currentSource = source;
    if (source == MAPI_INPUT_SOURCE_DTV) {
        Routes().route = Routes().routeOnDtv;
    }
    return 1;
}

ST_MAPI_TV_INFO MSrv_Control::GetTVInfo() {
    Set::Instance().RecordCall("MSrv_Control::GetTVInfo", sim::ArgList());
    ST_MAPI_TV_INFO info{};
    for (size_t i = 0; i < 4; ++i) {
        info.u8RouteType[i] = Routes().routeTypes[i];
    }
    return info;
}

MAPI_U8 MSrv_Control::GetCurrentTvRoute() { return Routes().route; }

MAPI_BOOL MSrv_Control::SwitchMSrvDtvRoute(MAPI_U8 route) {
    Set::Instance().RecordCall("MSrv_Control::SwitchMSrvDtvRoute", sim::ArgList(route));
    Routes().route = route;
    return 1;
}
