// Simulated state behind the information pages: the picture manager's settings,
// the colour-temperature records per source and picture mode, the network type and
// the Wi-Fi dongle that comes up some time after it is started (or never). Starts
// as the demo set: standard picture mode, wired network.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <utility>

#include "MTypes.h"
#include "SimSet.h"
#include "mapi_pql_datatype.h"

namespace sim {

struct PictureState : Area {
    bool present = true;  // false: the picture manager is not up
    MAPI_U8 contrast = 50;
    // The user's picture setting (PictureManager), not the panel's live level, which
    // the active-backlight service keeps in PanelState.
    MAPI_U8 backlight = 80;
    MAPI_U8 dynamicLight = 0;
    MAPI_U8 brightness = 50;
    MAPI_U8 colour = 50;
    MAPI_S8 tint = 0;
    MAPI_U8 sharpness = 10;
    MAPI_U8 blackWhiteLevel = 1;  // dynamic contrast
    MAPI_U8 cinemaMode = 0;
    MAPI_U8 dynamicNR = 4;  // 4: automatic
    bool dynamicNRReadable = true;
    MAPI_U8 mpegNR = 0;
    MAPI_U8 aspectRatio = 3;
    bool aspectRatioReadable = true;
    MAPI_U8 pictureMode = 1;  // of every source
};

// White balance per (source, picture mode) and colour temperature (0 cool, 1 medium,
// 2 warm). A pair not listed reads the defaults.
struct ColorTempState : Area {
    using Record = mapi_pql_datatype::MAPI_PQL_COLOR_TEMP_DATA;
    std::map<std::pair<int, int>, std::array<Record, 3>> records;
    static std::array<Record, 3> Defaults() {
        return {{{{0, 0, 0}, 118, 128, 140, 128, 128, 130},
                 {{0, 0, 1}, 128, 128, 128, 128, 128, 128},
                 {{0, 0, 2}, 136, 124, 108, 130, 128, 124}}};
    }
    std::array<Record, 3>& At(int source, int pictureMode) {
        auto it = records.find({source, pictureMode});
        if (it == records.end()) {
            it = records.emplace(std::make_pair(source, pictureMode), Defaults()).first;
        }
        return it->second;
    }
};

struct WifiDongleState : Area {
    MAPI_U8 networkType = 1;      // 0 wireless
    int64_t readyAfterMs = 3000;  // after the dongle is started; -1 never
    bool starting = false;
    uint64_t startedAtMs = 0;
    MAPI_U8 initStatus = 0;
};

}  // namespace sim
