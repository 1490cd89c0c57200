// Shipout: the last step of the line. It writes the sales region, wipes what
// production and testing left on the set, resets the set to its shipping state and
// reports the end to the station (listener, page, serial result).
#include <cstdio>
#include <cstdlib>

#include "FactoryAssert.h"
#include "FactoryEventIds.h"
#include "FactoryListenerCodes.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_System_Database.h"
#include "MsOS.h"
#include "ShipoutRegions.h"
#include "TVManager.h"
#include "TvHost.h"
#include "WebAppMgr.h"
#include "mapi_system.h"

namespace {

constexpr unsigned long kRegionTimer = FactoryTimer::ShipoutFinishedTimer;
constexpr int kWebAppShipoutCommand = 4;
// Service staff find the assertion by the source line of the set's own build.
constexpr int kFactoryCmdAssertLine = 3313;
constexpr unsigned int kDigitalRoutes = 4;

// Run in this order; their results are not checked: a file already gone is fine.
constexpr const char* kShipoutWipe[] = {
    "rm -f /Customer/dpdc/iprc/HomeControl",
    "rm -f /Customer/factory/shipout.code",
    "rm -f /Customer/stagecraft-data/cookies",
    "rm -rf /Customer/stagecraft-data/shared-objects",
    "rm -rf /OAD/*",
    "cp /applications/Intel_Widi/config/profiles.config /Customer/profiles.config",
    "cp /applications/Intel_Widi/config/adapter.config /Customer/adapter.config",
    "sync",
};

[[noreturn]] void AssertFail(const char* function) {
    FactoryAssert::Fail(FactoryAssert::kManagerFile, function, kFactoryCmdAssertLine);
}

}  // namespace

MAPI_BOOL FactoryManager::OnEvent_Shipout(void*, void*, void*) {
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_Shipout");
    ResetState();
    if (m_pFactoryCmd == nullptr) {
        AssertFail(__PRETTY_FUNCTION__);
    }
    m_pFactoryCmd->CancellationLogSetup();
    // Set for the platform's sake and never cleared: the set is on its way out.
    m_bShipoutExecuting = 1;
    const MAPI_BOOL osdShowing = m_pFactoryCmd->IsFactoryOSDStatus();
    printf("\n~~ FACTORY OSD Showing (%d) ... \n\n", osdShowing);
    if (osdShowing) {
        InfoWebAppMgrHideShowPage(1, 1);
    }
    const MAPI_BOOL uartUi = m_pFactoryCmd->IsUARTEnableUI();
    const ShipoutRegion* region = FindShipoutRegion(m_pFactoryCmd->GetFactoryCmdParameter());
    if (region == nullptr) {
        return 0;
    }
    if (uartUi || region->code == kShipoutAustralia) {
        NotifyUI(0, "HideAllUIExcept", region->page);
        NotifyUI(0, region->key, region->writing);
    }
    // The event thread is held on purpose: no other factory event may interleave
    // with the wipe.
    TvHost_Sleep(1);
    ShipHandle();
    return 1;
}

int FactoryManager::ShipoutToDigitalRoute() {
    MSrv_Control* control = MSrv_Control::GetInstance();
    const MAPI_INPUT_SOURCE_TYPE source = control->GetCurrentInputSource();
    if (source != MAPI_INPUT_SOURCE_DTV) {
        control->SetInputSource(MAPI_INPUT_SOURCE_DTV, 1, 0, 0);
    }
    const ST_MAPI_TV_INFO info = control->GetTVInfo();
    for (unsigned int route = 0; route < kDigitalRoutes; ++route) {
        const MAPI_U8 type = info.u8RouteType[route];
        if ((type == 1 || type == 0x20) && control->GetCurrentTvRoute() != route) {
            control->SwitchMSrvDtvRoute(static_cast<MAPI_U8>(route));
        }
    }
    return source;
}

MAPI_BOOL FactoryManager::ShipoutWriteRegion(MAPI_U8 code, int source) {
    const ShipoutRegion* region = FindShipoutRegion(code);
    if (region == nullptr || region->databaseRegion < 0) {
        return 0;
    }
    MSrv_Control::GetInstance()->GetMSrvSystemDatabase()->ChangeShipoutForZYT(
        static_cast<MAPI_U8>(region->databaseRegion), source, 1);
    TVManager::GetInstance()->ResetShipoutTV();
    KillTimer(kRegionTimer);
    SetTimer(2000, kRegionTimer, E_TIMER_ONESHOT);
    return 1;
}

void FactoryManager::ShipHandle() {
    const int source = ShipoutToDigitalRoute();
    MsOS_DelayTask(200);
    if (g_pFactoryListener.load() != nullptr) {
        FACTORY_LOG(FACTORY_LOG_INFO,
                    "~~ [Shipout] Factory Listener send /E_ZYT_FACTORY_SHIPOUT_DONE/");
        NotifyFactoryListener(FactoryListener::ShipoutDone);
    } else {
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ [Shipout] Factory Listener is NULL");
    }
    // The command needs no argument of ours.
    WebAppMgr_SendCommand(kWebAppShipoutCommand, "");
    for (const char* line : kShipoutWipe) {
        mapi_system::SystemCmd(line);
    }
    ShipoutWriteRegion(m_pFactoryCmd->GetFactoryCmdParameter(), source);
}

MAPI_BOOL FactoryManager::OnTimer_Shipout(void*, void*, void*) {
    const int source = ShipoutToDigitalRoute();
    MsOS_DelayTask(1000);
    return ShipoutWriteRegion(m_pFactoryCmd->GetFactoryCmdParameter(), source);
}

// The page stays up: the set is in its shipping reset.
MAPI_BOOL FactoryManager::OnTimer_ShipoutFinishedTimer(void*, void*, void*) {
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ [FactoryManager::OnTimer_ShipoutFinishedTimer]");
    const MAPI_BOOL uartUi = m_pFactoryCmd->IsUARTEnableUI();
    const ShipoutRegion* region = FindShipoutRegion(m_pFactoryCmd->GetFactoryCmdParameter());
    if (region == nullptr) {
        return 0;
    }
    if (uartUi || region->code == kShipoutAustralia) {
        NotifyUI(0, region->key, region->result);
    } else {
        MSrv_Control::GetInstance()->GetMSrvFactoryCmd()->SetUARTExecutingResult(1);
    }
    return 1;
}
