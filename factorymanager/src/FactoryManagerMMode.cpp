// M-mode: the production line's factory mode. The platform keeps the status; we
// mark the screen, prepare the set for the line and put it back afterwards.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "FactoryAssert.h"
#include "FactoryEventIds.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_ChannelManager.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Factory_Default.h"
#include "MSrv_Factory_Mode.h"
#include "MSrv_SSSound.h"
#include "MSrv_System_Database.h"
#include "TVManager.h"
#include "TvHost.h"
#include "mapi_system.h"

namespace {

constexpr ST_WIDGET_POSITION kMModeIconPos = {1200, 10, 50, 50};
constexpr unsigned long kMModeIconColour = 0xFFFF0000;
constexpr unsigned short kMModeIconSize = 36;
constexpr unsigned long kVolumeTimer = FactoryTimer::FactoryVolumeAdj;
constexpr MAPI_U8 kMuteTypeFactory = 4;
// Factory store items: the serial debug port's routing flag and the mode byte.
constexpr unsigned short kItemSerialDebugPort = 7838;
constexpr unsigned short kItemModeByte = 3567;
constexpr size_t kSerialBufferSize = 15;
// Service staff find these routines in the set's logs by the source lines of its
// build, so the traces and the assertion carry those numbers, not ours.
constexpr int kShowMModeIconLine = 1576;
constexpr int kDatabaseAssertLine = 1592;
constexpr int kCloseMModeLine = 1775;

// Prepared on every start: the marker tells later boots the set came off the line.
constexpr const char* kLinePreparation[] = {
    "touch /Customer/factory/shipout.code",
    "chmod 777 -R /Customer/factory/shipout.code",
    "sync",
};

// A set whose system database is not the DVB variant is built wrong: stop here,
// as the service staff's logs expect.
[[noreturn]] void AssertFail(const char* function) {
    FactoryAssert::Fail(FactoryAssert::kManagerFile, function, kDatabaseAssertLine);
}

}  // namespace

void FactoryManager::ShowMModeIcon(MAPI_BOOL on) {
    FACTORY_TRACE_AT(kShowMModeIconLine);
    if (!on) {
        ClearFactoryUiNative();
        m_pFactoryCmd->EnableWiFiDongle(0);
        return;
    }
    MSrv_Control::GetInstance()->GetMSrvFactoryMode()->SetWDT_ONOFF(0);
    for (const char* line : kLinePreparation) {
        mapi_system::SystemCmd(line);
    }
    DrawText(kMModeIconPos, reinterpret_cast<const unsigned char*>("M"), kMModeIconColour,
             kMModeIconSize);
    auto* database = dynamic_cast<MSrv_System_Database_DVB*>(
        MSrv_Control::GetInstance()->GetMSrvSystemDatabase());
    if (database == nullptr) {
        AssertFail(__PRETTY_FUNCTION__);
    }
    database->RestoreDefaultDataTransfer();
    if (m_pFactoryCmd->IsSettingMModeFisished()) {
        m_pFactoryCmd->SettingMModeFisishedStatus(0);
    } else {
        m_pFactoryCmd->EnableWiFiDongle(1);
    }
}

MAPI_BOOL FactoryManager::OnEvent_FactoryMModeStart(void*, void*, void*) {
    FACTORY_LOG(FACTORY_LOG_INFO, "MSrv_Factory_Cmd::M_MODE_OPEN: %d",
                static_cast<int>(MSrv_Factory_Cmd::M_MODE_OPEN));
    ShowMModeIcon(1);
    ResetState();
    InfoZYTAppMgrForVersion(1);
    return 1;
}

namespace {
// Source 1 or 28 with a current channel whose presence byte is set and whose
// attribute bits include any of 0x0C.
bool StoresVolumeWithChannel(MSrv_Control* control) {
    const MAPI_INPUT_SOURCE_TYPE source = control->GetCurrentInputSource();
    if (source != MAPI_INPUT_SOURCE_ATV && source != MAPI_INPUT_SOURCE_DTV) {
        return false;
    }
    MSrv_ChannelManager* channels = control->GetMSrvChannelManager();
    ST_CHANNEL_INFO info{};
    return channels != nullptr && channels->GetCurrentChannelInfo(&info) && info.u8Present &&
           (info.u8Attribute & 0x0C) != 0;
}
}  // namespace

MAPI_BOOL FactoryManager::OnEvent_FactoryVolumeAdj(void*, void*, void* p3) {
    FACTORY_TRACE();
    NotifyUI(0, "HideAllUIExcept", "volume");
    const MAPI_U8 volume = m_pFactoryCmd->GetFactoryVolume();
    // Outside M-mode the stored volume comes with the event.
    const MAPI_U8 stored = m_pFactoryCmd->GetFactoryMmodeStatus()
                               ? volume
                               : static_cast<MAPI_U8>(reinterpret_cast<uintptr_t>(p3));
    MSrv_Control* control = MSrv_Control::GetInstance();
    // Either/or, by design: a TV channel with the attributes keeps the volume in its
    // audio setting and the live volume and mute are left alone; anything else hears
    // the factory volume at once. The UI shows the factory volume in both cases.
    if (StoresVolumeWithChannel(control)) {
        MSrv_System_Database* database = control->GetMSrvSystemDatabase();
        ST_AUDIO_SETTING audio{};
        database->GetAudioSetting(&audio);
        audio.Volume = stored;
        database->SetAudioSetting(&audio);
    } else {
        MSrv_SSSound* sound = control->GetMSrvSSSound();
        sound->SetMuteStatus(kMuteTypeFactory, 0);
        sound->SetVolume(volume, 1);
    }
    m_pFactoryCmd->SetFactoryVolumeRequest(0);
    NotifyUI(0, "set-volume", static_cast<long>(volume));
    NotifyUI(0, "set-volumeBar", static_cast<long>(volume));
    NotifyUI(0, "volume", 1L);
    KillTimer(kVolumeTimer);
    SetTimer(3000, kVolumeTimer, E_TIMER_ONESHOT);
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_FactoryVolumeAdj(void*, void*, void*) {
    KillTimer(kVolumeTimer);
    NotifyUI(0, "volume", 0L);
    return 1;
}

MAPI_BOOL FactoryManager::OnEvent_ExitFactoryMode(void*, void*, void*) {
    FACTORY_LOG(FACTORY_LOG_INFO, "Exit Factory mode ");
    ResetState();
    m_pFactoryCmd->SetFactoryMmodeStatus(0);
    ShowMModeIcon(0);
    // The line may have routed the serial debug port; a consumer set has it off.
    unsigned char debugPort = 0;
    m_pFactoryDefault->GetFactoryData(kItemSerialDebugPort, &debugPort);
    if (debugPort == 1) {
        m_pFactoryDefault->SetFactoryData(kItemSerialDebugPort, 0);
        m_pFactoryCmd->SetSerialDebugPort(0);
    }
    RestoreConsumerState(1);
    return 1;
}

MAPI_BOOL FactoryManager::CloseMModeAfterPower() {
    FACTORY_TRACE_AT(kCloseMModeLine);
    FACTORY_LOG(FACTORY_LOG_INFO, "Close M mode ");
    ResetState();
    m_pFactoryCmd->SetFactoryMmodeStatus(0);
    ShowMModeIcon(0);
    RestoreConsumerState(0);
    return 1;
}

void FactoryManager::RestoreConsumerState(MAPI_BOOL standby) {
    unsigned char mode = 2;
    m_pFactoryDefault->GetFactoryData(kItemModeByte, &mode);
    if (mode == 0 || mode == 1) {
        m_pFactoryDefault->SetFactoryData(kItemModeByte, 2);
    }
    MSrv_Control* control = MSrv_Control::GetInstance();
    MSrv_System_Database* database = control->GetMSrvSystemDatabase();
    ST_USER_SYSTEM_SETTING setting{};
    database->GetUserSystemSetting(&setting);
    // The customer's first power-on runs the installation guide, as on a new set.
    setting.fRunInstallationGuide = 1;
    database->SetBlueScreenEnable(1);
    database->SetUserSystemSetting(&setting);
    m_pFactoryCmd->SetEnergySavingSetting(1);
    if (standby) {
        control->EnterSleepMode(1);
    }
}

MAPI_BOOL FactoryManager::IsMMode() {
    FACTORY_LOG(FACTORY_LOG_INFO, "Is M mode ");
    return m_pFactoryCmd->GetFactoryMmodeStatus();
}

MAPI_BOOL FactoryManager::IsSDMode() {
    FACTORY_LOG(FACTORY_LOG_INFO, "Is S/D mode ");
    return m_bDModeOpen;
}

MAPI_BOOL FactoryManager::OnEvent_FactoryM_ModeAction(unsigned char action) {
    static const struct {
        const char* log;
        const char* name;
    } kActions[] = {
        {"~~ Key Select", "FUNCTION KEY"},
        {"~~ Key Down", "DOWN KEY"},
        {"~~ Key Up", "UP KEY"},
        {"~~ Key Power", "POWER KEY"},
    };
    InfoZYTAppMgr(1);
    InfoWebAppMgrHideShowPage(1, 1);
    if (action < sizeof(kActions) / sizeof(kActions[0])) {
        FACTORY_LOG(FACTORY_LOG_INFO, "%s", kActions[action].log);
        NotifyUI(0, "M-Mode-Key", kActions[action].name);
        m_bMModeKeyShown = 1;
    }
    return 1;
}

MAPI_BOOL FactoryManager::CloseSideKeyUIOnMmode() {
    TvHost_Sleep(0);  // let the page take the last key name first
    NotifyUI(0, "M-Mode-Key_Finish-Show", 0L);
    m_bMModeKeyShown = 0;
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
    return 1;
}

MAPI_BOOL FactoryManager::GetProductSerialNum(unsigned char* serial) {
    // The host's buffer: without one there is nothing to read into.
    if (serial == nullptr) {
        return 0;
    }
    std::memset(serial, 0, kSerialBufferSize);
    return m_pFactoryCmd->ReadSerialNum(serial);
}

MAPI_BOOL FactoryManager::ShowFactorySerialNumStatus(unsigned char state) {
    if (state == 0) {
        NotifyUI(0, "SerialNum-Ready", "Serial No. Ready. Plug Barcode Reader");
    } else if (state == 1) {
        unsigned char serial[kSerialBufferSize];
        GetProductSerialNum(serial);
        // A serial fills at most 14 bytes; the 15th is the terminator's place.
        std::string text = "OK!! Serial No: ";
        text.append(reinterpret_cast<const char*>(serial),
                    strnlen(reinterpret_cast<const char*>(serial), kSerialBufferSize - 1));
        NotifyUI(0, "SerialNum-Ready", text.c_str());
    } else {
        NotifyUI(0, "SerialNum-Show", 0L);
        InfoZYTAppMgr(0);
        InfoWebAppMgrHideShowPage(0, 1);
    }
    return 1;
}

MAPI_BOOL FactoryManager::CloseFactorySerialNumOSD() {
    NotifyUI(0, "SerialNum-Show", 0L);
    return 1;
}
