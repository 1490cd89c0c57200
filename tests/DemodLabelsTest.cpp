// The tuner and picture pages' label tables, each checked value by value against the
// labels the pages must show, and the number formats at their edges.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DemodFormat.h"
#include "DemodLabels.h"

namespace {

struct TableCase {
    const char* name;
    const LabelTable* table;
    std::vector<const char*> labels;  // value 0, 1, ...; null where the table has no label
    const char* outside;              // what a value past the end (and -1) gives
};
std::ostream& operator<<(std::ostream& out, const TableCase& c) { return out << c.name; }

class LabelTables : public ::testing::TestWithParam<TableCase> {};

std::string Text(const char* label) { return label != nullptr ? label : "(none)"; }

TEST_P(LabelTables, GiveEachValueItsLabel) {
    const TableCase& c = GetParam();
    const std::string outside = Text(c.outside);
    for (size_t value = 0; value < c.labels.size(); ++value) {
        const std::string expected = c.labels[value] != nullptr ? c.labels[value] : outside;
        EXPECT_EQ(Text(LabelOf(*c.table, static_cast<long>(value))), expected) << value;
    }
    EXPECT_EQ(Text(LabelOf(*c.table, static_cast<long>(c.labels.size()))), outside);
    EXPECT_EQ(Text(LabelOf(*c.table, 255)), outside);
    EXPECT_EQ(Text(LabelOf(*c.table, -1)), outside);
}

using namespace DemodLabels;
const char* const kNone = nullptr;

INSTANTIATE_TEST_SUITE_P(
    Demod, LabelTables,
    // clang-format off
    ::testing::Values(
        TableCase{"Bandwidth", &Bandwidth, {"Unknown", "1.7MHz", "5MHz", "6MHz", "7MHz", "8MHz", "10MHz", "RESERVE"}, "Unknown"},
        TableCase{"TerrestrialModulation", &TerrestrialModulation, {"QPSK", "16-QAM", "64-QAM", "256-QAM"}, ""},
        TableCase{"CableModulation", &CableModulation, {"16-QAM", "32-QAM", "64-QAM", "128-QAM", "256-QAM", "Auto-QAM"}, ""},
        TableCase{"SatelliteModulation", &SatelliteModulation, {"QPSK", "8PSK", "QPSK"}, ""},
        TableCase{"TerrestrialFFT", &TerrestrialFFT, {"2K", "8K", "4K", "1K", "16K", "32K", kNone, kNone, kNone, "8K_EXT", kNone, kNone, "16K_EXT", "32K_EXT"}, "0"},
        TableCase{"T2FFT", &T2FFT, {"1K", "2K", "4K", "8K", "16K", "32K"}, ""},
        TableCase{"SatelliteCodeRate", &SatelliteCodeRate, {"1/2", "1/3", "2/3", "1/4", "3/4", "2/5", "3/5", "4/5", "5/6", "7/8", "8/9", "9/10"}, ""},
        TableCase{"TerrestrialCodeRate", &TerrestrialCodeRate, {"1/2", "2/3", "3/4", "5/6", "7/8", "4/5", "6/7", "8/9"}, ""},
        TableCase{"T2CodeRate", &T2CodeRate, {"1/2", "3/5", "2/3", "3/4", "4/5", "5/6"}, ""},
        TableCase{"GuardInterval", &GuardInterval, {"1/32", "1/16", "1/8", "1/4", "1/128", "19/128", "19/256"}, ""},
        TableCase{"RollOff", &RollOff, {"30", "25", "20"}, ""},
        TableCase{"LockStatus", &LockStatus, {"NOLOCK", "LOCK"}, ""},
        TableCase{"LNBPower", &LNBPower, {"OFF", "ON"}, ""},
        TableCase{"LNBSystem", &LNBSystem, {"None", "ToneBurst", "DiSEqC 2Way", "DiSEqC 4Way", "Single Cable"}, ""},
        TableCase{"LNBBand", &LNBBand, {"HIGH(22kOFF)", "LOW(22kON)"}, ""},
        TableCase{"MisoSiso", &MisoSiso, {"SISO", "MISO"}, ""},
        TableCase{"L1Modulation", &L1Modulation, {"BPSK", "QPSK", "16QAM", "64QAM"}, ""},
        TableCase{"L1CodeRate", &L1CodeRate, {"1/2"}, ""},
        TableCase{"PLPModulation", &PLPModulation, {"QPSK", "16QAM", "64QAM", "256QAM"}, ""},
        TableCase{"FECType", &FECType, {"16K", "64K"}, ""},
        TableCase{"PAPR", &PAPR, {"No PAPR", "ACE-PAPR", "TR-PAPR", "ACE and TR"}, ""},
        TableCase{"DynamicContrast", &PictureLabels::DynamicContrast, {"Off", "Low", "Middle", "Heigh"}, kNone},
        TableCase{"CableClear", &PictureLabels::CableClear, {"Off", "Low", "Middle", "Heigh"}, "Auto"},
        TableCase{"MpegNR", &PictureLabels::MpegNR, {"Off", "Low", "Middle", "Heigh"}, "Off"},
        TableCase{"DynamicContrastConsole", &PictureLabels::DynamicContrastConsole, {"Off", "Low", "Middle", "High"}, kNone},
        TableCase{"CableClearConsole", &PictureLabels::CableClearConsole, {"Off", "Low", "Middle", "High"}, "Auto"},
        TableCase{"MpegNRConsole", &PictureLabels::MpegNRConsole, {"Off", "Low", "Middle", "High"}, "Off"},
        TableCase{"PictureSize", &PictureLabels::PictureSize, {"Default", "Full", "4X3", "Auto", "Theater Wide1", "Native", "Zoom1", "Zoom2", "Theater Wide2", "Theater Wide3", "14X9", "DotbyDot", "PC Wide"}, kNone}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

TEST(PictureLabels, AutoAspectRatioIsOnOnlyForTheAutomaticSize) {
    for (long aspect : {0L, 2L, 4L, 12L, 255L}) {
        EXPECT_STREQ(PictureLabels::AutoAspectRatio(aspect), "Off") << aspect;
    }
    EXPECT_STREQ(PictureLabels::AutoAspectRatio(3), "On");
}

struct FrequencyCase {
    unsigned long kHz;
    const char* text;
};

class FrequencyText : public ::testing::TestWithParam<FrequencyCase> {};

TEST_P(FrequencyText, KeepsTheHundredsOfKilohertzUnpadded) {
    EXPECT_EQ(DemodFormat::FrequencyMHz(GetParam().kHz), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Demod, FrequencyText,
                         ::testing::Values(FrequencyCase{474050, "474.5"},
                                           FrequencyCase{474000, "474.0"},
                                           FrequencyCase{474999, "474.99"},
                                           FrequencyCase{858125, "858.12"},
                                           FrequencyCase{999, "0.99"}, FrequencyCase{0, "0.0"}));

TEST(DemodFormat, SatelliteBandwidthUsesTheRollOffFactorInSinglePrecision) {
    EXPECT_EQ(DemodFormat::SatelliteBandwidth(27500, 0), static_cast<float>(27.5 * 1.35));
    EXPECT_EQ(DemodFormat::SatelliteBandwidth(27500, 1), static_cast<float>(27.5 * 1.25));
    EXPECT_EQ(DemodFormat::SatelliteBandwidth(27500, 2), static_cast<float>(27.5 * 1.2));
    EXPECT_EQ(DemodFormat::SatelliteBandwidth(22000, 7), static_cast<float>(22.0 * 1.2));
    EXPECT_EQ(DemodFormat::Float(DemodFormat::SatelliteBandwidth(27500, 0)), "37.125000");
}

TEST(DemodFormat, NumbersTakeThePagesFormats) {
    EXPECT_EQ(DemodFormat::SatelliteFrequency(1244), "10994");
    EXPECT_EQ(DemodFormat::SatelliteFrequency(-9750), "0");
    EXPECT_EQ(DemodFormat::OneDecimal(28.45), "28.4");
    EXPECT_EQ(DemodFormat::OneDecimal(-0.04), "-0.0");
    EXPECT_EQ(DemodFormat::Scientific(1.25e-7), "1.2E-07");
    EXPECT_EQ(DemodFormat::Scientific(0), "0.0E+00");
    EXPECT_EQ(DemodFormat::Float(-12.5f), "-12.500000");
    EXPECT_EQ(DemodFormat::Integer(-45), "-45");
    EXPECT_EQ(DemodFormat::PilotPattern(0), "PP0");
    EXPECT_EQ(DemodFormat::FutureExtensionFrames(false, 99), "NONE");
    EXPECT_EQ(DemodFormat::FutureExtensionFrames(true, 0), "0");
    EXPECT_EQ(DemodFormat::FutureExtensionFrames(true, 4294967295UL), "4294967295");
}

}  // namespace
