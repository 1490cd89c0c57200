// The front end's one state, what every view derives from it, and the control
// service's source and route calls over the set's routes.
#include "SimFrontEnd.h"

#include "MSrv_Control.h"
#include "MSrv_DTV_Player_DVBS.h"
#include "MSrv_DTV_Player_DVBT.h"
#include "SimPlayers.h"

using sim::ArgList;
using sim::FrontEndState;
using sim::Set;

namespace {
FrontEndState& FrontEnd() { return Set::Instance().Get<FrontEndState>(); }
void Record(const char* fn, const ArgList& args) { Set::Instance().RecordCall(fn, args); }
}  // namespace

namespace sim {

FrontEndState::FrontEndState() {
    satellites = {
        {"Astra 19.2E", 0, 1, {{11494000, 22000, 1}, {11523000, 22000, 0}}, 1},
        {"Hotbird 13.0E", 0, 1, {{10992000, 27500, 0}}, 2},
        {"Thor 0.8W", 0, 1, {{10872000, 25000, 0}}, 3},
    };
}

bool FrontEndState::OnSatelliteRoute() const {
    const MAPI_U8 system = route < routeTypes.size() ? routeTypes[route] : 0;
    return system == 0x40 || system == 4;
}

const SimSatellite* FrontEndState::Satellite(unsigned long index) const {
    return index < satellites.size() ? &satellites[index] : nullptr;
}

const MS_TP_INFO* FrontEndState::Transponder(unsigned long satellite,
                                             unsigned long transponder) const {
    const SimSatellite* sat = Satellite(satellite);
    return sat != nullptr && transponder < sat->transponders.size()
               ? &sat->transponders[transponder]
               : nullptr;
}

SimSatellite* FrontEndState::Satellite(unsigned long index) {
    return index < satellites.size() ? &satellites[index] : nullptr;
}

MS_TP_INFO* FrontEndState::Transponder(unsigned long satellite, unsigned long transponder) {
    SimSatellite* sat = Satellite(satellite);
    return sat != nullptr && transponder < sat->transponders.size()
               ? &sat->transponders[transponder]
               : nullptr;
}

const MS_TP_INFO* FrontEndState::CurrentTransponder() const {
    return Transponder(currentSatellite, currentTransponder);
}

MAPI_S32 FrontEndState::IntermediateMHz() const {
    const MS_TP_INFO* tp = CurrentTransponder();
    if (tp == nullptr) {
        return 0;
    }
    return static_cast<MAPI_S32>(tp->u32Frequency / 1000) -
           static_cast<MAPI_S32>(satellites[currentSatellite].loLOF);
}

MSrv_DTV_Player_DVB* CurrentDtvPlayer() {
    static MSrv_DTV_Player_DVBT terrestrial;
    static MSrv_DTV_Player_DVBS satellite;
    const FrontEndState& f = FrontEnd();
    if (f.OnSatelliteRoute() && f.satellitePlayer) {
        return &satellite;
    }
    return &terrestrial;
}

}  // namespace sim

// ---- Routes --------------------------------------------------------------------------

MAPI_BOOL MSrv_Control::SetInputSource(MAPI_INPUT_SOURCE_TYPE source, MAPI_BOOL save,
                                       MAPI_BOOL lock, MAPI_BOOL check) {
    Record("MSrv_Control::SetInputSource", ArgList(source, save, lock, check));
    Set::Instance().Get<sim::PlayerState>().currentSource = source;
    if (source == MAPI_INPUT_SOURCE_DTV) {
        FrontEnd().route = FrontEnd().routeOnDtv;
    }
    return 1;
}

ST_MAPI_TV_INFO MSrv_Control::GetTVInfo() {
    Record("MSrv_Control::GetTVInfo", ArgList());
    ST_MAPI_TV_INFO info{};
    for (size_t i = 0; i < 4; ++i) {
        info.u8RouteType[i] = FrontEnd().routeTypes[i];
    }
    return info;
}

MAPI_U8 MSrv_Control::GetCurrentTvRoute() { return FrontEnd().route; }

MAPI_U32 MSrv_Control::GetCurrentDtvRoute() {
    Record("MSrv_Control::GetCurrentDtvRoute", ArgList());
    return FrontEnd().route;
}

MAPI_BOOL MSrv_Control::SwitchMSrvDtvRoute(MAPI_U8 route) {
    Record("MSrv_Control::SwitchMSrvDtvRoute", ArgList(route));
    FrontEnd().route = route;
    return 1;
}
