// The advanced-sound console: a command number and two parameters typed with the
// digit keys, sent to the audio interface on OK; read-backs are shown.
#include "FactoryKeyCodes.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_Factory_Cmd.h"
#include "mapi_audio.h"
#include "mapi_interface_common.h"

namespace {

constexpr MAPI_U8 kFieldCount = 3;
constexpr MAPI_U8 kOkItem = 3;
constexpr MAPI_U8 kItemCount = 4;

const char* const kHighlightCmds[kItemCount] = {
    "AudioADV-Param1-highlight", "AudioADV-Param2-highlight", "AudioADV-Param3-highlight",
    "AudioADV-OK-highlight"};
const char* const kValueCmds[kFieldCount] = {"AudioADV-Param1", "AudioADV-Param2",
                                             "AudioADV-Param3"};

// The command numbers are the codes of the characters '5' to '8' typed as two
// digits; the line's scripts send them that way.
enum AdvCommand : MAPI_U8 { kSetAudy = 53, kReadCLevel = 54, kSetParam = 55, kReadParam = 56 };

}  // namespace

MAPI_BOOL FactoryManager::OnEvent_AudioAudysseyADV(void*, void*, void*) {
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_AudioAudysseyADV");
    OpenPage("AudioADV");
    m_bAudioADVMode = 1;
    m_pFactoryCmd->SetFactoryOSDStatus(1);
    m_u8ADVItem = 0;
    // The fields keep their values from the last session; only the typing restarts.
    m_u8ADVDigits1 = m_u8ADVDigits2 = m_u8ADVDigits3 = 0;
    NotifyUI(0, kHighlightCmds[0], 1);
    NotifyUI(0, "AudioADV-Show", 1);
    return 1;
}

MAPI_BOOL FactoryManager::FactoryAudioADVKeyAction(unsigned long key) {
    if (key == FactoryKey::Up || key == FactoryKey::Down) {
        const MAPI_U8 from = m_u8ADVItem;
        const MAPI_U8 to = key == FactoryKey::Up ? static_cast<MAPI_U8>((from + 3) % kItemCount)
                                                 : static_cast<MAPI_U8>((from + 1) % kItemCount);
        m_u8ADVItem = to;
        if (from < kItemCount) {
            NotifyUI(0, kHighlightCmds[from], 0);
        }
        NotifyUI(0, kHighlightCmds[to], 1);
    } else if (key >= '0' && key <= '9') {
        FactoryProcessAudioParam(key);
    } else if (key == FactoryKey::Select || key == FactoryKey::PanelFunction) {
        if (m_u8ADVItem == kOkItem) {
            FactorySetAudioADV();
        }
    } else if (key == FactoryKey::Exit) {
        ExitAudioADVMode();
        InfoZYTAppMgr(0);
        InfoWebAppMgrHideShowPage(0, 1);
    }
    // Every key is the console's while it is open.
    return 1;
}

MAPI_BOOL FactoryManager::FactoryProcessAudioParam(unsigned long digitKey) {
    MAPI_U8* const fields[kFieldCount] = {&m_u8ADVParam1, &m_u8ADVParam2, &m_u8ADVParam3};
    MAPI_U8* const digits[kFieldCount] = {&m_u8ADVDigits1, &m_u8ADVDigits2, &m_u8ADVDigits3};
    if (m_u8ADVItem >= kFieldCount || digitKey < '0' || digitKey > '9') {
        return 0;
    }
    MAPI_U8& field = *fields[m_u8ADVItem];
    MAPI_U8& count = *digits[m_u8ADVItem];
    const MAPI_U8 d = static_cast<MAPI_U8>(digitKey - '0');
    if (count == 0) {
        field = 0;
    }
    if (count < 2) {
        field = static_cast<MAPI_U8>(field * 10 + d);
        ++count;
    } else {
        // Only the last two digits typed count.
        field = static_cast<MAPI_U8>((field % 10) * 10 + d);
    }
    NotifyUI(0, kValueCmds[m_u8ADVItem], field);
    return 1;
}

MAPI_BOOL FactoryManager::FactorySetAudioADV() {
    mapi_audio* audio = mapi_interface_common::Get_mapi_audio();
    if (audio == nullptr) {
        return 0;
    }
    // A reading shows its title and value; a setting leaves both rows empty.
    auto reading = [this](const char* title, MAPI_U32 value) {
        NotifyUI(0, "AudioADV-Result-Title", title);
        NotifyUI(0, "AudioADV-Result-Value", value);
        return MAPI_BOOL{1};
    };
    switch (m_u8ADVParam1) {
        case kSetAudy:
            audio->ADVSND_SetAudyParam(m_u8ADVParam2, m_u8ADVParam3);
            break;
        case kReadCLevel:
            return reading("audy_clevel:", audio->ADVSND_GetAudyCLevel(m_u8ADVParam2));
        case kSetParam:
            audio->ADVSND_SetParam(m_u8ADVParam2, m_u8ADVParam3, 0);
            break;
        case kReadParam:
            return reading("audy_param:", audio->ADVSND_GetAudyParam(m_u8ADVParam2));
        default:
            return 0;
    }
    NotifyUI(0, "AudioADV-Result-Title", "");
    NotifyUI(0, "AudioADV-Result-Value", "");
    return 1;
}

MAPI_BOOL FactoryManager::ExitAudioADVMode() {
    return CloseEditorPage("AudioADV-Show", m_bAudioADVMode);
}
