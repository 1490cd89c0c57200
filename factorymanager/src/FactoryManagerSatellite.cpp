// Satellite front-end tests: LNB supply, 22 kHz tone, DiSEqC input and the
// polarisation of the first transponder, each shown on the page for a moment.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>

#include "FactoryAssert.h"
#include "FactoryEventIds.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_ChannelManager.h"
#include "MSrv_Control.h"
#include "MSrv_DTV_Player_DVBS.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_System_Database.h"
#include "MW_DTV_ScanParam.h"
#include "SystemInfo.h"
#include "mapi_dish.h"

namespace {

constexpr unsigned long kShowMs = 2000;
constexpr unsigned char kSubDiSEqC = 213;
constexpr unsigned char kSub22kHz = 218;
constexpr unsigned char kSubLNB = 169;
constexpr uintptr_t kRequestH = 10;
constexpr uintptr_t kRequestV = 11;
constexpr MAPI_U8 kHorizontal = 0x01;

// The hide timers of the satellite pages: each hides its own page.
struct SatelliteHideTimer {
    unsigned long id;
    const char* cmd;
};
constexpr SatelliteHideTimer kHideTimers[] = {
    {FactoryTimer::LNBPowerSwitch, "LNB-power-hide"},
    {FactoryTimer::TwentyTwoKHzTone, "22kHz-Tone-Show"},
    {FactoryTimer::DiSEqCSwitching, "DiSEqC-Switching-Show"},
    {FactoryTimer::FactoryDVBSManualTuningToggle, "Polarization-HV-toggle-Show"},
};

bool IsSatelliteRouteType(MAPI_U8 type) { return type == 4 || type == 64; }

MSrv_DTV_Player_DVBS* DvbsPlayer() {
    return dynamic_cast<MSrv_DTV_Player_DVBS*>(MSrv_Control::GetInstance()->GetMSrvDtv());
}

[[noreturn]] void AssertFail(const char* function, int line) {
    FactoryAssert::Fail(FactoryAssert::kManagerStem, function, line);
}

// Prints an M-mode line as the satellite tests do: framed by newlines.
void MModeLine(const char* text) {
    FACTORY_LOG(FACTORY_LOG_INFO, "%s", text);
    printf("\n%s \n", text);
}

}  // namespace

MAPI_BOOL FactoryManager::OnEvent_SatInfo(void*, void* p2, void*) {
    if (SystemInfo::GetInstance()->IsDVBSEnable() == 0) {
        return 1;
    }
    MSrv_Control* control = MSrv_Control::GetInstance();
    if (control == nullptr) {
        return 0;
    }
    ResetState();
    control->SetInputSource(MAPI_INPUT_SOURCE_DTV, 1, 0, 0);
    const ST_MAPI_TV_INFO info = control->GetTVInfo();
    for (MAPI_U8 route = 0; route < 4; ++route) {
        if (IsSatelliteRouteType(info.u8RouteType[route]) &&
            control->GetCurrentTvRoute() != route) {
            control->SwitchMSrvDtvRoute(route);
        }
    }
    switch (static_cast<unsigned char>(reinterpret_cast<uintptr_t>(p2))) {
        case kSubDiSEqC:
            OnDVBsSwitchDiSEqC_LNB1_LNB2();
            break;
        case kSub22kHz:
            On22kHzTone();
            break;
        case kSubLNB:
            DVBsLNBModeOnOff();
            KillTimer(FactoryTimer::LNBPowerSwitch);
            SetTimer(kShowMs, FactoryTimer::LNBPowerSwitch, E_TIMER_ONESHOT);
            break;
        default:
            return 0;
    }
    return 1;
}

MAPI_BOOL FactoryManager::DVBsLNBModeOnOff() {
    if (SystemInfo::GetInstance()->IsDVBSEnable() == 0) {
        return 0;
    }
    NotifyUI(0, "HideAllUIExcept", "LNBPowerSwitch");
    MSrv_System_Database* db = MSrv_Control::GetInstance()->GetMSrvSystemDatabase();
    ST_USER_SYSTEM_SETTING setting{};
    db->GetUserSystemSetting(&setting);
    m_bLNBPower = setting.u8LNBPower;
    const bool mMode = m_pFactoryCmd->GetFactoryMmodeStatus() != 0;
    if (m_bLNBPower) {
        m_bLNBPower = 0;
        NotifyUI(0, "LNB-power-show", "LNB Power: OFF");
        if (mMode) {
            MModeLine("(FACTORY:) LNB Off");
        }
    } else {
        m_bLNBPower = 1;
        NotifyUI(0, "LNB-power-show", "LNB Power: ON");
        if (mMode) {
            MModeLine("(FACTORY:) LNB On");
        }
    }
    setting.u8LNBPower = m_bLNBPower;
    db->SetUserSystemSetting(&setting);

    MSrv_DTV_Player_DVBS* dvbs = DvbsPlayer();
    if (dvbs == nullptr) {
        return 0;
    }
    const MAPI_U32 count = dvbs->GetCurrentSateliteCount();
    for (MAPI_U32 i = 0; i < count; ++i) {
        MS_SAT_INFO sat{};
        if (!dvbs->GetSatelliteInfo(i, sat)) {
            AssertFail(__PRETTY_FUNCTION__, 14141);
        }
        sat.u8LNBPwrMode = m_bLNBPower ? 0 : 2;
        sat.u8LNBPwrOnOff = m_bLNBPower ? 1 : 0;
        dvbs->UpdateSatelliteInfo(i, sat);
    }
    if (!m_bLNBPower) {
        dvbs->DishSetLNBPower(EN_LNBPWR_OFF);
        return 1;
    }
    _DVB_MUXINFO mux{};
    if (!dvbs->GetCurrentMuxInfo(mux)) {
        dvbs->DishSetLNBPower(EN_LNBPWR_13OR18V);
    } else {
        dvbs->DishSetLNBPower((mux.u8Polarity & kHorizontal) ? EN_LNBPWR_18V : EN_LNBPWR_13V);
    }
    return 1;
}

MAPI_BOOL FactoryManager::On22kHzTone() {
    mapi_dish* dish = mapi_interface_TV::Get_mapi_dish();
    unsigned char on = 0;
    dish->DTV_DVB_S_Get22KStatus(&on);
    NotifyUI(0, "HideAllUIExcept", "22kHzTone");
    const bool nowOn = on == 0;
    const bool ok = dish->DTV_DVB_S_Set22KOnOff(nowOn ? 1 : 0) != 0;
    static const char* const kTexts[2][2] = {
        {"22kHz tone : OFF Fail", "22kHz tone : OFF"},
        {"22kHz tone : ON Fail", "22kHz tone : ON"},
    };
    static const char* const kLines[2][2] = {
        {"(FACTORY:) 22kHz Tone Off fail", "(FACTORY:) 22kHz Tone Off"},
        {"(FACTORY:) 22kHz Tone On fail", "(FACTORY:) 22kHz Tone On"},
    };
    if (m_pFactoryCmd->GetFactoryMmodeStatus()) {
        MModeLine(kLines[nowOn][ok]);
    }
    if (m_pFactoryCmd->IsUARTEnableUI()) {
        NotifyUI(0, "22kHz-Tone", kTexts[nowOn][ok]);
    }
    KillTimer(FactoryTimer::TwentyTwoKHzTone);
    SetTimer(kShowMs, FactoryTimer::TwentyTwoKHzTone, E_TIMER_ONESHOT);
    return 1;
}

MAPI_BOOL FactoryManager::OnDVBsSwitchDiSEqC_LNB1_LNB2() {
    // The DiSEqC input shares its stored switch with the LNB supply, on purpose.
    MSrv_System_Database* db = MSrv_Control::GetInstance()->GetMSrvSystemDatabase();
    ST_USER_SYSTEM_SETTING setting{};
    db->GetUserSystemSetting(&setting);
    m_bLNBPower = setting.u8LNBPower ? 0 : 1;
    setting.u8LNBPower = m_bLNBPower;
    db->SetUserSystemSetting(&setting);
    MSrv_DTV_Player_DVBS* dvbs = DvbsPlayer();
    if (dvbs == nullptr) {
        return 0;
    }
    NotifyUI(0, "HideAllUIExcept", "DiSEqCSwitching");
    m_bDiSEqCPortB = m_bLNBPower;
    const bool mMode = m_pFactoryCmd->GetFactoryMmodeStatus() != 0;
    // The console names input A port 1 while port 0 is what the switch gets.
    struct Position {
        const char* mModeLine;
        const char* console;
        const char* text;
        unsigned char port;
    };
    static const Position kPositions[] = {
        {"(FACTORY:) DiSEqC SW A", "\n~~ (FACTORY:) DiSEqC SW A, DiSEqCSwitchPort 1 \n",
         "Dish Position : Position A", 0},
        {"(FACTORY:) DiSEqC SW B", "\n~~ (FACTORY:) DiSEqC SW B, DiSEqCSwitchPort 4 \n",
         "Dish Position : Position B", 4},
    };
    const Position& position = kPositions[m_bDiSEqCPortB ? 1 : 0];
    if (mMode) {
        MModeLine(position.mModeLine);
    }
    printf("%s", position.console);
    NotifyUI(0, "DiSEqC-Switching", position.text);
    dvbs->DiSEqCSwitchPort(position.port, 0);
    dvbs->DiSEqCSwitchPort(position.port, 0);
    KillTimer(FactoryTimer::DiSEqCSwitching);
    SetTimer(kShowMs, FactoryTimer::DiSEqCSwitching, E_TIMER_ONESHOT);
    return 1;
}

MAPI_BOOL FactoryManager::HideSatellitePage(unsigned long timerId) {
    for (const SatelliteHideTimer& t : kHideTimers) {
        if (t.id == timerId) {
            NotifyUI(0, t.cmd, 0);
            break;
        }
    }
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_LNBPowerSwitch(void*, void*, void*) {
    return HideSatellitePage(FactoryTimer::LNBPowerSwitch);
}
MAPI_BOOL FactoryManager::OnTimer_22KHzTone(void*, void*, void*) {
    return HideSatellitePage(FactoryTimer::TwentyTwoKHzTone);
}
MAPI_BOOL FactoryManager::OnTimer_DiSEqCSwitching(void*, void*, void*) {
    return HideSatellitePage(FactoryTimer::DiSEqCSwitching);
}
MAPI_BOOL FactoryManager::OnTimer_FactoryDVBSManualTuningToggle(void*, void*, void*) {
    return HideSatellitePage(FactoryTimer::FactoryDVBSManualTuningToggle);
}

MAPI_BOOL FactoryManager::OnEvent_FactoryDVBSManualTuningToggle(void*, void* p2, void*) {
    const uintptr_t request = reinterpret_cast<uintptr_t>(p2);
    if (m_bPolarizationMode == 0) {
        OpenPage("PolarizationHV");
        m_bPolarizationMode = 1;
    }
    std::unique_ptr<MW_DTV_ScanParam_DVBS> param(new (std::nothrow) MW_DTV_ScanParam_DVBS());
    if (!param) {
        return 0;
    }
    MSrv_DTV_Player_DVBS* dvbs = DvbsPlayer();
    if (dvbs == nullptr) {
        return 0;
    }
    MS_TP_INFO tp{};
    if (!dvbs->GetTransponderInfo(0, 0, tp)) {
        return 0;
    }
    dvbs->EnableSingleCableSignalRecover(0);
    param->u16SymbolRate = tp.u16SymbolRate;
    param->u8Network = 0;
    param->u8ScanType = 0;
    param->u8Blind = 1;
    param->u8Polarity = tp.u8Polarity & kHorizontal;
    dvbs->SetCurrentSatellite(0);
    dvbs->SetCurrentTransponder(0);
    const bool uartUi = m_pFactoryCmd->IsUARTEnableUI() == 1;
    if (tp.u8Polarity & kHorizontal) {
        if (request != kRequestH) {
            // H to V retunes the running scan.
            if (uartUi) {
                NotifyUI(0, "Polarization-HV-toggle", "Polarisation : V");
            }
            tp.u8Polarity &= static_cast<MAPI_U8>(~kHorizontal);
            param->u8Polarity &= static_cast<MAPI_U8>(~kHorizontal);
            dvbs->SetScanParam(param.get());
            dvbs->ChangeManualScanFreq(tp.u32Frequency);
            dvbs->UpdateTransponderInfo(0, 0, tp);
        }
    } else if (request != kRequestV) {
        // V to H starts a new scan.
        dvbs->StopScan();
        if (uartUi) {
            NotifyUI(0, "Polarization-HV-toggle", "Polarisation : H");
        }
        tp.u8Polarity |= kHorizontal;
        param->u8Polarity |= kHorizontal;
        dvbs->SetScanParam(param.get());
        dvbs->ManualScanFreq(tp.u32Frequency);
        dvbs->UpdateTransponderInfo(0, 0, tp);
    }
    m_pFactoryCmd->SetUARTExecutingResult(1);
    return 1;
}

MAPI_BOOL FactoryManager::DisplayVideoAfterPolarizatonChanged() {
    MSrv_Control* control = MSrv_Control::GetInstance();
    MSrv_DTV_Player_DVB* dtv = control->GetMSrvDtv();
    if (dtv != nullptr) {
        dtv->StopScan();
    }
    control->GetMSrvChannelManager()->PlayCurrentProgram(1, 3);
    return 1;
}
