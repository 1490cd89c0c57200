// The information pages on the simulated set: the page switch, the self-check page
// with its markers and the Wi-Fi dongle wait, the colour-temperature and PQ pages,
// and their copies on the serial console.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "FactoryKeyCodes.h"
#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimAllocation.h"
#include "SimFactoryStore.h"
#include "SimInfoPages.h"
#include "SimKeyData.h"
#include "SimPlayers.h"
#include "UiNotes.h"

namespace {

constexpr int kHdmiSource = 23;

class InfoPagesTest : public HostTest {
protected:
    sim::FactoryStoreState& Store() { return Tv().Get<sim::FactoryStoreState>(); }
    sim::PictureState& Picture() { return Tv().Get<sim::PictureState>(); }
    sim::WifiDongleState& Dongle() { return Tv().Get<sim::WifiDongleState>(); }
    void Source(int source) { Tv().Get<sim::PlayerState>().currentSource = source; }
    bool TimerArmed(unsigned long id) {
        const auto timers = Tv().Loop().Timers();
        return std::any_of(timers.begin(), timers.end(),
                           [&](const auto& t) { return t.handler == &Fm() && t.id == id; });
    }
    // Opens the pages and moves to a page with the next key; the page's notes only.
    void OpenAt(int page) {
        Post(188);
        for (int i = 0; i < page; ++i) {
            Fm().FactoryDoKeyAction(FactoryKey::Down);
        }
    }
    NoteList OnlyNotesOf(const std::string& prefix) {
        NoteList out;
        for (const Note& n : UiNotes()) {
            if (n.cmd.compare(0, prefix.size(), prefix) == 0) {
                out.push_back(n);
            }
        }
        return out;
    }
    // What the console received between two rules of 168 hyphens, rules included.
    static std::string Table(const std::string& console) {
        const std::string rule(168, '-');
        const size_t first = console.find(rule + "\n");
        const size_t last = console.rfind(rule + "\n");
        if (first == std::string::npos || last == first) {
            return std::string();
        }
        return console.substr(first, last + rule.size() + 1 - first);
    }
};

// ---- Self-check page ----------------------------------------------------------------

TEST_F(InfoPagesTest, SelfCheckSendsEveryRowInOrderWithMarkersBeforeTheirRows) {
    Store().Set(303, 0);  // NTSC not adjusted
    Store().Set(87, 0);   // VGA EDID bad
    Tv().Get<sim::FactoryIdentityState>().edidCheckSum[2] = 0;
    Tv().Get<sim::KeyDataState>().uriResult = 0;
    Post(188);
    EXPECT_EQ(UiNotes(), Notes(R"-(
        HideAllUIExcept="Version" Version=1 Version-TVModel="QV32H249"
        Version-TVModelID="31 03 21 07 10" Version-ZYTAppVersion="VQ27.00.1143.21"
        Version-BootCodeVersion="MB1.06.114 (Secured)" Version-AppSWVersion="FW-27.2.0116"
        Version-DPDD-Version="DPDD 4.2.1" Version-NeuSoft-Version="NS-SDK 3.0.8"
        Version-CESI-Version="CESI_2.1" Version-IPRC-Version="IPRC 1.0.3"
        Version-DIAL-Version="DIAL 1.7.2" Version-IR-Blaster-DB="IRB_DB_2026_03"
        Version-PQ-Version="PQ_V27.0.12" Version-PQ2-Version="QMAP_Main_27.03_20260115"
        Version-PQ3-Version="QMAP_Sub_27.01" Version-PQ4-Version="QMAP_Main_27.03_20260115"
        Version-FRC-Version="FRC_R1.4.2" Version-ASF-Version="ver. 2.201.20105"
        Version-ADAjustPAL-OK=0 Version-ADAjustPAL="OK" Version-ADAjustNTSC-NG=0
        Version-ADAjustNTSC="NG" Version-ADAjustCOMP-OK=0 Version-ADAjustCOMP="OK"
        Version-ADAjustRGB-OK=0 Version-ADAjustRGB="OK" Version-ADAjustCVBS-OK=0
        Version-ADAjustCVBS="OK" Version-EDID-VGA-NG=0 Version-EDID-VGA="VGA EEPROM NG"
        Version-CI+-Algorithm="OK" Version-EDID-HDMI2-NG=0 Version-EDID-HDMI2="NG"
        Test-Key-Valid="OK" URI="NONE" Version-CIPlusSerialNumber="27001042"
        Version-CIPlusHostID="D0E1270000000001" Version-MainFormat="1080i 50"
        Version-NetflixESN="VQ27DEMO-ESN-001" Version-WDVDeviceID="VQ27DEMOWV000001"
        Version-HDCP20="27DE500001" Version-HDCP="27DE400001" Version-DTCP-IP="27D1900001"
        Version-Vudu="" Version-PVR="OK 94c80f1" Version-Serial-No="VQ2611A0004812"
        Version-MACAddress="00:1e:b8:4c:2a:f1" Version-WLAN-MAC-Address="70:5A:B6:12:C3:DE"
        Version-BlueTooth="70:5A:B6:12:C3:DE"
    )-"));
    // The key files are loaded before the first key row is read.
    EXPECT_EQ(Fm().m_bVersionMode, 1);
}

// A boot-code version the set cannot read (no memory for it) drops its row and the
// software version row it gates; the rest of the page is shown.
TEST_F(InfoPagesTest, AnUnreadableBootCodeVersionDropsItsRowAndTheSoftwareRow) {
    if (!sim::AllocationsCanFail()) {
        GTEST_SKIP() << "a sanitizer's allocator is in charge";
    }
    Fm().FactoryGetTVModel();  // the rows before it have their buffers already
    Fm().FactoryGetTVModelId();
    sim::FailNextAllocation(21);
    Post(188);
    EXPECT_EQ(OnlyNotesOf("Version-BootCodeVersion"), NoteList{});
    EXPECT_EQ(OnlyNotesOf("Version-AppSWVersion"), NoteList{});
    EXPECT_EQ(OnlyNotesOf("Version-DPDD"), NoteList{Str("Version-DPDD-Version", "DPDD 4.2.1")});
    EXPECT_EQ(OnlyNotesOf("Version-ZYT"),
              NoteList{Str("Version-ZYTAppVersion", "VQ27.00.1143.21")});
}

struct VgaCase {
    MAPI_U8 stored;
    NoteList rows;
};

class VgaEdidRow : public InfoPagesTest, public ::testing::WithParamInterface<VgaCase> {};

TEST_P(VgaEdidRow, ShowsTheEepromStateAndMarksOnlyTheBadOne) {
    Store().Set(87, GetParam().stored);
    Post(188);
    EXPECT_EQ(OnlyNotesOf("Version-EDID-VGA"), GetParam().rows);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(InfoPages, VgaEdidRow, ::testing::Values(
    VgaCase{0, Notes(R"(Version-EDID-VGA-NG=0 Version-EDID-VGA="VGA EEPROM NG")")},
    VgaCase{1, Notes(R"(Version-EDID-VGA="VGA EEPROM Ver.01")")},
    VgaCase{7, Notes(R"(Version-EDID-VGA="VGA EEPROM _ _ ")")}));
// clang-format on

struct HdmiCase {
    int badPort;  // 0: every port good
    NoteList rows;
};

class HdmiEdidRows : public InfoPagesTest, public ::testing::WithParamInterface<HdmiCase> {};

// A good port is reported under a key of its own, never under its EDID key.
TEST_P(HdmiEdidRows, ReportEachPortUnderItsOwnKeys) {
    if (GetParam().badPort != 0) {
        Tv().Get<sim::FactoryIdentityState>().edidCheckSum[GetParam().badPort] = 0x100;
    }
    Post(188);
    NoteList rows;
    for (const Note& n : UiNotes()) {
        if (n.cmd.find("HDMI") != std::string::npos || n.cmd.find("Valid") != std::string::npos ||
            n.cmd == "Version-CI+-Algorithm") {
            rows.push_back(n);
        }
    }
    EXPECT_EQ(rows, GetParam().rows);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(InfoPages, HdmiEdidRows, ::testing::Values(
    HdmiCase{0, Notes(R"(Version-CI+-Algorithm="OK" Product-Key-Valid="OK" Test-Key-Valid="OK")")},
    HdmiCase{1, Notes(R"(Version-EDID-HDMI1-NG=0 Version-EDID-HDMI1="NG" Product-Key-Valid="OK" Test-Key-Valid="OK")")},
    HdmiCase{3, Notes(R"(Version-CI+-Algorithm="OK" Product-Key-Valid="OK" Version-EDID-HDMI3-NG=0 Version-EDID-HDMI3="NG")")}));
// clang-format on

TEST_F(InfoPagesTest, SecondEventClosesEveryPageInOrderAndGivesTheSetBack) {
    OpenAt(2);
    ClearUiNotes();
    Journal().Clear();
    Post(188);
    EXPECT_EQ(UiNotes(), Notes(R"-(Version=0 ColorTemperature=0 PQ=0 Tuner=0 TunerDVBS=0)-"));
    EXPECT_EQ(Calls("WebAppMgr_ShowPage"), (std::vector<std::string>{"[1]", "[4]", "[1]"}));
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::SetFactoryOSDStatus"), std::vector<std::string>{"[0]"});
    EXPECT_EQ(Fm().m_bVersionMode, 0);
    EXPECT_EQ(Fm().m_u8VersionPage, 0);
    EXPECT_FALSE(TimerArmed(57));
    // Opening again starts at the self-check page.
    ClearUiNotes();
    Post(188);
    EXPECT_EQ(UiNotes().at(0), Str("HideAllUIExcept", "Version"));
}

TEST_F(InfoPagesTest, PagingKeysCycleThroughTheFourPagesBothWays) {
    Post(188);
    std::vector<std::string> shown;
    auto press = [&](unsigned long key) {
        ClearUiNotes();
        EXPECT_EQ(Fm().FactoryDoKeyAction(key), 1);
        shown.push_back(UiNotes().empty() ? "(none)" : UiNotes().front().data);
    };
    for (int i = 0; i < 4; ++i) {
        press(FactoryKey::Down);
    }
    press(FactoryKey::Up);
    press(FactoryKey::Up);
    EXPECT_EQ(shown, (std::vector<std::string>{"ColorTemperature", "PQ", "Tuner", "Version",
                                               "Tuner", "PQ"}));
    EXPECT_EQ(Fm().FactoryDoKeyAction(0xF004), 0) << "other keys are the TV's";
}

TEST_F(InfoPagesTest, TunerPageFallsBackToTheSelfCheckPageOffTheTvSource) {
    Post(188);
    Source(kHdmiSource);
    ClearUiNotes();
    Fm().FactoryDoKeyAction(FactoryKey::Up);
    EXPECT_EQ(UiNotes(), NoteList{});
    EXPECT_EQ(Fm().m_u8VersionPage, 0);
    Fm().FactoryDoKeyAction(FactoryKey::Down);
    EXPECT_EQ(UiNotes().at(0), Str("HideAllUIExcept", "ColorTemperature"));
}

// ---- Host UI given back once ------------------------------------------------------------

// Only the version page's exit key gives the host's UI back; a second event 188 or another
// page's reset leaves the host as it is.
TEST_F(InfoPagesTest, PageOpenedByCommandGivesTheHostUiBackOnlyOnItsExitKey) {
    Fm().mAPI_ShowVersionSelfCheck();
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::CMD_HandleEvent"),
              std::vector<std::string>{"[64, 191, 171, 0, 1]"});
    ASSERT_EQ(Fm().m_bVersionMode, 1) << "the service answers with the version event";
    EXPECT_EQ(UiNotes().at(0), Str("HideAllUIExcept", "Version"));
    Codes().clear();
    Journal().Clear();
    Post(188);
    EXPECT_EQ(Codes(), std::vector<unsigned long>{}) << "a second event 188 sends no host code";
    EXPECT_EQ(Journal().CountCalls("MEvtHandle::KillTimer"), 1u);
    Post(191);  // M-mode start
    EXPECT_EQ(Codes(), std::vector<unsigned long>{0x12003}) << "M-mode's reset sends no 0x12002";

    Fm().mAPI_ShowVersionSelfCheck();
    Codes().clear();
    Fm().FactoryDoKeyAction(0xF062);
    Fm().FactoryDoKeyAction(0xF062);
    EXPECT_EQ(Codes(), std::vector<unsigned long>{0x12002});
    EXPECT_EQ(Fm().m_bVersionMode, 0);
}

TEST_F(InfoPagesTest, SModeCommandRaisesItsKeyEventWithTheFactoryOsdOn) {
    EXPECT_EQ(Fm().mAPI_Show_S_Mode(), 1);
    EXPECT_EQ(Fm().m_bSModeShown, 1);
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::SetFactoryOSDStatus"), std::vector<std::string>{"[1]"});
    EXPECT_EQ(Calls("WebAppMgr_HidePage"), std::vector<std::string>{"[1]"});
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::CMD_HandleEvent"),
              std::vector<std::string>{"[64, 191, 181, 0, 1]"});
    EXPECT_EQ(Fm().m_bVersionMode, 0);
}

// ---- Wi-Fi dongle wait ------------------------------------------------------------------

struct DongleCase {
    int64_t readyAfterMs;
    bool rowSent;
};

class DongleWait : public InfoPagesTest, public ::testing::WithParamInterface<DongleCase> {};

TEST_P(DongleWait, GivesUpAfterTheFiftyFirstTick) {
    Dongle().networkType = 0;
    Dongle().readyAfterMs = GetParam().readyAfterMs;
    Post(188);
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::StartWifiDongleThreadStart").size(), 1u);
    ClearUiNotes();
    Advance(50000);
    EXPECT_TRUE(TimerArmed(68)) << "still waiting after 50 ticks";
    Advance(1000);
    Advance(5000);
    const NoteList expected = GetParam().rowSent
                                  ? NoteList{Str("Version-WLAN-MAC-Address", "70:5A:B6:12:C3:DE")}
                                  : NoteList{};
    EXPECT_EQ(UiNotes(), expected);
    EXPECT_FALSE(TimerArmed(68));
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::SetWifiDongleInitStatus"), std::vector<std::string>{"[0]"});
    EXPECT_EQ(Fm().m_u8WifiDongleWaitCount, GetParam().rowSent ? 50 : 0);
}

INSTANTIATE_TEST_SUITE_P(InfoPages, DongleWait,
                         ::testing::Values(DongleCase{50500, true}, DongleCase{51500, false},
                                           DongleCase{-1, false}));

TEST_F(InfoPagesTest, LeavingTheSelfCheckPageOfAWirelessSetSwitchesTheDongleOff) {
    Dongle().networkType = 0;
    Post(188);
    Post(188);
    EXPECT_EQ(Calls("MSrv_Control_common::EnableWiFiDongle"), std::vector<std::string>{"[0, 0]"});
    Dongle().networkType = 1;
    Post(188);
    Post(188);
    EXPECT_EQ(Calls("MSrv_Control_common::EnableWiFiDongle").size(), 1u);
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::StartWifiDongleThreadStart").size(), 1u);
}

// ---- Colour temperature and PQ ------------------------------------------------------------

TEST_F(InfoPagesTest, ColourTemperatureShowsTheRecordsOfTheSourceAndPictureMode) {
    Picture().pictureMode = 2;
    auto& records = Tv().Get<sim::ColorTempState>().At(28, 2);
    records[0] = {{0, 0, 0}, 10, 11, 12, 13, 14, 15};
    records[1] = {{0, 0, 0}, 20, 21, 22, 23, 24, 25};
    records[2] = {{0, 0, 0}, 30, 31, 32, 33, 34, 35};
    OpenAt(1);
    const NoteList notes = UiNotes();
    const NoteList page(
        std::find(notes.begin(), notes.end(), Str("HideAllUIExcept", "ColorTemperature")),
        notes.end());
    EXPECT_EQ(page, Notes(R"-(
        HideAllUIExcept="ColorTemperature" Color-Warm-RGain=30 Color-Warm-GGain=31
        Color-Warm-BGain=32 Color-Warm-ROffset=33 Color-Warm-GOffset=34 Color-Warm-BOffset=35
        Color-Medium-RGain=20 Color-Medium-GGain=21 Color-Medium-BGain=22
        Color-Medium-ROffset=23 Color-Medium-GOffset=24 Color-Medium-BOffset=25
        Color-Cool-RGain=10 Color-Cool-GGain=11 Color-Cool-BGain=12 Color-Cool-ROffset=13
        Color-Cool-GOffset=14 Color-Cool-BOffset=15 ColorTemperature=1
    )-"));
}

TEST_F(InfoPagesTest, PqPageShowsTheSettingsAsLabels) {
    sim::PictureState& p = Picture();
    p.contrast = 45;
    p.backlight = 90;
    p.dynamicLight = 1;
    p.brightness = 52;
    p.colour = 48;
    p.tint = -3;
    p.sharpness = 12;
    p.blackWhiteLevel = 3;
    p.cinemaMode = 1;
    p.dynamicNR = 1;
    p.mpegNR = 2;
    p.aspectRatio = 6;
    OpenAt(2);
    const NoteList notes = UiNotes();
    const NoteList page(std::find(notes.begin(), notes.end(), Str("HideAllUIExcept", "PQ")),
                        notes.end());
    EXPECT_EQ(page, Notes(R"-(
                  HideAllUIExcept="PQ" PQ-Version="PQ_V27.0.12" PQ-Contrast=45 PQ-Backlight=90
                  PQ-DynaLight=1 PQ-Brightness=52 PQ-Color=48 PQ-Tint=-3 PQ-Sharpness=12
                  PQ-Dynamic-Contrast="Heigh" PQ-Cinema-Mode=1 PQ-Cable-Clear="Low"
                  PQ-MPEG-NR="Middle" PQ-Picture-Size="Zoom1" PQ-Auto-Aspect-Ratio="Off" PQ=1
              )-"));
}

struct PqCase {
    const char* name;
    void (*arrange)(sim::PictureState&);
    NoteList rows;  // the label rows of the page
};
std::ostream& operator<<(std::ostream& out, const PqCase& c) { return out << c.name; }

class PqLabels : public InfoPagesTest, public ::testing::WithParamInterface<PqCase> {};

TEST_P(PqLabels, FollowTheLevelTables) {
    GetParam().arrange(Picture());
    OpenAt(2);
    NoteList rows;
    for (const Note& n : UiNotes()) {
        if (!n.numeric && n.cmd != "HideAllUIExcept" && n.cmd != "PQ-Version" &&
            n.cmd.compare(0, 3, "PQ-") == 0) {
            rows.push_back(n);
        }
    }
    EXPECT_EQ(rows, GetParam().rows);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(InfoPages, PqLabels, ::testing::Values(
    PqCase{"AutoAspectAndLowestLevels", [](sim::PictureState& p) { p.blackWhiteLevel = 0; p.dynamicNR = 0; p.mpegNR = 0; p.aspectRatio = 3; },
           Notes(R"(PQ-Dynamic-Contrast="Off" PQ-Cable-Clear="Off" PQ-MPEG-NR="Off" PQ-Picture-Size="Auto" PQ-Auto-Aspect-Ratio="On")")},
    PqCase{"LevelsOutsideTheTables", [](sim::PictureState& p) { p.blackWhiteLevel = 4; p.dynamicNR = 9; p.mpegNR = 4; p.aspectRatio = 13; },
           Notes(R"(PQ-Cable-Clear="Auto" PQ-MPEG-NR="Off" PQ-Auto-Aspect-Ratio="Off")")},
    PqCase{"LastSizeAndUnreadableNoiseReduction", [](sim::PictureState& p) { p.blackWhiteLevel = 3; p.dynamicNRReadable = false; p.mpegNR = 1; p.aspectRatio = 12; },
           Notes(R"(PQ-Dynamic-Contrast="Heigh" PQ-Cable-Clear="Auto" PQ-MPEG-NR="Low" PQ-Picture-Size="PC Wide" PQ-Auto-Aspect-Ratio="Off")")},
    PqCase{"UnreadableAspectRatio", [](sim::PictureState& p) { p.aspectRatioReadable = false; },
           Notes(R"(PQ-Dynamic-Contrast="Low" PQ-Cable-Clear="Auto" PQ-MPEG-NR="Off")")}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

TEST_F(InfoPagesTest, PqPageWithoutPictureManagerShowsNothingAndLogsNothing) {
    Picture().present = false;
    OpenAt(1);
    ClearUiNotes();
    Advance(400);  // the colour page's console copy
    Fm().FactoryDoKeyAction(FactoryKey::Down);
    EXPECT_EQ(UiNotes(), NoteList{});
    EXPECT_FALSE(TimerArmed(40));
}

// ---- Serial console -------------------------------------------------------------------

TEST_F(InfoPagesTest, ColourTemperatureReachesTheConsoleAsATable300MsLater) {
    auto& records = Tv().Get<sim::ColorTempState>().At(28, 1);
    records[0] = {{0, 0, 0}, 101, 102, 103, 4, 5, 6};
    records[1] = {{0, 0, 0}, 128, 128, 128, 128, 128, 128};
    records[2] = {{0, 0, 0}, 140, 120, 255, 0, 1, 2};
    testing::internal::CaptureStdout();
    Post(188);
    Advance(400);  // the self-check page's own copy
    testing::internal::GetCapturedStdout();
    Fm().FactoryDoKeyAction(FactoryKey::Down);
    testing::internal::CaptureStdout();
    Advance(299);
    const std::string early = testing::internal::GetCapturedStdout();
    EXPECT_EQ(Table(early), "");
    testing::internal::CaptureStdout();
    Advance(1);
    const std::string console = testing::internal::GetCapturedStdout();
    const std::string rule(168, '-');
    const std::string blank(28, ' ');
    auto cell = [](std::string text) { return text.append(28 - text.size(), ' '); };
    const std::string expected =
        rule + "\n" + blank + cell("Warm") + cell("Medium") + cell("Cool") + "\n" + cell("R Gain") +
        cell("140") + cell("128") + cell("101") + "\n" + cell("G Gain") + cell("120") +
        cell("128") + cell("102") + "\n" + cell("B Gain") + cell("255") + cell("128") +
        cell("103") + "\n" + cell("R Offset") + cell("0") + cell("128") + cell("4") + "\n" +
        cell("G Offset") + cell("1") + cell("128") + cell("5") + "\n" + cell("B Offset") +
        cell("2") + cell("128") + cell("6") + "\n" + rule + "\n";
    EXPECT_EQ(Table(console), expected);
}

// Every cell of the self-check page's console copy (each line's end marked by "|").
TEST_F(InfoPagesTest, SelfCheckReachesTheConsoleCellByCell) {
    testing::internal::CaptureStdout();
    Post(188);
    Advance(300);
    std::string expected = R"(
TV Model                    QV32H249                    A/D Adjust PAL              OK                          MAIN Format                 1080i 50                    |
Model Info                  31 03 21 07 10              A/D Adjust NTSC             OK                          31 03 21 07 10|
SW Version                  VQ27.00.1143.21             A/D Adjust COMP             OK                          |
Boot Code Version           MB1.06.114 (Secured)        A/D Adjust RGB/PC           OK                          Netflix ESN                 VQ27DEMO-ESN-001            |
SoC Version                 FW-27.2.0116                A/D Adjust CVBS             OK                          Widevine                    VQ27DEMOWV000001            |
DPDD Version                DPDD 4.2.1                  EDID VGA                    VGA EEPROM Ver.01           HDCP2.0                     27DE400001                  |
NeuSoft Version             NS-SDK 3.0.8                                                                        27DE500001                  |
CESI Version                CESI_2.1                                                                            DTCP-IP                     27D1900001                  |
IPRC Version                IPRC 1.0.3                                                                          Vudu                                                    |
DIAL Version                IPRC 1.0.3                  CI+ Algorithm                                           PVR                         OK 94c80f1                  |
IR Blaster DB               IRB_DB_2026_03              Product Key Valid                                       |
PQ Version                                              Test Key Valid                                          Serial No.                  VQ2611A0004812              |
FRC Version                 PQ_V27.0.12                 URI                                                     MAC Address                 00:1e:b8:4c:2a:f1           |
ASF Version                 ver. 2.201.20105            CI+ Serial Number           27001042                    WLAN MAC Address            70:5A:B6:12:C3:DE           |
                                                        CI+ Host ID                 D0E1270000000001            Bluetooth address                                       |
)";
    for (size_t at; (at = expected.find("|\n")) != std::string::npos;) {
        expected.erase(at, 1);
    }
    const std::string rule(168, '-');
    EXPECT_EQ(Table(testing::internal::GetCapturedStdout()), rule + expected + rule + "\n");
}

TEST_F(InfoPagesTest, ConsoleTimerOffTheTvSourceOnTheTunerPageResetsThePage) {
    Fm().m_u8VersionPage = 3;
    Source(kHdmiSource);
    testing::internal::CaptureStdout();
    EXPECT_EQ(Fm().OnTimer_SerialLog(nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(Table(testing::internal::GetCapturedStdout()), "");
    EXPECT_EQ(Fm().m_u8VersionPage, 0);
}

}  // namespace
