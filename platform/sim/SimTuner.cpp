// The simulated digital tuner: routes, the demodulator's readings, the cable
// multiplex, RF information and the satellite front end. Each reading reads the
// TunerState as it is now, so a page that refreshes shows what a test set last.
#include "SimTuner.h"
#include "MSrv_DTV_Player_DVBT.h"
#include "SimSatellite.h"
#include "SimTvRoutes.h"

#include "MSrv_Control.h"
#include "MSrv_Control_common.h"
#include "MSrv_DTV_Player_DVBS.h"
#include "mapi_demodulator.h"
#include "mapi_tuner.h"

using sim::ArgList;
using sim::Set;

namespace {
sim::TunerState& T() { return Set::Instance().Get<sim::TunerState>(); }
void Record(const char* fn, const ArgList& args) { Set::Instance().RecordCall(fn, args); }

bool SatelliteRoute() {
    const auto& routes = sim::Set::Instance().Get<sim::TvRouteState>();
    const MAPI_U8 system =
        routes.route < routes.routeTypes.size() ? routes.routeTypes[routes.route] : 0;
    return system == 0x40 || system == 4;
}
}  // namespace

MSrv_DTV_Player_DVB* sim::CurrentDtvPlayer() {
    static MSrv_DTV_Player_DVBT terrestrial;
    static MSrv_DTV_Player_DVBS satellite;
    if (SatelliteRoute() && T().satellitePlayer) {
        return &satellite;
    }
    return &terrestrial;
}

// ---- Routes --------------------------------------------------------------------------

MAPI_U32 MSrv_Control::GetCurrentDtvRoute() {
    Record("MSrv_Control::GetCurrentDtvRoute", ArgList());
    return sim::Set::Instance().Get<sim::TvRouteState>().route;
}

// ---- DVB player ----------------------------------------------------------------------

mapi_demodulator* MSrv_DTV_Player_DVB::GetCurrentDemodulator() {
    static mapi_demodulator demodulator;
    return T().demodulatorPresent ? &demodulator : nullptr;
}

MAPI_BOOL MSrv_DTV_Player_DVB::GetCurrentMuxInfo(ST_DTV_MUX_INFO* info) {
    Record("MSrv_DTV_Player_DVB::GetCurrentMuxInfo", ArgList());
    if (info == nullptr || !T().muxReadable) {
        return 0;
    }
    info->u32Frequency = T().muxFrequency;
    info->u32SymbolRate = T().symbolRateC;
    return 1;
}

MAPI_BOOL MSrv_DTV_Player_DVB::GetCurrentRFInfo(ST_DTV_RF_INFO* info) {
    Record("MSrv_DTV_Player_DVB::GetCurrentRFInfo", ArgList());
    if (info == nullptr) {
        return 0;
    }
    info->u32Frequency = T().rfFrequency;
    info->u8Bandwidth = T().bandwidth;
    return 1;
}

MAPI_BOOL MSrv_DTV_Player_DVB::GetCurrentProgramRFInfo(ST_DTV_RF_INFO* info) {
    Record("MSrv_DTV_Player_DVB::GetCurrentProgramRFInfo", ArgList());
    if (info == nullptr) {
        return 0;
    }
    info->u32Frequency = T().rfFrequency;
    info->u8Bandwidth = T().bandwidth;
    return 1;
}

MAPI_U32 MSrv_DTV_Player_DVB::GetErrorStatus() {
    return T().lnbShortProtect ? E_DVB_ERROR_LNB_SHORT_PROTECT : 0;
}

// ---- Satellite player ----------------------------------------------------------------

MAPI_BOOL MSrv_DTV_Player_DVBS::GetCurrProgramDemodInfo(ST_DVBS_DEMOD_INFO* info) {
    Record("MSrv_DTV_Player_DVBS::GetCurrProgramDemodInfo", ArgList());
    if (info == nullptr) {
        return 0;
    }
    const sim::TunerState& t = T();
    *info = ST_DVBS_DEMOD_INFO{t.satIntermediateMHz,
                               t.satSnr,
                               static_cast<float>(t.satBer),
                               t.satSignalLevel,
                               static_cast<MAPI_S32>(t.satCodeRate),
                               t.satModulation,
                               static_cast<MAPI_S32>(t.satConstellation),
                               static_cast<MAPI_S32>(t.satSymbolRate),
                               static_cast<MAPI_S32>(t.satPacketErrors)};
    return 1;
}

MAPI_BOOL MSrv_DTV_Player_DVBS::GetSatelliteInfoByID(MAPI_U8 satellite, ST_SATELLITE_INFO* info) {
    if (info == nullptr ||
        satellite != sim::Set::Instance().Get<sim::SatelliteState>().currentSatellite) {
        return 0;
    }
    *info = ST_SATELLITE_INFO{T().lnbNumber, 9750, 10600};
    return 1;
}

MAPI_U16 MSrv_DTV_Player_DVBS::GetCurrentTransponderNo() {
    return sim::Set::Instance().Get<sim::SatelliteState>().currentTransponder;
}

MAPI_BOOL MSrv_DTV_Player_DVBS::GetTransponderInfo(MAPI_U8 satellite, MAPI_U16 transponder,
                                                   ST_TRANSPONDER_INFO* info) {
    if (info == nullptr ||
        satellite != sim::Set::Instance().Get<sim::SatelliteState>().currentSatellite ||
        transponder != sim::Set::Instance().Get<sim::SatelliteState>().currentTransponder) {
        return 0;
    }
    const sim::TunerState& t = T();
    *info = ST_TRANSPONDER_INFO{static_cast<MAPI_U32>(t.satIntermediateMHz + 9750), t.satSymbolRate,
                                t.polarity};
    return 1;
}

// ---- Tuner driver --------------------------------------------------------------------

MAPI_U8 TUNDRV_GetDTVBandwidth() { return T().bandwidth; }
double TUNDRV_GetRSSI() { return T().rssi; }

// ---- Demodulator ---------------------------------------------------------------------

MAPI_U8 mapi_demodulator::GetCurrentDemodulatorType() { return T().demodType; }

MAPI_BOOL mapi_demodulator::GetDemodInfo() {
    Record("mapi_demodulator::GetDemodInfo", ArgList());
    return T().t2InfoReadable ? 1 : 0;
}

MAPI_BOOL mapi_demodulator::ExtendCmd(MAPI_U8 command, MAPI_U32 p1, MAPI_U32 p2, void* data) {
    Record("mapi_demodulator::ExtendCmd", ArgList(command, p1, p2));
    const sim::TunerState& t = T();
    if (data == nullptr) {
        return 0;
    }
    if (command == E_DEMOD_EXTEND_CMD_FREQ_OFFSET) {
        if (!t.freqOffsetReadable) {
            return 0;
        }
        *static_cast<float*>(data) = t.freqOffset;
        return 1;
    }
    if (command == E_DEMOD_EXTEND_CMD_T2_FEF_INFO) {
        auto* fef = static_cast<ST_DEMOD_FEF_INFO*>(data);
        fef->bPresent = t.t2FefPresent ? 1 : 0;
        fef->u32Length = t.t2FefLength;
        return 1;
    }
    return 0;
}

MAPI_BOOL mapi_demodulator::DTV_GetLockStatus() { return T().locked ? 1 : 0; }
float mapi_demodulator::DTV_GetSNR_Debug() { return T().snr; }
double mapi_demodulator::DTV_GetPostBER() { return T().ber; }
MAPI_U16 mapi_demodulator::DTV_GetPacketErr() { return T().packetErrors; }
MAPI_U8 mapi_demodulator::DTV_GetSignalQuality() { return T().quality; }
MAPI_U8 mapi_demodulator::DTV_GetSignalStrength() { return T().strength; }
MAPI_U8 mapi_demodulator::DTV_DVB_T_GetSignalModulation() { return T().modulationT; }
MAPI_U8 mapi_demodulator::DTV_DVB_C_GetSignalModulation() { return T().modulationC; }
MAPI_U8 mapi_demodulator::DTV_DVB_T_GetSignalFFTValue() { return T().fftT; }
MAPI_U8 mapi_demodulator::DTV_DVB_T_GetSignalCodeRate() { return T().codeRateHP; }
MAPI_U8 mapi_demodulator::DTV_DVB_T_GetSignalCodeRate_LP() { return T().codeRateLP; }
MAPI_U8 mapi_demodulator::DTV_DVB_T_GetSignalGuardInterval() { return T().guardT; }
MAPI_U16 mapi_demodulator::DTV_DVB_C_GetCurrentSymbolRate() { return T().symbolRateC; }

MAPI_U8 mapi_demodulator::GetDVBT2_Demod_s1_siso_miso() { return T().t2SisoMiso; }
MAPI_U8 mapi_demodulator::GetDVBT2_Demod_plp_number() { return T().t2PlpCount; }
MAPI_U8 mapi_demodulator::GetDVBT2_Demod_plp_id() { return T().t2PlpId; }
MAPI_U8 mapi_demodulator::GetDVBT2_Demod_constellation_l1() { return T().t2L1Modulation; }
MAPI_U8 mapi_demodulator::GetDVBT2_Demod_coderate_l1() { return T().t2L1CodeRate; }
MAPI_U8 mapi_demodulator::GetDVBT2_Demod_plp_constellation() { return T().t2PlpModulation; }
MAPI_U8 mapi_demodulator::GetDVBT2_Demod_plp_coderate() { return T().t2PlpCodeRate; }
MAPI_U8 mapi_demodulator::GetDVBT2_Demod_plp_fec() { return T().t2Fec; }
MAPI_U8 mapi_demodulator::GetDVBT2_Demod_pilot_pattern() { return T().t2Pilot; }
MAPI_U8 mapi_demodulator::GetDVBT2_Demod_mode_carrier() { return T().t2Fft; }
MAPI_U8 mapi_demodulator::GetDVBT2_Demod_fef_type() { return T().t2FefType; }
MAPI_U8 mapi_demodulator::GetDVBT2_Demod_papr() { return T().t2Papr; }
MAPI_U8 mapi_demodulator::GetDVBT2_Demod_guard_interval() { return T().t2Guard; }

MAPI_BOOL mapi_demodulator::GetDemodInfoForDVBS() {
    Record("mapi_demodulator::GetDemodInfoForDVBS", ArgList());
    return 1;
}
MAPI_S16 mapi_demodulator::GetDVBS_Demod_FreqOffset() { return T().satFreqOffset; }
MAPI_U32 mapi_demodulator::GetDVBS_Demod_SymbolRate() { return T().satSymbolRate; }
MAPI_U32 mapi_demodulator::GetDVBS_Demod_RollOff() { return T().satRollOff; }
MAPI_U32 mapi_demodulator::GetDVBS_Demod_Lock() { return T().satLocked ? 1 : 0; }
float mapi_demodulator::GetDVBS_Demod_SNR() { return T().satSnr; }
MAPI_S16 mapi_demodulator::GetDVBS_Demod_SignalLevel() { return T().satSignalLevel; }
MAPI_U32 mapi_demodulator::GetDVBS_Demod_SignalQuality() { return T().satQuality; }
MAPI_U32 mapi_demodulator::GetDVBS_Demod_SignalStrength() { return T().satStrength; }
MAPI_U32 mapi_demodulator::GetDVBS_Demod_TSpacketError() { return T().satPacketErrors; }
MAPI_U32 mapi_demodulator::GetDVBS_Demod_Constellation() { return T().satConstellation; }
MAPI_U32 mapi_demodulator::GetDVBS_Demod_CodeRate() { return T().satCodeRate; }
long mapi_demodulator::GetDVBS_Demod_Frequency() { return T().satIntermediateMHz; }
MAPI_U32 mapi_demodulator::GetDVBS_Demod_22kOn() { return T().sat22kOn; }
double mapi_demodulator::DTV_DVBS_GetPostBER() { return T().satBer; }
