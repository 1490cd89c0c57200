#include "DemodLabels.h"

const char* LabelOf(const LabelTable& table, long value) {
    if (value < 0 || static_cast<size_t>(value) >= table.count || table.labels[value] == nullptr) {
        return table.otherwise;
    }
    return table.labels[value];
}

namespace {
template <size_t N>
constexpr LabelTable Table(const char* const (&labels)[N], const char* otherwise = "") {
    return {labels, N, otherwise};
}

const char* const kBandwidth[] = {"Unknown", "1.7MHz", "5MHz",  "6MHz",
                                  "7MHz",    "8MHz",   "10MHz", "RESERVE"};
const char* const kTerrestrialModulation[] = {"QPSK", "16-QAM", "64-QAM", "256-QAM"};
const char* const kCableModulation[] = {"16-QAM",  "32-QAM",  "64-QAM",
                                        "128-QAM", "256-QAM", "Auto-QAM"};
const char* const kSatelliteModulation[] = {"QPSK", "8PSK", "QPSK"};
const char* const kTerrestrialFFT[] = {"2K",    "8K",    "4K",      "1K",     "16K",
                                       "32K",   nullptr, nullptr,   nullptr,  "8K_EXT",
                                       nullptr, nullptr, "16K_EXT", "32K_EXT"};
const char* const kT2FFT[] = {"1K", "2K", "4K", "8K", "16K", "32K"};
const char* const kSatelliteCodeRate[] = {"1/2", "1/3", "2/3", "1/4", "3/4", "2/5",
                                          "3/5", "4/5", "5/6", "7/8", "8/9", "9/10"};
const char* const kTerrestrialCodeRate[] = {"1/2", "2/3", "3/4", "5/6", "7/8", "4/5", "6/7", "8/9"};
const char* const kT2CodeRate[] = {"1/2", "3/5", "2/3", "3/4", "4/5", "5/6"};
const char* const kGuardInterval[] = {"1/32", "1/16", "1/8", "1/4", "1/128", "19/128", "19/256"};
const char* const kRollOff[] = {"30", "25", "20"};
const char* const kLockStatus[] = {"NOLOCK", "LOCK"};
const char* const kLNBPower[] = {"OFF", "ON"};
const char* const kLNBSystem[] = {"None", "ToneBurst", "DiSEqC 2Way", "DiSEqC 4Way",
                                  "Single Cable"};
const char* const kLNBBand[] = {"HIGH(22kOFF)", "LOW(22kON)"};
const char* const kMisoSiso[] = {"SISO", "MISO"};
const char* const kL1Modulation[] = {"BPSK", "QPSK", "16QAM", "64QAM"};
const char* const kL1CodeRate[] = {"1/2"};
const char* const kPLPModulation[] = {"QPSK", "16QAM", "64QAM", "256QAM"};
const char* const kFECType[] = {"16K", "64K"};
const char* const kPAPR[] = {"No PAPR", "ACE-PAPR", "TR-PAPR", "ACE and TR"};

const char* const kLevels[] = {"Off", "Low", "Middle", "Heigh"};
const char* const kLevelsConsole[] = {"Off", "Low", "Middle", "High"};
const char* const kPictureSize[] = {
    "Default", "Full",          "4X3",           "Auto", "Theater Wide1", "Native", "Zoom1",
    "Zoom2",   "Theater Wide2", "Theater Wide3", "14X9", "DotbyDot",      "PC Wide"};
}  // namespace

namespace DemodLabels {
const LabelTable Bandwidth = Table(kBandwidth, "Unknown");
const LabelTable TerrestrialModulation = Table(kTerrestrialModulation);
const LabelTable CableModulation = Table(kCableModulation);
const LabelTable SatelliteModulation = Table(kSatelliteModulation);
const LabelTable TerrestrialFFT = Table(kTerrestrialFFT, "0");
const LabelTable T2FFT = Table(kT2FFT);
const LabelTable SatelliteCodeRate = Table(kSatelliteCodeRate);
const LabelTable TerrestrialCodeRate = Table(kTerrestrialCodeRate);
const LabelTable T2CodeRate = Table(kT2CodeRate);
const LabelTable GuardInterval = Table(kGuardInterval);
const LabelTable RollOff = Table(kRollOff);
const LabelTable LockStatus = Table(kLockStatus);
const LabelTable LNBPower = Table(kLNBPower);
const LabelTable LNBSystem = Table(kLNBSystem);
const LabelTable LNBBand = Table(kLNBBand);
const LabelTable MisoSiso = Table(kMisoSiso);
const LabelTable L1Modulation = Table(kL1Modulation);
const LabelTable L1CodeRate = Table(kL1CodeRate);
const LabelTable PLPModulation = Table(kPLPModulation);
const LabelTable FECType = Table(kFECType);
const LabelTable PAPR = Table(kPAPR);
}  // namespace DemodLabels

namespace PictureLabels {
// Dynamic contrast sends nothing for an unknown level; the two noise reductions fall
// back to their automatic and off settings.
const LabelTable DynamicContrast = Table(kLevels, nullptr);
const LabelTable CableClear = Table(kLevels, "Auto");
// Level 0 and unknown levels both read "Off".
const LabelTable MpegNR = Table(kLevels, "Off");
const LabelTable DynamicContrastConsole = Table(kLevelsConsole, nullptr);
const LabelTable CableClearConsole = Table(kLevelsConsole, "Auto");
const LabelTable MpegNRConsole = Table(kLevelsConsole, "Off");
const LabelTable PictureSize = Table(kPictureSize, nullptr);

const char* AutoAspectRatio(long aspect) { return aspect == 3 ? "On" : "Off"; }
}  // namespace PictureLabels
