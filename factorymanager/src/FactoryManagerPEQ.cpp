// The PEQ editor: the sound processor's parametric equaliser tuned band by band with
// the remote. Every change goes at once to the factory store and the processor.
#include <memory>
#include <new>

#include "EditorSteps.h"
#include "FactoryKeyCodes.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Factory_Default.h"
#include "MSrv_SSSound.h"
#include "MSrv_System_Database.h"
#include "PeqStore.h"
#include "SystemInfo.h"

namespace {

constexpr unsigned long kKeyLeft = 0xF000;
constexpr unsigned long kKeyRight = 0xF001;
constexpr MAPI_U8 kItemCount = 6;
constexpr MAPI_U8 kHlpfLowPass = 0;
constexpr MAPI_U8 kHlpfHighPass = 1;
// In the 28-band layout band 7 is band 6's twin: it follows every change of 6.
constexpr unsigned kMirroredBand = 6;

// Highlight cmds in item order: band, filter mode, f0, f0/100, Q, gain.
const char* const kHighlightCmds[kItemCount] = {
    "PEQ-Band-highlight",     "PEQ-Filter-Mode-highlight", "PEQ-f0-highlight",
    "PEQ-f0Div100-highlight", "PEQ-QX10-highlight",        "PEQ-GainX10-highlight",
};

bool IsArrow(unsigned long key) { return key == kKeyLeft || key == kKeyRight; }

// A zeroed copy of the whole area, freed when the operation ends; null when out of
// memory.
std::unique_ptr<MAPI_U8[]> AreaBuffer(bool audyssey) {
    return std::unique_ptr<MAPI_U8[]>(new (std::nothrow) MAPI_U8[peq::AreaSize(audyssey)]());
}

}  // namespace

MAPI_BOOL FactoryManager::OnEvent_PEQ(void*, void*, void*) {
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_PEQ");
    SystemInfo* info = SystemInfo::GetInstance();
    if (info == nullptr) {
        return 0;
    }
    m_bAudysseyPEQ = info->IsAudysseyEnable();
    InfoZYTAppMgr(1);
    InfoWebAppMgrHideShowPage(1, 1);
    m_u8PEQBand = 0;
    auto area = AreaBuffer(m_bAudysseyPEQ);
    if (!area) {
        return 0;
    }
    m_pFactoryDefault->msAPI_rmBurstReadBytes(peq::kAreaAddress, area.get(),
                                              peq::AreaSize(m_bAudysseyPEQ));
    ST_AUDIO_SETTING audio{};
    MSrv_System_Database* database = MSrv_Control::GetInstance()->GetMSrvSystemDatabase();
    if (database != nullptr) {
        database->GetAudioSetting(&audio);
    }
    m_u8PEQLowHigh = audio.u8PEQLowHigh;
    m_bPEQMode = 1;
    m_pFactoryCmd->SetFactoryOSDStatus(1);
    LoadPEQBand(area.get());
    m_u8PEQHighlight = 0;
    NotifyUI(0, "HideAllUIExcept", "PEQ");
    ShowPEQBand();
    ShowPEQFilterMode();
    ShowPEQF0();
    ShowF0Div100();
    ShowPEQQx10();
    ShowPEQGainX10();
    UpdatePEQHighlight();
    return 1;
}

MAPI_BOOL FactoryManager::PEQProcessKey(unsigned long key) {
    using Step = MAPI_BOOL (FactoryManager::*)(unsigned long);
    static const Step steps[kItemCount] = {
        &FactoryManager::UpdateBandIndex, &FactoryManager::UpdateFilterModeIndex,
        &FactoryManager::UpdateF0Index,   &FactoryManager::UpdateF0Div100Index,
        &FactoryManager::UpdateQx10Index, &FactoryManager::UpdateGainX10Index,
    };
    if (IsArrow(key)) {
        if (m_u8PEQHighlight < kItemCount) {
            (this->*steps[m_u8PEQHighlight])(key);
        }
        return 1;
    }
    if (key == FactoryKey::Up) {
        m_u8PEQHighlight = m_u8PEQHighlight == 0 || m_u8PEQHighlight >= kItemCount
                               ? kItemCount - 1
                               : static_cast<MAPI_U8>(m_u8PEQHighlight - 1);
        UpdatePEQHighlight();
        return 1;
    }
    if (key == FactoryKey::Down) {
        m_u8PEQHighlight =
            m_u8PEQHighlight >= kItemCount - 1 ? 0 : static_cast<MAPI_U8>(m_u8PEQHighlight + 1);
        UpdatePEQHighlight();
        return 1;
    }
    if (key == FactoryKey::Menu || key == FactoryKey::Exit || key == FactoryKey::PanelMenu) {
        ExitPEQ();
        InfoZYTAppMgr(0);
        InfoWebAppMgrHideShowPage(0, 1);
        return 1;
    }
    return 0;
}

MAPI_BOOL FactoryManager::UpdatePEQHighlight() {
    for (MAPI_U8 item = 0; item < kItemCount; ++item) {
        NotifyUI(0, kHighlightCmds[item], item == m_u8PEQHighlight ? 1 : 0);
    }
    return 1;
}

void FactoryManager::ShowPEQBand() {
    const char* label = peq::BandLabel(m_bAudysseyPEQ, m_u8PEQBand);
    NotifyUI(0, "PEQ-Band", label != nullptr ? label : "");
}

void FactoryManager::ShowPEQFilterMode() {
    NotifyUI(0, "PEQ-Filter-Mode", peq::FilterModeName(m_u8PEQFilterMode));
}

void FactoryManager::ShowPEQF0() { NotifyUI(0, "PEQ-f0", m_u32PEQF0Index * 100); }

void FactoryManager::ShowF0Div100() { NotifyUI(0, "PEQ-f0Div100", m_u8PEQF0Div100); }

void FactoryManager::ShowPEQQx10() { NotifyUI(0, "PEQ-QX10", m_u32PEQQIndex / 10 + 5); }

void FactoryManager::ShowPEQGainX10() {
    NotifyUI(0, "PEQ-GainX10",
             static_cast<long>(m_u32PEQGainIndex) - static_cast<long>(peq::kGainZeroDb));
}

// ---- Stepping ------------------------------------------------------------------------

MAPI_BOOL FactoryManager::UpdateBandIndex(unsigned long key) {
    if (!IsArrow(key)) {
        return 0;
    }
    m_u8PEQBand = peq::StepBand(m_u8PEQBand, m_bAudysseyPEQ, key == kKeyRight);
    UpdateBandSetting();
    ShowPEQBand();
    return 1;
}

MAPI_BOOL FactoryManager::UpdateFilterModeIndex(unsigned long key) {
    if (!IsArrow(key)) {
        return 0;
    }
    m_u8PEQFilterMode = peq::StepFilterMode(m_u8PEQFilterMode, key == kKeyRight);
    UpdateFilterModeSetting();
    ShowPEQFilterMode();
    return 1;
}

MAPI_BOOL FactoryManager::UpdateF0Index(unsigned long key) {
    if (!IsArrow(key)) {
        return 0;
    }
    m_u32PEQF0Index = peq::StepWrap(m_u32PEQF0Index, peq::kMaxF0Index, key == kKeyRight);
    UpdateF0Setting();
    ShowPEQF0();
    return 1;
}

MAPI_BOOL FactoryManager::UpdateF0Div100Index(unsigned long key) {
    // Unlike the other items, any key still writes and shows the value.
    if (IsArrow(key)) {
        m_u8PEQF0Div100 = static_cast<MAPI_U8>(
            peq::StepWrap(m_u8PEQF0Div100, peq::kMaxF0Div100, key == kKeyRight));
    }
    UpdateF0Div100Setting();
    ShowF0Div100();
    return 1;
}

MAPI_BOOL FactoryManager::UpdateQx10Index(unsigned long key) {
    if (!IsArrow(key)) {
        return 0;
    }
    m_u32PEQQIndex = peq::StepQ(m_u32PEQQIndex, key == kKeyRight);
    UpdateQX10Setting();
    ShowPEQQx10();
    return 1;
}

MAPI_BOOL FactoryManager::UpdateGainX10Index(unsigned long key) {
    if (!IsArrow(key)) {
        return 0;
    }
    m_u32PEQGainIndex = peq::StepWrap(m_u32PEQGainIndex, peq::kMaxGainIndex, key == kKeyRight);
    UpdateGainX10Setting();
    ShowPEQGainX10();
    return 1;
}

// ---- Loading and storing ---------------------------------------------------------------

void FactoryManager::LoadPEQBand(const unsigned char* area) {
    const peq::Band band = peq::Decode(area, m_u8PEQBand);
    m_u32PEQF0Index = band.f0Index;
    m_u8PEQF0Div100 = band.f0Div100;
    m_u32PEQQIndex = band.qIndex;
    m_u32PEQGainIndex = band.gainIndex;
    m_u8PEQFilterMode = band.filterMode;
}

MAPI_BOOL FactoryManager::UpdateBandSetting() {
    auto area = AreaBuffer(m_bAudysseyPEQ);
    if (!area) {
        return 0;
    }
    m_pFactoryDefault->msAPI_rmBurstReadBytes(peq::kAreaAddress, area.get(),
                                              peq::AreaSize(m_bAudysseyPEQ));
    LoadPEQBand(area.get());
    ShowPEQF0();
    ShowPEQFilterMode();
    ShowF0Div100();
    ShowPEQQx10();
    ShowPEQGainX10();
    return 1;
}

MAPI_BOOL FactoryManager::UpdateFilterModeSetting() { return WritePEQField(peq::kFilter); }
MAPI_BOOL FactoryManager::UpdateF0Setting() { return WritePEQField(peq::kF0); }
MAPI_BOOL FactoryManager::UpdateF0Div100Setting() { return WritePEQField(peq::kF0Div100); }
MAPI_BOOL FactoryManager::UpdateQX10Setting() { return WritePEQField(peq::kQLow); }
MAPI_BOOL FactoryManager::UpdateGainX10Setting() { return WritePEQField(peq::kGain); }

MAPI_BOOL FactoryManager::WritePEQField(unsigned offset) {
    auto area = AreaBuffer(m_bAudysseyPEQ);
    if (!area) {
        return 0;
    }
    peq::Band value;
    value.f0Index = m_u32PEQF0Index;
    value.f0Div100 = m_u8PEQF0Div100;
    value.qIndex = m_u32PEQQIndex;
    value.gainIndex = m_u32PEQGainIndex;
    value.filterMode = m_u8PEQFilterMode;
    auto store = [&](unsigned band) {
        unsigned offsets[2] = {};
        const size_t n =
            peq::Encode(area.get(), band, static_cast<peq::Offset>(offset), value, offsets);
        for (size_t i = 0; i < n; ++i) {
            m_pFactoryDefault->msAPI_rmBurstWriteBytes(
                peq::Address(band, offsets[i]), area.get() + peq::kRecordSize * band + offsets[i],
                1);
        }
    };
    store(m_u8PEQBand);
    MAPI_BOOL result = UpdatePEQSetting(area.get());
    if (m_u8PEQBand == kMirroredBand) {
        if (m_bAudysseyPEQ) {
            store(kMirroredBand + 1);
        }
        result = UpdatePEQSetting(area.get());
    }
    return result;
}

MAPI_BOOL FactoryManager::UpdatePEQSetting(void* buffer) {
    auto* area = static_cast<MAPI_U8*>(buffer);
    m_pFactoryDefault->msAPI_rmBurstReadBytes(peq::kAreaAddress, area,
                                              peq::AreaSize(m_bAudysseyPEQ));
    const MAPI_U8* record = area + peq::kRecordSize * m_u8PEQBand;
    const unsigned short q = static_cast<unsigned short>(peq::QWord(area, m_u8PEQBand) / 10);
    if (!peq::Applied(m_bAudysseyPEQ, m_u8PEQBand, m_u8PEQLowHigh)) {
        return 0;
    }
    return SetPEQParam(record[peq::kF0], record[peq::kF0Div100], record[peq::kGain], q);
}

MAPI_BOOL FactoryManager::SetPEQParam(unsigned char f0Index, unsigned char f0Div100,
                                      unsigned char gain, unsigned short q) {
    MSrv_SSSound* sound = MSrv_Control::GetInstance()->GetMSrvSSSound();
    if (sound == nullptr) {
        return 0;
    }
    const MAPI_U8 q8 = static_cast<MAPI_U8>(q);
    switch (m_u8PEQFilterMode) {
        case peq::kPeq:
            sound->SetPEQParam(m_u8PEQBand, gain, f0Index, f0Div100, q8);
            return 1;
        case peq::kLpf:
            sound->SND_SetHLPFParm(m_u8PEQBand, kHlpfLowPass, f0Index, f0Div100);
            return 1;
        case peq::kHpf:
            sound->SND_SetHLPFParm(m_u8PEQBand, kHlpfHighPass, f0Index, f0Div100);
            return 1;
        case peq::kBypass:
            sound->SetPEQParam(m_u8PEQBand, static_cast<MAPI_U8>(peq::kGainZeroDb), f0Index,
                               f0Div100, q8);
            return 1;
        default:
            return 0;
    }
}

MAPI_BOOL FactoryManager::ExitPEQ() { return CloseEditorPage("PEQ-Show", m_bPEQMode); }
