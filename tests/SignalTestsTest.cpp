// ADC adjustment and VGA EDID writing: the input format checks on both sides of
// their bounds, the reported results with their closing pages, and the EDID
// result stored and reported to the serial channel.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FactoryKeyCodes.h"
#include "ProductionFixture.h"
#include "SimFactoryStore.h"
#include "SimMMode.h"
#include "SimPlayers.h"
#include "SimProductionTests.h"

namespace {

class SignalTest : public ProductionTest {
protected:
    sim::SignalState& Signal() { return Tv().Get<sim::SignalState>(); }
    sim::StationState& Station() { return Tv().Get<sim::StationState>(); }
    void Input(int source, uint16_t w, uint16_t h, uint16_t vfreq, uint8_t standard = 0) {
        Tv().Get<sim::PlayerState>().currentSource = source;
        Signal().width = w;
        Signal().height = h;
        Signal().vfreq = vfreq;
        Signal().videoStandard = standard;
    }
};

struct FormatCase {
    const char* name;
    int source;
    uint16_t w, h, vfreq;
    uint8_t standard;
    bool signal;
    bool starts;
};

std::ostream& operator<<(std::ostream& out, const FormatCase& c) { return out << c.name; }

class AdcFormatTest : public SignalTest, public testing::WithParamInterface<FormatCase> {};

TEST_P(AdcFormatTest, StartsOnlyOnAStableSignalOfTheRightFormat) {
    const FormatCase& c = GetParam();
    Input(c.source, c.w, c.h, c.vfreq, c.standard);
    Signal().present = c.signal;
    testing::internal::CaptureStdout();
    Post(232, 0, 0);
    const std::string console = testing::internal::GetCapturedStdout();
    EXPECT_EQ(Fm().m_bIsADCAdjustmentTesting, 1);
    if (!c.starts) {
        // The station's console names the handler of the event.
        const std::string ng =
            c.signal ? "Detect signal format --> NG" : "Detect Video signal  --> NG";
        EXPECT_NE(console.find("\033[1;32m" + ng + "OnEvent_FactoryADCAdjustment("),
                  std::string::npos)
            << console;
        EXPECT_EQ(TakeNotes(), NoteList{Str("HideAllUIExcept", "ADCAdjustment")});
        EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::SetADC"), 0u);
        EXPECT_EQ(Journal().CountCalls("MEvtHandle::SetTimer"), 0u);
        Advance(60000);
        EXPECT_EQ(Fm().m_bIsADCAdjustmentTesting, 1) << "up until the next event or exit key";
        return;
    }
    EXPECT_EQ(TakeNotes(),
              (NoteList{Str("HideAllUIExcept", "ADCAdjustment"), Num("ADC-Adjustment", 0)}));
    EXPECT_TRUE(Station().adcStarted);
    Advance(2999);
    EXPECT_EQ(TakeNotes(), NoteList{});
    Advance(1);
    EXPECT_EQ(TakeNotes(), NoteList{Num("ADC-Adjustment-NG-Show", 0)}) << "no OK reported";
    EXPECT_EQ(Fm().m_bIsADCAdjustmentTesting, 0);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Inputs, AdcFormatTest, testing::Values(
    FormatCase{"Vga60", 0, 640, 480, 600, 0, true, true},
    FormatCase{"VgaAtLowerBound", 0, 640, 480, 580, 0, true, false},
    FormatCase{"VgaJustAboveLower", 0, 640, 480, 581, 0, true, true},
    FormatCase{"VgaAtUpperBound", 0, 640, 480, 620, 0, true, false},
    FormatCase{"VgaJustBelowUpper", 0, 640, 480, 619, 0, true, true},
    FormatCase{"VgaWrongSize", 0, 800, 600, 600, 0, true, false},
    FormatCase{"VgaNoSignal", 0, 640, 480, 600, 0, false, false},
    FormatCase{"Component1080", 16, 1920, 1080, 600, 0, true, true},
    FormatCase{"Component720", 16, 1280, 720, 600, 0, true, false},
    FormatCase{"Component1080At50", 17, 1920, 1080, 500, 0, true, false},
    FormatCase{"ComponentThird", 18, 1920, 1080, 600, 0, true, true},
    FormatCase{"Source20", 20, 1920, 1080, 600, 0, true, false},
    FormatCase{"Source19", 19, 1920, 1080, 600, 0, true, false},
    FormatCase{"CvbsPal", 2, 0, 0, 0, 0, true, true},
    FormatCase{"CvbsNtsc", 9, 0, 0, 0, 1, true, true},
    FormatCase{"CvbsPalN", 5, 0, 0, 0, 5, true, true},
    FormatCase{"CvbsStandard2", 3, 0, 0, 0, 2, true, false},
    FormatCase{"CvbsStandard6", 4, 0, 0, 0, 6, true, false},
    FormatCase{"Source10", 10, 0, 0, 0, 0, true, false},
    FormatCase{"Source1", 1, 0, 0, 0, 0, true, false}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

struct ReportCase {
    const char* name;
    int source;
    uint8_t standard;
    unsigned phase;
    bool mMode;
    const char* log;  // "" none
};

std::ostream& operator<<(std::ostream& out, const ReportCase& c) { return out << c.name; }

class AdcReportTest : public SignalTest, public testing::WithParamInterface<ReportCase> {};

TEST_P(AdcReportTest, ShowsTheStationsVerdictAndClosesWithIt) {
    const ReportCase& c = GetParam();
    Input(c.source, 1920, 1080, 600, c.standard);
    Tv().Get<sim::MModeState>().mMode = c.mMode;
    Post(232, 0, c.phase);
    const long shown = c.phase == 1 ? 1 : 2;
    EXPECT_EQ(TakeNotes(),
              (NoteList{Str("HideAllUIExcept", "ADCAdjustment"), Num("ADC-Adjustment", shown)}));
    int lines = 0;
    for (const auto& e : Journal().Entries()) {
        lines += e.kind == "log" && e.args.find("(FACTORY:) AD") != std::string::npos;
    }
    EXPECT_EQ(lines, *c.log ? 1 : 0);
    if (*c.log) {
        EXPECT_TRUE(Journal().HasLog(c.log));
    }
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::SetADC"), 0u);
    Advance(2999);
    EXPECT_EQ(TakeNotes(), NoteList{});
    Advance(1);
    EXPECT_EQ(TakeNotes(),
              NoteList{Num(c.phase == 1 ? "ADC-Adjustment-OK-Show" : "ADC-Adjustment-NG-Show", 0)});
    EXPECT_FALSE(Tv().Get<sim::MModeState>().factoryOsd);
}

INSTANTIATE_TEST_SUITE_P(
    Verdicts, AdcReportTest,
    testing::Values(ReportCase{"RgbOk", 0, 0, 1, true, "(FACTORY:) AD RGB OK "},
                    ReportCase{"CompNg", 16, 0, 2, true, "(FACTORY:) AD COMP NG "},
                    ReportCase{"PalOk", 2, 4, 1, true, "(FACTORY:) AD PAL OK "},
                    ReportCase{"NtscNg", 3, 6, 2, true, "(FACTORY:) AD NTSC NG "},
                    ReportCase{"UnknownStandardNoLine", 3, 7, 1, true, ""},
                    ReportCase{"OtherSourceNoLine", 17, 0, 2, true, ""},
                    ReportCase{"MModeOffNoLine", 0, 0, 1, false, ""}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(SignalTest, AnotherPhaseOnlyRearmsTheClose) {
    Post(232, 0, 1);
    Advance(2000);
    Post(232, 0, 7);
    EXPECT_EQ(TakeNotes(), Notes(R"-(
                  HideAllUIExcept="ADCAdjustment" ADC-Adjustment=1
                  HideAllUIExcept="ADCAdjustment"
              )-"));
    Advance(2999);
    EXPECT_EQ(TakeNotes(), NoteList{});
    Advance(1);
    EXPECT_EQ(TakeNotes(), NoteList{Num("ADC-Adjustment-OK-Show", 0)}) << "the last verdict";
}

struct EdidCase {
    const char* name;
    bool pass;
    bool uart;
    bool mMode;
};

std::ostream& operator<<(std::ostream& out, const EdidCase& c) { return out << c.name; }

class EdidTest : public SignalTest, public testing::WithParamInterface<EdidCase> {};

TEST_P(EdidTest, WritesChecksStoresAndReports) {
    const EdidCase& c = GetParam();
    Station().vgaEdidPass = c.pass;
    Station().uartUi = c.uart;
    Tv().Get<sim::MModeState>().mMode = c.mMode;
    Tv().Get<sim::FactoryStoreState>().Set(87, 9);
    Post(233);
    NoteList expected = {Str("HideAllUIExcept", "VGA_EDID_EEPROM")};
    if (c.uart) {
        expected.push_back(Num("WriteVGA_EDID_EEPRPOM", 0));
        expected.push_back(Num("WriteVGA_EDID_EEPRPOM", c.pass ? 1 : 2));
    }
    EXPECT_EQ(TakeNotes(), expected);
    EXPECT_EQ(Fm().m_bIsVGAEDIDWriting, 1);
    EXPECT_EQ(
        CallsIn({"MSrv_Factory_Default::SetVGA_EDID_Data", "MsOS_DelayTask",
                 "MSrv_Factory_Default::GetVGA_EDID_Data", "MSrv_Factory_Default::SetFactoryData",
                 "MSrv_Factory_Cmd::SetUARTExecutingResult", "MEvtHandle::SetTimer"}),
        (std::vector<std::string>{
            "MSrv_Factory_Default::SetVGA_EDID_Data []", "MsOS_DelayTask [200]",
            "MSrv_Factory_Default::GetVGA_EDID_Data []",
            std::string("MSrv_Factory_Default::SetFactoryData [87, ") + (c.pass ? "1]" : "0]"),
            std::string("MSrv_Factory_Cmd::SetUARTExecutingResult [") + (c.pass ? "1]" : "0]"),
            "MEvtHandle::SetTimer [3000, 55, 1]"}));
    EXPECT_EQ(Journal().HasLog("(FACTORY:) VGA EDID OK "), c.mMode && c.pass);
    EXPECT_EQ(Journal().HasLog(" (FACTORY:) VGA EDID NG "), c.mMode && !c.pass);
    Advance(2999);
    EXPECT_EQ(TakeNotes(), NoteList{});
    Advance(1);
    EXPECT_EQ(TakeNotes(), NoteList{Num("WriteVGA_EDID_EEPRPOM-Show", 0)});
    EXPECT_EQ(Fm().m_bIsVGAEDIDWriting, 0);
    EXPECT_EQ(Fm().FactoryGetEDIDVGA(), c.pass ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(Results, EdidTest,
                         testing::Values(EdidCase{"PassSerial", true, true, true},
                                         EdidCase{"FailSerial", false, true, true},
                                         EdidCase{"PassQuiet", true, false, false},
                                         EdidCase{"FailQuiet", false, false, false}),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
