// The tuner pages' formatters: each turns one reading of the demodulator, the tuner
// driver, the satellite record or the stored settings into a row's text. The label
// tables and the number formats live in DemodLabels and DemodFormat.
#include <cstdio>
#include <cstring>
#include <string>
#include <type_traits>

#include "DemodFormat.h"
#include "DemodLabels.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_Control_common.h"
#include "MSrv_DTV_Player_DVBS.h"
#include "MSrv_System_Database.h"
#include "TunerSource.h"
#include "mapi_demodulator.h"
#include "mapi_tuner.h"

using TunerSource::Satellite;
using TunerSource::SatellitePlayer;
using TunerSource::Terrestrial;

namespace {
// Factory data item that chooses how the RF information is asked for.
constexpr unsigned short kItemRFQuery = 137;
constexpr MAPI_U8 kRFQueryCurrent = 25;
constexpr MAPI_U32 kCableSource = TunerSource::kCable;
constexpr MAPI_U32 kAnalogueSource = TunerSource::kAnalogue;

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
}  // namespace

// ---- Buffer formatters ---------------------------------------------------------------

char* FactoryManager::TunerBuffer(unsigned int index, unsigned int size) {
    return ReaderBuffer(m_tunerBuffers[index].text, size);
}

namespace {
// Asked only by the rows that read the demodulator, and only on the branch that reads
// it: the page refreshes every second, and a row whose source is elsewhere (the tuner
// driver, the satellite record, the stored settings) neither needs it nor goes blank
// without it.
mapi_demodulator* CurrentDemodulator() {
    MSrv_DTV_Player_DVB* dtv = MSrv_Control::GetInstance()->GetMSrvDtv();
    return dtv != nullptr ? dtv->GetCurrentDemodulator() : nullptr;
}

template <typename F>
std::string Read(F row) {
    if constexpr (std::is_invocable_v<F>) {
        return row();
    } else {
        mapi_demodulator* d = CurrentDemodulator();
        return d != nullptr ? row(*d) : std::string();
    }
}

// The shape every buffer formatter shares: the terrestrial/cable text for sources
// 1-3, the satellite text for 4-5, the other text (default empty) for the rest.
template <class T, class S>
std::string ByBranch(MAPI_U32 source, T terrestrial, S satellite,
                     std::string other = std::string()) {
    if (Terrestrial(source)) {
        return Read(terrestrial);
    }
    if (Satellite(source)) {
        return Read(satellite);
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
                   source,
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
                   GetTVSource(),
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
    return Put(
        out, 17,
        ByBranch(
            GetTVSource(), []() { return Label(DemodLabels::Bandwidth, TUNDRV_GetDTVBandwidth()); },
            [](mapi_demodulator& d) {
                return DemodFormat::Float(DemodFormat::SatelliteBandwidth(
                    d.GetDVBS_Demod_SymbolRate(), d.GetDVBS_Demod_RollOff()));
            }));
}

const char* FactoryManager::GetLockStatus() {
    char* out = TunerBuffer(kLockStatus, 13);
    return Put(out, 13,
               ByBranch(
                   GetTVSource(),
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
            GetTVSource(),
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
            source, []() { return DemodFormat::OneDecimal(TUNDRV_GetRSSI()); },
            [](mapi_demodulator& d) { return DemodFormat::Integer(d.GetDVBS_Demod_SignalLevel()); },
            analogue));
}

const char* FactoryManager::GetTunerSignalQualityIndex() {
    char* out = TunerBuffer(kSignalQuality, 17);
    return Put(
        out, 17,
        ByBranch(
            GetTVSource(),
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
            GetTVSource(),
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
            GetTVSource(),
            [](mapi_demodulator& d) { return DemodFormat::Scientific(d.DTV_GetPostBER()); },
            [](mapi_demodulator& d) { return DemodFormat::Scientific(d.DTV_DVBS_GetPostBER()); }));
}

const char* FactoryManager::GetTunerGetUncorrectedError() {
    char* out = TunerBuffer(kUncorrectedError, 17);
    return Put(out, 17,
               ByBranch(
                   GetTVSource(),
                   [](mapi_demodulator& d) { return DemodFormat::Integer(d.DTV_GetPacketErr()); },
                   [](mapi_demodulator& d) {
                       return DemodFormat::Integer(d.GetDVBS_Demod_TSpacketError());
                   }));
}

const char* FactoryManager::GetTunerModulation() {
    char* out = TunerBuffer(kModulation, 17);
    return Put(out, 17,
               ByBranch(
                   GetTVSource(),
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
        GetTVSource(),
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
    if (!Terrestrial(source) && !Satellite(source)) {
        return 1;
    }
    mapi_demodulator* d = CurrentDemodulator();
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
            GetTVSource(),
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
    return Put(out, 13, ByBranch(GetTVSource(), None, [](mapi_demodulator& d) {
                   d.GetDemodInfoForDVBS();
                   return DemodFormat::Integer(d.GetDVBS_Demod_Frequency());
               }));
}

const char* FactoryManager::GetTunerSymbolRate() {
    char* out = TunerBuffer(kSymbolRate, 13);
    return Put(out, 13, ByBranch(GetTVSource(), None, [this]() {
                   return DemodFormat::Integer(m_stDVBSDemodInfo.s32SymbolRate);
               }));
}

const char* FactoryManager::GetTunerRollOff() {
    char* out = TunerBuffer(kRollOff, 13);
    return Put(out, 13, ByBranch(GetTVSource(), None, [](mapi_demodulator& d) {
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
    return Put(out, 13, ByBranch(GetTVSource(), None, []() {
                   return Label(DemodLabels::LNBPower, UserSetting().u8LNBPower);
               }));
}

const char* FactoryManager::GetTunerLNBSystem() {
    char* out = TunerBuffer(kLNBSystem, 13);
    return Put(out, 13, ByBranch(GetTVSource(), None, []() {
                   return Label(DemodLabels::LNBSystem, UserSetting().u8LNBSystem);
               }));
}

const char* FactoryManager::GetTunerLNBNumber() {
    char* out = TunerBuffer(kLNBNumber, 13);
    return Put(out, 13, ByBranch(GetTVSource(), None, []() {
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
    return Put(out, 13, ByBranch(GetTVSource(), None, [](mapi_demodulator& d) {
                   return Label(DemodLabels::LNBBand, d.GetDVBS_Demod_22kOn() & 0xFF);
               }));
}

const char* FactoryManager::GetTunerLNBPolarity() {
    char* out = TunerBuffer(kLNBPolarity, 13);
    return Put(out, 13, ByBranch(GetTVSource(), None, []() {
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
    return Put(out, 13, ByBranch(GetTVSource(), None, []() {
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
    mapi_demodulator* d = CurrentDemodulator();
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
