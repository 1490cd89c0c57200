// The simulated set behind the media browser, the source switches of the media test
// and the DTV service count.
#include "SimMediaBrowser.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "MSrv_ChannelManager.h"
#include "MSrv_Control.h"
#include "MSrv_DTV_Player.h"
#include "MediaManager.h"
#include "SimPlayers.h"
#include "SimProductionTests2.h"
#include "TVManager.h"

using sim::ArgList;

namespace {

constexpr MAPI_U32 kNoDrive = 0xFFFFFFFFu;
constexpr MAPI_U32 kSetPlayFileFromPlayList = 52;

sim::MediaState& State() { return sim::Set::Instance().Get<sim::MediaState>(); }
void Record(const char* fn, const ArgList& args) { sim::Set::Instance().RecordCall(fn, args); }

// Names only: nothing on the drive is opened, so no link can lead the set out of
// its root. A link counts as a file.
void ListDrive(sim::MediaState& s) {
    s.folders.clear();
    s.files.clear();
    const std::filesystem::path folder = sim::Set::Instance().GetRoot().Map(s.usbFolder);
    std::error_code error;
    for (std::filesystem::directory_iterator it(folder, error), end; !error && it != end;
         it.increment(error)) {
        const auto status = it->symlink_status(error);
        const std::string name = it->path().filename().string();
        if (std::filesystem::is_directory(status)) {
            s.folders.push_back(name);
        } else {
            s.files.push_back(name);
        }
    }
    std::sort(s.folders.begin(), s.folders.end());
    std::sort(s.files.begin(), s.files.end());
}

}  // namespace

MediaManager* MediaManager::GetInstance() {
    static MediaManager manager;
    return &manager;
}

int MediaManager::init(const ST_ZYT_MEDIA_BROWSER_INIT* setup) {
    Record("MediaManager::init",
           setup ? ArgList(setup->u16ScreenWidth, setup->u16ScreenHeight, setup->pszExtensions[0])
                 : ArgList());
    if (setup == nullptr || State().initFails) {
        return 1;
    }
    State().initialised = true;
    return 0;
}

MAPI_U32 MediaManager::getTotalDriveNum() {
    Record("MediaManager::getTotalDriveNum", ArgList());
    return State().usbPresent ? 1 : kNoDrive;
}

int MediaManager::changeDrive(MAPI_U8 deviceList, MAPI_U32 drive) {
    Record("MediaManager::changeDrive", ArgList(deviceList, drive));
    sim::MediaState& s = State();
    if (!s.initialised || !s.usbPresent || drive != 0) {
        return 1;
    }
    s.driveSelected = true;
    return 0;
}

int MediaManager::setCurrentMediaType(MAPI_U8 mediaType) {
    Record("MediaManager::setCurrentMediaType", ArgList(mediaType));
    return State().initialised ? 0 : 1;
}

int MediaManager::clearPlayList() {
    Record("MediaManager::clearPlayList", ArgList());
    State().playList.clear();
    return 0;
}

int MediaManager::run() {
    Record("MediaManager::run", ArgList());
    sim::MediaState& s = State();
    if (!s.initialised || !s.driveSelected) {
        return 1;
    }
    ListDrive(s);
    return 0;
}

MAPI_U32 MediaManager::getCurrentDriveIndex() {
    Record("MediaManager::getCurrentDriveIndex", ArgList());
    return State().driveSelected ? 0 : kNoDrive;
}

MAPI_U32 MediaManager::getCurrentFolderNumer() {
    Record("MediaManager::getCurrentFolderNumer", ArgList());
    return static_cast<MAPI_U32>(State().folders.size());
}

MAPI_U32 MediaManager::getTotalFileNumber() {
    Record("MediaManager::getTotalFileNumber", ArgList());
    return static_cast<MAPI_U32>(State().folders.size() + State().files.size());
}

int MediaManager::setFileSelected(MAPI_U8 deviceList, MAPI_U8 mediaType, MAPI_U32 index) {
    Record("MediaManager::setFileSelected", ArgList(deviceList, mediaType, index));
    sim::MediaState& s = State();
    // A folder cannot be played.
    if (index < s.folders.size() || index >= s.folders.size() + s.files.size()) {
        return 1;
    }
    s.playList.push_back(s.files[index - s.folders.size()]);
    return 0;
}

int MediaManager::executeCommand(MAPI_U8 device, MAPI_U32 command, MAPI_U32 p1, MAPI_U32 p2,
                                 MAPI_U32 p3) {
    Record("MediaManager::executeCommand", ArgList(device, command, p1, p2, p3));
    sim::MediaState& s = State();
    if (command != kSetPlayFileFromPlayList || s.playList.empty()) {
        return 1;
    }
    s.playing = s.playList.front();
    return 0;
}

int MediaManager::setPlayMode(MAPI_U8 device, MAPI_U8 mediaType, MAPI_U8 mode) {
    Record("MediaManager::setPlayMode", ArgList(device, mediaType, mode));
    return State().initialised ? 0 : 1;
}

int MediaManager::play(MAPI_U8 device, MAPI_U8 mediaType) {
    Record("MediaManager::play", ArgList(device, mediaType));
    sim::MediaState& s = State();
    if (s.playFails || s.playing.empty()) {
        return 1;
    }
    s.state = "playing";
    return 0;
}

int MediaManager::pause(MAPI_U8 device, MAPI_U8 mediaType) {
    Record("MediaManager::pause", ArgList(device, mediaType));
    sim::MediaState& s = State();
    if (s.state != "playing") {
        return 1;
    }
    s.state = "paused";
    return 0;
}

int MediaManager::stop(MAPI_U8 device, MAPI_U8 mediaType) {
    Record("MediaManager::stop", ArgList(device, mediaType));
    State().state = "stopped";
    State().playing.clear();
    return 0;
}

int MediaManager::unsetOnMediaEventListener(_EN_ZYT_MM_EVENT_LIST events) {
    Record("MediaManager::unsetOnMediaEventListener", ArgList(events));
    return 0;
}

int MediaManager::Deinit() {
    Record("MediaManager::Deinit", ArgList());
    sim::MediaState& s = State();
    s.initialised = false;
    s.driveSelected = false;
    s.folders.clear();
    s.files.clear();
    s.playList.clear();
    s.playing.clear();
    s.state = "stopped";
    return 0;
}

// ---- Sources, routes, channels ----------------------------------------------------

MAPI_BOOL TVManager::setInputSource(EN_ZYT_INPUT_SOURCE_TYPE source, unsigned char flag) {
    Record("TVManager::setInputSource", ArgList(source, flag));
    sim::Set::Instance().Get<sim::PlayerState>().currentSource = source;
    return 1;
}

MAPI_BOOL MSrv_ChannelManager::GetDtvServiceCount(long* count) {
    Record("MSrv_ChannelManager::GetDtvServiceCount", ArgList());
    if (count == nullptr || State().serviceCountFails) {
        return 0;
    }
    *count = static_cast<long>(sim::Set::Instance().Get<sim::DtvTuningState>().programs.size());
    return 1;
}

MAPI_BOOL MSrv_DTV_Player::PlayCurrentProgram(MAPI_BOOL force) {
    Record("MSrv_DTV_Player::PlayCurrentProgram", ArgList(force));
    State().programPlaying = true;
    return 1;
}
