// Network tests of the line: the wireless LAN module, wake-on-WLAN, the wired LAN
// (with its counter of passed tests) and the wireless MAC address; and the
// access-point scan the line uses to check the antenna.
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "FactoryEventIds.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Factory_Default.h"
#include "MSrv_Network.h"

namespace {

constexpr unsigned long kWLANTimer = FactoryTimer::FactoryWLANTest;
constexpr unsigned long kWOWTimer = FactoryTimer::FactoryWakeOnWLAN;
constexpr unsigned long kWOWPollTimer = FactoryTimer::FactoryWakeOnWLANTesting;
constexpr unsigned long kDLNAMonitorTimer = FactoryTimer::DLNATest;
constexpr unsigned long kDLNACloseTimer = FactoryTimer::DLNAAlive;
constexpr unsigned long kMACTimer = FactoryTimer::MACaddressCheck;

// Factory store items of the wired LAN test.
constexpr unsigned short kItemDLNACount = 69;
constexpr unsigned short kItemDLNAMonitor = 3565;

enum WLANPhase : uintptr_t { kWLANPass = 0, kWLANFail = 1, kWLANRun = 2, kWLANPreparing = 3 };
enum WOWStatus : MAPI_U8 { kWOWPassed = 0, kWOWFailed = 1, kWOWTesting = 2 };

// At most this many access points are listed; a line station sees a handful.
constexpr int kMaxAccessPoints = 32;

void* Param(uintptr_t value) { return reinterpret_cast<void*>(value); }

const char* WLANErrorText(MAPI_U8 code) {
    switch (code) {
        case 0:
            return "RSSI NG";
        case 1:
            return "Communication error";
        case 2:
            return "Other error";
        default:
            return "";
    }
}

}  // namespace

void FactoryManager::WLANSignalText(char* text, size_t size) {
    int first = 0;
    int second = 0;
    m_pFactoryCmd->GetRSSI(&first, &second);
    snprintf(text, size, "%d, %d", first, second);
}

MAPI_BOOL FactoryManager::OnEvent_FactoryWLANTest(void* p1, void* p2, void* p3) {
    const uintptr_t phase = reinterpret_cast<uintptr_t>(p2);
    printf("~~ WLANTest1=%d, WLANTest=%d, WLANTest3=%d \n",
           static_cast<int>(reinterpret_cast<uintptr_t>(p1)), static_cast<int>(phase),
           static_cast<int>(reinterpret_cast<uintptr_t>(p3)));
    ResetState();
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_FactoryWLANTest");
    puts("~~ OnEvent_FactoryWLANTest");
    if (!m_bIsWLANTesting) {
        ResetState();
        NotifyUI(0, "HideAllUIExcept", "WLANTest");
        m_bIsWLANTesting = 1;
        m_pFactoryCmd->SetFactoryOSDStatus(1);
    }
    char signal[32];
    switch (phase) {
        case kWLANPass:
            m_u8WLANResult = 1;
            FACTORY_LOG(FACTORY_LOG_INFO, "~~ WLAN OK");
            puts("~~ WLAN OK");
            WLANSignalText(signal, sizeof(signal));
            NotifyUI(0, "WLANTest-Show", 0L);
            NotifyUI(0, "WLANTest-NG-Show", 0L);
            NotifyUI(0, "WLANTest-OK-RSSI", signal);
            break;
        case kWLANRun:
            m_u8WLANResult = 1;
            FACTORY_LOG(FACTORY_LOG_INFO, "~~ WLAN TESTING");
            puts("~~ WLAN TESTING");
            NotifyUI(0, "WLANPrepare-Show", 0L);
            NotifyUI(0, "WLANTest-TEST-RSSI", "");
            // The full test runs here, on the event thread, and its verdict comes
            // back through this handler as the station's own would.
            return OnEvent_FactoryWLANTest(
                nullptr, Param(m_pFactoryCmd->WLAN_Full_Test() ? kWLANPass : kWLANFail), nullptr);
        case kWLANPreparing:
            FACTORY_LOG(FACTORY_LOG_INFO, "~~ WLAN PREPARING");
            puts("~~ WLAN PREPARING");
            NotifyUI(0, "WLAN-PREPARING-RSSI", "");
            return 1;
        default: {
            m_u8WLANResult = 0;
            FACTORY_LOG(FACTORY_LOG_INFO, "~~ WLAN NG");
            puts("~~ WLAN NG");
            const MAPI_U8 error = m_pFactoryCmd->GetWLANErrorMessage();
            FACTORY_LOG(FACTORY_LOG_INFO, "~~ u8ErrMsg=%d", error);
            WLANSignalText(signal, sizeof(signal));
            NotifyUI(0, "WLANTest-Show", 0L);
            NotifyUI(0, "WLANTest-OK-Show", 0L);
            NotifyUI(0, "WLANTest-NG-RSSI", signal);
            NotifyUI(0, "WLANTest-NG-Error", WLANErrorText(error));
            break;
        }
    }
    KillTimer(kWLANTimer);
    SetTimer(10000, kWLANTimer, E_TIMER_ONESHOT);
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_FactoryWLANTest(void*, void*, void*) {
    m_bIsWLANTesting = 0;
    m_pFactoryCmd->SetFactoryOSDStatus(m_bIsWLANTesting);
    if (m_u8WLANResult == 1) {
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ /WLANTest-OK-Show/");
        NotifyUI(0, "WLANTest-OK-Show", 0L);
    } else {
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ /WLANTest-NG-Show/");
        NotifyUI(0, "WLANTest-NG-Show", 0L);
    }
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
    return 1;
}

MAPI_BOOL FactoryManager::OnEvent_FactoryWakeOnWLAN(void*, void* p2, void*) {
    const uintptr_t phase = reinterpret_cast<uintptr_t>(p2);
    ResetState();
    // The set's logs name the wireless LAN test here; service tools expect that.
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_FactoryWLANTest");
    printf("~~ OnEvent_FactoryWakeOnWLAN\n");
    if (!m_bIsWakeOnWLAN) {
        ResetState();
        NotifyUI(0, "HideAllUIExcept", "WOWonWLANTest");
        m_bIsWakeOnWLAN = 1;
        m_pFactoryCmd->SetFactoryOSDStatus(m_bIsWakeOnWLAN);
    }
    switch (phase) {
        case 0:
        case 1: {
            const bool ok = phase == 0;
            printf(ok ? "~~ Wake On WLAN OK\n" : "~~ Wake On WLAN NG\n");
            m_u8WLANResult = ok ? 1 : 0;
            NotifyUI(0, "WOWTest-Testing-Show", 0L);
            if (ok) {
                NotifyUI(0, "WOWTest-OK-Show", "WOW Test : OK");
            } else {
                NotifyUI(0, "WOWTest-NG-Show", "WOW Test : NG");
            }
            KillTimer(kWOWTimer);
            SetTimer(10000, kWOWTimer, E_TIMER_ONESHOT);
            break;
        }
        case 2:
            printf("~~ Wake On WLAN Testing\n");
            NotifyUI(0, "WOWTest-Testing-Show", "WOW Test : Testing");
            m_pFactoryCmd->WakeOnWLANForFactoryThreadStart();
            KillTimer(kWOWPollTimer);
            SetTimer(1000, kWOWPollTimer, E_TIMER_REPEAT);
            break;
        default:
            break;
    }
    return 1;
}

// The test runs on a platform thread; its status is polled each second.
MAPI_BOOL FactoryManager::OnTimer_FactoryWakeOnWLANTesting(void*, void*, void*) {
    const MAPI_U8 status = m_pFactoryCmd->GetWOWTestedStatus();
    if (status == kWOWTesting) {
        return 0;
    }
    KillTimer(kWOWPollTimer);
    if (status == kWOWPassed || status == kWOWFailed) {
        OnEvent_FactoryWakeOnWLAN(nullptr, Param(status), nullptr);
    }
    // Any other status leaves the page on "Testing" until an exit key.
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_FactoryWakeOnWLAN(void*, void*, void*) {
    m_bIsWakeOnWLAN = 0;
    m_pFactoryCmd->SetFactoryOSDStatus(m_bIsWakeOnWLAN);
    if (m_u8WLANResult == 1) {
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ /WOWTest-OK-Show/");
        NotifyUI(0, "WOWTest-OK-Show", 0L);
    } else {
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ /WOWTest-NG-Show/");
        NotifyUI(0, "WOWTest-NG-Show", 0L);
    }
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
    return 1;
}

// ---- Wired LAN ------------------------------------------------------------------------

MAPI_BOOL FactoryManager::OnEvent_DLNATest(void*, void*, void*) {
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_DLNATest");
    ResetState();
    return FactoryDLNAStatusCheck();
}

MAPI_BOOL FactoryManager::FactoryDLNAStatusCheck() {
    NotifyUI(0, "HideAllUIExcept", "DLNATest");
    if (MSrv_Control::GetInstance()->GetMSrvNetwork()->DetectNetStatusForKeyWriting()) {
        NotifyUI(0, "DLNA-Test", "Wired LAN Test : OK");
        ModifyDLNACount();
    } else {
        NotifyUI(0, "DLNA-Test-NG", "Wired LAN Test : NG");
    }
    m_bDLNATestMode = 1;
    // Repeating, as the platform expects; its handler kills it on the first tick.
    SetTimer(8000, kDLNACloseTimer, E_TIMER_REPEAT);
    return 1;
}

// Passed tests count 1 to 255 and then start again at 1.
MAPI_BOOL FactoryManager::ModifyDLNACount() {
    unsigned char count = 0;
    m_pFactoryDefault->GetFactoryData(kItemDLNACount, &count);
    if (count > 254) {
        count = 0;
    }
    ++count;
    return m_pFactoryDefault->SetFactoryData(kItemDLNACount, count);
}

MAPI_BOOL FactoryManager::OnTimer_DLNATest(void*, void*, void*) {
    if (!m_pFactoryCmd->IsDLNAMonitorEnabled()) {
        return 1;
    }
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ Monitor DLNA Status ");
    m_pFactoryDefault->GetFactoryData(kItemDLNAMonitor, &m_u8DLNAMonitorStatus);
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ Monitor DLNA Status =%d ", m_u8DLNAMonitorStatus);
    const bool overdue = m_pFactoryCmd->GetDLNAMonitorCount() > 30 && m_u8DLNAMonitorStatus != 0;
    const bool reported = m_u8DLNAMonitorStatus >= 1 && m_u8DLNAMonitorStatus <= 4;
    if (!reported && !overdue) {
        return 1;
    }
    if (overdue) {
        m_u8DLNAMonitorStatus = m_u8DLNAMonitorStatus == 2 ? 2 : 3;
    }
    return FactoryDLNAStatusCheck();
}

MAPI_BOOL FactoryManager::OnTimer_DLNAAlive(void*, void*, void*) {
    NotifyUI(0, "DLNA-Test-show", 0L);
    KillTimer(kDLNACloseTimer);
    m_bDLNATestMode = 0;
    m_pFactoryCmd->SetFactoryOSDStatus(m_bDLNATestMode);
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
    return 1;
}

MAPI_BOOL FactoryManager::ExitDLNATest() {
    NotifyUI(0, "DLNA-Test-show", 0L);
    KillTimer(kDLNAMonitorTimer);
    KillTimer(kDLNACloseTimer);
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
    m_bDLNATestMode = 0;
    m_pFactoryCmd->SetFactoryOSDStatus(m_bDLNATestMode);
    return 1;
}

// ---- Wireless MAC ---------------------------------------------------------------------

MAPI_BOOL FactoryManager::OnEvent_MACaddressCheck(void*, void*, void*) {
    ResetState();
    const char* mac = FactoryGetWLANMACAddress();
    NotifyUI(0, "HideAllUIExcept", "MAC_Chk");
    // Only the all-zero address means no module; an empty text is a read that failed
    // after the module answered, and passes.
    const bool missing = mac != nullptr && std::strcmp(mac, "00:00:00:00:00:00") == 0;
    NotifyUI(0, "MACaddressCheck",
             missing ? "MAC Address(Wireless) : NG" : "MAC Address(Wireless) : OK");
    KillTimer(kMACTimer);
    SetTimer(2000, kMACTimer, E_TIMER_ONESHOT);
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_MACaddressCheck(void*, void*, void*) {
    NotifyUI(0, "MACaddressCheck_Finish-Show", 0L);
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
    return 1;
}

// ---- Access-point scan ----------------------------------------------------------------
//
// Our own page, in the manner of the timed commands: page "WLANAPScan", the text
// "Scanning" under the key "WLAN-AP-Scan", then the platform's scan
// (MSrv_Network::ScanWiFiAccessPoints, synchronous like the full WLAN test), one row
// per access point through DisplayAPListUI ("WLAN-AP-Row" with "SSID\tsignal%"),
// and "WLAN-AP-Scan" with the count. No timer: the operator reads the list and
// closes it with the exit key, which the key dispatcher hands to DisplayAPListUI.

MAPI_BOOL FactoryManager::OnEvent_WLANAPScan(void*, void*, void*) {
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_WLANAPScan");
    OpenPage("WLANAPScan");
    NotifyUI(0, "WLAN-AP-Scan", "Scanning");
    m_bAPListShown = 1;
    ST_WIFI_AP_INFO found[kMaxAccessPoints];
    int count = MSrv_Control::GetInstance()->GetMSrvNetwork()->ScanWiFiAccessPoints(
        found, kMaxAccessPoints);
    if (count < 0) {
        count = 0;
    }
    if (count > kMaxAccessPoints) {
        count = kMaxAccessPoints;
    }
    for (int i = 0; i < count; ++i) {
        char ssid[sizeof(found[i].szSSID)];
        std::memcpy(ssid, found[i].szSSID, sizeof(ssid));
        ssid[sizeof(ssid) - 1] = '\0';
        char signal[8];
        snprintf(signal, sizeof(signal), "%u%%", found[i].u8Signal);
        DisplayAPListUI(ssid, signal);
    }
    char summary[32];
    snprintf(summary, sizeof(summary), "Access points : %d", count);
    NotifyUI(0, "WLAN-AP-Scan", summary);
    return 1;
}

// A row of the list; two null texts close the list and give the screen back.
MAPI_BOOL FactoryManager::DisplayAPListUI(char* ssid, char* signal) {
    if (ssid == nullptr && signal == nullptr) {
        NotifyUI(0, "WLANAPScan-Show", 0L);
        InfoZYTAppMgr(0);
        InfoWebAppMgrHideShowPage(0, 1);
        return 1;
    }
    std::string row = ssid != nullptr ? ssid : "";
    row += '\t';
    row += signal != nullptr ? signal : "";
    NotifyUI(0, "WLAN-AP-Row", row.c_str());
    return 1;
}
