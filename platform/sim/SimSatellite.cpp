// The satellite player's MS_ records of the satellites and transponders, its scan,
// and the dish, over the front end's one state (SimFrontEnd.h).
#include <cstring>

#include "MSrv_Control.h"
#include "MSrv_DTV_Player_DVBS.h"
#include "MSrv_Factory_Cmd.h"
#include "MW_DTV_ScanParam.h"
#include "SimFrontEnd.h"
#include "SystemInfo.h"
#include "mapi_dish.h"

using sim::ArgList;
using sim::FrontEndState;
using sim::Set;

namespace {
FrontEndState& Sat() { return Set::Instance().Get<FrontEndState>(); }
void Record(const char* fn, const ArgList& args) { Set::Instance().RecordCall(fn, args); }
}  // namespace

MAPI_BOOL SystemInfo::IsDVBSEnable() {
    Record("SystemInfo::IsDVBSEnable", ArgList());
    return Sat().dvbsEnabled ? 1 : 0;
}

// ---- Digital player: scan -------------------------------------------------------------

MAPI_BOOL MSrv_DTV_Player::ManualScanFreq(unsigned long frequencyKHz) {
    Record("MSrv_DTV_Player::ManualScanFreq", ArgList(frequencyKHz));
    Sat().scanning = true;
    Sat().scanFrequency = static_cast<uint32_t>(frequencyKHz);
    return 1;
}

MAPI_BOOL MSrv_DTV_Player::ChangeManualScanFreq(unsigned long frequencyKHz) {
    Record("MSrv_DTV_Player::ChangeManualScanFreq", ArgList(frequencyKHz));
    Sat().scanFrequency = static_cast<uint32_t>(frequencyKHz);
    return 1;
}

MAPI_BOOL MSrv_DTV_Player::StopScan() {
    Record("MSrv_DTV_Player::StopScan", ArgList());
    Sat().scanning = false;
    return 1;
}

// ---- Satellite player: the MS_ records ------------------------------------------------

MAPI_U32 MSrv_DTV_Player_DVBS::GetCurrentSateliteCount() {
    Record("MSrv_DTV_Player_DVBS::GetCurrentSateliteCount", ArgList());
    return static_cast<MAPI_U32>(Sat().satellites.size());
}

MAPI_U8 MSrv_DTV_Player_DVBS::GetCurrentSateliteNo() {
    Record("MSrv_DTV_Player_DVBS::GetCurrentSateliteNo", ArgList());
    return Sat().currentSatellite;
}

bool MSrv_DTV_Player_DVBS::GetSatelliteInfo(unsigned long satellite, MS_SAT_INFO& info) {
    Record("MSrv_DTV_Player_DVBS::GetSatelliteInfo", ArgList(satellite));
    const sim::SimSatellite* sat = Sat().Satellite(satellite);
    if (sat == nullptr || Sat().unreadableSatellite == static_cast<int>(satellite)) {
        return false;
    }
    info = MS_SAT_INFO{};
    std::strncpy(info.aSatName, sat->name.c_str(), sizeof(info.aSatName) - 1);
    info.u8LNBPwrMode = sat->lnbPwrMode;
    info.u8LNBPwrOnOff = sat->lnbPwrOnOff;
    return true;
}

bool MSrv_DTV_Player_DVBS::UpdateSatelliteInfo(unsigned long satellite, MS_SAT_INFO& info) {
    Record("MSrv_DTV_Player_DVBS::UpdateSatelliteInfo",
           ArgList(satellite, info.u8LNBPwrMode, info.u8LNBPwrOnOff));
    sim::SimSatellite* sat = Sat().Satellite(satellite);
    if (sat == nullptr) {
        return false;
    }
    sat->lnbPwrMode = info.u8LNBPwrMode;
    sat->lnbPwrOnOff = info.u8LNBPwrOnOff;
    return true;
}

MAPI_BOOL MSrv_DTV_Player_DVBS::DishSetLNBPower(MS_EN_LNBPWR_ONOFF power) {
    Record("MSrv_DTV_Player_DVBS::DishSetLNBPower", ArgList(power));
    Sat().lnbPower = power;
    return 1;
}

MAPI_BOOL MSrv_DTV_Player_DVBS::DiSEqCSwitchPort(unsigned char port, unsigned char repeat) {
    Record("MSrv_DTV_Player_DVBS::DiSEqCSwitchPort", ArgList(port, repeat));
    Sat().diseqcPort = port;
    return 1;
}

bool MSrv_DTV_Player_DVBS::GetTransponderInfo(unsigned long satellite, unsigned long transponder,
                                              MS_TP_INFO& tp) {
    Record("MSrv_DTV_Player_DVBS::GetTransponderInfo", ArgList(satellite, transponder));
    const MS_TP_INFO* found = Sat().Transponder(satellite, transponder);
    if (found == nullptr) {
        return false;
    }
    tp = *found;
    return true;
}

bool MSrv_DTV_Player_DVBS::UpdateTransponderInfo(unsigned long satellite, unsigned long transponder,
                                                 MS_TP_INFO& tp) {
    Record("MSrv_DTV_Player_DVBS::UpdateTransponderInfo",
           ArgList(satellite, transponder, tp.u32Frequency, tp.u16SymbolRate, tp.u8Polarity));
    MS_TP_INFO* found = Sat().Transponder(satellite, transponder);
    if (found == nullptr) {
        return false;
    }
    *found = tp;
    return true;
}

MAPI_BOOL MSrv_DTV_Player_DVBS::SetCurrentSatellite(unsigned char satellite) {
    Record("MSrv_DTV_Player_DVBS::SetCurrentSatellite", ArgList(satellite));
    Sat().currentSatellite = satellite;
    return 1;
}

MAPI_BOOL MSrv_DTV_Player_DVBS::SetCurrentTransponder(unsigned short transponder) {
    Record("MSrv_DTV_Player_DVBS::SetCurrentTransponder", ArgList(transponder));
    Sat().currentTransponder = transponder;
    return 1;
}

MAPI_BOOL MSrv_DTV_Player_DVBS::SetScanParam(MW_DTV_ScanParam* param) {
    auto* dvbs = dynamic_cast<MW_DTV_ScanParam_DVBS*>(param);
    if (dvbs == nullptr) {
        Record("MSrv_DTV_Player_DVBS::SetScanParam", ArgList());
        return 0;
    }
    Record("MSrv_DTV_Player_DVBS::SetScanParam",
           ArgList(dvbs->u16SymbolRate, dvbs->u8Network, dvbs->u8ScanType, dvbs->u8Blind,
                   dvbs->u8Polarity));
    FrontEndState& s = Sat();
    s.scanSymbolRate = dvbs->u16SymbolRate;
    s.scanNetwork = dvbs->u8Network;
    s.scanType = dvbs->u8ScanType;
    s.scanBlind = dvbs->u8Blind;
    s.scanPolarity = dvbs->u8Polarity;
    return 1;
}

MAPI_BOOL MSrv_DTV_Player_DVBS::EnableSingleCableSignalRecover(unsigned char enable) {
    Record("MSrv_DTV_Player_DVBS::EnableSingleCableSignalRecover", ArgList(enable));
    Sat().singleCableRecover = enable != 0;
    return 1;
}

// ---- Dish ----------------------------------------------------------------------------------

mapi_dish* mapi_interface_TV::Get_mapi_dish() {
    static mapi_dish dish;
    return &dish;
}

MAPI_BOOL mapi_dish::DTV_DVB_S_Get22KStatus(unsigned char* on) {
    Record("mapi_dish::DTV_DVB_S_Get22KStatus", ArgList());
    *on = Sat().tone22k ? 1 : 0;
    return 1;
}

MAPI_BOOL mapi_dish::DTV_DVB_S_Set22KOnOff(unsigned char on) {
    Record("mapi_dish::DTV_DVB_S_Set22KOnOff", ArgList(on));
    FrontEndState& s = Sat();
    if (s.dish22kFails) {
        return 0;
    }
    s.tone22k = on != 0;
    return 1;
}
