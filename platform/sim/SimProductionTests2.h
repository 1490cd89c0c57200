// Simulated state behind the picture, aging and pattern tests, direct tuning, the
// factory configuration, the CI slot and the digital player's tuning runs.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "MEvtHandle.h"
#include "MSrv_DTV_Player.h"
#include "MTypes.h"
#include "SimSet.h"

namespace sim {

// The panel, its backlight and light sensor, and the sound's balance.
struct PanelState : Area {
    // The test picture now on the panel: "none" until a raster call.
    std::string raster = "none";
    uint64_t rasterCount = 0;  // raster calls since the set started
    MAPI_U8 agingMode = 0;     // kept by the factory service: 3 black/white, 4 colours
    bool lightSensorOk = true;
    MAPI_U16 lightSensor = 312;
    // The level the panel is driven at (MSrv_ActiveBacklight), which the backlight check
    // steps and restores; the user's picture setting is PictureState's, left alone.
    MAPI_U8 backlight = 80;
    MAPI_U8 balance = 50;
};

// The factory service's serial-fixture switches and the CI slot.
struct FactoryLineState : Area {
    bool ciPresent = true;  // the set has a CI slot service
    bool ciPass = true;     // the slot test's result
    bool mhlAutoSwitch = false;
    bool factorySetupDone = false;
};

// The digital player: the route, the programs of the channel manager and the
// tuning runs, which end after scanMs with the player's scan event.
struct DtvTuningState : Area {
    DtvTuningState();

    uint64_t scanMs = 3000;                             // how long a tuning run takes
    MAPI_U16 scanTv = 12, scanRadio = 3, scanData = 1;  // what a run finds
    std::vector<ST_DTV_PROGRAM_INFO> programs = {{1, 1}, {2, 1}, {3, 2}};
    int lastTuningMode = -1;
    bool running = false;

    // Starts a run; a run already under way starts over.
    void StartRun();
    // Sends the scan event to the player's recipients at once.
    void SendScanStopped();

private:
    struct Runner : MEvtHandle {
        DtvTuningState* owner = nullptr;
        MAPI_BOOL DefEventProc(unsigned int, void*, void*, void*) override;
    };
    Runner m_runner;
    ST_DTV_SCAN_STATUS m_status{};  // lives until the next event
};

}  // namespace sim
