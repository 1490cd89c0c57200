// Picture, pattern and aging tests: the two burn-in raster cycles and their resume,
// pattern off and status, the input-switch display, the dynamic picture, local
// dimming and nine-point pattern pages.
#include <cstdint>
#include <cstdio>

#include "FactoryEventIds.h"
#include "FactoryListenerCodes.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "InputSourceLabels.h"
#include "MSrv_Factory_Cmd.h"

namespace {
constexpr unsigned long kAging1Timer = FactoryTimer::OnAgingMode1;
constexpr unsigned long kAging2Timer = FactoryTimer::OnAgingMode2;
constexpr unsigned long kSwitchTimer = FactoryTimer::SwitchInputSource;
constexpr unsigned long kSwitchDoneTimer = FactoryTimer::SwitchInputSourceFinished;
constexpr unsigned long kDynamicTimer = FactoryTimer::PictureDynamic;
constexpr unsigned long kLocalDimmingTimer = FactoryTimer::LocalDimming;
constexpr unsigned long kNinePointTimer = FactoryTimer::NinePointPattern;

// The aging modes the factory service keeps across a power cycle.
constexpr MAPI_U8 kStoredAgingBlackWhite = 3;
constexpr MAPI_U8 kStoredAgingColours = 4;

unsigned long Param(void* p) { return static_cast<unsigned long>(reinterpret_cast<uintptr_t>(p)); }
}  // namespace

// ---- Aging (burn-in) ---------------------------------------------------------------------

MAPI_BOOL FactoryManager::StartAgingCycle(const char* handler, unsigned long timer,
                                          MAPI_BOOL (MSrv_Factory_Cmd::*firstRaster)(),
                                          MAPI_U8 firstStep, MAPI_U8& step, MAPI_U8& flag) {
    FACTORY_LOG(FACTORY_LOG_INFO, "%s", handler);
    ResetState();
    InfoZYTAppMgr(1);
    InfoWebAppMgrHideShowPage(1, 1);
    KillTimer(timer);
    SetTimer(1000, timer, E_TIMER_REPEAT);
    (m_pFactoryCmd->*firstRaster)();
    step = firstStep;
    flag = 1;
    m_pFactoryCmd->SetFactoryOSDStatus(flag);
    return 1;
}

MAPI_BOOL FactoryManager::OnEvent_OnAgingMode1(void*, void*, void*) {
    return StartAgingCycle("OnEvent_OnAgingMode1", kAging1Timer, &MSrv_Factory_Cmd::WhiteRaster, 0,
                           m_u8AgingMode1Step, m_bAgingMode1);
}

MAPI_BOOL FactoryManager::OnTimer_OnAgingMode1(void*, void*, void*) {
    m_bAgingMode1 = 1;
    if (m_u8AgingMode1Step == 0) {
        m_pFactoryCmd->BlackRaster();
        m_u8AgingMode1Step = 1;
    } else {
        m_pFactoryCmd->WhiteRaster();
        m_u8AgingMode1Step = 0;
    }
    return 1;
}

MAPI_BOOL FactoryManager::OnEvent_OnAgingMode2(void*, void*, void*) {
    return StartAgingCycle("OnEvent_OnAgingMode2", kAging2Timer, &MSrv_Factory_Cmd::RedRaster, 1,
                           m_u8AgingMode2Step, m_bAgingMode2);
}

MAPI_BOOL FactoryManager::OnTimer_OnAgingMode2(void*, void*, void*) {
    m_bAgingMode2 = 1;
    static MAPI_BOOL (MSrv_Factory_Cmd::*const colours[])() = {
        &MSrv_Factory_Cmd::RedRaster,   &MSrv_Factory_Cmd::GreenRaster,
        &MSrv_Factory_Cmd::BlueRaster,  &MSrv_Factory_Cmd::BlackRaster,
        &MSrv_Factory_Cmd::WhiteRaster,
    };
    if (m_u8AgingMode2Step > 4) {
        return 0;
    }
    (m_pFactoryCmd->*colours[m_u8AgingMode2Step])();
    m_u8AgingMode2Step = static_cast<MAPI_U8>((m_u8AgingMode2Step + 1) % 5);
    return 1;
}

// The flag stays: the cycle's page keeps the exit keys until another page resets it.
MAPI_BOOL FactoryManager::ExitAgingMode1() {
    KillTimer(kAging1Timer);
    m_pFactoryCmd->SetFactoryOSDStatus(m_bAgingMode1);
    return 1;
}

MAPI_BOOL FactoryManager::ExitAgingMode2() {
    KillTimer(kAging2Timer);
    m_pFactoryCmd->SetFactoryOSDStatus(m_bAgingMode2);
    return 1;
}

MAPI_BOOL FactoryManager::DoAgingModeAction() {
    switch (m_pFactoryCmd->GetAgingMode()) {
        case kStoredAgingBlackWhite:
            return OnEvent_OnAgingMode1(nullptr, nullptr, nullptr);
        case kStoredAgingColours:
            return OnEvent_OnAgingMode2(nullptr, nullptr, nullptr);
        default:
            return 0;
    }
}

MAPI_BOOL FactoryManager::OnEvent_InternalPatternOff(void*, void*, void*) {
    if (m_bAgingMode1 == 1) {
        ExitAgingMode1();
    }
    if (m_bAgingMode2 == 1) {
        ExitAgingMode2();
    }
    return 1;
}

MAPI_BOOL FactoryManager::OnEvent_PatternStatus(void*, void*, void*) {
    // The line's log tools look for the aging text here.
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_OnAgingMode1");
    m_bPatternStatus = 1;
    return 1;
}

// ---- Input-source switch display ------------------------------------------------------------

MAPI_BOOL FactoryManager::OnEvent_SwitchInputSource(void*, void* p2, void*) {
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_SwitchInputSource");
    ResetState();
    NotifyUI(0, "HideAllUIExcept", "SwitchVideo1");
    const InputSourceLabel* input = FindInputSourceLabel(Param(p2));
    if (input == nullptr) {
        return 0;
    }
    FACTORY_LOG(FACTORY_LOG_INFO, "%s", input->identifier);
    NotifyUI(0, "Switch-Video1", input->label);
    KillTimer(kSwitchTimer);
    SetTimer(8000, kSwitchTimer, E_TIMER_ONESHOT);
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_SwitchInputSource(void*, void*, void*) {
    NotifyUI(0, "Switch-Video1-Show", 0);
    KillTimer(kSwitchDoneTimer);
    SetTimer(3000, kSwitchDoneTimer, E_TIMER_ONESHOT);
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_SwitchInputSourceFinished(void*, void*, void*) {
    KillTimer(kSwitchDoneTimer);
    // A line-station line, like every "(FACTORY:)" line: the console shows it in M-mode only.
    if (m_pFactoryCmd->GetFactoryMmodeStatus()) {
        printf("\n(FACTORY:) HDMI SWITCH DOWN\n");
    }
    return 1;
}

// ---- Dynamic picture, local dimming, nine-point pattern --------------------------------------

MAPI_BOOL FactoryManager::OnEvent_PictureModeDynamic(void*, void*, void*) {
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_PictureModeDynamic");
    ResetState();
    NotifyUI(0, "HideAllUIExcept", "PictureDynamic");
    NotifyUI(0, "picture-dynamic", 1);
    KillTimer(kDynamicTimer);
    SetTimer(3000, kDynamicTimer, E_TIMER_ONESHOT);
    return 1;
}

// 0 takes the page's mark down, as every "-Show"-style close of this library does.
MAPI_BOOL FactoryManager::OnTimer_PictureDynamic(void*, void*, void*) {
    NotifyUI(0, "picture-dynamic", 0);
    KillTimer(kDynamicTimer);
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
    return 1;
}

// The host draws the pattern itself; it is told when the pattern comes and goes.
MAPI_BOOL FactoryManager::OnEvent_LocalDimming(void*, void* p2, void*) {
    ResetState();
    NotifyUI(0, "HideAllUIExcept", "Local Dimming Pattern");
    if (Param(p2) == 1) {
        InfoWebAppMgrHideShowPage(1, 4);
        NotifyFactoryListener(FactoryListener::LocalDimmingOn);
        KillTimer(kLocalDimmingTimer);
        SetTimer(3000, kLocalDimmingTimer, E_TIMER_ONESHOT);
    } else {
        InfoWebAppMgrHideShowPage(0, 4);
        NotifyFactoryListener(FactoryListener::LocalDimmingOff);
    }
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_LocalDimming(void*, void*, void*) {
    KillTimer(kLocalDimmingTimer);
    return 1;
}

MAPI_BOOL FactoryManager::OnEvent_9PointPattern(void*, void* p2, void*) {
    ResetState();
    if (Param(p2) == 10) {
        Display9PointPattern(0);
    } else if (!m_b9PointPatternMode) {
        Display9PointPattern(1);
    }
    m_pFactoryCmd->SetUARTExecutingResult(1);
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_9PointPattern(void*, void*, void*) {
    KillTimer(kNinePointTimer);
    return 1;
}

// The pattern is a page of the factory UI; while it is up the exit key takes it down.
MAPI_BOOL FactoryManager::Display9PointPattern(MAPI_BOOL on) {
    if (on) {
        NotifyUI(0, "HideAllUIExcept", "9-Point Pattern");
        m_b9PointPatternMode = 1;
        InfoZYTAppMgr(1);
        InfoWebAppMgrHideShowPage(1, 1);
    } else {
        NotifyUI(0, "9-Point-Pattern-Show", 0);
        m_b9PointPatternMode = 0;
        InfoZYTAppMgr(0);
        InfoWebAppMgrHideShowPage(0, 1);
    }
    return 1;
}
