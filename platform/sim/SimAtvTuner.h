// Simulated analogue tuner and ATV database: the stations on air, the stored
// programs, the program and frequency on screen, and the manual tuning sweep that
// moves on the set's clock and reports scan-info events to the ATV player's
// recipients. Starts as the demo set: program 1 on the first station.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "MSrv_ATV_Database.h"
#include "SimSet.h"

namespace sim {

struct AtvProgram {
    MAPI_U16 pll = 0;  // 62.5 kHz steps
    MAPI_U16 aftOffset = 0;
    MAPI_U16 skip = 0;
    signed char fineTune = 0;
    std::string name;
    ST_ATV_MISC misc{};
};

class AtvSweeper;

struct AtvTunerState : Area {
    AtvTunerState();
    ~AtvTunerState() override;

    // Picture carriers of the stations on air, kHz.
    std::vector<uint32_t> stations;
    std::map<MAPI_U16, AtvProgram> programs;
    MAPI_U16 currentProgram = 1;
    uint32_t frequencyKHz = 0;
    int searchType = 2;  // 0 down, 1 up, 2 idle
    int manualMode = 2;  // 0 up, 1 down, 2 no run
    uint32_t sweepStartKHz = 0;
    uint32_t stepKHz = 1000;  // the sweep moves this far per period
    uint32_t periodMs = 25;
    MAPI_U8 aftOffset = 0;
    short fineTuneKHz = 0;
    int finishChannel = -1;  // last SetATVManualTuneFinishChannel
    unsigned teletextResets = 0;
    std::unique_ptr<AtvSweeper> sweeper;

    // The tuner's band, kHz: a sweep ends at its edge.
    static constexpr uint32_t kBandLowKHz = 43250;
    static constexpr uint32_t kBandHighKHz = 863250;

    bool Sweeping() const { return manualMode == 0 || manualMode == 1; }
    // Whether a station is on the frequency (within half a channel's fine-tune range).
    bool StationAt(uint32_t khz) const;
    static uint32_t FrequencyOfPll(MAPI_U16 pll) { return pll * 1000u / 16u; }
    static MAPI_U16 PllOfFrequency(uint32_t khz) {
        return static_cast<MAPI_U16>(khz * 16u / 1000u);
    }
    void Start(uint32_t fromKHz, int way);
    void Stop();
};

}  // namespace sim
