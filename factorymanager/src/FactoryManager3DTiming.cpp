// The 3D glasses timing editor: shutter lengths and the sync PWM edited in hex,
// the timing modes and the platform's defaults. The platform holds the timing; the
// page keeps a working copy.
#include <cstdio>

#include "EditorSteps.h"
#include "FactoryKeyCodes.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_3DManager.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Player.h"

namespace {

using timing3d::Arrow;

constexpr unsigned long kKeyLeft = 0xF000;
constexpr unsigned long kKeyRight = 0xF001;
// The coloured keys and their steps.
struct ColourKey {
    unsigned long key;
    short delta;
};
constexpr ColourKey kColourKeys[] = {{0xF042, -256}, {0xF043, -16}, {0xF044, 16}, {0xF045, 256}};
constexpr MAPI_U8 kPwmChannel = 3;
constexpr MAPI_U8 kDutyItem = 9;

const char* const kHighlightCmds[timing3d::kItemCount] = {
    "3DTiming-DefaultMode-highlight", "3DTiming-Mode0-highlight", "3DTiming-Mode1-highlight",
    "3DTiming-Mode2-highlight",       "3DTiming-Mode3-highlight", "3DTiming-LOpen-highlight",
    "3DTiming-LClose-highlight",      "3DTiming-ROpen-highlight", "3DTiming-RClose-highlight",
    "3DTiming-Duty-highlight",        "3DTiming-Shift-highlight",
};

MSrv_3DManager* Manager3D() {
    MSrv_Control* control = MSrv_Control::GetInstance();
    return control != nullptr ? control->GetMSrv3DManager() : nullptr;
}

}  // namespace

// One editable value: its item, cmd and member, and for a shutter length the
// manager's two operations and the default used when the platform's value is unusable.
struct FactoryManager::Timing3DValue {
    MAPI_U8 item;
    const char* cmd;
    MAPI_U32 FactoryManager::*member;
    MAPI_BOOL (MSrv_3DManager::*get)(MAPI_U8*, MAPI_U8*);
    MAPI_BOOL (MSrv_3DManager::*set)(MAPI_U8, MAPI_U8);
    MAPI_U8 defaultLow;
    MAPI_U8 defaultHigh;
};

const FactoryManager::Timing3DValue* FactoryManager::Timing3DValueOf(unsigned char item) {
    using F = FactoryManager;
    using M = MSrv_3DManager;
    static const Timing3DValue values[] = {
        {5, "3DTiming-LOpen", &F::m_u32LOpen, &M::GetLOpenLength, &M::SetLOpenLength, 64, 45},
        {6, "3DTiming-LClose", &F::m_u32LClose, &M::GetLCloseLength, &M::SetLCloseLength, 67, 22},
        {7, "3DTiming-ROpen", &F::m_u32ROpen, &M::GetROpenLength, &M::SetROpenLength, 64, 45},
        {8, "3DTiming-RClose", &F::m_u32RClose, &M::GetRCloseLength, &M::SetRCloseLength, 67, 22},
        {9, "3DTiming-Duty", &F::m_u32Duty, nullptr, nullptr, 0, 0},
        {10, "3DTiming-Shift", &F::m_u32Shift, nullptr, nullptr, 0, 0},
    };
    for (const Timing3DValue& v : values) {
        if (v.item == item) {
            return &v;
        }
    }
    return nullptr;
}

MAPI_BOOL FactoryManager::OnEvent_3DTimingAdjust(void*, void*, void*) {
    ResetState();
    InfoZYTAppMgr(1);
    InfoWebAppMgrHideShowPage(1, 1);
    NotifyUI(0, "HideAllUIExcept", "3DTimingAdjust");
    m_u8Timing3DItem = timing3d::kDefaultItem;
    m_b3DTimingMode = 1;
    m_pFactoryCmd->SetFactoryOSDStatus(1);
    Factory3DTimingAdjustInit();
    NotifyUI(0, "3DTimingAdjust-Show", 1);
    return 1;
}

MAPI_BOOL FactoryManager::Factory3DTimingAdjustInit() {
    MSrv_Control* control = MSrv_Control::GetInstance();
    if (control != nullptr) {
        MSrv_Player* player = control->GetMSrvPlayer(control->GetCurrentInputSource());
        if (player != nullptr) {
            // The set's glasses run at 120 Hz whatever the output: a 50 Hz or 60 Hz
            // class was once meant to choose the 100 Hz title, but every class keeps
            // the 120 Hz one and the line relies on it.
            FACTORY_LOG(FACTORY_LOG_INFO, "output vfreq = %u", player->GetOutputVFreq());
        }
    }
    NotifyUI(0, "3DTiming-TitleFrequency", "3D timing Adjust - 120Hz");
    ReadTiming3DLengths(true);
    MSrv_3DManager* manager = Manager3D();
    MAPI_U16 duty = 0;
    MAPI_U16 phase = 0;
    if (manager != nullptr) {
        manager->GetPwmDutyPhase(kPwmChannel, &duty, &phase);
    }
    m_u32Duty = duty;
    m_u32Shift = phase;
    ShowTiming3DValue(*Timing3DValueOf(kDutyItem));
    ShowTiming3DValue(*Timing3DValueOf(timing3d::kLastValue));
    NotifyUI(0, kHighlightCmds[timing3d::kDefaultItem], 1);
    return 1;
}

void FactoryManager::ReadTiming3DLengths(bool init) {
    MSrv_3DManager* manager = Manager3D();
    for (MAPI_U8 item = timing3d::kFirstValue; item < kDutyItem; ++item) {
        const Timing3DValue& v = *Timing3DValueOf(item);
        MAPI_U8 low = 0;
        MAPI_U8 high = 0;
        if (manager != nullptr) {
            (manager->*v.get)(&low, &high);
        }
        MAPI_U32 value = high * 256u + low;
        if (init) {
            if (value > 0xFFFF) {
                low = v.defaultLow;
                high = v.defaultHigh;
                value = high * 256u + low;
            }
            FACTORY_LOG(FACTORY_LOG_INFO, "d3 = %d", low);
            FACTORY_LOG(FACTORY_LOG_INFO, "d4 = %d", high);
        }
        this->*v.member = value;
        ShowTiming3DValue(v);
    }
}

void FactoryManager::ShowTiming3DValue(const Timing3DValue& value) {
    char text[6];
    std::snprintf(text, sizeof(text), "%04X", (this->*value.member) & 0xFFFF);
    NotifyUI(0, value.cmd, text);
}

void FactoryManager::ApplyTiming3DValue(const Timing3DValue& value) {
    MSrv_3DManager* manager = Manager3D();
    if (manager == nullptr) {
        return;
    }
    if (value.set == nullptr) {
        manager->SetPwmDutyPhase(kPwmChannel, static_cast<MAPI_U16>(m_u32Duty),
                                 static_cast<MAPI_U16>(m_u32Shift));
        return;
    }
    // The platform takes the two bytes of the value read as signed 16-bit.
    const short length = static_cast<short>(this->*value.member);
    (manager->*value.set)(static_cast<MAPI_U8>(length % 256), static_cast<MAPI_U8>(length / 256));
}

// ---- Keys ------------------------------------------------------------------------------

MAPI_BOOL FactoryManager::Factory3DTimingKeyAction(unsigned long key) {
    FACTORY_LOG(FACTORY_LOG_INFO, "Factory3DTimingKeyAction");
    if (key == FactoryKey::Menu || key == FactoryKey::Exit) {
        Exit3DTimingMode();
        InfoZYTAppMgr(0);
        InfoWebAppMgrHideShowPage(0, 1);
        return 1;
    }
    if (key == FactoryKey::Select || key == FactoryKey::PanelFunction) {
        return Factory3DTimingSelect();
    }
    if (key == kKeyLeft) {
        return Factory3DTimingKeyLeft();
    }
    if (key == kKeyRight) {
        return Factory3DTimingKeyRight();
    }
    if (key == FactoryKey::Up) {
        return Factory3DTimingKeyUp();
    }
    if (key == FactoryKey::Down) {
        return Factory3DTimingKeyDown();
    }
    for (const ColourKey& c : kColourKeys) {
        if (c.key == key) {
            return Factory3DTimingRGYBKey(m_u8Timing3DItem, c.delta);
        }
    }
    return 0;
}

MAPI_BOOL FactoryManager::Timing3DMove(int arrow) {
    const MAPI_U8 to = timing3d::Move(m_u8Timing3DItem, static_cast<Arrow>(arrow));
    if (to == timing3d::kStay) {
        return 0;
    }
    NotifyUI(0, kHighlightCmds[m_u8Timing3DItem], 0);
    m_u8Timing3DItem = to;
    NotifyUI(0, kHighlightCmds[to], 1);
    return 1;
}

MAPI_BOOL FactoryManager::Factory3DTimingKeyRight() {
    if (Timing3DValueOf(m_u8Timing3DItem) != nullptr) {
        return Factory3DTimingTuneValueByRightKey(m_u8Timing3DItem);
    }
    return Timing3DMove(static_cast<int>(Arrow::Right));
}

MAPI_BOOL FactoryManager::Factory3DTimingKeyLeft() {
    if (Timing3DValueOf(m_u8Timing3DItem) != nullptr) {
        return Factory3DTimingTuneValueByLeftKey(m_u8Timing3DItem);
    }
    return Timing3DMove(static_cast<int>(Arrow::Left));
}

MAPI_BOOL FactoryManager::Factory3DTimingKeyUp() {
    return Timing3DMove(static_cast<int>(Arrow::Up));
}

MAPI_BOOL FactoryManager::Factory3DTimingKeyDown() {
    return Timing3DMove(static_cast<int>(Arrow::Down));
}

MAPI_BOOL FactoryManager::Factory3DTimingSelect() {
    const MAPI_U8 item = m_u8Timing3DItem;
    if (item == timing3d::kDefaultItem) {
        return Factory3DTimingDefaultSetting();
    }
    if (item >= timing3d::kFirstMode && item <= timing3d::kLastMode) {
        return Factory3DTimingSwitchMode(item);
    }
    return Factory3DTimingLLRR(item);
}

MAPI_BOOL FactoryManager::Factory3DTimingDefaultSetting() {
    FACTORY_LOG(FACTORY_LOG_INFO, "Factory3DTimingDefaultSetting");
    MSrv_3DManager* manager = Manager3D();
    if (manager != nullptr) {
        manager->Reset3DTiming();
    }
    ReadTiming3DLengths(false);
    return 1;
}

MAPI_BOOL FactoryManager::Factory3DTimingSwitchMode(unsigned char item) {
    FACTORY_LOG(FACTORY_LOG_INFO, "Factory3DTimingSwitchMode");
    MSrv_3DManager* manager = Manager3D();
    if (manager != nullptr) {
        manager->Set3DTimingMode(static_cast<MAPI_U8>(item - timing3d::kFirstMode));
    }
    return 1;
}

MAPI_BOOL FactoryManager::Factory3DTimingLLRR(unsigned char item) {
    const Timing3DValue* value = Timing3DValueOf(item);
    if (value == nullptr) {
        return 0;
    }
    ApplyTiming3DValue(*value);
    return 1;
}

MAPI_BOOL FactoryManager::Factory3DTimingTuneValueByLeftKey(unsigned char item) {
    const Timing3DValue* value = Timing3DValueOf(item);
    if (value == nullptr) {
        return 0;
    }
    this->*value->member = timing3d::StepWrap(this->*value->member, false);
    return Factory3DTimingTuneLRValue(item);
}

MAPI_BOOL FactoryManager::Factory3DTimingTuneValueByRightKey(unsigned char item) {
    const Timing3DValue* value = Timing3DValueOf(item);
    if (value == nullptr) {
        return 0;
    }
    this->*value->member = timing3d::StepWrap(this->*value->member, true);
    return Factory3DTimingTuneLRValue(item);
}

MAPI_BOOL FactoryManager::Factory3DTimingTuneLRValue(unsigned char item) {
    const Timing3DValue* value = Timing3DValueOf(item);
    if (value == nullptr) {
        return 0;
    }
    ShowTiming3DValue(*value);
    ApplyTiming3DValue(*value);
    return 1;
}

MAPI_BOOL FactoryManager::Factory3DTimingRGYBKey(unsigned char item, short delta) {
    const Timing3DValue* value = Timing3DValueOf(item);
    if (value == nullptr) {
        return 0;
    }
    bool negative = false;
    const MAPI_U32 sum = timing3d::AddClamped(this->*value->member, delta, negative);
    if (item == kDutyItem && negative) {
        // Duty below zero clears ROpen and keeps Duty; the line's glasses rely on it.
        m_u32ROpen = 0;
    } else {
        this->*value->member = sum;
    }
    ShowTiming3DValue(*value);
    ApplyTiming3DValue(*value);
    return 1;
}

MAPI_BOOL FactoryManager::Exit3DTimingMode() {
    return CloseEditorPage("3DTimingAdjust-Show", m_b3DTimingMode);
}
