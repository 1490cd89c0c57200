// The key dispatcher: which active page owns a key, the page reset routines, and the
// codes of the factory remote controller that the library runs itself.
#include <cstdint>
#include <cstdio>

#include "FactoryEventIds.h"
#include "FactoryKeyCodes.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "KeyManager.h"
#include "MSrv_ATV_Player.h"
#include "MSrv_Control.h"
#include "MSrv_Control_common.h"
#include "MSrv_Factory_Cmd.h"
#include "TVManager.h"

namespace {
constexpr unsigned long kTunerInfoTimer = FactoryTimer::TunerInfo;
constexpr unsigned long kKeyWaitTimer = FactoryTimer::FactoryKeyWaitMWBFinish;

void* Param(uintptr_t value) { return reinterpret_cast<void*>(value); }
}  // namespace

// What follows a page's own exit routine.
enum class AfterExit { HostAndPage, PageOnly, Nothing };

// One page that may own keys, in order of priority. Pages that simply close on an
// exit key give their exit routine; the others handle every key themselves.
struct FactoryManager::KeyOwner {
    MAPI_U8 FactoryManager::*flag;
    const char* log;
    void (*close)(FactoryManager&);
    AfterExit after;
    MAPI_BOOL (FactoryManager::*onKey)(unsigned long);
};

const FactoryManager::KeyOwner* FactoryManager::KeyOwners(size_t& count) {
    using F = FactoryManager;
    static const KeyOwner owners[] = {
        {&F::m_bIsADCAdjustmentTesting, "~~ m_bIsADCAdjustmentTesting = TRUE. /MVK_EXIT/",
         [](F& fm) {
             fm.OnTimer_FactoryADCAdjustment(nullptr, Param(FactoryTimer::FactoryADCAdjustment),
                                             nullptr);
         },
         AfterExit::HostAndPage, nullptr},
        {&F::m_bIsVGAEDIDWriting, nullptr,
         [](F& fm) {
             fm.OnTimer_FactoryWriteVGA_EDID_EEPRPOM(
                 nullptr, Param(FactoryTimer::FactoryWriteVGA_EDID_EEPRPOM), nullptr);
         },
         AfterExit::HostAndPage, nullptr},
        {&F::m_bIsWLANTesting, "~~ m_bIsWLANTesting = TRUE. /MVK_EXIT/",
         [](F& fm) {
             fm.OnTimer_FactoryWLANTest(nullptr, Param(FactoryTimer::FactoryWLANTest), nullptr);
         },
         AfterExit::HostAndPage, nullptr},
        {&F::m_bIsWakeOnWLAN, "~~ m_bIsWakeOnWLAN = TRUE. /MVK_EXIT/",
         [](F& fm) {
             fm.OnTimer_FactoryWakeOnWLAN(nullptr, Param(FactoryTimer::FactoryWakeOnWLAN), nullptr);
         },
         AfterExit::HostAndPage, nullptr},
        {&F::m_bMediaPlayerMode, nullptr,
         [](F& fm) { fm.OnEvent_MediaPlayerStop(nullptr, nullptr, nullptr); },
         AfterExit::HostAndPage, nullptr},
        {&F::m_bVersionMode, nullptr, nullptr, AfterExit::Nothing, &F::VersionModeKey},
        {&F::m_bRevicInfoMode, nullptr, [](F& fm) { fm.ExitRevicInfo(); }, AfterExit::PageOnly,
         nullptr},
        {&F::m_bAutoBrightnessSensorValueMode, nullptr,
         [](F& fm) { fm.ExitAutoBrightnessSensorValueMode(); }, AfterExit::HostAndPage, nullptr},
        {&F::m_bDLNATestMode, nullptr, [](F& fm) { fm.ExitDLNATest(); }, AfterExit::HostAndPage,
         nullptr},
        {&F::m_bInternalPatternMode, nullptr,
         [](F& fm) {
             fm.m_pFactoryCmd->InternalPatternOff();
             fm.m_bInternalPatternMode = 0;
         },
         AfterExit::Nothing, nullptr},
        {&F::m_bAgingMode1, nullptr, &F::CloseAging, AfterExit::HostAndPage, nullptr},
        {&F::m_bAgingMode2, nullptr, &F::CloseAging, AfterExit::HostAndPage, nullptr},
        {&F::m_bAudioBalanceCheckMode, nullptr, [](F& fm) { fm.ExitAudioBalanceCheck(); },
         AfterExit::HostAndPage, nullptr},
        {&F::m_bBackLightLevelMode, nullptr, [](F& fm) { fm.ExitBackLightLevel(); },
         AfterExit::HostAndPage, nullptr},
        {&F::m_bAutoBrightnessSensorMode, nullptr,
         [](F& fm) {
             fm.SetKeyRouteDefault();
             fm.ExitAutoBrightnessSensor();
         },
         AfterExit::HostAndPage, nullptr},
        {&F::m_bPolarizationMode, nullptr,
         [](F& fm) {
             fm.DisplayVideoAfterPolarizatonChanged();
             fm.m_bPolarizationMode = 0;
         },
         AfterExit::HostAndPage, nullptr},
        {&F::m_bDigitalAudioOutMode, nullptr, [](F& fm) { fm.ExitDigitalAudioOut(); },
         AfterExit::HostAndPage, nullptr},
        {&F::m_bCITestMode, nullptr, [](F& fm) { fm.ExitCITestStatus(); }, AfterExit::HostAndPage,
         nullptr},
        {&F::m_bCloneCopyMode, nullptr, nullptr, AfterExit::Nothing, &F::CloneCopyKey},
        {&F::m_bATVTuningSearchMode, nullptr, nullptr, AfterExit::Nothing, &F::ATVTuningSearchKey},
        {&F::m_bPEQMode, nullptr, nullptr, AfterExit::Nothing, &F::PEQKey},
        // The two editors act on the key and still let the TV have it.
        {&F::m_b3DTimingMode, nullptr, nullptr, AfterExit::Nothing, &F::Timing3DKey},
        {&F::m_bAudioADVMode, nullptr, nullptr, AfterExit::Nothing, &F::AudioADVKey},
        {&F::m_bKeyWritingResult, nullptr, nullptr, AfterExit::Nothing, &F::KeyWritingResultKey},
        {&F::m_bAPListShown, nullptr, nullptr, AfterExit::Nothing, &F::APListKey},
        {&F::m_b9PointPatternMode, nullptr, nullptr, AfterExit::Nothing, &F::NinePointKey},
    };
    count = sizeof(owners) / sizeof(owners[0]);
    return owners;
}

MAPI_BOOL FactoryManager::FactoryDoKeyAction(unsigned long key) {
    if (m_pFactoryCmd->GetFactoryMmodeStatus()) {
        for (const MModeKey& m : kMModeKeys) {
            if (m.key == key) {
                OnEvent_FactoryM_ModeAction(m.action);
                return 1;
            }
        }
    }
    if (m_bDModeOpen) {
        return FactoryDModeAction(key);
    }
    size_t count = 0;
    const KeyOwner* owners = KeyOwners(count);
    for (size_t i = 0; i < count; ++i) {
        const KeyOwner& page = owners[i];
        if (this->*page.flag) {
            return page.onKey ? (this->*page.onKey)(key) : CloseExitPage(page, key);
        }
    }
    FACTORY_LOG(FACTORY_LOG_INFO, "Factory don't process the key.");
    return 0;
}

MAPI_BOOL FactoryManager::CloseExitPage(const KeyOwner& page, unsigned long key) {
    if (!FactoryKey::IsExit(key)) {
        return 0;
    }
    if (page.log != nullptr) {
        FACTORY_LOG(FACTORY_LOG_INFO, "%s", page.log);
    }
    page.close(*this);
    if (page.after == AfterExit::HostAndPage) {
        InfoZYTAppMgr(0);
    }
    if (page.after != AfterExit::Nothing) {
        InfoWebAppMgrHideShowPage(0, 1);
    }
    return 1;
}

void FactoryManager::CloseAging(FactoryManager& fm) {
    fm.m_pFactoryCmd->InternalPatternOff();
    fm.ExitAgingMode1();
    fm.ExitAgingMode2();
}

MAPI_BOOL FactoryManager::VersionModeKey(unsigned long key) {
    puts("~~ m_bVersionMode = TRUE ");
    // On the panel, power is M-mode's key while M-mode is on.
    const bool closes = FactoryKey::IsExit(key) || key == FactoryKey::Power ||
                        (key == FactoryKey::PanelPower && !m_pFactoryCmd->GetFactoryMmodeStatus());
    if (closes) {
        SetKeyRouteDefault();
        KillTimer(kTunerInfoTimer);
        ExitVersionMode();
        if (m_bVersionShownByCommand) {
            m_bVersionShownByCommand = 0;
            InfoZYTAppMgrForVersion(0);
        }
        InfoWebAppMgrHideShowPage(0, 1);
        return 1;
    }
    if (key == FactoryKey::Up || key == FactoryKey::Down) {
        VersionAction(key);
        return 1;
    }
    return 0;
}

MAPI_BOOL FactoryManager::CloneCopyKey(unsigned long key) {
    // Switching off in the middle of a copy would leave a half-written set.
    if (key == FactoryKey::PanelPower || key == FactoryKey::Power) {
        return m_bCloneCopyBusy ? 1 : 0;
    }
    if (!FactoryKey::IsExit(key)) {
        return 0;
    }
    ExitCloneCopy();
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
    return 1;
}

MAPI_BOOL FactoryManager::ATVTuningSearchKey(unsigned long key) {
    if (FactoryKey::IsExit(key) || key == FactoryKey::Menu || key == FactoryKey::PanelMenu) {
        puts("~~ /EXIT/, /MENU/ ");
        m_bATVTuningSearchMode = 0;
        m_pFactoryCmd->SetFactoryOSDStatus(0);
        ExitATVTuningSearch();
        InfoZYTAppMgr(0);
        InfoZYTAppMgrForVersion(0);
        return 1;
    }
    if (key == FactoryKey::AtvStore) {
        MSrv_Control::GetInstance()->GetMSrvAtv()->ATVSaveProgram(
            static_cast<unsigned char>(m_u16CurrentChannelNum - 1));
        return 1;
    }
    if (key == FactoryKey::Select) {
        ATVTuningSearchSelect();
        return 1;
    }
    return 0;
}

MAPI_BOOL FactoryManager::PEQKey(unsigned long key) {
    PEQProcessKey(key);
    return 1;
}

MAPI_BOOL FactoryManager::Timing3DKey(unsigned long key) {
    Factory3DTimingKeyAction(key);
    return 0;
}

MAPI_BOOL FactoryManager::AudioADVKey(unsigned long key) {
    FactoryAudioADVKeyAction(key);
    return 0;
}

MAPI_BOOL FactoryManager::KeyWritingResultKey(unsigned long key) {
    if (FactoryKey::IsExit(key)) {
        m_bKeyWritingResult = 0;
        m_pFactoryCmd->SetFactoryOSDStatus(0);
        ShowKeyWritingIcon(0, 3);
        InfoZYTAppMgrForVersion(0);
    }
    return 0;
}

MAPI_BOOL FactoryManager::APListKey(unsigned long key) {
    if (key == FactoryKey::Exit) {
        DisplayAPListUI(nullptr, nullptr);
        m_bAPListShown = 0;
    }
    return 0;
}

MAPI_BOOL FactoryManager::NinePointKey(unsigned long key) {
    if (key == FactoryKey::Exit) {
        Display9PointPattern(0);
    }
    return 0;
}

void FactoryManager::SetKeyRouteDefault() {
    KeyManager* keys = TVManager::GetInstance()->getKeyManager();
    if (keys == nullptr) {
        return;
    }
    keys->setKeyRouting(E_ZYT_KEY_ROUTING_DEFAULT);
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ SetKeyRoute  /E_ZYT_KEY_ROUTING_DEFAULT/");
}

// ---- Page reset -----------------------------------------------------------------------

void FactoryManager::ResetStateWithoutKeyWriting() {
    // The factory OSD goes off between the two groups, as the platform expects.
    static MAPI_U8 FactoryManager::*const before[] = {
        &FactoryManager::m_bRevicInfoMode,
        &FactoryManager::m_bVersionMode,
        &FactoryManager::m_bAutoBrightnessSensorValueMode,
        &FactoryManager::m_bDModeOpen,
        &FactoryManager::m_bDLNATestMode,
        &FactoryManager::m_bSModeShown,
        &FactoryManager::m_bCHPresetShown,
        &FactoryManager::m_bMediaPlayerMode,
    };
    static MAPI_U8 FactoryManager::*const after[] = {
        &FactoryManager::m_bCITestMode,
        &FactoryManager::m_bInternalPatternMode,
        &FactoryManager::m_bAgingMode1,
        &FactoryManager::m_bAgingMode2,
        &FactoryManager::m_bCloneCopyMode,
        &FactoryManager::m_bATVTuningSearchMode,
        &FactoryManager::m_b3DTimingMode,
        &FactoryManager::m_bAudioADVMode,
        &FactoryManager::m_bAutoBrightnessSensorMode,
        &FactoryManager::m_bBackLightLevelMode,
        &FactoryManager::m_bPolarizationMode,
    };
    for (MAPI_U8 FactoryManager::*flag : before) {
        this->*flag = 0;
    }
    m_pFactoryCmd->SetFactoryOSDStatus(0);
    for (MAPI_U8 FactoryManager::*flag : after) {
        this->*flag = 0;
    }
}

void FactoryManager::ResetKeyWriting() {
    if (m_u8KeywritingStatus != 1) {
        return;
    }
    m_u8KeywritingStatus = 0;
    printf("~~ un-mount Key writing -- isWriteKeydone= %d \n",
           MSrv_Control_common::m_isWriteKeydone);
    InfoZYTAppMgrForVersion(0);
    m_pFactoryCmd->SetFactoryOSDStatus(m_u8KeywritingStatus);
    ShowKeyWritingIcon(0, 3);
}

void FactoryManager::ResetState() {
    ResetKeyWriting();
    ResetStateWithoutKeyWriting();
}

// ---- Factory remote controller ---------------------------------------------------------

// The factory event is sent to the service first (none for the DVB-C tuning code, which
// the service records instead), then the handler runs at once with the parameter.
struct FactoryManager::RemoteCodeRow {
    unsigned short code;
    int event;  // -1: none
    MAPI_BOOL (FactoryManager::*handler)(void*, void*, void*);
    uintptr_t param;
    bool shipout;
};

const FactoryManager::RemoteCodeRow* FactoryManager::FindRemoteCode(unsigned short code) {
    using F = FactoryManager;
    using namespace FactoryRemoteCode;
    static const RemoteCodeRow rows[] = {
        {DirectTuneDvbc, -1, &F::OnEvent_DirectTune, 118, false},
        {ConfigurationA, 170, &F::OnEvent_FactoryConfiguration, 132, false},
        {ConfigurationB, 171, &F::OnEvent_FactoryConfiguration, 133, false},
        {ShipoutA, 180, &F::OnEvent_Shipout, 235, true},
        {ShipoutB, 181, &F::OnEvent_Shipout, 234, true},
        {ShipoutC, 168, &F::OnEvent_Shipout, 121, true},
        {ShipoutD, 169, &F::OnEvent_Shipout, 128, true},
        {ShipoutE, 173, &F::OnEvent_Shipout, 129, true},
    };
    for (const RemoteCodeRow& row : rows) {
        if (row.code == code) {
            return &row;
        }
    }
    return nullptr;
}

void FactoryManager::RunRemoteCode(const RemoteCodeRow& row) {
    if (row.event < 0) {
        m_pFactoryCmd->SetFactoryCodeEvent(row.code, static_cast<unsigned short>(row.param));
    } else {
        m_pFactoryCmd->_HandleFactoryEvent(static_cast<unsigned int>(row.event), 0, 0);
    }
    (this->*row.handler)(nullptr, Param(row.param), nullptr);
}

MAPI_BOOL FactoryManager::SpeedupSpecificalKey() {
    unsigned short code = 0;
    m_pFactoryCmd->GetFactoryCode(&code);
    const RemoteCodeRow* row = FindRemoteCode(code);
    if (row == nullptr) {
        return 0;
    }
    RunRemoteCode(*row);
    return 1;
}

namespace {
// Codes the fixture treats specially; only the progress lines tell them apart.
bool IsSpecialFixtureCode(unsigned short code) {
    static const unsigned short special[] = {60985, 61081, 49067, 61141, 49065, 60946};
    for (unsigned short s : special) {
        if (s == code) {
            return true;
        }
    }
    return code > 60288 && code < 60298;
}

struct WaitLabels {
    const char* before;
    const char* finished;
    const char* waiting;
};
// [service registered][special code]
constexpr WaitLabels kWaitLabels[2][2] = {
    {{"2.3", "2.5", "2.4"}, {"2.1", "2.2.2", "2.2"}},
    {{"3.3", "3.5", "3.4"}, {"3.1", "3.2.1", "3.2"}},
};

void PrintWaitStep(const char* label) {
    printf("~~ %s [FactoryManager::FactoryKeyWaitMWBFinish]\n", label);
}
}  // namespace

MAPI_BOOL FactoryManager::FactoryKeyWaitMWBFinish() {
    unsigned short code = 0;
    m_pFactoryCmd->GetFactoryCode(&code);
    KillTimer(kKeyWaitTimer);
    SetTimer(1000, kKeyWaitTimer, E_TIMER_REPEAT);
    const bool service = isWebAppMgrServiceInitialized() != 0;
    PrintWaitStep(service ? "3" : "2");
    const WaitLabels& labels = kWaitLabels[service ? 1 : 0][IsSpecialFixtureCode(code) ? 1 : 0];
    PrintWaitStep(labels.before);
    if (MSrv_Control_common::Is_ATCmd_Finished()) {
        PrintWaitStep(labels.finished);
        KillTimer(kKeyWaitTimer);
        return 1;
    }
    PrintWaitStep(labels.waiting);
    return 0;
}

MAPI_BOOL FactoryManager::OnTimer_FactoryKeyWaitMWBFinish(void*, void* id, void*) {
    if (reinterpret_cast<uintptr_t>(id) != kKeyWaitTimer) {
        return 1;
    }
    if (!MSrv_Control_common::Is_ATCmd_Finished()) {
        return 0;
    }
    KillTimer(kKeyWaitTimer);
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ [FactoryManager::OnTimer_FactoryKeyWaitMWBFinish]");
    unsigned short code = 0;
    m_pFactoryCmd->GetFactoryCode(&code);
    const RemoteCodeRow* row = FindRemoteCode(code);
    if (row != nullptr && row->shipout) {
        RunRemoteCode(*row);
    } else {
        m_pFactoryCmd->GetFactoryCodeFromZYTSpecialRemoteController2Exe();
    }
    return 1;
}
