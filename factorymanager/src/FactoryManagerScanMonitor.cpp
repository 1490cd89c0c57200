// Around channels: the scan monitor of the fixture's tuning runs, the CI slot test,
// the channel-preset progress page and the clone copy page.
#include <cstdint>
#include <cstdio>

#include "FactoryEventIds.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_CIMMI.h"
#include "MSrv_Control.h"
#include "MSrv_DTV_Player_DVB.h"
#include "MSrv_Factory_Cmd.h"
#include "TvHost.h"

namespace {
constexpr unsigned long kScanFinishedTimer = FactoryTimer::FactoryScanFinishe;
constexpr unsigned long kCITimer = FactoryTimer::CITestStatus;
constexpr unsigned long kCHPresetTimer = FactoryTimer::DLTVSignalSetting;
constexpr MAPI_U32 kScanStopped = 10;

unsigned long LowByte(void* p) { return reinterpret_cast<uintptr_t>(p) & 0xFF; }
}  // namespace

// ---- Scan monitor (platform event 45, timer 60) ---------------------------------------

MAPI_BOOL FactoryManager::OnScanRecepient(void*, void* p2, void*) {
    const auto* status = static_cast<const ST_DTV_SCAN_STATUS*>(p2);
    if (status == nullptr) {
        return 1;
    }
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ [FactoryManager::OnScanRecepient] enScanStatus = 0x%X",
                status->enScanStatus);
    printf("~ [FactoryManager::OnScanRecepient] enScanStatus = 0x%X \n", status->enScanStatus);
    if (status->enScanStatus != kScanStopped) {
        return 1;
    }
    printf("\n\n~~ 1 [ScanRecepient] Scan stop\n\n");
    if (m_bDVBCScanWatch) {
        printf("\n~~ 2 [ScanRecepient] dtv= %d, radio= %d, data= %d \n\n", status->u16TVNum,
               status->u16RadioNum, status->u16DataNum);
        const long total = status->u16TVNum + status->u16RadioNum + status->u16DataNum;
        if (total != 0) {
            m_u32ScanEmptyTimes = 0;
            printf("\n~~ Channel Num = %ld, Times=%ld\n\n", total, (long)m_u32ScanEmptyTimes);
        } else {
            ++m_u32ScanEmptyTimes;
            printf("~~ Times= %ld\n", (long)m_u32ScanEmptyTimes);
            printf("\n~~ DVB-C Channel Number is NULL\n");
        }
        puts("~~ 2 Scan stop");
        m_bDVBCScanWatch = 0;
        m_pFactoryCmd->FinishManualTuneChange2ChannelManager();
    }
    MSrv_DTV_Player_DVB* dtv = MSrv_Control::GetInstance()->GetMSrvDtv();
    if (dtv != nullptr) {
        dtv->RemoveEventRecipient(this);
    }
    NotifyUI(0, "DVB-C-Direct-Tuning-Show", 0);
    NotifyUI(0, "Channel-37-Show", 0);
    SetTimer(1000, kScanFinishedTimer, E_TIMER_REPEAT);
    return 1;
}

// The host's UI is held back for four ticks and handed back on the fifth.
MAPI_BOOL FactoryManager::OnTimer_FactoryScanFinishe(void*, void* p2, void*) {
    ++u16Times;
    if (reinterpret_cast<uintptr_t>(p2) == kScanFinishedTimer) {
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ [FactoryManager::OnTimer_FactoryScanFinishe]");
        if (u16Times > 4) {
            InfoZYTAppMgr(0);
            u16Times = 0;
            KillTimer(kScanFinishedTimer);
        } else {
            InfoZYTAppMgr(1);
        }
    }
    return 1;
}

// ---- CI slot test (event 239, timer 48) --------------------------------------------------

MAPI_BOOL FactoryManager::OnEvent_CITestStatus(void*, void*, void*) {
    OpenPage("CITest");
    MSrv_DTV_Player_DVB* dvb = MSrv_Control::GetInstance()->GetMSrvDtv();
    if (dvb != nullptr) {
        dvb->SetScreenMuteSwitch(1);
    }
    SetTimer(1000, kCITimer, E_TIMER_ONESHOT);
    m_bCITestMode = 1;
    m_pFactoryCmd->SetFactoryOSDStatus(1);
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_CITestStatus(void*, void*, void*) {
    // A set without a slot service fails the test rather than the process.
    MSrv_CIMMI* ci = MSrv_Control::GetInstance()->GetMSrvCIMMI();
    const bool ok = ci != nullptr && ci->ZYTTestStart() == 1;
    const char* line = ok ? "(FACTORY:) CI test OK" : "(FACTORY:) CI test NG";
    if (m_pFactoryCmd->GetFactoryMmodeStatus()) {
        FACTORY_LOG(FACTORY_LOG_INFO, "%s", line);
        printf("\n%s \n", line);
    }
    if (ok) {
        NotifyUI(0, "CITest-OK", "CI FACTORY TEST : OK");
    } else {
        NotifyUI(0, "CITest-NG", "CI FACTORY TEST : NG");
    }
    return 1;
}

MAPI_BOOL FactoryManager::ExitCITestStatus() { return CloseTestPage("CITest-Show", m_bCITestMode); }

// ---- Channel preset (event 192, timer 49) ----------------------------------------------

MAPI_BOOL FactoryManager::OnEvent_DLTVSignalSetting(void*, void* p2, void*) {
    const MAPI_BOOL uartUi = m_pFactoryCmd->IsUARTEnableUI();
    // The reset clears the page's mark: whether it was shown is read before it.
    const MAPI_U8 shown = m_bCHPresetShown;
    ResetState();
    m_bCHPresetShown = shown;
    const unsigned long phase = LowByte(p2);
    if (phase == 0 && !shown) {
        if (uartUi) {
            NotifyUI(0, "HideAllUIExcept", "CHPreset");
            NotifyUI(0, "CHPreset", 1);
            NotifyUI(0, "CHPresetData", "CH Preset Writing");
        }
        KillTimer(kCHPresetTimer);
        SetTimer(2000, kCHPresetTimer, E_TIMER_REPEAT);
        m_bCHPresetDone = 0;
        m_bCHPresetShown = 1;
    } else if (phase == 1) {
        m_bCHPresetDone = 1;
        if (uartUi) {
            NotifyUI(0, "CHPreset", 1);
            NotifyUI(0, "CHPresetData", "CH Preset OK");
        }
    }
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_DLTVSignalSetting(void*, void*, void*) {
    if (!m_bCHPresetDone) {
        return 1;
    }
    KillTimer(kCHPresetTimer);
    NotifyUI(0, "CHPreset", 0);
    m_bCHPresetDone = 0;
    m_bCHPresetShown = 0;
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
    return 1;
}

// ---- Clone copy (event 226) ---------------------------------------------------------------

MAPI_BOOL FactoryManager::OnEvent_CloneCopy(void*, void* p2, void*) {
    const unsigned long code = LowByte(p2);
    if (code == 1 || code == 2) {
        CloneCopyResult(static_cast<unsigned char>(code));
    } else if (code == 0 && !m_bCloneCopyMode) {
        ResetState();
        NotifyUI(0, "HideAllUIExcept", "CloneCopy");
        NotifyUI(0, "Clone-Copy", 0);
        // The page is up before the copy starts taking the set's resources.
        TvHost_Sleep(2);
        StartCloneCopy(E_CLONE_COPY_START);
    }
    return 1;
}

MAPI_BOOL FactoryManager::StartCloneCopy(EN_CLONE_COPY mode) {
    m_bCloneCopyMode = 1;
    m_pFactoryCmd->SetFactoryOSDStatus(1);
    InfoZYTAppMgr(1);
    InfoWebAppMgrHideShowPage(1, 1);
    m_bCloneCopyOK = 0;
    m_bCloneCopyBusy = 1;
    m_eCloneCopy = mode;
    return 1;
}

MAPI_BOOL FactoryManager::CloneCopyResult(unsigned char result) {
    if (result == 1) {
        m_bCloneCopyOK = 1;
        NotifyUI(0, "Clone-Copy", 1);
    } else {
        NotifyUI(0, "Clone-Copy", 2);
    }
    m_bCloneCopyBusy = 0;
    return 1;
}

MAPI_BOOL FactoryManager::ExitCloneCopy() {
    return CloseTestPage("Clone-Copy-Show", m_bCloneCopyMode);
}
