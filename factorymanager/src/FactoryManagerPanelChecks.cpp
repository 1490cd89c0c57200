// Three line checks of our own design: the ambient light sensor's reading, the
// backlight check and the audio balance check. Each is a page that stays until its
// exit key, like the aging pages.
//
// Platform calls, chosen so that a check never outlives its page: the sensor is only
// read (MSrv_ActiveBacklight::GetLightSensorValue); the backlight and the balance are
// set on the live panel and sound only (MSrv_ActiveBacklight::SetBacklight,
// MSrv_SSSound::SetBalance), never in the user's saved settings, and the exit key
// puts back what was there before. The fixture steps a check by sending its event
// again, so neither check needs a timer of its own.
#include "FactoryEventIds.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_ActiveBacklight.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_SSSound.h"

namespace {
constexpr unsigned long kSensorTimer = FactoryTimer::AutoBrightnessSensorValue;

// Bright first, so that the operator sees the panel light up before it dims.
constexpr MAPI_U8 kBacklightSteps[] = {100, 75, 50, 25, 0};

struct BalanceStep {
    MAPI_U8 balance;
    const char* text;
};
// Each speaker alone, then both.
constexpr BalanceStep kBalanceSteps[] = {{0, "Left"}, {100, "Right"}, {50, "Center"}};

MSrv_ActiveBacklight* Backlight() { return MSrv_Control::GetInstance()->GetMSrvActiveBacklight(); }
MSrv_SSSound* Sound() { return MSrv_Control::GetInstance()->GetMSrvSSSound(); }
}  // namespace

void FactoryManager::OpenTestPage(const char* page) {
    ResetState();
    NotifyUI(0, "HideAllUIExcept", page);
    m_pFactoryCmd->SetFactoryOSDStatus(1);
    InfoZYTAppMgr(1);
    InfoWebAppMgrHideShowPage(1, 1);
}

void FactoryManager::OpenPage(const char* page) {
    ResetState();
    NotifyUI(0, "HideAllUIExcept", page);
    InfoZYTAppMgr(1);
    InfoWebAppMgrHideShowPage(1, 1);
}

MAPI_BOOL FactoryManager::CloseTestPage(const char* showCmd, MAPI_U8& mode) {
    NotifyUI(0, showCmd, 0);
    mode = 0;
    m_pFactoryCmd->SetFactoryOSDStatus(0);
    return 1;
}

MAPI_BOOL FactoryManager::CloseEditorPage(const char* showCmd, MAPI_U8& mode) {
    mode = 0;
    m_pFactoryCmd->SetFactoryOSDStatus(0);
    NotifyUI(0, showCmd, 0);
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
    return 1;
}

// ---- Auto-brightness sensor value (event 194, timer 3) ---------------------------------------

MAPI_BOOL FactoryManager::OnEvent_AutoBrightnessSensorValue(void*, void*, void*) {
    OpenTestPage("AutoBrightnessSensorValue");
    m_bAutoBrightnessSensorValueMode = 1;
    ShowAutoBrightnessSensorValue();
    KillTimer(kSensorTimer);
    SetTimer(1000, kSensorTimer, E_TIMER_REPEAT);
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_AutoBrightnessSensorValue(void*, void*, void*) {
    // Another page has taken the screen: stop reading.
    if (!m_bAutoBrightnessSensorValueMode) {
        KillTimer(kSensorTimer);
        return 0;
    }
    ShowAutoBrightnessSensorValue();
    return 1;
}

void FactoryManager::ShowAutoBrightnessSensorValue() {
    MAPI_U16 value = 0;
    if (Backlight()->GetLightSensorValue(&value)) {
        NotifyUI(0, "AutoBrightness-Sensor-Value", value);
    } else {
        NotifyUI(0, "AutoBrightness-Sensor-Value", "NG");
    }
}

MAPI_BOOL FactoryManager::ExitAutoBrightnessSensorValueMode() {
    KillTimer(kSensorTimer);
    return CloseTestPage("AutoBrightnessSensorValue-Show", m_bAutoBrightnessSensorValueMode);
}

// The sensor page without a value has no event in this library; its exit key still
// closes it cleanly should the platform open it.
MAPI_BOOL FactoryManager::ExitAutoBrightnessSensor() {
    return CloseTestPage("AutoBrightnessSensor-Show", m_bAutoBrightnessSensorMode);
}

// ---- Backlight check (event 195) -----------------------------------------------------------

MAPI_BOOL FactoryManager::OnEvent_BackLightCheck(void*, void*, void*) {
    if (m_bBackLightLevelMode) {
        m_u8BacklightStep = static_cast<MAPI_U8>((m_u8BacklightStep + 1) % sizeof(kBacklightSteps));
    } else {
        OpenTestPage("BackLightCheck");
        m_bBackLightLevelMode = 1;
        m_u8SavedBacklight = Backlight()->GetBacklight();
        m_u8BacklightStep = 0;
    }
    const MAPI_U8 level = kBacklightSteps[m_u8BacklightStep];
    Backlight()->SetBacklight(level);
    NotifyUI(0, "BackLight-Level", level);
    return 1;
}

MAPI_BOOL FactoryManager::ExitBackLightLevel() {
    Backlight()->SetBacklight(m_u8SavedBacklight);
    return CloseTestPage("BackLightCheck-Show", m_bBackLightLevelMode);
}

// ---- Audio balance check (event 198) ---------------------------------------------------------

MAPI_BOOL FactoryManager::OnEvent_AudioBalanceCheck(void*, void*, void*) {
    if (m_bAudioBalanceCheckMode) {
        m_u8BalanceStep = static_cast<MAPI_U8>((m_u8BalanceStep + 1) %
                                               (sizeof(kBalanceSteps) / sizeof(kBalanceSteps[0])));
    } else {
        OpenTestPage("AudioBalanceCheck");
        m_bAudioBalanceCheckMode = 1;
        m_u8SavedBalance = Sound()->GetBalance();
        m_u8BalanceStep = 0;
    }
    const BalanceStep& step = kBalanceSteps[m_u8BalanceStep];
    Sound()->SetBalance(step.balance);
    NotifyUI(0, "Audio-Balance", step.text);
    return 1;
}

MAPI_BOOL FactoryManager::ExitAudioBalanceCheck() {
    Sound()->SetBalance(m_u8SavedBalance);
    return CloseTestPage("AudioBalanceCheck-Show", m_bAudioBalanceCheckMode);
}
