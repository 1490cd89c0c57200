// Service mode: the D-mode / S-mode service-data editor. The platform's service
// commands arrive as event 200 with the address and command already set on the
// factory-command service; while the editor is open the remote's keys reach
// FactoryDModeAction. Every change is written to the store at once.
#include <cstdio>
#include <cstdlib>

#include "FactoryAssert.h"
#include "FactoryKeyCodes.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Factory_Default.h"
#include "ServiceItemNames.h"
#include "ServiceModeRules.h"
#include "SystemInfo.h"

namespace {

constexpr MAPI_U8 kModeSelectED = 254;
constexpr MAPI_U8 kModeSelectS = 195;
// White-balance commands of the service protocol.
constexpr MAPI_U8 kWbRdrv = '3';
constexpr MAPI_U8 kWbBdrv = '4';
constexpr MAPI_U8 kWbReadBdrv = '5';
constexpr MAPI_U8 kWbReadRdrv = '6';
bool IsWhiteBalanceCommand(MAPI_U8 c) {
    return c == kWbRdrv || c == kWbBdrv || c == kWbReadBdrv || c == kWbReadRdrv;
}

// Editor keys (the platform's key codes); the remote's up/down move between items.
namespace DKey {
constexpr unsigned long Next = FactoryKey::Up;
constexpr unsigned long Next2 = 0xF046;
constexpr unsigned long Previous = FactoryKey::Down;
constexpr unsigned long Previous2 = 0xF047;
constexpr unsigned long ValueUp = 0xF001;
constexpr unsigned long ValueUp2 = 0xF04C;
constexpr unsigned long ValueDown = 0xF000;
constexpr unsigned long ValueDown2 = 0xF04D;
constexpr unsigned long Exit = FactoryKey::Exit;
constexpr unsigned long PanelExit = FactoryKey::PanelExit;
constexpr unsigned long ControlStep = 0xF068;
constexpr unsigned long ResetFirst = 0xF014;  // then ResetSecond: all service data to default
constexpr unsigned long ResetSecond = FactoryKey::PanelUp;
}  // namespace DKey

// Navigation ranges: the white-balance items, or every item up to "AUD OUTPUT".
constexpr MAPI_U16 kShortRangeMax = 0x820;
constexpr MAPI_U16 kFullRangeMax = 0xAD9;
// Logged with every move: the cut "BL_WHITE_DET" slot and "AUD EBAS".
constexpr unsigned kJudgeXIndex = 315;
constexpr unsigned kEbasIndex = 787;

// Digit keys in short-range mode jump to these items; '7' passes a service event on.
struct DigitJump {
    unsigned long key;
    MAPI_U16 addr;
};
constexpr DigitJump kDigitJumps[] = {{'1', 0x800}, {'2', 0x801}, {'3', 0x802}, {'4', 0x835}};

struct Range {
    MAPI_U8 min;
    MAPI_U8 max;
};
Range ServiceRange(MSrv_Factory_Cmd& cmd, MAPI_U16 addr) {
    Range range{0, 0};
    cmd.ServiceModeCheckRange(addr, &range.min, &range.max);
    return range;
}

// A set without system information is built wrong: stop here, as the service staff's
// logs expect.
[[noreturn]] void AssertFail(const char* function, int line) {
    FactoryAssert::Fail(FactoryAssert::kManagerFile, function, line);
}

}  // namespace

MAPI_BOOL FactoryManager::FactoryLoadMode() {
    const MAPI_U16 addr = m_pFactoryCmd->g_u16ServiceModeAddr;
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ ServiceModeAddr= 0x%X, RM_SERVICE_COMMAND_START_ADDR= 0x%X ",
                addr, ServiceItems::kStartAddr);
    const unsigned index = ServiceItems::IndexOf(addr);
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ u16ServiceMode=0x%X ", index);
    NotifyUI(0, "DMode-Option", ServiceItems::Name(index));
    return 1;
}

void FactoryManager::FactoryBinUlongToString(unsigned long value, char* out, signed char len) {
    ServiceMode::BinaryText(value, out, len);
}

void FactoryManager::FactoryBinUlongToU16String(unsigned long value, unsigned short* out,
                                                signed char len) {
    ServiceMode::BinaryText(value, out, len);
}

void FactoryManager::NotifyDModeValue(MAPI_U8 value) {
    char hex[8];
    std::snprintf(hex, sizeof(hex), "%02XH", value);
    NotifyUI(0, "DMode-Data", hex);
    unsigned short wide[9];
    FactoryBinUlongToU16String(value, wide, 8);
    char bin[10];
    for (int i = 0; i < 8; ++i) {
        bin[i] = static_cast<char>(wide[i]);
    }
    bin[8] = 'B';
    bin[9] = '\0';
    NotifyUI(0, "DMode-Bin", bin);
}

void FactoryManager::NotifyDModeAddr(const char* format) {
    char text[16];
    std::snprintf(text, sizeof(text), format, m_pFactoryCmd->g_u16ServiceModeAddr);
    NotifyUI(0, "DMode-Addr", text);
}

MAPI_BOOL FactoryManager::FactoryOldMemoryData() {
    const unsigned index = ServiceItems::IndexOf(m_pFactoryCmd->g_u16ServiceModeAddr);
    if (SystemInfo::GetInstance() == nullptr) {
        AssertFail("MAPI_BOOL FactoryManager::FactoryOldMemoryData()", __LINE__);
    }
    return index >= ServiceItems::kFirstReadOnly && index <= ServiceItems::kLastReadOnly;
}

void FactoryManager::FactoryDModeLoadInfo() {
    NotifyUI(0, "DMode-Value-Color", FactoryOldMemoryData() ? 0 : 1);
    NotifyDModeAddr("0x%04X");
    MAPI_U8 value = 0;
    m_pFactoryDefault->GetFactoryData(m_pFactoryCmd->g_u16ServiceModeAddr, &value);
    NotifyDModeValue(value);
}

template <class Change>
void FactoryManager::DModeChangeValue(const char* addrFormat, bool viaServiceData, Change change) {
    NotifyDModeAddr(addrFormat);
    const MAPI_U16 addr = m_pFactoryCmd->g_u16ServiceModeAddr;
    MAPI_U8 value = 0;
    m_pFactoryDefault->GetFactoryData(addr, &value);
    value = change(addr, value);
    if (viaServiceData) {
        m_pFactoryCmd->ProcessServiceData(addr, value);
    } else {
        m_pFactoryDefault->SetFactoryData(addr, value);
    }
    NotifyDModeValue(value);
}

void FactoryManager::FactoryDModeChangeDataByStep(unsigned char up) {
    // Written back even when unchanged: the service protocol reads it as the answer.
    DModeChangeValue("0x%03X", false, [this, up](MAPI_U16 addr, MAPI_U8 value) {
        const Range range = ServiceRange(*m_pFactoryCmd, addr);
        return ServiceMode::StepValue(value, range.min, range.max,
                                      m_pFactoryCmd->g_u8ServiceStepCmd, up != 0);
    });
}

void FactoryManager::FactoryDModeChangeInfo(unsigned char up) {
    DModeChangeValue("0x%04X", true, [this, up](MAPI_U16 addr, MAPI_U8 value) {
        const Range range = ServiceRange(*m_pFactoryCmd, addr);
        return ServiceMode::KeyValue(value, range.min, range.max, up != 0);
    });
}

void FactoryManager::FactoryDModeChangeDataByBit(unsigned char bit) {
    // Whatever the item's range.
    DModeChangeValue("0x%03X", true,
                     [bit](MAPI_U16, MAPI_U8 value) { return ServiceMode::ToggleBit(value, bit); });
}

void FactoryManager::FactoryShowDModeUI(unsigned char show) {
    m_bDModeOpen = show;
    NotifyUI(0, "DMode", m_bDModeOpen);
}

MAPI_BOOL FactoryManager::OnEvent_FactoryVideoCheck(void*, void*, void*) {
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_FactoryVideoCheck");
    if (!m_bDModeOpen) {
        OpenPage("DMode");
    }
    m_bDModeOpen = 1;
    m_pFactoryCmd->SetFactoryOSDStatus(1);
    m_pFactoryCmd->Set_S_D_Mode(1);
    NotifyUI(0, "DMode", m_bDModeOpen);
    FactoryLoadMode();

    const MAPI_U8 step = m_pFactoryCmd->g_u8ServiceStepCmd;
    const MAPI_U8 mode = m_pFactoryCmd->g_u8ServiceModeSelect;
    const MAPI_U8 wb = m_pFactoryCmd->g_u8WhiteBalanceCmd;
    if (step == ServiceMode::kStepUp || step == ServiceMode::kStepUp4) {
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ ByStep TRUE");
        FactoryDModeChangeDataByStep(1);
    } else if (step == ServiceMode::kStepDown || step == ServiceMode::kStepDown4) {
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ ByStep FALSE");
        FactoryDModeChangeDataByStep(0);
    } else if (mode == kModeSelectED || mode == kModeSelectS) {
        const bool ed = mode == kModeSelectED;
        FACTORY_LOG(FACTORY_LOG_INFO, "%s", ed ? "~~ /E/D-mode/ " : "~~ /S-mode/ ");
        FactoryDModeChangeDataByStep(0);
        NotifyUI(0, "S-D", ed ? "D" : "S");
        NotifyUI(0, "S-Mode", 1);
    } else if (IsWhiteBalanceCommand(wb)) {
        static const char* const kWbLogs[] = {"~~ /RDRV/ ", "~~ /BDRV/ ", "~~ /Read BDRV/ ",
                                              "~~ /Read RDRV/ "};
        FACTORY_LOG(FACTORY_LOG_INFO, "%s", kWbLogs[wb - kWbRdrv]);
        FactoryDModeChangeDataByStep(0);
        NotifyUI(0, "S-Mode", 0);
    } else {
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ /OTHER/ ");
        FactoryDModeLoadInfo();
    }
    return 1;
}

void FactoryManager::DModeMoveItem(bool next) {
    MSrv_Factory_Cmd& cmd = *m_pFactoryCmd;
    FACTORY_LOG(
        FACTORY_LOG_INFO,
        "~~ /UP_DOWN/ (m_pcFactoryCmd->g_u16ServiceModeAddr, SERVICE_MODE_NUM)-(0x%lX, %ld)",
        static_cast<unsigned long>(cmd.g_u16ServiceModeAddr),
        static_cast<long>(ServiceItems::kCount));
    if (cmd.g_bServiceNavLock) {
        return;
    }
    MAPI_U16 min = 0;
    MAPI_U16 max = 0;
    if (cmd.g_bServiceShortRange) {
        min = ServiceItems::kStartAddr;
        max = kShortRangeMax;
    }
    if (cmd.g_bDModeOpen) {
        min = ServiceItems::kStartAddr;
        max = kFullRangeMax;
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ DTV /D_MODE_OPEN/ (min, max)(%d, %d)", min, max);
    }
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ (JUDGE_X, EBAS)-(0x%X, 0x%X)", kJudgeXIndex, kEbasIndex);
    MAPI_U16& addr = cmd.g_u16ServiceModeAddr;
    if (next) {
        if (addr <= max) {
            ++addr;
            FACTORY_LOG(FACTORY_LOG_INFO, "~~ UP <= ServiceModeAddr=0x%X ", addr);
        }
        // Also from an address the platform left above the range.
        if (addr > max) {
            addr = min;
            FACTORY_LOG(FACTORY_LOG_INFO, "~~ UP = ServiceModeAddr=0x%X ", addr);
        }
    } else if (addr > min) {
        --addr;
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ Down > ServiceModeAddr=0x%X ", addr);
    } else if (addr == min) {
        addr = max;
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ Down = ServiceModeAddr=0x%X ", addr);
    }
    if (addr >= min && addr <= max) {
        FactoryLoadMode();
        FactoryDModeLoadInfo();
    }
}

void FactoryManager::DModeDigitKey(unsigned long key) {
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ [num key]");
    if (m_pFactoryCmd->g_bDModeOpen) {
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ 1 [num key]");
        FactoryDModeChangeDataByBit(static_cast<unsigned char>(key - '1'));
        return;
    }
    if (!m_pFactoryCmd->g_bServiceShortRange) {
        return;
    }
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ 2 [num key]");
    for (const DigitJump& jump : kDigitJumps) {
        if (jump.key == key) {
            // The display follows with the next service command or move.
            m_pFactoryCmd->g_u16ServiceModeAddr = jump.addr;
            return;
        }
    }
    if (key == '7') {
        m_pFactoryCmd->CMD_HandleEvent(64, 238, 163, 0, 1);
    }
}

void FactoryManager::DModeClose() {
    MSrv_Factory_Cmd& cmd = *m_pFactoryCmd;
    if (IsWhiteBalanceCommand(cmd.g_u8WhiteBalanceCmd)) {
        cmd.g_u8WhiteBalanceCmd = 0;
        cmd.g_bServiceNavLock = 0;
    }
    m_bDModeOpen = 0;
    cmd.SetFactoryOSDStatus(0);
    cmd.Set_S_D_Mode(0);
    FactoryShowDModeUI(0);
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
}

void FactoryManager::DModeControlStep() {
    m_u8ControlStep = ServiceMode::NextControlStep(m_u8ControlStep);
    MSrv_Control* control = MSrv_Control::GetInstance();
    if (m_u8ControlStep == ServiceMode::kControlStepOff) {
        control->SetFactoryControlStep(0, 0, 0, 40);
    } else {
        control->SetFactoryControlStep(1, m_u8ControlStep, 0, 40);
    }
}

void FactoryManager::DModeResetKey() {
    FACTORY_LOG(FACTORY_LOG_INFO,
                "~~ /MVKP_RIGHT/ (m_pcFactoryCmd->g_u16ServiceModeAddr, SERVICE_MODE_NUM)-(%ld, "
                "%ld), u8KeyPadRepeated = %d",
                static_cast<long>(m_pFactoryCmd->g_u16ServiceModeAddr),
                static_cast<long>(ServiceItems::kCount), m_u8KeyPadRepeated);
    if (m_u8KeyPadRepeated != 1) {
        return;
    }
    m_u8KeyPadRepeated = 0;
    m_u32KeyPadRepeatedTime = 0;
    m_u32DModeLastKey = 0;
    m_pFactoryDefault->RestoreDefaultServiceData(0);
    m_pFactoryDefault->RestoreDefaultServiceColor(0);
    m_pFactoryDefault->RestoreDefaultServiceAudio(0);
    m_pFactoryDefault->RestoreDefaultServiceEDID();
}

MAPI_BOOL FactoryManager::FactoryDModeAction(unsigned long key) {
    if (m_u32DModeLastKey == DKey::ResetFirst && key == DKey::ResetSecond) {
        if (!m_u8KeyPadRepeated) {
            m_u8KeyPadRepeated = 1;
            m_u32KeyPadRepeatedTime = static_cast<MAPI_U32>(getSystemTime());
        }
    } else {
        m_u32DModeLastKey = key == DKey::ResetFirst ? DKey::ResetFirst : 0;
        m_u8KeyPadRepeated = 0;
    }

    switch (key) {
        case DKey::Next:
        case DKey::Next2:
            DModeMoveItem(true);
            return 1;
        case DKey::Previous:
        case DKey::Previous2:
            DModeMoveItem(false);
            return 1;
        case DKey::ValueUp:
        case DKey::ValueUp2:
        case DKey::ValueDown:
        case DKey::ValueDown2:
            if (!FactoryOldMemoryData()) {
                FactoryDModeChangeInfo(key == DKey::ValueUp || key == DKey::ValueUp2 ? 1 : 0);
            }
            return 1;
        case '1':
        case '2':
        case '3':
        case '4':
        case '5':
        case '6':
        case '7':
        case '8':
            DModeDigitKey(key);
            return 1;
        case '9':
            m_bDModeOpen = 0;
            m_pFactoryCmd->SetFactoryOSDStatus(0);
            m_pFactoryCmd->Set_S_D_Mode(0);
            OnEvent_FactoryVersion(nullptr, nullptr, nullptr);
            return 1;
        case DKey::Exit:
        case DKey::PanelExit:
            DModeClose();
            return 1;
        case DKey::ControlStep:
            DModeControlStep();
            return 1;
        case DKey::ResetSecond:
            DModeResetKey();
            return 1;
        default:
            return 0;
    }
}
