// The timed one-shot setting commands of the production line: each shows its page
// with a "writing" text, makes its platform call, shows the result after a delay
// and closes. The members are rows of TimedCommandTable.cpp walked by one routine;
// the few that do not fit a row (digital audio, USB over-current, temperature
// check, IR blaster, white window) are small handlers of their own.
#include <cstdint>
#include <cstdio>

#include "FactoryEventIds.h"
#include "FactoryListenerCodes.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_SSSound.h"
#include "MSrv_System_Database.h"
#include "TimedCommand.h"

namespace {

MAPI_U8 ParamByte(void* p) { return static_cast<MAPI_U8>(reinterpret_cast<uintptr_t>(p)); }

constexpr MAPI_U8 kDigitalAudioCommand = 230;
constexpr MAPI_U8 kSpdifPcm = 0;
constexpr MAPI_U8 kSpdifAuto = 2;
constexpr unsigned int kWhiteWindowEvent = 25;

}  // namespace

// ---- The pattern -------------------------------------------------------------------------

MAPI_BOOL FactoryManager::RunTimedCommand(const TimedCommand& row, MAPI_U8 param,
                                          const char* text) {
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_%s", row.name);
    if (row.resetState) {
        ResetState();
    }
    NotifyUI(0, "HideAllUIExcept", row.page);
    const char* key = row.key;
    const char* shown = text != nullptr ? text : row.writing;
    const bool arm = row.choose == nullptr || row.choose(param, key, shown);
    if (key != nullptr && shown != nullptr) {
        NotifyUI(0, key, shown);
    }
    if (row.action != nullptr) {
        row.action();
    }
    if (arm) {
        // Killed first, so that a repeated command restarts its sequence.
        KillTimer(row.first.timer);
        SetTimer(row.first.periodMs, row.first.timer, E_TIMER_ONESHOT);
    }
    return 1;
}

MAPI_BOOL FactoryManager::TimedCommandTimer(const TimedCommand& row) {
    if (row.second.timer == 0) {
        return TimedCommandClose(row);
    }
    if (row.beforeFinished != nullptr && !row.beforeFinished()) {
        return 1;
    }
    NotifyUI(0, row.key, row.finished);
    KillTimer(row.second.timer);
    SetTimer(row.second.periodMs, row.second.timer, E_TIMER_ONESHOT);
    return 1;
}

MAPI_BOOL FactoryManager::TimedCommandClose(const TimedCommand& row) {
    NotifyUI(0, row.showKey, 0L);
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
    if (row.killOnClose) {
        KillTimer(row.second.timer != 0 ? row.second.timer : row.first.timer);
    }
    return 1;
}

// ---- Members of the table ----------------------------------------------------------------

MAPI_BOOL FactoryManager::OnEvent_SelectSpeakerTypeToSNC(void*, void* p2, void*) {
    return RunTimedCommand(timed::SpeakerSNC, ParamByte(p2));
}
MAPI_BOOL FactoryManager::OnTimer_SelectSpeakerTypeToSNC(void*, void*, void*) {
    return TimedCommandTimer(timed::SpeakerSNC);
}
MAPI_BOOL FactoryManager::OnTimer_SelectSpeakerTypeToSNCFinished(void*, void*, void*) {
    return TimedCommandClose(timed::SpeakerSNC);
}
MAPI_BOOL FactoryManager::OnEvent_SelectSpeakerTypeToIEC(void*, void* p2, void*) {
    return RunTimedCommand(timed::SpeakerIEC, ParamByte(p2));
}
MAPI_BOOL FactoryManager::OnTimer_SelectSpeakerTypeToIEC(void*, void*, void*) {
    return TimedCommandTimer(timed::SpeakerIEC);
}
MAPI_BOOL FactoryManager::OnTimer_SelectSpeakerTypeToIECFinished(void*, void*, void*) {
    return TimedCommandClose(timed::SpeakerIEC);
}
MAPI_BOOL FactoryManager::OnEvent_SelectSpeakerTypeToGW(void*, void* p2, void*) {
    return RunTimedCommand(timed::SpeakerGW, ParamByte(p2));
}
MAPI_BOOL FactoryManager::OnTimer_SelectSpeakerTypeToGW(void*, void*, void*) {
    return TimedCommandTimer(timed::SpeakerGW);
}
MAPI_BOOL FactoryManager::OnTimer_SelectSpeakerTypeToGWFinished(void*, void*, void*) {
    return TimedCommandClose(timed::SpeakerGW);
}
MAPI_BOOL FactoryManager::OnEvent_SelectSpeakerTypeToEstec(void*, void* p2, void*) {
    return RunTimedCommand(timed::SpeakerEstec, ParamByte(p2));
}
MAPI_BOOL FactoryManager::OnTimer_SelectSpeakerTypeToEstec(void*, void*, void*) {
    return TimedCommandTimer(timed::SpeakerEstec);
}
MAPI_BOOL FactoryManager::OnTimer_SelectSpeakerTypeToEstecFinished(void*, void*, void*) {
    return TimedCommandClose(timed::SpeakerEstec);
}
MAPI_BOOL FactoryManager::OnEvent_SetStoreToNone(void*, void* p2, void*) {
    return RunTimedCommand(timed::StoreNone, ParamByte(p2));
}
MAPI_BOOL FactoryManager::OnTimer_SetStoreToNone(void*, void*, void*) {
    return TimedCommandTimer(timed::StoreNone);
}
MAPI_BOOL FactoryManager::OnTimer_SetStoreToNoneFinished(void*, void*, void*) {
    return TimedCommandClose(timed::StoreNone);
}
MAPI_BOOL FactoryManager::OnEvent_SetStoreToBestBuy(void*, void* p2, void*) {
    return RunTimedCommand(timed::StoreBestBuy, ParamByte(p2));
}
MAPI_BOOL FactoryManager::OnTimer_SetStoreToBestBuy(void*, void*, void*) {
    return TimedCommandTimer(timed::StoreBestBuy);
}
MAPI_BOOL FactoryManager::OnTimer_SetStoreToBestBuyFinished(void*, void*, void*) {
    return TimedCommandClose(timed::StoreBestBuy);
}
MAPI_BOOL FactoryManager::OnEvent_SetStoreToCostco(void*, void* p2, void*) {
    return RunTimedCommand(timed::StoreCostco, ParamByte(p2));
}
MAPI_BOOL FactoryManager::OnTimer_SetStoreToCostco(void*, void*, void*) {
    return TimedCommandTimer(timed::StoreCostco);
}
MAPI_BOOL FactoryManager::OnTimer_SetStoreToCostcoFinished(void*, void*, void*) {
    return TimedCommandClose(timed::StoreCostco);
}
MAPI_BOOL FactoryManager::OnEvent_SetStoreToWalmart(void*, void* p2, void*) {
    return RunTimedCommand(timed::StoreWalmart, ParamByte(p2));
}
MAPI_BOOL FactoryManager::OnTimer_SetStoreToWalmart(void*, void*, void*) {
    return TimedCommandTimer(timed::StoreWalmart);
}
MAPI_BOOL FactoryManager::OnTimer_SetStoreToWalmartFinished(void*, void*, void*) {
    return TimedCommandClose(timed::StoreWalmart);
}
MAPI_BOOL FactoryManager::OnEvent_ShipoutSetting(void*, void* p2, void*) {
    return RunTimedCommand(timed::ShipoutSetting, ParamByte(p2));
}
MAPI_BOOL FactoryManager::OnTimer_ShipoutSetting(void*, void*, void*) {
    return TimedCommandTimer(timed::ShipoutSetting);
}
MAPI_BOOL FactoryManager::OnTimer_CCompanyChannelPreset(void*, void*, void*) {
    return TimedCommandClose(timed::CCompanyChannelPreset);
}
MAPI_BOOL FactoryManager::OnEvent_FullPowerMode(void*, void* p2, void*) {
    return RunTimedCommand(timed::FullPowerMode, ParamByte(p2));
}
MAPI_BOOL FactoryManager::OnTimer_FullPowerMode(void*, void*, void*) {
    return TimedCommandTimer(timed::FullPowerMode);
}
MAPI_BOOL FactoryManager::OnEvent_ClearPowerOnTime(void*, void* p2, void*) {
    return RunTimedCommand(timed::ClearPowerOnTime, ParamByte(p2));
}
MAPI_BOOL FactoryManager::OnTimer_ClearPowerOnTime(void*, void*, void*) {
    return TimedCommandTimer(timed::ClearPowerOnTime);
}
MAPI_BOOL FactoryManager::OnEvent_HDMIARCOutput(void*, void* p2, void*) {
    return RunTimedCommand(timed::HDMIARCOutput, ParamByte(p2));
}
MAPI_BOOL FactoryManager::OnTimer_HDMIARCOutput(void*, void*, void*) {
    return TimedCommandTimer(timed::HDMIARCOutput);
}
MAPI_BOOL FactoryManager::OnEvent_NetworkDefaultMAC(void*, void* p2, void*) {
    return RunTimedCommand(timed::NetworkDefaultMAC, ParamByte(p2));
}
MAPI_BOOL FactoryManager::OnTimer_DefaultMAC(void*, void*, void*) {
    return TimedCommandTimer(timed::NetworkDefaultMAC);
}
MAPI_BOOL FactoryManager::OnTimer_MACFinished(void*, void*, void*) {
    return TimedCommandClose(timed::NetworkDefaultMAC);
}
MAPI_BOOL FactoryManager::OnEvent_WriteProtect(void*, void* p2, void*) {
    return RunTimedCommand(timed::WriteProtect, ParamByte(p2));
}
MAPI_BOOL FactoryManager::OnTimer_WriteProtect(void*, void*, void*) {
    return TimedCommandTimer(timed::WriteProtect);
}
MAPI_BOOL FactoryManager::OnEvent_DefaultIPAddress(void*, void* p2, void*) {
    return RunTimedCommand(timed::DefaultIPAddress, ParamByte(p2));
}
MAPI_BOOL FactoryManager::OnTimer_DefaultIPAddress(void*, void*, void*) {
    return TimedCommandTimer(timed::DefaultIPAddress);
}

// The station sends the four code bytes packed in the event's second argument,
// the first byte highest; the page shows them as one hexadecimal code.
MAPI_BOOL FactoryManager::OnEvent_WhiteWindowCodeInformation(void*, void* p2, void*) {
    const uintptr_t packed = reinterpret_cast<uintptr_t>(p2);
    for (int i = 0; i < 4; ++i) {
        m_au8WhiteWindowCode[i] = static_cast<MAPI_U8>(packed >> (24 - 8 * i));
    }
    char text[9];
    snprintf(text, sizeof(text), "%02X%02X%02X%02X", m_au8WhiteWindowCode[0],
             m_au8WhiteWindowCode[1], m_au8WhiteWindowCode[2], m_au8WhiteWindowCode[3]);
    return RunTimedCommand(timed::WhiteWindowCodeInformation, 0, text);
}
MAPI_BOOL FactoryManager::OnTimer_WhiteWindowCodeInformation(void*, void*, void*) {
    return TimedCommandTimer(timed::WhiteWindowCodeInformation);
}

// ---- Members of their own ----------------------------------------------------------------

// The open waits one tick of its timer, so that the station's event has returned
// before the platform opens the window; the byte to open with is the event's parameter.
MAPI_BOOL FactoryManager::OnEvent_PrepareOpenWhiteWindow(void*, void* p2, void*) {
    m_u8WhiteWindowOpenCode = ParamByte(p2);
    KillTimer(FactoryTimer::PrepareOpenWhiteWindow);
    SetTimer(100, FactoryTimer::PrepareOpenWhiteWindow, E_TIMER_REPEAT);
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_PrepareOpenWhiteWindow(void*, void*, void*) {
    FACTORY_LOG(FACTORY_LOG_INFO,
                "####### g_u8Code1 = %d, g_u8Code2 = %d, g_u8Code3 = %d, g_u8Code4 = %d \n",
                m_au8WhiteWindowCode[0], m_au8WhiteWindowCode[1], m_au8WhiteWindowCode[2],
                m_au8WhiteWindowCode[3]);
    m_pFactoryCmd->_HandleFactoryEvent(kWhiteWindowEvent, m_u8WhiteWindowOpenCode, 0);
    KillTimer(FactoryTimer::PrepareOpenWhiteWindow);
    return 1;
}

MAPI_BOOL FactoryManager::OnEvent_OverCurrentUSB(void*, void* p2, void*) {
    const MAPI_U8 param = ParamByte(p2);
    if (param == 0 || param == 1) {
        InfoWebAppMgrHideShowPage(1, 4);
        ResetState();
        NotifyUI(0, "HideAllUIExcept", "OverCurrentUSBOut");
        NotifyUI(0, "OverCurrent-USB", param == 0 ? "MHL Overcurrent" : "USB Overcurrent");
        return 1;
    }
    if (param == 2) {
        NotifyUI(0, "OverCurrent-USB-Show", 0L);
        InfoWebAppMgrHideShowPage(0, 4);
        return 1;
    }
    // No such over-current report: not ours to handle.
    return 0;
}

MAPI_BOOL FactoryManager::OnTimer_OverCurrentUSB(void*, void*, void*) {
    NotifyUI(0, "OverCurrent-USB-Show", 0L);
    InfoZYTAppMgrForVersion(0);
    return 1;
}

void FactoryManager::InitDigitalAudioOut() { m_u8DigitalAudioToggle = 0; }

// Each command of the station's digital-audio code switches the output between PCM
// and automatic; any other code only brings the page up.
MAPI_BOOL FactoryManager::OnEvent_DigitalAudioOut(void*, void*, void*) {
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_DigitalAudioOut");
    ResetState();
    NotifyUI(0, "HideAllUIExcept", "DigitalAudioOut");
    m_bDigitalAudioOutMode = 1;
    InfoZYTAppMgr(1);
    InfoWebAppMgrHideShowPage(1, 1);
    if (m_pFactoryCmd->GetFactoryCmdCode() != kDigitalAudioCommand) {
        return 1;
    }
    const bool pcm = m_u8DigitalAudioToggle == 0;
    const MAPI_U8 mode = pcm ? kSpdifPcm : kSpdifAuto;
    NotifyUI(0, "Digital-Audio-Out", pcm ? "Audio Format : PCM" : "Audio Format : Auto");
    MSrv_Control* control = MSrv_Control::GetInstance();
    control->GetMSrvSSSound()->SetSPDIFmode(mode);
    m_u8DigitalAudioToggle = pcm ? 1 : 0;
    MSrv_System_Database* database = control->GetMSrvSystemDatabase();
    ST_USER_SYSTEM_SETTING setting{};
    database->GetUserSystemSetting(&setting);
    setting.enSPDIFMODE = mode;
    database->SetUserSystemSetting(&setting);
    m_u8FactoryOSDStatus = 1;
    m_pFactoryCmd->SetFactoryOSDStatus(1);
    return 1;
}

// The key dispatcher gives the screen back after this. The factory OSD status stays
// on: the next page's reset switches it off, as for the other pages of this table.
MAPI_BOOL FactoryManager::ExitDigitalAudioOut() {
    NotifyUI(0, "Digital-Audio-Out-Show", 0L);
    m_bDigitalAudioOutMode = 0;
    return 1;
}

// 1 starts the check and its page; 0 ends it at the next tick; the page stays up as
// long as the station's check runs.
MAPI_BOOL FactoryManager::OnEvent_TempIOCheck(void*, void* p2, void*) {
    const MAPI_U8 param = ParamByte(p2);
    if (param == 0) {
        m_u8TempIOCheckRunning = 0;
        return 1;
    }
    if (param != 1) {
        return 0;
    }
    const TimedCommand& row = timed::TempIOCheck;
    ResetState();
    m_u8TempIOCheckRunning = 1;
    NotifyUI(0, "HideAllUIExcept", row.page);
    NotifyUI(0, row.key, row.writing);
    KillTimer(row.first.timer);
    SetTimer(row.first.periodMs, row.first.timer, E_TIMER_REPEAT);
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_TempIOCheck(void*, void*, void*) {
    if (m_u8TempIOCheckRunning) {
        return 1;
    }
    return TimedCommandClose(timed::TempIOCheck);
}

// The IR blaster is checked by the host, which owns the blaster.
MAPI_BOOL FactoryManager::OnEvent_StarIRBlasterTest(void*, void*, void*) {
    printf("\n~~ [FactoryManager::OnEvent_StarIRBlasterTest] \n");
    ResetState();
    if (g_pFactoryListener.load() != nullptr) {
        printf(
            "\n~~ 2 [FactoryManager::OnEvent_StarIRBlasterTest] g_pFactoryListener is NOT "
            "NULL \n");
        NotifyFactoryListener(FactoryListener::IrBlasterTest);
    } else {
        printf("\n~~ 3 [FactoryManager::OnEvent_StarIRBlasterTest] g_pFactoryListener is NULL \n");
    }
    return 1;
}
