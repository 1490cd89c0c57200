// Satellite front-end tests on the simulated dish, in virtual time: the shared LNB and
// DiSEqC switch, the 22 kHz tone, the polarisation toggle and the hide timers.
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

#include "FactoryKeyCodes.h"
#include "SetFixture.h"
#include "SimFrontEnd.h"
#include "SimMMode.h"
#include "SimPlayers.h"
#include "SimProductionTests.h"
#include "UiNotes.h"

namespace {

class SatelliteTest : public HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        Routes().routeTypes = {{2, 4, 0, 0}};  // route 0 cable, route 1 satellite
    }
    sim::FrontEndState& Sat() { return Tv().Get<sim::FrontEndState>(); }
    sim::FrontEndState& Routes() { return Tv().Get<sim::FrontEndState>(); }
    MAPI_U8 StoredSwitch() { return Tv().Get<sim::MModeState>().user.u8LNBPower; }
    void SatInfo(uintptr_t sub) { Post(230, 0, sub); }
    // The toggle works on the player of the route on screen: the satellite route.
    MAPI_BOOL Toggle(uintptr_t request) {
        Routes().route = 1;
        return Fm().OnEvent(227, nullptr, reinterpret_cast<void*>(request), nullptr);
    }
};

TEST_F(SatelliteTest, DiSEqCTwiceGoesToAThenBAndFlipsTheStoredLnbStateWithIt) {
    ASSERT_EQ(StoredSwitch(), 1);  // the demo set's LNB supply is on
    SatInfo(213);
    EXPECT_EQ(StoredSwitch(), 0);
    EXPECT_EQ(Sat().diseqcPort, 0);
    SatInfo(213);
    EXPECT_EQ(StoredSwitch(), 1);
    EXPECT_EQ(Fm().m_bDiSEqCPortB, 1);
    EXPECT_EQ(Calls("MSrv_DTV_Player_DVBS::DiSEqCSwitchPort"),
              (std::vector<std::string>{"[0, 0]", "[0, 0]", "[4, 0]", "[4, 0]"}));
    Advance(2000);
    EXPECT_EQ(UiNotes(), Notes(R"-(
        HideAllUIExcept="DiSEqCSwitching" DiSEqC-Switching="Dish Position : Position A"
        HideAllUIExcept="DiSEqCSwitching" DiSEqC-Switching="Dish Position : Position B"
        DiSEqC-Switching-Show=0
    )-"));
    // The second trigger restarted the timer.
    EXPECT_EQ(Calls("MEvtHandle::KillTimer"), (std::vector<std::string>{"[47]", "[47]"}));
    EXPECT_EQ(Calls("MEvtHandle::SetTimer"),
              (std::vector<std::string>{"[2000, 47, 1]", "[2000, 47, 1]"}));
}

struct LnbCase {
    const char* name;
    MAPI_U8 before;
    bool muxKnown;
    MAPI_U8 muxPolarity;
    const char* text;
    const char* satUpdate;  // args of UpdateSatelliteInfo for satellite 0
    const char* power;
};
class LnbTest : public SatelliteTest, public testing::WithParamInterface<LnbCase> {};

TEST_P(LnbTest, TheLnbToggleSetsEverySatelliteAndTheSupplyByPolarisation) {
    const LnbCase c = GetParam();
    Tv().Get<sim::MModeState>().user.u8LNBPower = c.before;
    Sat().muxReadable = c.muxKnown;
    Sat().satellites[0].transponders[0].u8Polarity = c.muxPolarity;
    SatInfo(169);
    EXPECT_EQ(StoredSwitch(), c.before ? 0 : 1);
    const auto updates = Calls("MSrv_DTV_Player_DVBS::UpdateSatelliteInfo");
    ASSERT_EQ(updates.size(), Sat().satellites.size());
    EXPECT_EQ(updates[0], c.satUpdate);
    EXPECT_EQ(Calls("MSrv_DTV_Player_DVBS::DishSetLNBPower"), std::vector<std::string>{c.power});
    Advance(2000);
    EXPECT_EQ(UiNotes(), (NoteList{Str("HideAllUIExcept", "LNBPowerSwitch"),
                                   Str("LNB-power-show", c.text), Num("LNB-power-hide", 0)}));
}

INSTANTIATE_TEST_SUITE_P(
    Supply, LnbTest,
    testing::Values(LnbCase{"OnToOff", 1, true, 1, "LNB Power: OFF", "[0, 2, 0]", "[0]"},
                    LnbCase{"OffToOnHorizontal", 0, true, 1, "LNB Power: ON", "[0, 0, 1]", "[3]"},
                    LnbCase{"OffToOnVertical", 0, true, 2, "LNB Power: ON", "[0, 0, 1]", "[2]"},
                    LnbCase{"OffToOnNoMux", 0, false, 1, "LNB Power: ON", "[0, 0, 1]", "[1]"}),
    [](const testing::TestParamInfo<LnbCase>& info) { return std::string(info.param.name); });

TEST_F(SatelliteTest, AnUnreadableSatelliteRecordAbortsTheProcess) {
    Sat().unreadableSatellite = 1;
    Routes().route = 1;
    Fm();
    EXPECT_EXIT(
        {
            dup2(2, 1);  // the assertion line goes to the console
            Fm().DVBsLNBModeOnOff();
        },
        testing::KilledBySignal(SIGABRT),
        "ASSERT FAIL: \\./factorymanager/src/FactoryManager .*DVBsLNBModeOnOff.* 14141");
}

struct ToneCase {
    bool on;
    bool fails;
    bool uartUi;
    const char* text;  // null: no text sent
};
class ToneTest : public SatelliteTest, public testing::WithParamInterface<ToneCase> {};

TEST_P(ToneTest, TheToneFlipsAndItsResultIsShownOnlyWhenTheFixtureWantsIt) {
    const ToneCase c = GetParam();
    Sat().tone22k = c.on;
    Sat().dish22kFails = c.fails;
    Tv().Get<sim::StationState>().uartUi = c.uartUi;
    SatInfo(218);
    EXPECT_EQ(Calls("mapi_dish::DTV_DVB_S_Set22KOnOff"),
              std::vector<std::string>{c.on ? "[0]" : "[1]"});
    EXPECT_EQ(Sat().tone22k, c.fails ? c.on : !c.on);
    EXPECT_EQ(Calls("MEvtHandle::SetTimer"), std::vector<std::string>{"[2000, 46, 1]"});
    EXPECT_EQ(Calls("MEvtHandle::KillTimer"), std::vector<std::string>{"[46]"});
    NoteList expected{Str("HideAllUIExcept", "22kHzTone")};
    if (c.text != nullptr) {
        expected.push_back(Str("22kHz-Tone", c.text));
    }
    expected.push_back(Num("22kHz-Tone-Show", 0));
    Advance(2000);
    EXPECT_EQ(UiNotes(), expected);
}

INSTANTIATE_TEST_SUITE_P(Tone, ToneTest,
                         testing::Values(ToneCase{false, false, true, "22kHz tone : ON"},
                                         ToneCase{false, true, true, "22kHz tone : ON Fail"},
                                         ToneCase{true, false, true, "22kHz tone : OFF"},
                                         ToneCase{true, true, true, "22kHz tone : OFF Fail"},
                                         ToneCase{false, false, false, nullptr}));

TEST_F(SatelliteTest, AnUnknownSubCodeSelectsTheRouteAndInputThenDoesNoTest) {
    Routes().routeTypes[0] = 4;   // current route, already satellite
    Routes().routeTypes[2] = 64;  // a second satellite route: the last one wins
    Fm();
    EXPECT_EQ(Fm().OnEvent(230, nullptr, reinterpret_cast<void*>(170), nullptr), 0);
    EXPECT_EQ(Calls("MSrv_Control::SetInputSource"), std::vector<std::string>{"[28, 1, 0, 0]"});
    EXPECT_EQ(Calls("MSrv_Control::SwitchMSrvDtvRoute"), (std::vector<std::string>{"[1]", "[2]"}));
    EXPECT_EQ(Routes().route, 2);
    EXPECT_EQ(UiNotes(), NoteList{});
    EXPECT_EQ(Journal().CountCalls("MEvtHandle::SetTimer"), 0u);
}

TEST_F(SatelliteTest, ASetWithoutSatelliteTunerIgnoresTheEvent) {
    Sat().dvbsEnabled = false;
    Fm();
    EXPECT_EQ(Fm().OnEvent(230, nullptr, reinterpret_cast<void*>(169), nullptr), 1);
    EXPECT_EQ(Journal().CountCalls("MSrv_Control::SetInputSource"), 0u);
    EXPECT_EQ(UiNotes(), NoteList{});
}

TEST_F(SatelliteTest, RequestHOnAnHTransponderChangesNothingButReportsSuccess) {
    ASSERT_EQ(Sat().satellites[0].transponders[0].u8Polarity & 1, 1);
    EXPECT_EQ(Toggle(10), 1);
    EXPECT_EQ(UiNotes(), NoteList{Str("HideAllUIExcept", "PolarizationHV")});
    EXPECT_EQ(Journal().CountCalls("MSrv_DTV_Player_DVBS::SetScanParam"), 0u);
    EXPECT_EQ(Journal().CountCalls("MSrv_DTV_Player_DVBS::UpdateTransponderInfo"), 0u);
    EXPECT_EQ(Tv().Get<sim::StationState>().uartResult, 1);
    EXPECT_EQ(Fm().m_bPolarizationMode, 1);
}

TEST_F(SatelliteTest, ToggleRetunesHToVAndRescansVToH) {
    EXPECT_EQ(Toggle(0), 1);
    EXPECT_EQ(Sat().satellites[0].transponders[0].u8Polarity & 1, 0);
    EXPECT_EQ(Calls("MSrv_DTV_Player_DVBS::SetScanParam"),
              std::vector<std::string>{"[22000, 0, 0, 1, 0]"});
    EXPECT_EQ(Calls("MSrv_DTV_Player::ChangeManualScanFreq"),
              std::vector<std::string>{"[11494000]"});
    EXPECT_EQ(Journal().CountCalls("MSrv_DTV_Player::StopScan"), 0u);
    Journal().Clear();
    EXPECT_EQ(Toggle(11), 1);  // already V
    EXPECT_EQ(Journal().CountCalls("MSrv_DTV_Player_DVBS::SetScanParam"), 0u);
    EXPECT_EQ(Toggle(0), 1);
    std::vector<std::string> order;
    for (const auto& e : Journal().Entries()) {
        if (e.kind == "call" && (e.fn.find("Scan") != std::string::npos ||
                                 e.fn.find("Transponder") != std::string::npos)) {
            order.push_back(e.fn + e.args);
        }
    }
    EXPECT_EQ(order, (std::vector<std::string>{
                         "MSrv_DTV_Player_DVBS::GetTransponderInfo[0, 0]",
                         "MSrv_DTV_Player_DVBS::SetCurrentTransponder[0]",
                         "MSrv_DTV_Player_DVBS::GetTransponderInfo[0, 0]",
                         "MSrv_DTV_Player_DVBS::SetCurrentTransponder[0]",
                         "MSrv_DTV_Player::StopScan[]",
                         "MSrv_DTV_Player_DVBS::SetScanParam[22000, 0, 0, 1, 1]",
                         "MSrv_DTV_Player::ManualScanFreq[11494000]",
                         "MSrv_DTV_Player_DVBS::UpdateTransponderInfo[0, 0, 11494000, 22000, 1]",
                     }));
    EXPECT_EQ(UiNotes(), Notes(R"-(
        HideAllUIExcept="PolarizationHV" Polarization-HV-toggle="Polarisation : V"
        Polarization-HV-toggle="Polarisation : H"
    )-"));
    // The exit key restores the picture and closes the page.
    ClearUiNotes();
    Journal().Clear();
    EXPECT_EQ(Fm().FactoryDoKeyAction(FactoryKey::Exit), 1);
    EXPECT_EQ(Fm().m_bPolarizationMode, 0);
    EXPECT_EQ(Journal().CountCalls("MSrv_DTV_Player::StopScan"), 1u);
    EXPECT_EQ(Calls("MSrv_ChannelManager::PlayCurrentProgram"), std::vector<std::string>{"[1, 3]"});
}

TEST_F(SatelliteTest, NoTransponderOrNoSatellitePlayerEndsTheToggleUnreported) {
    Sat().satellites[0].transponders.clear();
    EXPECT_EQ(Toggle(0), 0);
    Tv().Get<sim::FrontEndState>().satellitePlayer = false;
    EXPECT_EQ(Toggle(0), 0);
    EXPECT_EQ(Tv().Get<sim::StationState>().uartResult, -1);
}

TEST_F(SatelliteTest, ThePolarisationHideTimerHidesItsPage) {
    Fm().OnEvent(24, nullptr, reinterpret_cast<void*>(43), nullptr);
    EXPECT_EQ(UiNotes(), NoteList{Num("Polarization-HV-toggle-Show", 0)});
}

}  // namespace
