// Simulated media browser over a USB drive that is a folder under the set's root,
// the source switches of the media test, and the channel list's DTV service count.
// Starts as the demo set: a drive at /mnt/usb/sda1 (empty until files are put there)
// and twelve DTV services.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "MTypes.h"
#include "SimSet.h"

namespace sim {

struct MediaState : Area {
    // The drive.
    bool usbPresent = true;
    std::string usbFolder = "/mnt/usb/sda1";  // a TV path under the root
    bool initFails = false;
    bool playFails = false;

    // The browser: the current folder's entries once it runs, folders first.
    bool initialised = false;
    bool driveSelected = false;
    std::vector<std::string> folders;
    std::vector<std::string> files;
    std::vector<std::string> playList;
    std::string playing;            // the play list's file set for playing
    std::string state = "stopped";  // "playing", "paused" or "stopped"

    // The channel list's count of DTV services is that of the channel manager's
    // programs (DtvTuningState); only its read can fail here.
    bool serviceCountFails = false;
    bool programPlaying = false;
};

}  // namespace sim
