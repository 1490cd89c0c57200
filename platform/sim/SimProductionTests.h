// Simulated state behind the production-line tests: the factory-command service's
// station command, serial UI and results, the audio and picture settings the
// setting commands change, the on-timer, the analogue input's signal, the digital
// routes, the wireless and wired network and the shipout region. Starts as the
// demo set: a working set on the line, nothing written yet.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "SimSet.h"

namespace sim {

struct StationState : Area {
    uint8_t cmdCode = 0;   // the station's factory-command code (230: digital audio)
    uint8_t cmdParam = 0;  // its parameter byte (shipout region and the like)
    bool uartUi = true;    // the serial fixture lets factory panels use the screen
    int uartResult = -1;   // last serial execution result; -1 none yet
    bool defaultMacIpResult = true;
    bool vgaEdidPass = true;
    bool adcStarted = false;
    // Full-power information saved by the full-power command; -1 none saved.
    int savedBacklight = -1;
    int savedBrightness = -1;
    int savedVolume = -1;
    int shipoutRegion = -1;  // database region written at shipout; -1 none
    int shipoutSource = -1;
    bool shipoutReset = false;
    bool factoryDefaultReset = false;
    bool dlnaMonitor = false;  // the wired LAN monitor is on
    uint32_t dlnaMonitorCount = 0;
};

struct AudioPictureState : Area {
    int speakerType = -1;  // -1 never chosen
    int volume = 30;
    int spdifMode = 0;  // 0 PCM, 2 automatic
    // The on-timer: the demo set wakes on 1 December at 07:30, daily.
    int onYear = 2026, onMonth = 12, onDay = 1, onHour = 7, onMinute = 30, onSecond = 0;
    int onPeriod = 1;
    bool onEnabled = true;
    std::string OnTimerText() const;
};

struct SignalState : Area {
    bool present = true;  // the current external input shows a stable signal
    uint16_t width = 1920;
    uint16_t height = 1080;
    uint16_t vfreq = 600;  // tenths of a hertz
    uint8_t videoStandard = 0;
    // Route type of each digital route and the route in use.
};

struct AccessPoint {
    std::string ssid;
    int signal = 0;  // percent
};

struct WlanState : Area {
    bool fullTestPass = true;
    uint8_t errorCode = 0;
    int rssi1 = -42;
    int rssi2 = -47;
    // What successive status queries of the wake-on-WLAN test return; the last repeats.
    std::vector<uint8_t> wowStatus{2, 2, 0};
    size_t wowPolls = 0;
    bool wowStarted = false;
    bool netUp = true;
    std::vector<AccessPoint> accessPoints{{"LINE-STATION-5G", 86}, {"LINE-STATION", 71}};
};

// The production files the line leaves behind and shipout removes or replaces;
// files already there are kept.
void InstallDemoProductionFiles(const std::filesystem::path& rootFolder);

}  // namespace sim
