// The simulated digital tuner: the DVB player's multiplex and RF records, the
// satellite player's demodulator record and its ST_ forms of the satellite and the
// transponder, the tuner driver and the demodulator. Each reading reads the front
// end as it is now, so a page that refreshes shows what a test set last.
#include "MSrv_Control.h"
#include "MSrv_DTV_Player_DVBS.h"
#include "SimFrontEnd.h"
#include "mapi_demodulator.h"
#include "mapi_tuner.h"

using sim::ArgList;
using sim::FrontEndState;
using sim::Set;

namespace {
FrontEndState& T() { return Set::Instance().Get<FrontEndState>(); }
void Record(const char* fn, const ArgList& args) { Set::Instance().RecordCall(fn, args); }

// The multiplex being received: the current transponder on a satellite route.
struct Mux {
    MAPI_U32 frequencyKHz;
    MAPI_U32 symbolRate;
    MAPI_U8 polarity;  // bit 0: horizontal
};

bool CurrentMux(Mux& mux) {
    const FrontEndState& f = T();
    if (!f.muxReadable) {
        return false;
    }
    if (!f.OnSatelliteRoute()) {
        mux = Mux{f.muxFrequency, f.symbolRateC, 0};
        return true;
    }
    const MS_TP_INFO* tp = f.CurrentTransponder();
    if (tp == nullptr) {
        return false;
    }
    mux = Mux{tp->u32Frequency, tp->u16SymbolRate, tp->u8Polarity};
    return true;
}

MAPI_BOOL RfInfo(ST_DTV_RF_INFO* info) {
    if (info == nullptr) {
        return 0;
    }
    // The RF record is read whether or not a mux record can be.
    const FrontEndState& f = T();
    const MS_TP_INFO* tp = f.OnSatelliteRoute() ? f.CurrentTransponder() : nullptr;
    info->u32Frequency = tp != nullptr ? tp->u32Frequency : f.muxFrequency;
    info->u8Bandwidth = T().bandwidth;
    return 1;
}
}  // namespace

// ---- DVB player ----------------------------------------------------------------------

mapi_demodulator* MSrv_DTV_Player_DVB::GetCurrentDemodulator() {
    static mapi_demodulator demodulator;
    ++T().demodulatorFetches;
    return T().demodulatorPresent ? &demodulator : nullptr;
}

MAPI_BOOL MSrv_DTV_Player_DVB::GetCurrentMuxInfo(ST_DTV_MUX_INFO* info) {
    Record("MSrv_DTV_Player_DVB::GetCurrentMuxInfo", ArgList());
    Mux mux{};
    if (info == nullptr || !CurrentMux(mux)) {
        return 0;
    }
    info->u32Frequency = mux.frequencyKHz;
    info->u32SymbolRate = mux.symbolRate;
    return 1;
}

MAPI_BOOL MSrv_DTV_Player_DVB::GetCurrentMuxInfo(_DVB_MUXINFO& info) {
    Record("MSrv_DTV_Player_DVB::GetCurrentMuxInfo", ArgList());
    Mux mux{};
    if (!CurrentMux(mux)) {
        return 0;
    }
    info = _DVB_MUXINFO{};
    info.u32FrequencyKHz = mux.frequencyKHz;
    info.u16SymbolRate = static_cast<MAPI_U16>(mux.symbolRate);
    info.u8Polarity = mux.polarity;
    return 1;
}

MAPI_BOOL MSrv_DTV_Player_DVB::GetCurrentRFInfo(ST_DTV_RF_INFO* info) {
    Record("MSrv_DTV_Player_DVB::GetCurrentRFInfo", ArgList());
    return RfInfo(info);
}

MAPI_BOOL MSrv_DTV_Player_DVB::GetCurrentProgramRFInfo(ST_DTV_RF_INFO* info) {
    Record("MSrv_DTV_Player_DVB::GetCurrentProgramRFInfo", ArgList());
    return RfInfo(info);
}

MAPI_U32 MSrv_DTV_Player_DVB::GetErrorStatus() {
    return T().lnbShortProtect ? E_DVB_ERROR_LNB_SHORT_PROTECT : 0;
}

// ---- Satellite player: the ST_ records -----------------------------------------------

MAPI_BOOL MSrv_DTV_Player_DVBS::GetCurrProgramDemodInfo(ST_DVBS_DEMOD_INFO* info) {
    Record("MSrv_DTV_Player_DVBS::GetCurrProgramDemodInfo", ArgList());
    if (info == nullptr) {
        return 0;
    }
    const FrontEndState& t = T();
    const MS_TP_INFO* tp = t.CurrentTransponder();
    *info = ST_DVBS_DEMOD_INFO{t.IntermediateMHz(),
                               t.satSnr,
                               static_cast<float>(t.satBer),
                               t.satSignalLevel,
                               static_cast<MAPI_S32>(t.satCodeRate),
                               t.satModulation,
                               static_cast<MAPI_S32>(t.satConstellation),
                               tp != nullptr ? static_cast<MAPI_S32>(tp->u16SymbolRate) : 0,
                               static_cast<MAPI_S32>(t.satPacketErrors)};
    return 1;
}

MAPI_BOOL MSrv_DTV_Player_DVBS::GetSatelliteInfoByID(MAPI_U8 satellite, ST_SATELLITE_INFO* info) {
    const sim::SimSatellite* sat = T().Satellite(satellite);
    if (info == nullptr || sat == nullptr || T().unreadableSatellite == satellite) {
        return 0;
    }
    *info = ST_SATELLITE_INFO{sat->lnbNumber, sat->loLOF, sat->hiLOF};
    return 1;
}

MAPI_U16 MSrv_DTV_Player_DVBS::GetCurrentTransponderNo() { return T().currentTransponder; }

MAPI_BOOL MSrv_DTV_Player_DVBS::GetTransponderInfo(MAPI_U8 satellite, MAPI_U16 transponder,
                                                   ST_TRANSPONDER_INFO* info) {
    const MS_TP_INFO* tp = T().Transponder(satellite, transponder);
    if (info == nullptr || tp == nullptr) {
        return 0;
    }
    // This form counts in MHz and names the polarisation; the other keeps bit 0 for H.
    *info = ST_TRANSPONDER_INFO{
        tp->u32Frequency / 1000, tp->u16SymbolRate,
        static_cast<MAPI_U8>((tp->u8Polarity & 1) ? E_DVBS_POLARITY_H : E_DVBS_POLARITY_V)};
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
    const FrontEndState& t = T();
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
MAPI_U32 mapi_demodulator::GetDVBS_Demod_SymbolRate() {
    const MS_TP_INFO* tp = T().CurrentTransponder();
    return tp != nullptr ? tp->u16SymbolRate : 0;
}
MAPI_U32 mapi_demodulator::GetDVBS_Demod_RollOff() { return T().satRollOff; }
MAPI_U32 mapi_demodulator::GetDVBS_Demod_Lock() { return T().satLocked ? 1 : 0; }
float mapi_demodulator::GetDVBS_Demod_SNR() { return T().satSnr; }
MAPI_S16 mapi_demodulator::GetDVBS_Demod_SignalLevel() { return T().satSignalLevel; }
MAPI_U32 mapi_demodulator::GetDVBS_Demod_SignalQuality() { return T().satQuality; }
MAPI_U32 mapi_demodulator::GetDVBS_Demod_SignalStrength() { return T().satStrength; }
MAPI_U32 mapi_demodulator::GetDVBS_Demod_TSpacketError() { return T().satPacketErrors; }
MAPI_U32 mapi_demodulator::GetDVBS_Demod_Constellation() { return T().satConstellation; }
MAPI_U32 mapi_demodulator::GetDVBS_Demod_CodeRate() { return T().satCodeRate; }
long mapi_demodulator::GetDVBS_Demod_Frequency() { return T().IntermediateMHz(); }
MAPI_U32 mapi_demodulator::GetDVBS_Demod_22kOn() { return T().tone22k ? 1 : 0; }
double mapi_demodulator::DTV_DVBS_GetPostBER() { return T().satBer; }
