// The simulated digital front end, one state for every view of it: the DTV routes
// and the live one, the satellites with their transponders and the one in use, the
// dish (LNB supply, 22 kHz tone, DiSEqC switch), the multiplex being received, the
// satellite scan and the demodulator's readings. The platform offers some records
// in two forms (the two mux records, ST_SATELLITE_INFO beside MS_SAT_INFO,
// ST_TRANSPONDER_INFO beside MS_TP_INFO); both forms are read from here, so a
// change shows in each. Starts as the demo set: a DVB-T2 multiplex on 474 MHz,
// locked, with a cable and a satellite route beside it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "MSrv_DTV_Player_DVBS.h"
#include "MTypes.h"
#include "SimSet.h"

class MSrv_DTV_Player_DVB;

namespace sim {

struct SimSatellite {
    std::string name;
    MAPI_U8 lnbPwrMode = 0;
    MAPI_U8 lnbPwrOnOff = 1;
    std::vector<MS_TP_INFO> transponders;  // u8Polarity bit 0: horizontal
    MAPI_U8 lnbNumber = 1;
    MAPI_U16 loLOF = 9750;  // MHz; the set's LNB tunes with the low oscillator
    MAPI_U16 hiLOF = 10600;
};

struct FrontEndState : Area {
    FrontEndState();

    // ---- Routes
    // The system byte of each route: 1 DVB-T, 0x20 DVB-T2, 2 cable, 4 and 0x40
    // satellite, 8 a further digital system, 0 no route. The demo set: T2, cable, satellite.
    std::array<MAPI_U8, 4> routeTypes{{0x20, 2, 0x40, 0}};
    MAPI_U8 route = 0;       // the live digital route
    MAPI_U8 routeOnDtv = 0;  // the route the player comes up on when DTV is selected
    bool OnSatelliteRoute() const;

    // ---- Players
    bool demodulatorPresent = true;
    unsigned long demodulatorFetches = 0;  // GetCurrentDemodulator calls, for the tests
    // false: a satellite route served by the plain DVB player (a platform fault).
    bool satellitePlayer = true;
    bool dvbsEnabled = true;  // the set has a satellite tuner

    // ---- Satellites and the transponder in use
    std::vector<SimSatellite> satellites;
    int unreadableSatellite = 255;  // this record cannot be read, in either form (255: none)
    MAPI_U8 currentSatellite = 0;
    MAPI_U16 currentTransponder = 0;
    // Null when the number names no satellite or transponder.
    const SimSatellite* Satellite(unsigned long index) const;
    SimSatellite* Satellite(unsigned long index);
    const MS_TP_INFO* Transponder(unsigned long satellite, unsigned long transponder) const;
    MS_TP_INFO* Transponder(unsigned long satellite, unsigned long transponder);
    const MS_TP_INFO* CurrentTransponder() const;
    // The tuned intermediate frequency: the current transponder's less the low
    // oscillator, MHz; 0 without a transponder.
    MAPI_S32 IntermediateMHz() const;

    // ---- Dish
    int lnbPower = 1;  // last DishSetLNBPower: 0 off, 1 13/18 V, 2 13 V, 3 18 V
    bool tone22k = false;
    bool dish22kFails = false;  // the dish refuses to switch the tone
    int diseqcPort = 0;
    bool singleCableRecover = true;
    bool lnbShortProtect = false;

    // ---- The multiplex being received: on a satellite route the current
    // transponder, on the others this terrestrial or cable one (kHz).
    MAPI_U32 muxFrequency = 474000;
    bool muxReadable = true;  // either mux record can be read

    // ---- Satellite scan: the parameters last set, and the scan.
    MAPI_U16 scanSymbolRate = 0;
    MAPI_U8 scanNetwork = 0;
    MAPI_U8 scanType = 0;
    MAPI_U8 scanBlind = 0;
    MAPI_U8 scanPolarity = 0;
    bool scanning = false;
    uint32_t scanFrequency = 0;

    // ---- Terrestrial and cable demodulator.
    MAPI_U8 demodType = 11;  // 1 DVB-T, 11 DVB-T2, 2 DVB-C
    bool locked = true;
    float snr = 28.4f;
    double ber = 1.2e-7;
    MAPI_U16 packetErrors = 0;
    MAPI_U8 quality = 92;
    MAPI_U8 strength = 78;
    double rssi = -52.5;
    MAPI_U8 bandwidth = 5;      // 8 MHz
    float freqOffset = -12.5f;  // kHz
    bool freqOffsetReadable = true;
    MAPI_U8 modulationT = 3;  // 256-QAM
    MAPI_U8 modulationC = 2;
    MAPI_U8 fftT = 13;  // 32K extended
    MAPI_U8 codeRateHP = 3;
    MAPI_U8 codeRateLP = 0;
    MAPI_U8 guardT = 5;
    MAPI_U16 symbolRateC = 6900;

    // ---- T2 layer.
    bool t2InfoReadable = true;
    MAPI_U8 t2SisoMiso = 0;
    MAPI_U8 t2PlpCount = 1;
    MAPI_U8 t2PlpId = 0;
    MAPI_U8 t2L1Modulation = 2;
    MAPI_U8 t2L1CodeRate = 0;
    MAPI_U8 t2PlpModulation = 3;
    MAPI_U8 t2PlpCodeRate = 2;
    MAPI_U8 t2Fec = 1;
    MAPI_U8 t2Pilot = 7;
    MAPI_U8 t2Fft = 5;  // 32K
    MAPI_U8 t2FefType = 0;
    bool t2FefPresent = false;
    MAPI_U32 t2FefLength = 0;
    MAPI_U8 t2Papr = 0;
    MAPI_U8 t2Guard = 4;  // 1/128

    // ---- Satellite demodulator: the readings beyond the transponder's frequency,
    // symbol rate and polarisation and the dish's tone, which it reads from above.
    MAPI_S32 satModulation = 0;  // 1 DVB-S, 0 DVB-S2
    MAPI_S16 satFreqOffset = -2;
    MAPI_U32 satRollOff = 0;
    bool satLocked = true;
    float satSnr = 11.8f;
    MAPI_S16 satSignalLevel = -45;
    MAPI_U32 satQuality = 85;
    MAPI_U32 satStrength = 71;
    MAPI_U32 satPacketErrors = 0;
    double satBer = 2.0e-6;
    MAPI_U32 satConstellation = 1;  // 0 or 2 QPSK, 1 8PSK
    MAPI_U32 satCodeRate = 4;
};

// The DTV player of the current route: the satellite player on a satellite route.
MSrv_DTV_Player_DVB* CurrentDtvPlayer();

}  // namespace sim
