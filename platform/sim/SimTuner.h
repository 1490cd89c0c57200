// Simulated digital tuner: the DTV route and the system byte of each route, the
// demodulator and every reading it gives (DVB-T, DVB-T2 and DVB-C, with the T2
// layer), the cable multiplex, the RF information and the satellite front end.
// Starts as the demo set: a DVB-T2 multiplex on 474 MHz, locked.
#pragma once

#include <array>

#include "MSrv_DTV_Player_DVBS.h"
#include "MTypes.h"
#include "SimSet.h"

namespace sim {

struct TunerState : Area {
    bool demodulatorPresent = true;
    // false: a satellite route served by the plain DVB player (a platform fault).
    bool satellitePlayer = true;

    // Terrestrial and cable demodulator.
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

    // T2 layer.
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

    // Cable multiplex and RF information, kHz.
    MAPI_U32 muxFrequency = 474000;
    bool muxReadable = true;
    MAPI_U32 rfFrequency = 474000;

    // Satellite front end: the demodulator's readings, which also fill the record
    // the satellite player reports for the current program.
    MAPI_S32 satIntermediateMHz = 1244;  // tuned intermediate frequency
    MAPI_S32 satModulation = 0;          // 1 DVB-S, 0 DVB-S2
    MAPI_S16 satFreqOffset = -2;
    MAPI_U32 satSymbolRate = 27500;  // kS/s
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
    MAPI_U32 sat22kOn = 0;
    bool lnbShortProtect = false;
    MAPI_U8 lnbNumber = 1;
    MAPI_U8 polarity = 0;  // 0 horizontal, 1 vertical
};

// The DTV player of the current route: the satellite player on a satellite route.
MSrv_DTV_Player_DVB* CurrentDtvPlayer();

}  // namespace sim
