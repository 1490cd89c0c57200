// The simulated set behind the production-line tests. Every call that changes the
// set is journalled; state lives in the areas of SimProductionTests.h.
#include "SimProductionTests.h"
#include "SimInfoPages.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>

#include "AudioManager.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Factory_Default.h"
#include "MSrv_Network.h"
#include "MSrv_Player.h"
#include "MSrv_SSSound.h"
#include "MSrv_System_Database.h"
#include "PictureManager.h"
#include "SimMMode.h"
#include "SimPlayers.h"
#include "TVManager.h"
#include "TimerManager.h"
#include "mapi_interface.h"
#include "mapi_vd.h"

using sim::ArgList;
using sim::Set;

namespace {
sim::StationState& Station() { return Set::Instance().Get<sim::StationState>(); }
sim::AudioPictureState& AudioPicture() { return Set::Instance().Get<sim::AudioPictureState>(); }
sim::SignalState& Signal() { return Set::Instance().Get<sim::SignalState>(); }
sim::WlanState& Wlan() { return Set::Instance().Get<sim::WlanState>(); }
void Record(const char* fn, const ArgList& args) { Set::Instance().RecordCall(fn, args); }
}  // namespace

namespace sim {

std::string AudioPictureState::OnTimerText() const {
    if (!onEnabled) {
        return "off";
    }
    char text[64];
    std::snprintf(text, sizeof(text), "%04d-%02d-%02d %02d:%02d:%02d period %d", onYear, onMonth,
                  onDay, onHour, onMinute, onSecond, onPeriod);
    return text;
}

void InstallDemoProductionFiles(const std::filesystem::path& rootFolder) {
    namespace fs = std::filesystem;
    static const char* const kFiles[][2] = {
        {"Customer/dpdc/iprc/HomeControl", "line home-control pairing\n"},
        {"Customer/factory/shipout.code", ""},
        {"Customer/stagecraft-data/cookies", "station=5\n"},
        {"Customer/stagecraft-data/shared-objects/line.sol", "line test object\n"},
        {"OAD/line-download.bin", "line OAD image\n"},
        {"OAD/.keep", ""},  // the update partition's marker, which `rm -rf /OAD/*` leaves
        {"applications/Intel_Widi/config/profiles.config", "# shipping profiles\n"},
        {"applications/Intel_Widi/config/adapter.config", "# shipping adapter\n"},
    };
    std::error_code ec;
    for (const auto& file : kFiles) {
        const fs::path path = rootFolder / file[0];
        // A root of the user's own keeps its files; links are never written through.
        if (fs::exists(fs::symlink_status(path, ec)) ||
            fs::is_symlink(fs::symlink_status(path.parent_path(), ec))) {
            continue;
        }
        fs::create_directories(path.parent_path(), ec);
        if (!ec) {
            std::ofstream(path, std::ios::binary) << file[1];
        }
    }
}

}  // namespace sim

// ---- Factory-command service ---------------------------------------------------------

MAPI_U8 MSrv_Factory_Cmd::GetFactoryCmdCode() { return Station().cmdCode; }

MAPI_U8 MSrv_Factory_Cmd::GetFactoryCmdParameter() { return Station().cmdParam; }

MAPI_BOOL MSrv_Factory_Cmd::CancellationLogSetup() {
    Record("MSrv_Factory_Cmd::CancellationLogSetup", ArgList());
    return 1;
}

MAPI_BOOL MSrv_Factory_Cmd::IsFactoryOSDStatus() {
    return Set::Instance().Get<sim::MModeState>().factoryOsd ? 1 : 0;
}

MAPI_BOOL MSrv_Factory_Cmd::IsUARTEnableUI() { return Station().uartUi ? 1 : 0; }

MAPI_BOOL MSrv_Factory_Cmd::SetUARTExecutingResult(unsigned char result) {
    Record("MSrv_Factory_Cmd::SetUARTExecutingResult", ArgList(result));
    Station().uartResult = result;
    return 1;
}

MAPI_BOOL MSrv_Factory_Cmd::SetFullPowerModeInformation(int backlight, int brightness, int volume) {
    Record("MSrv_Factory_Cmd::SetFullPowerModeInformation", ArgList(backlight, brightness, volume));
    Station().savedBacklight = backlight;
    Station().savedBrightness = brightness;
    Station().savedVolume = volume;
    return 1;
}

MAPI_BOOL MSrv_Factory_Cmd::SetFactoryDefaultMacIp() {
    Record("MSrv_Factory_Cmd::SetFactoryDefaultMacIp", ArgList());
    return Station().defaultMacIpResult ? 1 : 0;
}

MAPI_BOOL MSrv_Factory_Cmd::SetADC() {
    Record("MSrv_Factory_Cmd::SetADC", ArgList());
    Station().adcStarted = true;
    return 1;
}

MAPI_BOOL MSrv_Factory_Cmd::GetRSSI(int* first, int* second) {
    Record("MSrv_Factory_Cmd::GetRSSI", ArgList());
    if (first == nullptr || second == nullptr) {
        return 0;
    }
    *first = Wlan().rssi1;
    *second = Wlan().rssi2;
    return 1;
}

MAPI_BOOL MSrv_Factory_Cmd::WLAN_Full_Test() {
    Record("MSrv_Factory_Cmd::WLAN_Full_Test", ArgList());
    return Wlan().fullTestPass ? 1 : 0;
}

MAPI_U8 MSrv_Factory_Cmd::GetWLANErrorMessage() {
    Record("MSrv_Factory_Cmd::GetWLANErrorMessage", ArgList());
    return Wlan().errorCode;
}

MAPI_BOOL MSrv_Factory_Cmd::WakeOnWLANForFactoryThreadStart() {
    Record("MSrv_Factory_Cmd::WakeOnWLANForFactoryThreadStart", ArgList());
    Wlan().wowStarted = true;
    Wlan().wowPolls = 0;
    return 1;
}

MAPI_U8 MSrv_Factory_Cmd::GetWOWTestedStatus() {
    sim::WlanState& w = Wlan();
    const uint8_t status =
        w.wowStatus.empty() ? 2 : w.wowStatus[std::min(w.wowPolls, w.wowStatus.size() - 1)];
    ++w.wowPolls;
    Record("MSrv_Factory_Cmd::GetWOWTestedStatus", ArgList(status));
    return status;
}

MAPI_BOOL MSrv_Factory_Cmd::IsDLNAMonitorEnabled() { return Station().dlnaMonitor ? 1 : 0; }

MAPI_U32 MSrv_Factory_Cmd::GetDLNAMonitorCount() { return Station().dlnaMonitorCount; }

// ---- Factory store: VGA EDID ------------------------------------------------------------

MAPI_BOOL MSrv_Factory_Default::SetVGA_EDID_Data() {
    Record("MSrv_Factory_Default::SetVGA_EDID_Data", ArgList());
    return 1;
}

MAPI_BOOL MSrv_Factory_Default::GetVGA_EDID_Data(unsigned char* result) {
    Record("MSrv_Factory_Default::GetVGA_EDID_Data", ArgList());
    if (result == nullptr) {
        return 0;
    }
    *result = Station().vgaEdidPass ? 1 : 0;
    return 1;
}

// ---- Network ----------------------------------------------------------------------------

MAPI_BOOL MSrv_Network::DetectNetStatusForKeyWriting() {
    Record("MSrv_Network::DetectNetStatusForKeyWriting", ArgList());
    return Wlan().netUp ? 1 : 0;
}

int MSrv_Network::ScanWiFiAccessPoints(ST_WIFI_AP_INFO* list, int max) {
    Record("MSrv_Network::ScanWiFiAccessPoints", ArgList(max));
    int n = 0;
    for (const sim::AccessPoint& ap : Wlan().accessPoints) {
        if (list == nullptr || n >= max) {
            break;
        }
        ST_WIFI_AP_INFO& out = list[n++];
        std::memset(&out, 0, sizeof(out));
        std::strncpy(out.szSSID, ap.ssid.c_str(), sizeof(out.szSSID) - 1);
        out.u8Signal = static_cast<MAPI_U8>(ap.signal);
    }
    return n;
}

// ---- Sound, system database -----------------------------------------------------------

MAPI_BOOL MSrv_SSSound::SetSPDIFmode(MAPI_U8 mode) {
    Record("MSrv_SSSound::SetSPDIFmode", ArgList(mode));
    AudioPicture().spdifMode = mode;
    return 1;
}

MAPI_BOOL MSrv_System_Database::ChangeShipoutForZYT(MAPI_U8 region, int inputSource, MAPI_U8 save) {
    Record("MSrv_System_Database::ChangeShipoutForZYT", ArgList(region, inputSource, save));
    Station().shipoutRegion = region;
    Station().shipoutSource = inputSource;
    return 1;
}

// ---- Inputs, players and routes ----------------------------------------------------------

MAPI_BOOL MSrv_Player::IsSignalStable() {
    Record("MSrv_Player::IsSignalStable", ArgList());
    return Signal().present ? 1 : 0;
}

MAPI_BOOL MSrv_Player::GetTimingInfo(ST_MAPI_TIMING_INFO* info) {
    Record("MSrv_Player::GetTimingInfo", ArgList());
    if (info == nullptr) {
        return 0;
    }
    info->u16Width = Signal().width;
    info->u16Height = Signal().height;
    info->u16VFreq = Signal().vfreq;
    return 1;
}

mapi_vd* mapi_interface::Get_mapi_vd() {
    static mapi_vd vd;
    return &vd;
}

MAPI_U8 mapi_vd::GetVideoStandard() {
    Record("mapi_vd::GetVideoStandard", ArgList());
    return Signal().videoStandard;
}

// ---- TVManager: audio, picture, timer, resets ---------------------------------------------

AudioManager* TVManager::getAudioManager() {
    static AudioManager manager;
    return &manager;
}

TimerManager* TVManager::getTimerManager() {
    static TimerManager manager;
    return &manager;
}

MAPI_BOOL TVManager::resetToFactoryDefault() {
    Record("TVManager::resetToFactoryDefault", ArgList());
    Station().factoryDefaultReset = true;
    return 1;
}

MAPI_BOOL TVManager::ResetShipoutTV() {
    Record("TVManager::ResetShipoutTV", ArgList());
    Station().shipoutReset = true;
    return 1;
}

MAPI_BOOL AudioManager::selectAudysseySpeakerType(int type) {
    Record("AudioManager::selectAudysseySpeakerType", ArgList(type));
    AudioPicture().speakerType = type;
    return 1;
}

int AudioManager::getVolume() { return AudioPicture().volume; }

MAPI_BOOL AudioManager::setVolume(int volume) {
    Record("AudioManager::setVolume", ArgList(volume));
    AudioPicture().volume = volume;
    return 1;
}

MAPI_BOOL PictureManager::setPictureMode(int mode) {
    Record("PictureManager::setPictureMode", ArgList(mode));
    sim::Set::Instance().Get<sim::PictureState>().pictureMode = static_cast<MAPI_U8>(mode);
    return 1;
}

MAPI_BOOL PictureManager::setBacklight(int value) {
    Record("PictureManager::setBacklight", ArgList(value));
    sim::Set::Instance().Get<sim::PictureState>().backlight = static_cast<MAPI_U8>(value);
    return 1;
}

MAPI_BOOL PictureManager::setBrightness(int value) {
    Record("PictureManager::setBrightness", ArgList(value));
    sim::Set::Instance().Get<sim::PictureState>().brightness = static_cast<MAPI_U8>(value);
    return 1;
}

MAPI_BOOL TimerManager::setOnTime(const ST_TIME* time, int period, const ST_ON_TIME_TV_DES* des,
                                  MAPI_BOOL enable) {
    static const ST_TIME kZeroTime{};
    static const ST_ON_TIME_TV_DES kZeroDes{};
    const ST_TIME& t = time ? *time : kZeroTime;
    const bool zeroDes = des == nullptr || std::memcmp(des, &kZeroDes, sizeof(kZeroDes)) == 0;
    Record("TimerManager::setOnTime",
           ArgList(t.u16Year, t.u8Month, t.u8Day, t.u8Hour, t.u8Minute, t.u8Second, period,
                   zeroDes ? "zero" : "set", enable));
    sim::AudioPictureState& s = AudioPicture();
    s.onYear = t.u16Year;
    s.onMonth = t.u8Month;
    s.onDay = t.u8Day;
    s.onHour = t.u8Hour;
    s.onMinute = t.u8Minute;
    s.onSecond = t.u8Second;
    s.onPeriod = period;
    // An all-zero on-time is the platform's "no on-timer".
    s.onEnabled = !(t.u16Year == 0 && t.u8Month == 0 && t.u8Day == 0 && t.u8Hour == 0 &&
                    t.u8Minute == 0 && t.u8Second == 0 && period == 0 && zeroDes);
    return 1;
}
