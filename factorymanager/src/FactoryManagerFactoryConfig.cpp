// Factory configuration at the end of the line: the factory channel tables with the
// factory tuning, and the factory set-up. "Writing" on the event, the work and its
// result 2 s later (timer 41), the panel closed 2 s after that (timer 42).
#include <cstdint>
#include <cstdio>

#include "DatabaseManager.h"
#include "FactoryConfigTable.h"
#include "FactoryEventIds.h"
#include "FactoryListenerCodes.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_DTV_Player_DVBT.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Factory_Default.h"
#include "MSrv_MHL.h"
#include "MSrv_System_Database.h"
#include "MsOS.h"
#include "TVManager.h"

namespace {
constexpr unsigned long kWorkTimer = FactoryTimer::FactoryConfiguration;
constexpr unsigned long kCloseTimer = FactoryTimer::FactoryConfigurationFinished;
// The tuner's route types whose live route is the terrestrial one already.
constexpr MAPI_U8 kRouteTypeDvbt = 1;
constexpr MAPI_U8 kRouteTypeDvbt2 = 32;
// The factory tuning is terrestrial: that is the route it needs.
constexpr MAPI_U8 kTerrestrialRoute = 0;

MSrv_Control* Control() { return MSrv_Control::GetInstance(); }
}  // namespace

MAPI_BOOL FactoryManager::OnEvent_FactoryConfiguration(void*, void* p2, void*) {
    FACTORY_TRACE();
    m_u8FactoryConfigSubCode = static_cast<MAPI_U8>(reinterpret_cast<uintptr_t>(p2));
    ResetKeyWriting();
    const MAPI_BOOL uartUi = m_pFactoryCmd->IsUARTEnableUI();
    const FactoryConfigRow* row = FindFactoryConfig(m_u8FactoryConfigSubCode);
    if (row != nullptr && (row->alwaysShown || uartUi)) {
        if (row->alwaysShown) {
            InfoWebAppMgrHideShowPage(1, 1);
        }
        NotifyUI(0, "HideAllUIExcept", row->page);
        if (row->kind == FactoryConfigKind::ChannelPreset) {
            NotifyUI(0, "CHPreset", 1);
        }
        NotifyUI(0, row->cmd, row->writing);
    }
    // Unknown sub-codes too: the fixture waits for the same two steps.
    KillTimer(kWorkTimer);
    SetTimer(2000, kWorkTimer, E_TIMER_ONESHOT);
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_FactoryConfiguration(void*, void*, void*) {
    const MAPI_BOOL uartUi = m_pFactoryCmd->IsUARTEnableUI();
    const FactoryConfigRow* row = FindFactoryConfig(m_u8FactoryConfigSubCode);
    if (row != nullptr && row->kind == FactoryConfigKind::Setup) {
        RunFactorySetup(uartUi);
    } else if (row != nullptr) {
        (m_pFactoryDefault->*row->loadTable)();
        if (!row->keepsDigitalSource ||
            Control()->GetCurrentInputSource() != MAPI_INPUT_SOURCE_DTV) {
            Control()->SetInputSource(MAPI_INPUT_SOURCE_DTV, 1, 0, 0);
        }
        // The type byte of the live route: a terrestrial route (DVB-T or DVB-T2) is kept.
        const MAPI_U8 routeType =
            Control()->GetTVInfo().u8RouteType[Control()->GetCurrentTvRoute() & 3];
        if (routeType != kRouteTypeDvbt && routeType != kRouteTypeDvbt2) {
            Control()->SwitchMSrvDtvRoute(kTerrestrialRoute);
        }
        // Only a terrestrial set is sent these sub-codes; another one just logs it.
        auto* dvbt = dynamic_cast<MSrv_DTV_Player_DVBT*>(Control()->GetMSrvDtv());
        if (dvbt != nullptr) {
            dvbt->ZYT_Factory_Tuning(row->tuningMode);
        } else {
            FACTORY_LOG(FACTORY_LOG_INFO, "~~ [FactoryConfiguration] no terrestrial player");
        }
        if (!row->resultNeedsUartUi || uartUi) {
            if (row->kind == FactoryConfigKind::ChannelPreset) {
                NotifyUI(0, "CHPreset", 1);
            }
            NotifyUI(0, row->cmd, row->result);
        }
    }
    KillTimer(kCloseTimer);
    SetTimer(2000, kCloseTimer, E_TIMER_ONESHOT);
    return 1;
}

void FactoryManager::RunFactorySetup(MAPI_BOOL uartUi) {
    // The restore below clears the database's version record; it is put back at the end.
    DatabaseManager* database = TVManager::GetInstance()->getDatabaseManager();
    ST_ZYT_VERSION_INFO versions{};
    database->GetVersionInformation(versions);
    if (Control()->GetCurrentInputSource() != MAPI_INPUT_SOURCE_DTV) {
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ change DTV");
        const MAPI_U8 route = Control()->GetCurrentTvRoute();
        Control()->SetInputSource(MAPI_INPUT_SOURCE_DTV, 1, 0, 0);
        if (Control()->GetCurrentTvRoute() != route) {
            FACTORY_LOG(FACTORY_LOG_INFO, "~~ bSameTvToute = FALSE");
            Control()->SwitchMSrvDtvRoute(route);
        }
    }
    MsOS_DelayTask(150);
    Control()->ZYTFactorySetup();
    // Written through at once: the set is switched off at the end of the line.
    Control()->GetMSrvSystemDatabase()->RestoreFactorySetupForZYT(1);
    Control()->GetMSrvMHL()->SetAutoSwitch(1);
    if (g_pFactoryListener.load() != nullptr) {
        puts("~~ [FactorySetup] Factory Listener send /E_ZYT_FACTORY_CHANGE_OSD_LANG_2_ENG/");
        NotifyFactoryListener(FactoryListener::OsdLanguageToEnglish);
    } else {
        puts("~~ [FactorySetup] Factory Listener is NULL");
    }
    MsOS_DelayTask(350);
    Control()->SetInputSource(MAPI_INPUT_SOURCE_ATV, 1, 0, 0);
    m_pFactoryCmd->SetFactoryMmodeStatus(1);
    database->SetVersionInformation(versions);
    m_pFactoryCmd->SetUARTExecutingResult(1);
    if (uartUi) {
        NotifyUI(0, "Factory-Setup", "Factory Setup : Finished");
    }
}

MAPI_BOOL FactoryManager::OnTimer_FactoryConfigurationFinished(void*, void*, void*) {
    const FactoryConfigRow* row = FindFactoryConfig(m_u8FactoryConfigSubCode);
    if (row == nullptr) {
        return 1;
    }
    NotifyUI(0, row->closeCmd, 0);
    if (row->kind != FactoryConfigKind::ChannelPreset || row->playsProgram) {
        InfoZYTAppMgr(0);
    }
    InfoWebAppMgrHideShowPage(0, 1);
    if (row->playsProgram) {
        return PlayFirstProgram("~~ Play Program 4");
    }
    return 1;
}
