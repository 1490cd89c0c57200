// The tuner pages (terrestrial/cable, satellite, ATSC), their refresh timer and
// the formatters that turn each demodulator reading into a row's text. The label
// tables and the number formats live in DemodLabels and DemodFormat.
#include <cstdio>
#include <cstring>
#include <string>
#include <type_traits>

#include "DemodFormat.h"
#include "DemodLabels.h"
#include "FactoryEventIds.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_Control_common.h"
#include "MSrv_DTV_Player_DVBS.h"
#include "MSrv_System_Database.h"
#include "MapiInputSource.h"
#include "MsOS.h"
#include "mapi_demodulator.h"
#include "mapi_tuner.h"

namespace {
constexpr unsigned long kTunerInfoTimer = FactoryTimer::TunerInfo;
constexpr unsigned long kSerialLogTimer = FactoryTimer::SerialLog;
// Factory data item that chooses how the RF information is asked for.
constexpr unsigned short kItemRFQuery = 137;
constexpr MAPI_U8 kRFQueryCurrent = 25;

enum TunerBufferIndex : unsigned int {
    kModulationSystem,
    kFrequency,
    kFrequencyOffset,
    kBandwidth,
    kLockStatus,
    kSNR,
    kSignalPower,
    kSignalQuality,
    kSignalStrength,
    kBitErrorRate,
    kUncorrectedError,
    kModulation,
    kMode,
    kCodeRateHP,
    kCodeRateLP,
    kGuardInterval,
    kSecondIF,
    kSymbolRate,
    kRollOff,
    kLNBPower,
    kLNBSystem,
    kLNBNumber,
    kLNBBand,
    kLNBPolarity,
    kLNBAntError,
};

bool Terrestrial(MAPI_U32 source) { return source >= 1 && source <= 3; }
bool Satellite(MAPI_U32 source) { return source == 4 || source == 5; }
constexpr MAPI_U32 kCableSource = 3;
constexpr MAPI_U32 kAnalogueSource = 6;

const char* Put(char* out, unsigned int size, const std::string& text) {
    if (out != nullptr) {
        std::snprintf(out, size, "%s", text.c_str());
    }
    return out;
}

std::string Label(const LabelTable& table, long value) {
    const char* text = LabelOf(table, value);
    return text != nullptr ? text : "";
}

bool IsDvbt(MAPI_U8 type) { return type == E_DEMODULATOR_TYPE_DVBT; }
bool IsDvbt2(MAPI_U8 type) { return type == E_DEMODULATOR_TYPE_DVBT2; }

MSrv_DTV_Player_DVBS* SatellitePlayer() {
    return dynamic_cast<MSrv_DTV_Player_DVBS*>(MSrv_Control::GetInstance()->GetMSrvDtv());
}
}  // namespace

// ---- Source and satellite record -----------------------------------------------------

MAPI_U32 FactoryManager::GetTVSource() {
    const MAPI_INPUT_SOURCE_TYPE input = MSrv_Control::GetInstance()->GetCurrentInputSource();
    if (input == MAPI_INPUT_SOURCE_ATV) {
        return kAnalogueSource;
    }
    if (input != MAPI_INPUT_SOURCE_DTV) {
        return 0;
    }
    const MAPI_U32 route = MSrv_Control::GetInstance()->GetCurrentDtvRoute() & 0xFF;
    const ST_MAPI_TV_INFO info = MSrv_Control::GetInstance()->GetTVInfo();
    if (route >= sizeof(info.u8RouteType)) {
        return 0;
    }
    switch (info.u8RouteType[route]) {
        case 0x40:
            return 5;
        case 4:
            return 4;
        case 1:
            return 1;
        case 0x20:
            return 2;
        case 2:
            return kCableSource;
        case 8:
            return 9;
        default:
            return 0;
    }
}

void FactoryManager::GetDVBS_DemodInfo() {
    std::memset(&m_stDVBSDemodInfo, 0, sizeof(m_stDVBSDemodInfo));
    MSrv_DTV_Player_DVBS* dvbs = SatellitePlayer();
    if (dvbs == nullptr) {
        printf("\033[0;31m  %s ERROR!!! Invalid use: %d  \033[0m \n", "GetDVBS_DemodInfo",
               __LINE__);
        return;
    }
    dvbs->GetCurrProgramDemodInfo(&m_stDVBSDemodInfo);
}

// ---- Layouts -------------------------------------------------------------------------

struct FactoryManager::TunerRow {
    const char* cmd;
    const char* (FactoryManager::*format)();
};

struct FactoryManager::TunerTextRow {
    const char* cmd;
    MAPI_U8 (FactoryManager::*format)(std::string&);
};

void FactoryManager::SendTunerRows(const TunerRow* rows, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        if (const char* text = (this->*rows[i].format)()) {
            NotifyUI(0, rows[i].cmd, text);
        }
    }
}

void FactoryManager::SendTunerTextRows(const TunerTextRow* rows, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        std::string text;
        if ((this->*rows[i].format)(text) == 1) {
            NotifyUI(0, rows[i].cmd, text.c_str());
        }
    }
}

void FactoryManager::BeginTunerLayout(const char* layout, unsigned int waitMs) {
    NotifyUI(0, "HideAllUIExcept", layout);
    // Lets the demodulator settle; nothing else is handled meanwhile.
    MsOS_DelayTask(waitMs);
}

void FactoryManager::EndTunerLayout(const char* layout) {
    NotifyUI(0, layout, 1L);
    KillTimer(kTunerInfoTimer);
    SetTimer(1000, kTunerInfoTimer, E_TIMER_REPEAT);
    // Each redraw also goes to the serial console, as every information page does.
    KillTimer(kSerialLogTimer);
    SetTimer(300, kSerialLogTimer, E_TIMER_ONESHOT);
}

void FactoryManager::ShowTunerPage() {
    const MAPI_U32 source = GetTVSource();
    if (Satellite(source)) {
        GetDVBS_DemodInfo();
        const ST_DVBS_DEMOD_INFO& r = m_stDVBSDemodInfo;
        printf(
            "~~ BER=%f, dBm=%d, freq=%ld, CN=%f, FEC=%ld, Mod=%ld, modType=%ld, Symb=%ld, "
            "Pack=%ld, \n",
            r.fBER, r.s32dBm, static_cast<long>(r.s32Frequency), r.fCN, static_cast<long>(r.s32FEC),
            static_cast<long>(r.s32Modulation), static_cast<long>(r.s32ModType),
            static_cast<long>(r.s32SymbolRate), static_cast<long>(r.s32PacketCount));
        ShowTunerDVBS();
    } else {
        ShowTuner();
    }
}

MAPI_BOOL FactoryManager::OnTimer_TunerInfo(void*, void*, void*) {
    ShowTunerPage();
    return 1;
}

void FactoryManager::ShowTuner() {
    using F = FactoryManager;
    static const TunerRow kReception[] = {
        {"Tuner-Modulation-System", &F::GetTunerModulationSystem},
        {"Tuner-Frequency", &F::GetTunerFrequency},
        {"Tuner-Frequency-Offset", &F::GetFrequencyOffset},
        {"Tuner-Bandwidth", &F::GetBandwidth},
        {"Tuner-Lock-Status", &F::GetLockStatus},
        {"Tuner-SNR", &F::GetTunerSNR},
        {"Tuner-Signal-Power", &F::GetTunerSignalPower},
        {"Tuner-Signal-Quality-Index", &F::GetTunerSignalQualityIndex},
        {"Tuner-Signal-Strength-Index", &F::GetTunerSignalStrengthIndex},
        {"Tuner-Bit-Error-Rate", &F::GetTunerGetBitErrorRate},
        {"Tuner-Uncorrected-Error", &F::GetTunerGetUncorrectedError},
        {"Tuner-Modulation", &F::GetTunerModulation},
        {"Tuner-Mode", &F::GetTunerMode},
    };
    static const TunerRow kGuard[] = {{"Tuner-Guard-Interval", &F::GetTunerGuardInterval}};
    static const TunerTextRow kT2[] = {
        {"Tuner-MISO-SISO", &F::GetTunerMISOSISO},
        {"Tuner-Number-of-PLPs", &F::GetTunerNumberOfPLPs},
        {"Tuner-Current-PLP-ID", &F::GetTunerCurrentPLPID},
        {"Tuner-L1-Modulation", &F::GetTunerL1Modulation},
        {"Tuner-L1-Code-Rate", &F::GetTunerL1CodeRate},
        {"Tuner-CPLP-Modulation", &F::GetTunerCPLPModulation},
        {"Tuner-CPLP-Code-Rate", &F::GetTunerCPLPCodeRate},
        {"Tuner-FEC-Type", &F::GetTunerFECType},
        {"Tuner-PILOT", &F::GetTunerPILOT},
    };
    // The FFT row deliberately repeats the mode formatter, as the T2 guard and the
    // cable modulation rows repeat theirs.
    static const TunerRow kModeFFT[] = {{"Tuner-Mode-FFT", &F::GetTunerMode}};
    static const TunerTextRow kFrames[] = {{"Tuner-FEF", &F::GetTunerFEF},
                                           {"Tuner-PAPR", &F::GetTunerPAPR}};
    static const TunerRow kRepeats[] = {{"Tuner-Guard-Interval-T2", &F::GetTunerGuardInterval},
                                        {"Tuner-Modulation-DVBC", &F::GetTunerModulation}};
    static const TunerTextRow kSymbolRate[] = {
        {"Tuner-SymbolRate-DVBC", &F::GetTunerSymbolRateDVBC}};

    BeginTunerLayout("Tuner", 3000);
    SendTunerRows(kReception, sizeof(kReception) / sizeof(kReception[0]));
    NotifyUI(0, "Tuner-Hierarchy-Alpha", 0L);
    const char* highPriority = nullptr;
    const char* lowPriority = nullptr;
    if (GetTunerCodeRate(highPriority, lowPriority)) {
        NotifyUI(0, "Tuner-Code-Rate", highPriority);
        NotifyUI(0, "Tuner-Code-Rate-LP", lowPriority);
    }
    SendTunerRows(kGuard, 1);
    SendTunerTextRows(kT2, sizeof(kT2) / sizeof(kT2[0]));
    SendTunerRows(kModeFFT, 1);
    SendTunerTextRows(kFrames, 2);
    SendTunerRows(kRepeats, 2);
    SendTunerTextRows(kSymbolRate, 1);
    EndTunerLayout("Tuner");
}

void FactoryManager::ShowTunerDVBS() {
    using F = FactoryManager;
    static const TunerRow kReception[] = {
        {"Tuner-Modulation-System-DVBS", &F::GetTunerModulationSystem},
        {"Tuner-Frequency-DVBS", &F::GetTunerFrequency},
        {"Tuner-2nd-IF-Frequency-DVBS", &F::GetTuner2ndIFFrequency},
        {"Tuner-Frequency-Offset-DVBS", &F::GetFrequencyOffset},
        {"Tuner-Bandwidth-DVBS", &F::GetBandwidth},
        {"Tuner-Lock-Status-DVBS", &F::GetLockStatus},
        {"Tuner-SNR-DVBS", &F::GetTunerSNR},
        {"Tuner-Signal-Power-DVBS", &F::GetTunerSignalPower},
        {"Tuner-Signal-Quality-Index-DVBS", &F::GetTunerSignalQualityIndex},
        {"Tuner-Signal-Strength-Index-DVBS", &F::GetTunerSignalStrengthIndex},
        {"Tuner-Bit-Error-Rate-DVBS", &F::GetTunerGetBitErrorRate},
        {"Tuner-Uncorrected-Error-DVBS", &F::GetTunerGetUncorrectedError},
        {"Tuner-Modulation-DVBS", &F::GetTunerModulation},
    };
    static const TunerRow kFrontEnd[] = {
        {"Tuner-Symbol-Rate-DVBS", &F::GetTunerSymbolRate},
        {"Tuner-Roll-Off-DVBS", &F::GetTunerRollOff},
        {"Tuner-LNB-Power-DVBS", &F::GetTunerLNBPower},
        {"Tuner-LNB-System-DVBS", &F::GetTunerLNBSystem},
        {"Tuner-LNB-Number-DVBS", &F::GetTunerLNBNumber},
        {"Tuner-LNB-Band-DVBS", &F::GetTunerLNBBand},
        {"Tuner-LNB-Polarity-DVBS", &F::GetTunerLNBPolarity},
        {"Tuner-LNB-Ant-Error-DVBS", &F::GetTunerLNBAntError},
    };
    NotifyUI(0, "HideAllUIExcept", "TunerDVBS");
    m_bVersionMode = 1;
    MsOS_DelayTask(500);
    SendTunerRows(kReception, sizeof(kReception) / sizeof(kReception[0]));
    const char* highPriority = nullptr;
    const char* lowPriority = nullptr;
    if (GetTunerCodeRate(highPriority, lowPriority)) {
        NotifyUI(0, "Tuner-Code-Rate-DVBS", highPriority);
    }
    SendTunerRows(kFrontEnd, sizeof(kFrontEnd) / sizeof(kFrontEnd[0]));
    EndTunerLayout("TunerDVBS");
}

// Kept for ATSC products; no page of this set draws it.
void FactoryManager::ShowTuner_ATSC() {
    using F = FactoryManager;
    static const TunerRow kRows[] = {
        {"Tuner-Modulation-System-ATSC", &F::GetTunerModulation},
        {"Tuner-Frequency-Offset-ATSC", &F::GetFrequencyOffset},
        {"Tuner-Bandwidth-ATSC", &F::GetBandwidth},
        {"Tuner-Lock-Status-ATSC", &F::GetLockStatus},
        {"Tuner-SNR-ATSC", &F::GetTunerSNR},
        {"Tuner-Signal-Power-ATSC", &F::GetTunerSignalPower},
        {"Tuner-Signal-Quality-Index-ATSC", &F::GetTunerSignalQualityIndex},
        {"Tuner-Bit-Error-Rate-ATSC", &F::GetTunerGetBitErrorRate},
        {"Tuner-Uncorrected-Error-ATSC", &F::GetTunerGetUncorrectedError},
    };
    BeginTunerLayout("TunerATSC", 3000);
    SendTunerRows(kRows, sizeof(kRows) / sizeof(kRows[0]));
    EndTunerLayout("TunerATSC");
}

// ---- Buffer formatters ---------------------------------------------------------------

char* FactoryManager::TunerBuffer(unsigned int index, unsigned int size) {
    return ReaderBuffer(m_tunerBuffers[index].text, size);
}

mapi_demodulator* FactoryManager::TunerDemodulator() {
    MSrv_DTV_Player_DVB* dtv = MSrv_Control::GetInstance()->GetMSrvDtv();
    return dtv != nullptr ? dtv->GetCurrentDemodulator() : nullptr;
}

namespace {
// A row that asks the demodulator is blank without one; a row whose source is
// elsewhere (the tuner driver, the satellite record, the stored settings) takes no
// demodulator and keeps its value.
template <typename F>
std::string Read(mapi_demodulator* d, F row) {
    if constexpr (std::is_invocable_v<F>) {
        return row();
    } else {
        return d != nullptr ? row(*d) : std::string();
    }
}

// The shape every buffer formatter shares: the terrestrial/cable text for sources
// 1-3, the satellite text for 4-5, the other text (default empty) for the rest.
template <class T, class S>
std::string ByBranch(MAPI_U32 source, mapi_demodulator* d, T terrestrial, S satellite,
                     std::string other = std::string()) {
    if (Terrestrial(source)) {
        return Read(d, terrestrial);
    }
    if (Satellite(source)) {
        return Read(d, satellite);
    }
    return other;
}
std::string None() { return std::string(); }
}  // namespace

const char* FactoryManager::GetTunerModulationSystem() {
    char* out = TunerBuffer(kModulationSystem, 13);
    const MAPI_U32 source = GetTVSource();
    return Put(out, 13,
               ByBranch(
                   source, TunerDemodulator(),
                   [](mapi_demodulator& d) -> std::string {
                       const MAPI_U8 type = d.GetCurrentDemodulatorType();
                       return IsDvbt(type) ? "DVB-T" : IsDvbt2(type) ? "DVB-T2" : "DVB-C";
                   },
                   [&]() -> std::string {
                       // Only the second satellite route knows which system it carries.
                       if (source != 5) {
                           return "";
                       }
                       const MAPI_S32 modulation = m_stDVBSDemodInfo.s32Modulation;
                       return modulation == 1 ? "DVB-S" : modulation == 0 ? "DVB-S2" : "";
                   }));
}

const char* FactoryManager::GetTunerFrequency() {
    char* out = TunerBuffer(kFrequency, 19);
    if (out == nullptr) {
        return nullptr;
    }
    const MAPI_U32 source = GetTVSource();
    if (Satellite(source)) {
        return Put(out, 19, DemodFormat::SatelliteFrequency(m_stDVBSDemodInfo.s32Frequency));
    }
    MSrv_DTV_Player_DVB* dtv = MSrv_Control::GetInstance()->GetMSrvDtv();
    if (dtv == nullptr) {
        return out;
    }
    if (source == kCableSource) {
        ST_DTV_MUX_INFO mux{};
        if (dtv->GetCurrentMuxInfo(&mux) != 1) {
            printf("\033[0;34m GetCurrentMuxInfo ERROR  \033[0m ");
            return out;
        }
        return Put(out, 19, DemodFormat::FrequencyMHz(mux.u32Frequency));
    }
    ST_DTV_RF_INFO rf{};
    const MAPI_BOOL read = ReaderFactoryData(kItemRFQuery) == kRFQueryCurrent
                               ? dtv->GetCurrentRFInfo(&rf)
                               : dtv->GetCurrentProgramRFInfo(&rf);
    return read == 1 ? Put(out, 19, DemodFormat::FrequencyMHz(rf.u32Frequency)) : out;
}

const char* FactoryManager::GetFrequencyOffset() {
    char* out = TunerBuffer(kFrequencyOffset, 19);
    return Put(out, 19,
               ByBranch(
                   GetTVSource(), TunerDemodulator(),
                   [](mapi_demodulator& d) {
                       float offset = 0;
                       return d.ExtendCmd(E_DEMOD_EXTEND_CMD_FREQ_OFFSET, 1, 0, &offset) == 1
                                  ? DemodFormat::Float(offset)
                                  : std::string();
                   },
                   [](mapi_demodulator& d) {
                       return DemodFormat::Integer(d.GetDVBS_Demod_FreqOffset());
                   }));
}

const char* FactoryManager::GetBandwidth() {
    char* out = TunerBuffer(kBandwidth, 17);
    return Put(out, 17,
               ByBranch(
                   GetTVSource(), TunerDemodulator(),
                   []() { return Label(DemodLabels::Bandwidth, TUNDRV_GetDTVBandwidth()); },
                   [](mapi_demodulator& d) {
                       return DemodFormat::Float(DemodFormat::SatelliteBandwidth(
                           d.GetDVBS_Demod_SymbolRate(), d.GetDVBS_Demod_RollOff()));
                   }));
}

const char* FactoryManager::GetLockStatus() {
    char* out = TunerBuffer(kLockStatus, 13);
    return Put(out, 13,
               ByBranch(
                   GetTVSource(), TunerDemodulator(),
                   [](mapi_demodulator& d) {
                       return std::string(d.DTV_GetLockStatus() ? "LOCK" : "NOLOCK");
                   },
                   [](mapi_demodulator& d) {
                       return Label(DemodLabels::LockStatus, d.GetDVBS_Demod_Lock() & 0xFF);
                   }));
}

const char* FactoryManager::GetTunerSNR() {
    char* out = TunerBuffer(kSNR, 17);
    return Put(
        out, 17,
        ByBranch(
            GetTVSource(), TunerDemodulator(),
            [](mapi_demodulator& d) { return DemodFormat::OneDecimal(d.DTV_GetSNR_Debug()); },
            [](mapi_demodulator& d) { return DemodFormat::OneDecimal(d.GetDVBS_Demod_SNR()); }));
}

const char* FactoryManager::GetTunerSignalPower() {
    char* out = TunerBuffer(kSignalPower, 21);
    const MAPI_U32 source = GetTVSource();
    // The tuner driver also measures the analogue source.
    const std::string analogue =
        source == kAnalogueSource ? DemodFormat::OneDecimal(TUNDRV_GetRSSI()) : std::string();
    return Put(
        out, 21,
        ByBranch(
            source, TunerDemodulator(), []() { return DemodFormat::OneDecimal(TUNDRV_GetRSSI()); },
            [](mapi_demodulator& d) { return DemodFormat::Integer(d.GetDVBS_Demod_SignalLevel()); },
            analogue));
}

const char* FactoryManager::GetTunerSignalQualityIndex() {
    char* out = TunerBuffer(kSignalQuality, 17);
    return Put(
        out, 17,
        ByBranch(
            GetTVSource(), TunerDemodulator(),
            [](mapi_demodulator& d) { return DemodFormat::Integer(d.DTV_GetSignalQuality()); },
            [](mapi_demodulator& d) {
                return DemodFormat::Integer(d.GetDVBS_Demod_SignalQuality() & 0xFF);
            }));
}

const char* FactoryManager::GetTunerSignalStrengthIndex() {
    char* out = TunerBuffer(kSignalStrength, 17);
    return Put(
        out, 17,
        ByBranch(
            GetTVSource(), TunerDemodulator(),
            [](mapi_demodulator& d) { return DemodFormat::Integer(d.DTV_GetSignalStrength()); },
            [](mapi_demodulator& d) {
                return DemodFormat::Integer(d.GetDVBS_Demod_SignalStrength() & 0xFF);
            }));
}

const char* FactoryManager::GetTunerGetBitErrorRate() {
    char* out = TunerBuffer(kBitErrorRate, 17);
    return Put(
        out, 17,
        ByBranch(
            GetTVSource(), TunerDemodulator(),
            [](mapi_demodulator& d) { return DemodFormat::Scientific(d.DTV_GetPostBER()); },
            [](mapi_demodulator& d) { return DemodFormat::Scientific(d.DTV_DVBS_GetPostBER()); }));
}

const char* FactoryManager::GetTunerGetUncorrectedError() {
    char* out = TunerBuffer(kUncorrectedError, 17);
    return Put(out, 17,
               ByBranch(
                   GetTVSource(), TunerDemodulator(),
                   [](mapi_demodulator& d) { return DemodFormat::Integer(d.DTV_GetPacketErr()); },
                   [](mapi_demodulator& d) {
                       return DemodFormat::Integer(d.GetDVBS_Demod_TSpacketError());
                   }));
}

const char* FactoryManager::GetTunerModulation() {
    char* out = TunerBuffer(kModulation, 17);
    return Put(out, 17,
               ByBranch(
                   GetTVSource(), TunerDemodulator(),
                   [](mapi_demodulator& d) {
                       const MAPI_U8 type = d.GetCurrentDemodulatorType();
                       if (IsDvbt(type) || IsDvbt2(type)) {
                           return Label(DemodLabels::TerrestrialModulation,
                                        d.DTV_DVB_T_GetSignalModulation());
                       }
                       if (type == E_DEMODULATOR_TYPE_DVBC) {
                           return Label(DemodLabels::CableModulation,
                                        d.DTV_DVB_C_GetSignalModulation());
                       }
                       return std::string();
                   },
                   [](mapi_demodulator& d) {
                       return Label(DemodLabels::SatelliteModulation,
                                    d.GetDVBS_Demod_Constellation() & 0xFF);
                   }));
}

const char* FactoryManager::GetTunerMode() {
    char* out = TunerBuffer(kMode, 13);
    const std::string text = ByBranch(
        GetTVSource(), TunerDemodulator(),
        [](mapi_demodulator& d) {
            const MAPI_U8 type = d.GetCurrentDemodulatorType();
            return IsDvbt(type) || IsDvbt2(type)
                       ? Label(DemodLabels::TerrestrialFFT, d.DTV_DVB_T_GetSignalFFTValue())
                       : std::string();
        },
        None);
    return Put(out, 13, text.empty() ? "0" : text);
}

MAPI_BOOL FactoryManager::GetTunerCodeRate(const char*& highPriority, const char*& lowPriority) {
    char* hp = TunerBuffer(kCodeRateHP, 13);
    char* lp = TunerBuffer(kCodeRateLP, 13);
    highPriority = hp;
    lowPriority = lp;
    if (hp == nullptr || lp == nullptr) {
        return 0;
    }
    const MAPI_U32 source = GetTVSource();
    mapi_demodulator* d = TunerDemodulator();
    if (d == nullptr) {
        return 1;
    }
    if (Terrestrial(source)) {
        const MAPI_U8 type = d->GetCurrentDemodulatorType();
        if (IsDvbt2(type)) {
            Put(hp, 13, Label(DemodLabels::T2CodeRate, d->GetDVBT2_Demod_plp_coderate()));
        } else if (IsDvbt(type)) {
            Put(hp, 13, Label(DemodLabels::TerrestrialCodeRate, d->DTV_DVB_T_GetSignalCodeRate()));
            Put(lp, 13,
                Label(DemodLabels::TerrestrialCodeRate, d->DTV_DVB_T_GetSignalCodeRate_LP()));
        }
    } else if (Satellite(source)) {
        Put(hp, 13, Label(DemodLabels::SatelliteCodeRate, d->GetDVBS_Demod_CodeRate()));
    }
    return 1;
}

const char* FactoryManager::GetTunerGuardInterval() {
    char* out = TunerBuffer(kGuardInterval, 13);
    return Put(
        out, 13,
        ByBranch(
            GetTVSource(), TunerDemodulator(),
            [](mapi_demodulator& d) {
                const MAPI_U8 type = d.GetCurrentDemodulatorType();
                if (IsDvbt(type)) {
                    return Label(DemodLabels::GuardInterval, d.DTV_DVB_T_GetSignalGuardInterval());
                }
                if (IsDvbt2(type)) {
                    return Label(DemodLabels::GuardInterval, d.GetDVBT2_Demod_guard_interval());
                }
                return std::string();
            },
            None));
}

const char* FactoryManager::GetTuner2ndIFFrequency() {
    char* out = TunerBuffer(kSecondIF, 13);
    return Put(out, 13, ByBranch(GetTVSource(), TunerDemodulator(), None, [](mapi_demodulator& d) {
                   d.GetDemodInfoForDVBS();
                   return DemodFormat::Integer(d.GetDVBS_Demod_Frequency());
               }));
}

const char* FactoryManager::GetTunerSymbolRate() {
    char* out = TunerBuffer(kSymbolRate, 13);
    return Put(out, 13, ByBranch(GetTVSource(), TunerDemodulator(), None, [this]() {
                   return DemodFormat::Integer(m_stDVBSDemodInfo.s32SymbolRate);
               }));
}

const char* FactoryManager::GetTunerRollOff() {
    char* out = TunerBuffer(kRollOff, 13);
    return Put(out, 13, ByBranch(GetTVSource(), TunerDemodulator(), None, [](mapi_demodulator& d) {
                   return Label(DemodLabels::RollOff, d.GetDVBS_Demod_RollOff() & 0xFF);
               }));
}

namespace {
ST_USER_SYSTEM_SETTING UserSetting() {
    ST_USER_SYSTEM_SETTING setting{};
    MSrv_System_Database* db = MSrv_Control::GetInstance()->GetMSrvSystemDatabase();
    if (db != nullptr) {
        db->GetUserSystemSetting(&setting);
    }
    return setting;
}
}  // namespace

const char* FactoryManager::GetTunerLNBPower() {
    char* out = TunerBuffer(kLNBPower, 13);
    return Put(out, 13, ByBranch(GetTVSource(), TunerDemodulator(), None, []() {
                   return Label(DemodLabels::LNBPower, UserSetting().u8LNBPower);
               }));
}

const char* FactoryManager::GetTunerLNBSystem() {
    char* out = TunerBuffer(kLNBSystem, 13);
    return Put(out, 13, ByBranch(GetTVSource(), TunerDemodulator(), None, []() {
                   return Label(DemodLabels::LNBSystem, UserSetting().u8LNBSystem);
               }));
}

const char* FactoryManager::GetTunerLNBNumber() {
    char* out = TunerBuffer(kLNBNumber, 13);
    return Put(out, 13, ByBranch(GetTVSource(), TunerDemodulator(), None, []() {
                   MSrv_DTV_Player_DVBS* dvbs = SatellitePlayer();
                   ST_SATELLITE_INFO info{};
                   if (dvbs == nullptr ||
                       dvbs->GetSatelliteInfoByID(dvbs->GetCurrentSateliteNo(), &info) != 1) {
                       return std::string();
                   }
                   return DemodFormat::Integer(info.u8LNBNumber);
               }));
}

const char* FactoryManager::GetTunerLNBBand() {
    char* out = TunerBuffer(kLNBBand, 13);
    return Put(out, 13, ByBranch(GetTVSource(), TunerDemodulator(), None, [](mapi_demodulator& d) {
                   return Label(DemodLabels::LNBBand, d.GetDVBS_Demod_22kOn() & 0xFF);
               }));
}

const char* FactoryManager::GetTunerLNBPolarity() {
    char* out = TunerBuffer(kLNBPolarity, 13);
    return Put(out, 13, ByBranch(GetTVSource(), TunerDemodulator(), None, []() {
                   MSrv_DTV_Player_DVBS* dvbs = SatellitePlayer();
                   ST_TRANSPONDER_INFO info{};
                   if (dvbs == nullptr ||
                       dvbs->GetTransponderInfo(dvbs->GetCurrentSateliteNo(),
                                                dvbs->GetCurrentTransponderNo(), &info) != 1) {
                       return std::string();
                   }
                   return std::string(info.u8Polarity == E_DVBS_POLARITY_V ? "V(13V)" : "H(18V)");
               }));
}

const char* FactoryManager::GetTunerLNBAntError() {
    char* out = TunerBuffer(kLNBAntError, 13);
    return Put(out, 13, ByBranch(GetTVSource(), TunerDemodulator(), None, []() {
                   MSrv_DTV_Player_DVB* dtv = MSrv_Control::GetInstance()->GetMSrvDtv();
                   const bool protect =
                       dtv != nullptr && (dtv->GetErrorStatus() & E_DVB_ERROR_LNB_SHORT_PROTECT);
                   return std::string(protect ? "PROTECT" : "NORMAL");
               }));
}

// ---- DVB-T2 text formatters ----------------------------------------------------------

MAPI_U8 FactoryManager::TunerT2Text(std::string& text, std::string (*format)(mapi_demodulator&)) {
    if (!Terrestrial(GetTVSource())) {
        return 0;
    }
    mapi_demodulator* d = TunerDemodulator();
    if (d == nullptr || !IsDvbt2(d->GetCurrentDemodulatorType()) || d->GetDemodInfo() != 1) {
        return 0;
    }
    text = format(*d);
    return 1;
}

MAPI_U8 FactoryManager::GetTunerMISOSISO(std::string& text) {
    return TunerT2Text(text, [](mapi_demodulator& d) {
        return Label(DemodLabels::MisoSiso, d.GetDVBT2_Demod_s1_siso_miso());
    });
}

MAPI_U8 FactoryManager::GetTunerNumberOfPLPs(std::string& text) {
    return TunerT2Text(text, [](mapi_demodulator& d) {
        return DemodFormat::Integer(d.GetDVBT2_Demod_plp_number());
    });
}

MAPI_U8 FactoryManager::GetTunerCurrentPLPID(std::string& text) {
    return TunerT2Text(
        text, [](mapi_demodulator& d) { return DemodFormat::Integer(d.GetDVBT2_Demod_plp_id()); });
}

MAPI_U8 FactoryManager::GetTunerL1Modulation(std::string& text) {
    return TunerT2Text(text, [](mapi_demodulator& d) {
        return Label(DemodLabels::L1Modulation, d.GetDVBT2_Demod_constellation_l1());
    });
}

MAPI_U8 FactoryManager::GetTunerL1CodeRate(std::string& text) {
    return TunerT2Text(text, [](mapi_demodulator& d) {
        return Label(DemodLabels::L1CodeRate, d.GetDVBT2_Demod_coderate_l1());
    });
}

MAPI_U8 FactoryManager::GetTunerCPLPModulation(std::string& text) {
    return TunerT2Text(text, [](mapi_demodulator& d) {
        return Label(DemodLabels::PLPModulation, d.GetDVBT2_Demod_plp_constellation());
    });
}

MAPI_U8 FactoryManager::GetTunerCPLPCodeRate(std::string& text) {
    return TunerT2Text(text, [](mapi_demodulator& d) {
        return Label(DemodLabels::T2CodeRate, d.GetDVBT2_Demod_plp_coderate());
    });
}

MAPI_U8 FactoryManager::GetTunerFECType(std::string& text) {
    return TunerT2Text(text, [](mapi_demodulator& d) {
        return Label(DemodLabels::FECType, d.GetDVBT2_Demod_plp_fec());
    });
}

MAPI_U8 FactoryManager::GetTunerPILOT(std::string& text) {
    return TunerT2Text(text, [](mapi_demodulator& d) {
        return DemodFormat::PilotPattern(d.GetDVBT2_Demod_pilot_pattern());
    });
}

MAPI_U8 FactoryManager::GetTunerModeFFT(std::string& text) {
    return TunerT2Text(text, [](mapi_demodulator& d) {
        const MAPI_U8 carrier = d.GetDVBT2_Demod_mode_carrier();
        printf("%s(): %d u8mode_carrier=%d\n", "GetTunerModeFFT", __LINE__, carrier);
        return Label(DemodLabels::T2FFT, carrier);
    });
}

MAPI_U8 FactoryManager::GetTunerFEF(std::string& text) {
    return TunerT2Text(text, [](mapi_demodulator& d) {
        d.GetDVBT2_Demod_fef_type();
        ST_DEMOD_FEF_INFO fef{};
        d.ExtendCmd(E_DEMOD_EXTEND_CMD_T2_FEF_INFO, 0, 0, &fef);
        return DemodFormat::FutureExtensionFrames(fef.bPresent != 0, fef.u32Length);
    });
}

MAPI_U8 FactoryManager::GetTunerPAPR(std::string& text) {
    return TunerT2Text(text, [](mapi_demodulator& d) {
        return Label(DemodLabels::PAPR, d.GetDVBT2_Demod_papr());
    });
}

// Reported under the T2 gate, as the page sends it.
MAPI_U8 FactoryManager::GetTunerSymbolRateDVBC(std::string& text) {
    return TunerT2Text(text, [](mapi_demodulator& d) {
        return DemodFormat::Integer(d.DTV_DVB_C_GetCurrentSymbolRate());
    });
}
