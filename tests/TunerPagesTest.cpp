// The tuner pages on the simulated set: the terrestrial/cable and satellite layouts,
// the once-a-second redraw, the T2 gating, the source derivation and the receiver
// information page.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "FactoryKeyCodes.h"
#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimFactoryStore.h"
#include "SimFrontEnd.h"
#include "SimMMode.h"
#include "SimPlayers.h"
#include "UiNotes.h"

namespace {

class TunerPagesTest : public HostTest {
protected:
    sim::FrontEndState& Tuner() { return Tv().Get<sim::FrontEndState>(); }
    void Route(MAPI_U8 system) { Routes().routeTypes[Routes().route] = system; }
    sim::FrontEndState& Routes() { return Tv().Get<sim::FrontEndState>(); }
    // The rows of one drawing: from its hide command to the layout's "on".
    NoteList LastDrawing() {
        const NoteList notes = UiNotes();
        auto begin = std::find_if(notes.rbegin(), notes.rend(), [](const Note& n) {
                         return n.cmd == "HideAllUIExcept";
                     }).base();
        return NoteList(begin == notes.begin() ? begin : begin - 1, notes.end());
    }
    size_t Count(const Note& note) {
        const NoteList notes = UiNotes();
        return static_cast<size_t>(std::count(notes.begin(), notes.end(), note));
    }
    void UseDvbt() {
        Tuner().demodType = 1;
        Tuner().modulationT = 2;
        Tuner().fftT = 1;
        Tuner().codeRateHP = 1;
        Tuner().codeRateLP = 4;
        Tuner().guardT = 2;
    }
};

TEST_F(TunerPagesTest, DemoSetShowsTheDvbt2ChannelAfterTheSettlingWait) {
    Fm().mAPI_ShowTuner();
    EXPECT_EQ(UiNotes(), Notes(R"-(
        HideAllUIExcept="Tuner" Tuner-Modulation-System="DVB-T2" Tuner-Frequency="474.0"
        Tuner-Frequency-Offset="-12.500000" Tuner-Bandwidth="8MHz" Tuner-Lock-Status="LOCK"
        Tuner-SNR="28.4" Tuner-Signal-Power="-52.5" Tuner-Signal-Quality-Index="92"
        Tuner-Signal-Strength-Index="78" Tuner-Bit-Error-Rate="1.2E-07"
        Tuner-Uncorrected-Error="0" Tuner-Modulation="256-QAM" Tuner-Mode="32K_EXT"
        Tuner-Hierarchy-Alpha=0 Tuner-Code-Rate="2/3" Tuner-Code-Rate-LP=""
        Tuner-Guard-Interval="1/128" Tuner-MISO-SISO="SISO" Tuner-Number-of-PLPs="1"
        Tuner-Current-PLP-ID="0" Tuner-L1-Modulation="16QAM" Tuner-L1-Code-Rate="1/2"
        Tuner-CPLP-Modulation="256QAM" Tuner-CPLP-Code-Rate="2/3" Tuner-FEC-Type="64K"
        Tuner-PILOT="PP7" Tuner-Mode-FFT="32K_EXT" Tuner-FEF="NONE" Tuner-PAPR="No PAPR"
        Tuner-Guard-Interval-T2="1/128" Tuner-Modulation-DVBC="256-QAM"
        Tuner-SymbolRate-DVBC="6900" Tuner=1
    )-"));
    EXPECT_EQ(Calls("MsOS_DelayTask"), std::vector<std::string>{"[3000]"});
    EXPECT_EQ(Fm().m_u8VersionPage, 3);
    const auto timers = Calls("MEvtHandle::SetTimer");
    EXPECT_NE(std::find(timers.begin(), timers.end(), "[1000, 57, 0]"), timers.end())
        << "the redraw repeats every second";
}

TEST_F(TunerPagesTest, PageRedrawsEverySecondWithTheCurrentReadingsUntilLeft) {
    Post(188);
    Fm().FactoryDoKeyAction(FactoryKey::Up);
    ClearUiNotes();
    Tuner().snr = 17.25f;
    Tuner().locked = false;
    Advance(1000);
    const NoteList drawing = LastDrawing();
    EXPECT_EQ(drawing.front(), Str("HideAllUIExcept", "Tuner"));
    EXPECT_EQ(drawing.back(), Num("Tuner", 1));
    EXPECT_EQ(Count(Str("Tuner-SNR", "17.2")), 1u);
    EXPECT_EQ(Count(Str("Tuner-Lock-Status", "NOLOCK")), 1u);
    Advance(4000);  // a redraw takes its 3 s wait plus the 1 s period
    EXPECT_EQ(Count(Num("Tuner", 1)), 2u);
    Fm().FactoryDoKeyAction(FactoryKey::Exit);
    ClearUiNotes();
    Advance(10000);
    EXPECT_EQ(UiNotes(), NoteList{});
}

TEST_F(TunerPagesTest, DvbtShowsBothCodeRatesAndNoT2Rows) {
    UseDvbt();
    Fm().mAPI_ShowTuner();
    NoteList rows;
    for (const Note& n : UiNotes()) {
        if (n.cmd == "Tuner-Modulation-System" || n.cmd.find("Code-Rate") != std::string::npos ||
            n.cmd.find("Mode") != std::string::npos || n.cmd.find("Guard") != std::string::npos ||
            n.cmd == "Tuner-Modulation" || n.cmd.find("PLP") != std::string::npos ||
            n.cmd.find("DVBC") != std::string::npos || n.cmd == "Tuner-FEF") {
            rows.push_back(n);
        }
    }
    EXPECT_EQ(rows, Notes(R"-(
                  Tuner-Modulation-System="DVB-T" Tuner-Modulation="64-QAM" Tuner-Mode="8K"
                  Tuner-Code-Rate="2/3" Tuner-Code-Rate-LP="7/8" Tuner-Guard-Interval="1/8"
                  Tuner-Mode-FFT="8K" Tuner-Guard-Interval-T2="1/8"
                  Tuner-Modulation-DVBC="64-QAM"
              )-"));
}

TEST_F(TunerPagesTest, CableRouteReadsTheMuxFrequencyAndTheCableTables) {
    Route(2);
    Tuner().demodType = 2;
    Tuner().muxFrequency = 474050;
    Tuner().modulationC = 5;
    Fm().mAPI_ShowTuner();
    EXPECT_EQ(Count(Str("Tuner-Frequency", "474.5")), 1u);
    EXPECT_EQ(Count(Str("Tuner-Modulation-System", "DVB-C")), 1u);
    EXPECT_EQ(Count(Str("Tuner-Modulation", "Auto-QAM")), 1u);
    EXPECT_EQ(Count(Str("Tuner-Mode", "0")), 1u);
    EXPECT_EQ(Count(Str("Tuner-Guard-Interval", "")), 1u);
    EXPECT_EQ(Count(Str("Tuner-Code-Rate", "")), 1u);
    EXPECT_EQ(Count(Str("Tuner-SymbolRate-DVBC", "6900")), 0u) << "reported under the T2 gate";
    Tuner().muxReadable = false;
    ClearUiNotes();
    Advance(1000);
    EXPECT_EQ(Count(Str("Tuner-Frequency", "")), 1u);
}

TEST_F(TunerPagesTest, SatelliteRouteDrawsTheSatelliteLayoutFromTheDemodRecord) {
    Route(0x40);
    Tv().Get<sim::MModeState>().user.u8LNBPower = 0;
    Tuner().satellites[0].transponders[0] = {10994000, 27500, 0};  // vertical
    Tuner().satRollOff = 0;
    Fm().mAPI_ShowTuner();
    EXPECT_EQ(UiNotes(), Notes(R"-(
        HideAllUIExcept="TunerDVBS" Tuner-Modulation-System-DVBS="DVB-S2"
        Tuner-Frequency-DVBS="10994" Tuner-2nd-IF-Frequency-DVBS="1244"
        Tuner-Frequency-Offset-DVBS="-2" Tuner-Bandwidth-DVBS="37.125000"
        Tuner-Lock-Status-DVBS="LOCK" Tuner-SNR-DVBS="11.8" Tuner-Signal-Power-DVBS="-45"
        Tuner-Signal-Quality-Index-DVBS="85" Tuner-Signal-Strength-Index-DVBS="71"
        Tuner-Bit-Error-Rate-DVBS="2.0E-06" Tuner-Uncorrected-Error-DVBS="0"
        Tuner-Modulation-DVBS="8PSK" Tuner-Code-Rate-DVBS="3/4" Tuner-Symbol-Rate-DVBS="27500"
        Tuner-Roll-Off-DVBS="30" Tuner-LNB-Power-DVBS="OFF" Tuner-LNB-System-DVBS="None"
        Tuner-LNB-Number-DVBS="1" Tuner-LNB-Band-DVBS="HIGH(22kOFF)"
        Tuner-LNB-Polarity-DVBS="V(13V)" Tuner-LNB-Ant-Error-DVBS="NORMAL" TunerDVBS=1
    )-"));
    EXPECT_EQ(Calls("MsOS_DelayTask"), std::vector<std::string>{"[500]"});
    EXPECT_EQ(Fm().m_bVersionMode, 1);
    EXPECT_EQ(Calls("MSrv_DTV_Player_DVBS::GetCurrProgramDemodInfo").size(), 1u);
}

TEST_F(TunerPagesTest, FirstSatelliteRouteLeavesTheSystemEmptyAndFollowsTheFrontEnd) {
    Route(4);
    Tuner().lnbShortProtect = true;
    Tuner().tone22k = true;
    Tuner().satConstellation = 2;
    Tuner().satRollOff = 1;
    Tuner().satellites[0].transponders[0].u16SymbolRate = 30000;
    Fm().mAPI_ShowTuner();
    EXPECT_EQ(Count(Str("Tuner-Modulation-System-DVBS", "")), 1u);
    EXPECT_EQ(Count(Str("Tuner-LNB-Ant-Error-DVBS", "PROTECT")), 1u);
    EXPECT_EQ(Count(Str("Tuner-LNB-Band-DVBS", "LOW(22kON)")), 1u);
    EXPECT_EQ(Count(Str("Tuner-Modulation-DVBS", "QPSK")), 1u);
    EXPECT_EQ(Count(Str("Tuner-Roll-Off-DVBS", "25")), 1u);
    EXPECT_EQ(Count(Str("Tuner-Bandwidth-DVBS", "37.500000")), 1u);
}

struct SourceCase {
    int input;
    MAPI_U8 routeSystem;
    MAPI_U32 expected;
};

class TvSource : public TunerPagesTest, public ::testing::WithParamInterface<SourceCase> {};

TEST_P(TvSource, FollowsTheInputAndTheRouteSystem) {
    Tv().Get<sim::PlayerState>().currentSource = GetParam().input;
    Routes().route = 1;
    Routes().routeTypes[1] = GetParam().routeSystem;
    EXPECT_EQ(Fm().GetTVSource(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(TunerPages, TvSource,
                         ::testing::Values(SourceCase{28, 0x40, 5}, SourceCase{28, 4, 4},
                                           SourceCase{28, 1, 1}, SourceCase{28, 0x20, 2},
                                           SourceCase{28, 2, 3}, SourceCase{28, 8, 9},
                                           SourceCase{28, 0x10, 0}, SourceCase{1, 0x40, 6},
                                           SourceCase{23, 0x40, 0}));

TEST_F(TunerPagesTest, T2TextFormattersWriteOnlyOnADvbt2Demodulator) {
    std::string text = "kept";
    EXPECT_EQ(Fm().GetTunerModeFFT(text), 1);
    EXPECT_EQ(text, "32K");
    Tuner().t2FefPresent = true;
    Tuner().t2FefLength = 1024;
    EXPECT_EQ(Fm().GetTunerFEF(text), 1);
    EXPECT_EQ(text, "1024");
    Tuner().t2InfoReadable = false;
    text = "kept";
    EXPECT_EQ(Fm().GetTunerPAPR(text), 0);
    Tuner().t2InfoReadable = true;
    UseDvbt();
    EXPECT_EQ(Fm().GetTunerPAPR(text), 0);
    Tuner().demodType = 11;
    Route(0x40);
    EXPECT_EQ(Fm().GetTunerMISOSISO(text), 0);
    EXPECT_EQ(text, "kept");
}

TEST_F(TunerPagesTest, ValuesOutsideTheTablesLeaveTheTextEmptyOrZero) {
    Tuner().modulationT = 4;
    Tuner().fftT = 7;
    Tuner().bandwidth = 9;
    Tuner().t2Guard = 7;
    Tuner().t2PlpCodeRate = 6;
    Tuner().t2Papr = 4;
    EXPECT_STREQ(Fm().GetTunerModulation(), "");
    EXPECT_STREQ(Fm().GetTunerMode(), "0");
    EXPECT_STREQ(Fm().GetBandwidth(), "Unknown");
    EXPECT_STREQ(Fm().GetTunerGuardInterval(), "");
    std::string text = "kept";
    EXPECT_EQ(Fm().GetTunerCPLPCodeRate(text), 1);
    EXPECT_EQ(text, "");
    EXPECT_EQ(Fm().GetTunerPAPR(text), 1);
    EXPECT_EQ(text, "");
}

TEST_F(TunerPagesTest, FrequencyOffTheTunerComesFromTheRfQueryTheStoreChooses) {
    Tv().Get<sim::PlayerState>().currentSource = 23;
    Tuner().muxFrequency = 506125;
    EXPECT_STREQ(Fm().GetTunerFrequency(), "506.12");
    Tv().Get<sim::FactoryStoreState>().Set(137, 25);
    EXPECT_STREQ(Fm().GetTunerFrequency(), "506.12");
    EXPECT_EQ(Calls("MSrv_DTV_Player_DVB::GetCurrentProgramRFInfo").size(), 1u);
    EXPECT_EQ(Calls("MSrv_DTV_Player_DVB::GetCurrentRFInfo").size(), 1u);
    EXPECT_STREQ(Fm().GetTunerSNR(), "") << "no demodulator reading off the tuner";
}

TEST_F(TunerPagesTest, ReceiverInfoShowsTheReceptionSummaryUntilAnExitKey) {
    Fm().mAPI_ShowReceiverInfo();
    EXPECT_EQ(UiNotes(), Notes(R"-(
            HideAllUIExcept="ReceiverInfo" ReceiverInfo-Modulation-System="DVB-T2"
            ReceiverInfo-Frequency="474.0" ReceiverInfo-Lock-Status="LOCK"
            ReceiverInfo-SNR="28.4" ReceiverInfo-Signal-Quality-Index="92"
            ReceiverInfo-Signal-Strength-Index="78" ReceiverInfo-Bit-Error-Rate="1.2E-07"
            ReceiverInfo=1
        )-"));
    EXPECT_EQ(Fm().m_bRevicInfoMode, 1);
    ClearUiNotes();
    Journal().Clear();
    EXPECT_EQ(Fm().FactoryDoKeyAction(FactoryKey::Down), 0);
    EXPECT_EQ(Fm().FactoryDoKeyAction(FactoryKey::Exit), 1);
    EXPECT_EQ(UiNotes(), NoteList{Num("ReceiverInfo", 0)});
    EXPECT_EQ(Fm().m_bRevicInfoMode, 0);
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::SetFactoryOSDStatus"), std::vector<std::string>{"[0]"});
    EXPECT_EQ(Calls("WebAppMgr_ShowPage"), std::vector<std::string>{"[1]"});
}

TEST_F(TunerPagesTest, AtVersionRecordCarriesTheTunerFrequency) {
    Route(2);
    Tuner().muxFrequency = 474050;
    testing::internal::CaptureStdout();
    ASSERT_EQ(Fm().OnEvent_GetATCmd(nullptr, nullptr, nullptr), 1);
    testing::internal::GetCapturedStdout();
    const std::string field(stATCMD_Version.raw + 630, 30);
    EXPECT_EQ(field, std::string("MAIN Tuner Freq:474.5,") + std::string(8, '\0'));
}

TEST_F(TunerPagesTest, EachRedrawAlsoGoesToTheConsole) {
    Fm().mAPI_ShowTuner();
    testing::internal::CaptureStdout();
    Advance(300);
    const std::string console = testing::internal::GetCapturedStdout();
    auto cell = [](std::string text) { return text.append(28 - text.size(), ' '); };
    EXPECT_NE(console.find("\n" + cell("Lock Status") + cell("LOCK") + cell("Guard Inerval") +
                           cell("1/128") + cell("SNR[dB]") + cell("28.4") + "\n"),
              std::string::npos)
        << console;
    EXPECT_NE(console.find("\n" + cell("Frequency Offset") + cell("-12.500000") +
                           cell("Hierarchy alpha") + cell("0") + cell("Bandwidth[MHz]") +
                           cell("8MHz") + "\n"),
              std::string::npos);
}

TEST_F(TunerPagesTest, SatelliteRouteWithoutTheSatellitePlayerShowsTheZeroedRecord) {
    Route(0x40);
    Tuner().satellitePlayer = false;
    testing::internal::CaptureStdout();
    Fm().mAPI_ShowTuner();
    const std::string console = testing::internal::GetCapturedStdout();
    EXPECT_NE(console.find("GetDVBS_DemodInfo ERROR!!! Invalid use:"), std::string::npos);
    EXPECT_EQ(Count(Str("Tuner-Frequency-DVBS", "9750")), 1u);
    EXPECT_EQ(Count(Str("Tuner-Modulation-System-DVBS", "DVB-S2")), 1u);
    EXPECT_EQ(Count(Str("Tuner-Symbol-Rate-DVBS", "0")), 1u);
    EXPECT_EQ(Count(Str("Tuner-LNB-Number-DVBS", "")), 1u);
}

}  // namespace

namespace {

// Without a demodulator only the rows that ask it go blank; the tuner driver's, the
// satellite record's and the stored LNB settings' rows keep their values.
TEST_F(TunerPagesTest, WithoutADemodulatorOnlyItsOwnRowsGoBlank) {
    Tuner().demodulatorPresent = false;
    Route(0x40);
    Tv().Get<sim::MModeState>().user.u8LNBPower = 0;
    Tuner().satellites[0].transponders[0] = {10994000, 27500, 0};  // vertical
    Fm().mAPI_ShowTuner();
    EXPECT_EQ(UiNotes(), Notes(R"-(
        HideAllUIExcept="TunerDVBS" Tuner-Modulation-System-DVBS="DVB-S2"
        Tuner-Frequency-DVBS="10994" Tuner-2nd-IF-Frequency-DVBS=""
        Tuner-Frequency-Offset-DVBS="" Tuner-Bandwidth-DVBS="" Tuner-Lock-Status-DVBS=""
        Tuner-SNR-DVBS="" Tuner-Signal-Power-DVBS="" Tuner-Signal-Quality-Index-DVBS=""
        Tuner-Signal-Strength-Index-DVBS="" Tuner-Bit-Error-Rate-DVBS=""
        Tuner-Uncorrected-Error-DVBS="" Tuner-Modulation-DVBS="" Tuner-Code-Rate-DVBS=""
        Tuner-Symbol-Rate-DVBS="27500" Tuner-Roll-Off-DVBS="" Tuner-LNB-Power-DVBS="OFF"
        Tuner-LNB-System-DVBS="None" Tuner-LNB-Number-DVBS="1" Tuner-LNB-Band-DVBS=""
        Tuner-LNB-Polarity-DVBS="V(13V)" Tuner-LNB-Ant-Error-DVBS="NORMAL" TunerDVBS=1
    )-"));
    ClearUiNotes();
    Route(32);
    Fm().mAPI_ShowTuner();
    EXPECT_EQ(Count(Str("Tuner-Bandwidth", "8MHz")), 1u) << "from the tuner driver";
    EXPECT_EQ(Count(Str("Tuner-Signal-Power", "-52.5")), 1u) << "from the tuner driver";
    EXPECT_EQ(Count(Str("Tuner-SNR", "")), 1u);
}

}  // namespace
