// Label tables of the tuner pages and the picture page: each maps a platform value
// to the text the pages show. One routine walks them all.
#pragma once

#include <cstddef>

struct LabelTable {
    const char* const* labels;  // by value; a null entry is a gap in the table
    size_t count;
    const char* otherwise;  // for a value outside the table; may be null (no text)
};

// The label of value, or the table's otherwise.
const char* LabelOf(const LabelTable& table, long value);

namespace DemodLabels {
extern const LabelTable Bandwidth;
extern const LabelTable TerrestrialModulation;
extern const LabelTable CableModulation;
extern const LabelTable SatelliteModulation;
extern const LabelTable TerrestrialFFT;  // GetTunerMode: "0" outside
extern const LabelTable T2FFT;           // GetTunerModeFFT
extern const LabelTable SatelliteCodeRate;
extern const LabelTable TerrestrialCodeRate;
extern const LabelTable T2CodeRate;
extern const LabelTable GuardInterval;
extern const LabelTable RollOff;
extern const LabelTable LockStatus;
extern const LabelTable LNBPower;
extern const LabelTable LNBSystem;
extern const LabelTable LNBBand;
extern const LabelTable MisoSiso;
extern const LabelTable L1Modulation;
extern const LabelTable L1CodeRate;
extern const LabelTable PLPModulation;
extern const LabelTable FECType;
extern const LabelTable PAPR;
}  // namespace DemodLabels

// The picture page's levels; the web page spells the top level "Heigh", the serial
// console "High".
namespace PictureLabels {
extern const LabelTable DynamicContrast;
extern const LabelTable CableClear;
extern const LabelTable MpegNR;
extern const LabelTable DynamicContrastConsole;
extern const LabelTable CableClearConsole;
extern const LabelTable MpegNRConsole;
extern const LabelTable PictureSize;
// "On" for the automatic aspect ratio (3), else "Off".
const char* AutoAspectRatio(long aspect);
}  // namespace PictureLabels
