// The simulated set behind the picture and aging tests, direct tuning, the factory
// configuration, the CI slot and the digital player's tuning runs. Each call is
// journalled; state lives in PanelState, FactoryLineState and DtvTuningState.
#include "SimProductionTests2.h"

#include <cstring>

#include "DatabaseManager.h"
#include "MSrv_ActiveBacklight.h"
#include "MSrv_CIMMI.h"
#include "MSrv_Control.h"
#include "MSrv_DTV_Player_DVBT.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Factory_Default.h"
#include "MSrv_MHL.h"
#include "MSrv_SSSound.h"
#include "MSrv_System_Database.h"
#include "SimPlayers.h"
#include "SimSystemInfo.h"

using sim::ArgList;
using sim::Set;

namespace {
sim::PanelState& Panel() { return Set::Instance().Get<sim::PanelState>(); }
sim::FactoryLineState& Line() { return Set::Instance().Get<sim::FactoryLineState>(); }
sim::DtvTuningState& Dtv() { return Set::Instance().Get<sim::DtvTuningState>(); }
void Record(const char* fn, const ArgList& args = ArgList()) {
    Set::Instance().RecordCall(fn, args);
}

MAPI_BOOL Raster(const char* fn, const char* colour) {
    Record(fn);
    Panel().raster = colour;
    ++Panel().rasterCount;
    return 1;
}
}  // namespace

// ---- Digital player's tuning runs ----------------------------------------------------

namespace sim {

DtvTuningState::DtvTuningState() { m_runner.owner = this; }

// The runner's tick is the set's own: it goes straight to the loop, not to the journal.
void DtvTuningState::StartRun() {
    running = true;
    Set::Instance().Loop().SetTimer(&m_runner, scanMs, 1, E_TIMER_ONESHOT, "sim DTV tuning run");
}

void DtvTuningState::SendScanStopped() {
    running = false;
    m_status = ST_DTV_SCAN_STATUS{10, 0, scanTv, scanRadio, scanData};
    MSrv* player = MSrv_Control::GetInstance()->GetMSrvDtv();
    Set::Instance().Loop().Invoke([this, player] {
        for (MEvtHandle* recipient : Set::Instance().Recipients(player)) {
            recipient->OnEvent(45, nullptr, &m_status, nullptr);
        }
    });
}

MAPI_BOOL DtvTuningState::Runner::DefEventProc(unsigned int message, void*, void*, void*) {
    if (message == kTimerMessage) {
        Set::Instance().Loop().KillTimer(this, 1);
        owner->SendScanStopped();
    }
    return 1;
}

}  // namespace sim

MAPI_BOOL MSrv::RemoveEventRecipient(MEvtHandle* recipient) {
    Record("MSrv::RemoveEventRecipient");
    Set::Instance().RemoveRecipient(this, recipient);
    return 1;
}

MAPI_BOOL MSrv_DTV_Player::GetProgramInfo(MAPI_U8 serviceType, ST_DTV_PROGRAM_INFO* info) {
    Record("MSrv_DTV_Player::GetProgramInfo", ArgList(serviceType, info->u32Number));
    for (const ST_DTV_PROGRAM_INFO& p : Dtv().programs) {
        if (p.u8ServiceType == serviceType && p.u32Number >= info->u32Number) {
            *info = p;
            return 1;
        }
    }
    return 0;
}

MAPI_BOOL MSrv_DTV_Player::ProgramSel(MAPI_U32 number, MAPI_U8 serviceType, MAPI_BOOL play,
                                      MAPI_BOOL keep) {
    Record("MSrv_DTV_Player::ProgramSel", ArgList(number, serviceType, play, keep));
    return 1;
}

MAPI_BOOL MSrv_DTV_Player_DVB::SetScreenMuteSwitch(MAPI_BOOL on) {
    Record("MSrv_DTV_Player_DVB::SetScreenMuteSwitch", ArgList(on));
    return 1;
}

MAPI_BOOL MSrv_DTV_Player_DVBT::ZYT_Factory_Tuning(unsigned char mode) {
    Record("MSrv_DTV_Player_DVBT::ZYT_Factory_Tuning", ArgList(mode));
    Dtv().lastTuningMode = mode;
    Dtv().StartRun();
    return 1;
}

// ---- Factory-command service ------------------------------------------------------------

MAPI_BOOL MSrv_Factory_Cmd::RedRaster() { return Raster("MSrv_Factory_Cmd::RedRaster", "red"); }
MAPI_BOOL MSrv_Factory_Cmd::GreenRaster() {
    return Raster("MSrv_Factory_Cmd::GreenRaster", "green");
}
MAPI_BOOL MSrv_Factory_Cmd::BlueRaster() { return Raster("MSrv_Factory_Cmd::BlueRaster", "blue"); }
MAPI_BOOL MSrv_Factory_Cmd::BlackRaster() {
    return Raster("MSrv_Factory_Cmd::BlackRaster", "black");
}
MAPI_BOOL MSrv_Factory_Cmd::WhiteRaster() {
    return Raster("MSrv_Factory_Cmd::WhiteRaster", "white");
}

MAPI_U8 MSrv_Factory_Cmd::GetAgingMode() { return Panel().agingMode; }

MAPI_BOOL MSrv_Factory_Cmd::FT_DVBC_Manual_Tuning_ZYT() {
    Record("MSrv_Factory_Cmd::FT_DVBC_Manual_Tuning_ZYT");
    Dtv().StartRun();
    return 1;
}

MAPI_BOOL MSrv_Factory_Cmd::FinishManualTuneChange2ChannelManager() {
    Record("MSrv_Factory_Cmd::FinishManualTuneChange2ChannelManager");
    return 1;
}

// ---- Factory store: channel tables ----------------------------------------------------

MAPI_BOOL MSrv_Factory_Default::SetDLTVFactorySignalATVTable2ProgramTable() {
    Record("MSrv_Factory_Default::SetDLTVFactorySignalATVTable2ProgramTable");
    return 1;
}

MAPI_BOOL MSrv_Factory_Default::SetTCompanySignalATVTable2ProgramTable() {
    Record("MSrv_Factory_Default::SetTCompanySignalATVTable2ProgramTable");
    return 1;
}

MAPI_BOOL MSrv_Factory_Default::SetOxbrindFactorySignalATVTable2ProgramTable() {
    Record("MSrv_Factory_Default::SetOxbrindFactorySignalATVTable2ProgramTable");
    return 1;
}

// ---- Control: source, route, set-up, CI, MHL, backlight ---------------------------------

MAPI_BOOL MSrv_Control::ZYTFactorySetup() {
    Record("MSrv_Control::ZYTFactorySetup");
    Line().factorySetupDone = true;
    return 1;
}

MSrv_CIMMI* MSrv_Control::GetMSrvCIMMI() {
    static MSrv_CIMMI service;
    return Line().ciPresent ? &service : nullptr;
}

MSrv_MHL* MSrv_Control::GetMSrvMHL() {
    static MSrv_MHL service;
    return &service;
}

MSrv_ActiveBacklight* MSrv_Control::GetMSrvActiveBacklight() {
    static MSrv_ActiveBacklight service;
    return &service;
}

MAPI_BOOL MSrv_CIMMI::ZYTTestStart() {
    Record("MSrv_CIMMI::ZYTTestStart");
    return Line().ciPass ? 1 : 0;
}

MAPI_BOOL MSrv_MHL::SetAutoSwitch(MAPI_BOOL on) {
    Record("MSrv_MHL::SetAutoSwitch", ArgList(on));
    Line().mhlAutoSwitch = on != 0;
    return 1;
}

// The platform's restore wipes the database's version record too; the set-up writes
// it back.
MAPI_BOOL MSrv_System_Database::RestoreFactorySetupForZYT(MAPI_BOOL save) {
    Record("MSrv_System_Database::RestoreFactorySetupForZYT", ArgList(save));
    sim::SystemInfoState& s = Set::Instance().Get<sim::SystemInfoState>();
    s.dpddVersion = s.neuSoftVersion = s.cesiVersion = "";
    s.iprcVersion = s.irBlasterDBVersion = s.dialVersion = "";
    return 1;
}

MAPI_BOOL DatabaseManager::SetVersionInformation(ST_ZYT_VERSION_INFO& info) {
    Record("DatabaseManager::SetVersionInformation", ArgList(info.szDPDDVersion));
    sim::SystemInfoState& s = Set::Instance().Get<sim::SystemInfoState>();
    auto text = [](const char(&field)[32]) { return std::string(field, strnlen(field, 32)); };
    s.dpddVersion = text(info.szDPDDVersion);
    s.neuSoftVersion = text(info.szNeuSoftVersion);
    s.cesiVersion = text(info.szCESIVersion);
    s.iprcVersion = text(info.szIPRCVersion);
    s.irBlasterDBVersion = text(info.szIRBlasterDBVersion);
    s.dialVersion = text(info.szDIALVersion);
    return 1;
}

MAPI_BOOL MSrv_ActiveBacklight::GetLightSensorValue(MAPI_U16* value) {
    Record("MSrv_ActiveBacklight::GetLightSensorValue");
    *value = Panel().lightSensorOk ? Panel().lightSensor : 0;
    return Panel().lightSensorOk ? 1 : 0;
}

MAPI_U8 MSrv_ActiveBacklight::GetBacklight() { return Panel().backlight; }

MAPI_BOOL MSrv_ActiveBacklight::SetBacklight(MAPI_U8 level) {
    Record("MSrv_ActiveBacklight::SetBacklight", ArgList(level));
    Panel().backlight = level;
    return 1;
}

MAPI_U8 MSrv_SSSound::GetBalance() { return Panel().balance; }

MAPI_BOOL MSrv_SSSound::SetBalance(MAPI_U8 balance) {
    Record("MSrv_SSSound::SetBalance", ArgList(balance));
    Panel().balance = balance;
    return 1;
}
