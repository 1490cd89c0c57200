// The aging cycles, pattern off, the input-switch display, the dynamic picture, local
// dimming and nine-point pages, and our three panel checks, in virtual time.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FactoryKeyCodes.h"
#include "FactoryManager.h"
#include "ProductionTests2Fixture.h"

namespace {

using Strings = std::vector<std::string>;

class PictureTest : public ProductionTest2 {};

// ---- Aging ------------------------------------------------------------------------------

struct AgingCase {
    unsigned int event;
    unsigned long timer;
    Strings firstSix;  // a picture a second, the first at once
};

class AgingCycleTest : public PictureTest, public testing::WithParamInterface<AgingCase> {};

TEST_P(AgingCycleTest, ChangesThePictureEverySecond) {
    Post(GetParam().event);
    const std::string t = std::to_string(GetParam().timer);
    EXPECT_EQ(Seq({"MEvtHandle::KillTimer", "MEvtHandle::SetTimer"}),
              (Strings{"KillTimer[" + t + "]", "SetTimer[1000, " + t + ", 0]"}));
    Advance(5999);
    EXPECT_EQ(Rasters(), GetParam().firstSix);
    Advance(1);
    EXPECT_EQ(Rasters().size(), 7u);
    EXPECT_TRUE(UiNotes().empty()) << "the panel shows the raster, not a page";
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Cycles, AgingCycleTest, testing::Values(
    AgingCase{254, 15, {"White@0", "Black@1000", "White@2000", "Black@3000", "White@4000", "Black@5000"}},
    AgingCase{255, 16, {"Red@0", "Green@1000", "Blue@2000", "Black@3000", "White@4000", "Red@5000"}}));
// clang-format on

// Another page's reset clears the running flag; the next tick sets it again, so that
// pattern off still finds the burn-in running and stops it.
TEST_P(AgingCycleTest, PatternOffStopsItEvenAfterAnotherPagesReset) {
    Post(GetParam().event);
    Post(252);  // the dynamic picture page resets every page state
    Advance(1000);
    Post(211);
    Journal().Clear();
    Advance(5000);
    EXPECT_TRUE(Rasters().empty());
}

TEST_F(PictureTest, AnEightHourBurnInResumedAfterPowerOffStopsOnPatternOff) {
    Panel().agingMode = 4;
    EXPECT_EQ(Fm().DoAgingModeAction(), 1);
    Advance(8ULL * 3600 * 1000);
    EXPECT_EQ(Panel().rasterCount, 8u * 3600 + 1);
    EXPECT_EQ(Panel().raster, "red") << "28800 steps of five colours end on the first";
    Post(211);
    Advance(3600 * 1000);
    EXPECT_EQ(Panel().rasterCount, 8u * 3600 + 1);
    EXPECT_EQ(Fm().m_bAgingMode2, 1) << "pattern off sends the flag without clearing it";
}

TEST_F(PictureTest, ResumeFollowsTheStoredAgingMode) {
    const struct {
        MAPI_U8 mode;
        const char* first;
    } cases[] = {{3, "white"}, {4, "red"}, {0, "none"}, {5, "none"}};
    for (const auto& c : cases) {
        Tv().Reset(MakeOptions());
        Panel().agingMode = c.mode;
        Fm().DoAgingModeAction();
        EXPECT_EQ(Panel().raster, c.first) << +c.mode;
    }
}

TEST_F(PictureTest, PatternOffWithOnlyAging2StopsTimer16AndLeavesTimer15) {
    Post(255);
    Journal().Clear();
    Post(211);
    EXPECT_EQ(Seq({"MEvtHandle::KillTimer", "MSrv_Factory_Cmd::SetFactoryOSDStatus"}),
              (Strings{"KillTimer[16]", "SetFactoryOSDStatus[1]"}));
    Advance(5000);
    EXPECT_TRUE(Rasters().empty());
}

TEST_F(PictureTest, TheExitKeyEndsTheCycleAndKeepsTheKeysUntilAnotherPage) {
    Post(254);
    Advance(1500);
    Journal().Clear();
    EXPECT_EQ(Key(FactoryKey::Exit), 1);
    EXPECT_EQ(Seq({"MSrv_Factory_Cmd::InternalPatternOff", "MEvtHandle::KillTimer",
                   "MSrv_Factory_Cmd::SetFactoryOSDStatus", "WebAppMgr_ShowPage"}),
              (Strings{"InternalPatternOff[]", "KillTimer[15]", "SetFactoryOSDStatus[1]",
                       "KillTimer[16]", "SetFactoryOSDStatus[0]", "WebAppMgr_ShowPage[1]"}));
    Advance(10000);
    EXPECT_TRUE(Rasters().empty());
    EXPECT_EQ(Key(FactoryKey::Up), 0);
}

TEST_F(PictureTest, PatternStatusMarksThePattern) {
    Post(253);
    EXPECT_EQ(Fm().m_bPatternStatus, 1);
    EXPECT_TRUE(Journal().HasLog("OnEvent_OnAgingMode1"));
}

// ---- Input switch, dynamic picture, local dimming, nine-point ---------------------------------

TEST_F(PictureTest, InputSwitchShowsTheChosenInputForEightSecondsThenFinishes) {
    const std::pair<uintptr_t, const char*> labels[] = {
        {0x81, "SCART 1"},   {0x82, "Composite"}, {0x83, "Component"},
        {0x84, "Composite"}, {0x85, "HDMI 1"},    {0x86, "HDMI 2"},
        {0x87, "HDMI 3"},    {0x88, "HDMI 4"},    {0x89, "PC"}};
    for (const auto& [param, label] : labels) {
        ClearUiNotes();
        Post(236, 0, param);
        EXPECT_EQ(UiNotes(),
                  (NoteList{Str("HideAllUIExcept", "SwitchVideo1"), Str("Switch-Video1", label)}));
    }
    Advance(7999);
    EXPECT_EQ(UiNotes().size(), 2u);
    Advance(1);
    EXPECT_EQ(UiNotes().back(), Num("Switch-Video1-Show", 0));
    Advance(3000);
    EXPECT_EQ(Calls("MEvtHandle::KillTimer").back(), "[59]");
}

TEST_F(PictureTest, InputSwitchOutsideTheTableClearsThePageAndReturns0) {
    for (uintptr_t param : {0x80, 0x8A}) {
        Fm().m_bCITestMode = 1;
        ClearUiNotes();
        EXPECT_EQ(Call(&FactoryManager::OnEvent_SwitchInputSource, param), 0);
        EXPECT_EQ(UiNotes(), NoteList{Str("HideAllUIExcept", "SwitchVideo1")});
        EXPECT_EQ(Fm().m_bCITestMode, 0);
    }
    EXPECT_EQ(Journal().CountCalls("MEvtHandle::SetTimer"), 0u);
}

TEST_F(PictureTest, DynamicPictureClosesAfterThreeSeconds) {
    Post(252);
    Advance(2999);
    EXPECT_EQ(UiNotes(),
              (NoteList{Str("HideAllUIExcept", "PictureDynamic"), Num("picture-dynamic", 1)}));
    Advance(1);
    EXPECT_EQ(UiNotes().back(), Num("picture-dynamic", 0));
    EXPECT_EQ(Calls("WebAppMgr_ShowPage"), Strings{"[1]"});
}

TEST_F(PictureTest, LocalDimmingTellsTheHostWhetherThePatternIsUp) {
    Post(256, 0, 1);
    Post(256, 0, 0);
    EXPECT_EQ(Seq({"WebAppMgr_HidePage", "WebAppMgr_ShowPage", "MEvtHandle::SetTimer"}),
              (Strings{"WebAppMgr_HidePage[4]", "SetTimer[3000, 64, 1]", "WebAppMgr_ShowPage[4]"}));
    EXPECT_EQ(Codes(), (std::vector<unsigned long>{0x12007, 0x12008}));
    EXPECT_EQ(UiNotes(), NoteList(2, Str("HideAllUIExcept", "Local Dimming Pattern")));
}

TEST_F(PictureTest, NinePointPatternOpensOnceAndTheExitKeyTakesItDown) {
    Post(257, 0, 0);
    Post(257, 0, 3);
    EXPECT_EQ(UiNotes(), NoteList{Str("HideAllUIExcept", "9-Point Pattern")});
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::SetUARTExecutingResult"), (Strings{"[1]", "[1]"}));
    EXPECT_EQ(Key(FactoryKey::PanelExit), 0) << "only the remote's exit closes it";
    EXPECT_EQ(Key(FactoryKey::Exit), 0);
    EXPECT_EQ(UiNotes().back(), Num("9-Point-Pattern-Show", 0));
    Post(257, 0, 2);
    Post(257, 0, 10);
    EXPECT_EQ(UiNotes().back(), Num("9-Point-Pattern-Show", 0));
    EXPECT_EQ(Fm().m_b9PointPatternMode, 0);
}

// ---- Our panel checks -------------------------------------------------------------------------

TEST_F(PictureTest, SensorValueIsReadEverySecondUntilTheExitKey) {
    Post(194);
    Advance(999);
    Panel().lightSensor = 40;
    Advance(1);
    Panel().lightSensorOk = false;
    Advance(1000);
    EXPECT_EQ(UiNotes(), Notes(R"-(
        HideAllUIExcept="AutoBrightnessSensorValue" AutoBrightness-Sensor-Value=312
        AutoBrightness-Sensor-Value=40 AutoBrightness-Sensor-Value="NG"
    )-"));
    EXPECT_EQ(Key(FactoryKey::Exit), 1);
    Advance(5000);
    EXPECT_EQ(UiNotes().back(), Num("AutoBrightnessSensorValue-Show", 0));
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::SetFactoryOSDStatus").back(), "[0]");
}

TEST_F(PictureTest, SensorReadingsStopWhenAnotherPageTakesTheScreen) {
    Post(194);
    Post(252);
    Advance(2000);
    EXPECT_EQ(Journal().CountCalls("MSrv_ActiveBacklight::GetLightSensorValue"), 1u);
}

TEST_F(PictureTest, TheSensorPageWithoutValueGivesTheKeysBackOnExit) {
    Fm().m_bAutoBrightnessSensorMode = 1;
    EXPECT_EQ(Key(FactoryKey::Exit), 1);
    EXPECT_EQ(Seq({"KeyManager::setKeyRouting", "MSrv_Factory_Cmd::SetFactoryOSDStatus"}),
              (Strings{"setKeyRouting[1]", "SetFactoryOSDStatus[0]"}));
    EXPECT_EQ(UiNotes(), NoteList{Num("AutoBrightnessSensor-Show", 0)});
    EXPECT_EQ(Fm().m_bAutoBrightnessSensorMode, 0);
}

TEST_F(PictureTest, ChecksStepOnEachEventAndPutTheSetBackOnExit) {
    for (int i = 0; i < 6; ++i) {
        Post(195);
    }
    EXPECT_EQ(Calls("MSrv_ActiveBacklight::SetBacklight"),
              (Strings{"[100]", "[75]", "[50]", "[25]", "[0]", "[100]"}));
    EXPECT_EQ(UiNotes()[1], Num("BackLight-Level", 100));
    EXPECT_EQ(Key(FactoryKey::Exit), 1);
    EXPECT_EQ(Panel().backlight, 80);
    EXPECT_EQ(UiNotes().back(), Num("BackLightCheck-Show", 0));

    ClearUiNotes();
    for (int i = 0; i < 4; ++i) {
        Post(198);
    }
    EXPECT_EQ(UiNotes(), Notes(R"-(
        HideAllUIExcept="AudioBalanceCheck" Audio-Balance="Left" Audio-Balance="Right"
        Audio-Balance="Center" Audio-Balance="Left"
    )-"));
    EXPECT_EQ(Key(FactoryKey::PanelExit), 1);
    EXPECT_EQ(Calls("MSrv_SSSound::SetBalance"), (Strings{"[0]", "[100]", "[50]", "[0]", "[50]"}));
    EXPECT_EQ(UiNotes().back(), Num("AudioBalanceCheck-Show", 0));
    EXPECT_EQ(Fm().m_bAudioBalanceCheckMode, 0);
}

}  // namespace
