// Simulated satellite front end: the satellites and their transponders, the LNB
// supply, the 22 kHz tone, the DiSEqC switch, the scan parameters and scan, the
// digital routes, and the serial fixture's wish to see results on screen.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "MSrv_DTV_Player_DVBS.h"
#include "SimSet.h"

namespace sim {

struct SimSatellite {
    std::string name;
    MAPI_U8 lnbPwrMode = 0;
    MAPI_U8 lnbPwrOnOff = 1;
    std::vector<MS_TP_INFO> transponders;
};

struct SatelliteState : Area {
    SatelliteState();

    bool dvbsEnabled = true;  // the set has a satellite tuner
    std::vector<SimSatellite> satellites;
    int unreadableSatellite = 255;  // this record cannot be read (255: none)
    MAPI_U8 currentSatellite = 0;
    MAPI_U16 currentTransponder = 0;
    int lnbPower = 1;  // last DishSetLNBPower: 0 off, 1 13/18 V, 2 13 V, 3 18 V
    bool tone22k = false;
    bool dish22kFails = false;  // the dish refuses to switch the tone
    int diseqcPort = 0;
    bool singleCableRecover = true;
    // The multiplex being received.
    bool muxKnown = true;
    MAPI_U8 muxPolarity = 1;
    // Scan parameters last set, and the scan.
    MAPI_U16 scanSymbolRate = 0;
    MAPI_U8 scanNetwork = 0;
    MAPI_U8 scanType = 0;
    MAPI_U8 scanBlind = 0;
    MAPI_U8 scanPolarity = 0;
    bool scanning = false;
    uint32_t scanFrequency = 0;
};

}  // namespace sim
