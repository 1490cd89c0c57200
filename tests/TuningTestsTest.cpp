// Direct tuning with the scan monitor, the factory configuration, the CI slot test,
// the channel preset and the clone copy, in virtual time.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FactoryKeyCodes.h"
#include "FactoryManager.h"
#include "ProductionTests2Fixture.h"
#include "SimFrontEnd.h"
#include "SimProductionTests.h"
#include "SimSystemInfo.h"

namespace {

using Strings = std::vector<std::string>;

class TuningTest : public ProductionTest2 {
protected:
    void SetUp() override {
        ProductionTest2::SetUp();
        Fm();
        Journal().Clear();
    }
    // The player's scan-stop event, whether or not we are registered for it.
    void ScanStopped(MAPI_U16 tv, MAPI_U16 radio, MAPI_U16 data) {
        ST_DTV_SCAN_STATUS status{10, 0, tv, radio, data};
        Fm().OnEvent(45, nullptr, &status, nullptr);
    }
};

// ---- Direct tuning -----------------------------------------------------------------------

struct TuneCase {
    uintptr_t subCode;
    const char* page;
    const char* cmd;
    const char* data;
    unsigned long timer;
    uint64_t delayMs;
    bool plays;
};

class DirectTuneTest : public TuningTest, public testing::WithParamInterface<TuneCase> {};

TEST_P(DirectTuneTest, ShowsThePanelAndClosesItOnItsTimer) {
    const TuneCase& c = GetParam();
    Post(240, 0, c.subCode);
    EXPECT_EQ(Fm().m_bDVBCScanWatch, 1);
    EXPECT_EQ(Journal().CountCalls("MSrv::AddEventRecipient"), 1u);
    EXPECT_EQ(Calls("MEvtHandle::SetTimer"),
              Strings{"[" + std::to_string(c.delayMs) + ", " + std::to_string(c.timer) + ", 1]"});
    Advance(c.delayMs - 1);
    EXPECT_EQ(UiNotes(), (NoteList{Str("HideAllUIExcept", c.page), Str(c.cmd, c.data)}));
    Advance(1);
    EXPECT_EQ(UiNotes().back(), Num(std::string(c.cmd) + "-Show", 0));
    const Strings closing = c.plays ? Strings{"ProgramSel[1, 1, 1, 0]", "WebAppMgr_ShowPage[1]"}
                                    : Strings{"WebAppMgr_ShowPage[1]"};
    EXPECT_EQ(Seq({"MSrv_DTV_Player::ProgramSel", "WebAppMgr_ShowPage"}), closing);
}

INSTANTIATE_TEST_SUITE_P(
    SubCodes, DirectTuneTest,
    testing::Values(TuneCase{9, "VBSTuning", "DVBS-Tuning", "DVB-S Tuning", 58, 6000, true},
                    TuneCase{212, "VBSTuning", "DVBS-Tuning", "DVB-S Tuning", 39, 2000, false},
                    TuneCase{69, "Channel45", "Channel-45", "Tuning CH45", 39, 2000, false},
                    TuneCase{99, "Channel63", "Channel-63", "Tuning CH63", 39, 2000, false},
                    TuneCase{103, "Channel67", "Channel-67", "Tuning CH67", 39, 2000, false},
                    TuneCase{110, "DVBCTuning", "DVB-C-Tuning", "DVB-C Tuning", 39, 2000, false}));

TEST_F(TuningTest, SatelliteTuningWithoutATvProgramLeavesThePanelToTheHost) {
    Dtv().programs = {{1, 2}};
    Post(240, 0, 9);
    testing::internal::CaptureStdout();
    Advance(6000);
    EXPECT_NE(testing::internal::GetCapturedStdout().find("~~~ CM Query fail *****"),
              std::string::npos);
    EXPECT_EQ(Journal().CountCalls("WebAppMgr_ShowPage"), 0u);
}

TEST_F(TuningTest, CableRunArmsNoTimerAndTheScanMonitorClosesIt) {
    Post(240, 0, 118);
    EXPECT_EQ(Seq({"MSrv_Factory_Cmd::FT_DVBC_Manual_Tuning_ZYT", "MSrv::AddEventRecipient"}),
              (Strings{"FT_DVBC_Manual_Tuning_ZYT[]", "AddEventRecipient[]"}));
    EXPECT_EQ(Journal().CountCalls("MEvtHandle::SetTimer"), 0u);
    Advance(2999);
    EXPECT_EQ(UiNotes(), (NoteList{Str("HideAllUIExcept", "DVBCDirectTuning"),
                                   Str("DVB-C-Direct-Tuning", "DVB-C Tuning")}));
    Advance(1);
    EXPECT_EQ(UiNotes(), Notes(R"-(
        HideAllUIExcept="DVBCDirectTuning" DVB-C-Direct-Tuning="DVB-C Tuning"
        DVB-C-Direct-Tuning-Show=0 Channel-37-Show=0
    )-"));
    EXPECT_EQ(Seq({"MSrv_Factory_Cmd::FinishManualTuneChange2ChannelManager",
                   "MSrv::RemoveEventRecipient", "MEvtHandle::SetTimer"}),
              (Strings{"FinishManualTuneChange2ChannelManager[]", "RemoveEventRecipient[]",
                       "SetTimer[1000, 60, 0]"}));
    EXPECT_EQ(Fm().m_bDVBCScanWatch, 0);
}

TEST_F(TuningTest, Channel37WaitsForTheScanStop) {
    Post(240, 0, 55);
    Advance(60000);
    EXPECT_EQ(Journal().CountCalls("MEvtHandle::SetTimer"), 0u);
    EXPECT_EQ(UiNotes().size(), 2u);
    ScanStopped(1, 0, 0);
    EXPECT_EQ(UiNotes().back(), Num("Channel-37-Show", 0));
}

TEST_F(TuningTest, UnknownSubCodesResetThePagesAndStillWatchTheScan) {
    for (uintptr_t subCode : {0, 200}) {
        Fm().m_bCITestMode = 1;
        Fm().m_bDVBCScanWatch = 0;
        EXPECT_EQ(Call(&FactoryManager::OnEvent_DirectTune, subCode), 0);
        EXPECT_EQ(Fm().m_bDVBCScanWatch, 1);
        EXPECT_EQ(Fm().m_bCITestMode, 0);
    }
    EXPECT_TRUE(UiNotes().empty());
    EXPECT_EQ(Journal().CountCalls("MSrv::AddEventRecipient"), 0u);
}

// ---- Scan monitor ---------------------------------------------------------------------------

TEST_F(TuningTest, EmptyScansAreCountedUntilOneFindsAService) {
    Dtv().scanTv = Dtv().scanRadio = Dtv().scanData = 0;
    for (MAPI_U32 expected : {1u, 2u}) {
        Post(240, 0, 118);
        Advance(3000);
        EXPECT_EQ(Fm().m_u32ScanEmptyTimes, expected);
    }
    Dtv().scanData = 1;
    Post(240, 0, 118);
    Advance(3000);
    EXPECT_EQ(Fm().m_u32ScanEmptyTimes, 0u);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::FinishManualTuneChange2ChannelManager"), 3u);
}

TEST_F(TuningTest, AScanStopNobodyWatchedStillClosesThePagesButIsNotCounted) {
    ST_DTV_SCAN_STATUS running{3, 0, 0, 0, 0};
    Fm().OnEvent(45, nullptr, &running, nullptr);
    EXPECT_TRUE(UiNotes().empty());
    ScanStopped(0, 0, 0);
    EXPECT_EQ(Fm().m_u32ScanEmptyTimes, 0u);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::FinishManualTuneChange2ChannelManager"), 0u);
    EXPECT_EQ(UiNotes(), (NoteList{Num("DVB-C-Direct-Tuning-Show", 0), Num("Channel-37-Show", 0)}));
}

TEST_F(TuningTest, FiveTicksAfterTheScanStopTheTimerEnds) {
    ScanStopped(1, 0, 0);
    Advance(4999);
    EXPECT_EQ(FactoryManager::u16Times, 4);
    EXPECT_TRUE(Calls("MEvtHandle::KillTimer").empty());
    Advance(1);
    EXPECT_EQ(FactoryManager::u16Times, 0);
    EXPECT_EQ(Calls("MEvtHandle::KillTimer"), Strings{"[60]"});
    Advance(5000);
    EXPECT_EQ(FactoryManager::u16Times, 0);
}

// ---- Factory configuration ---------------------------------------------------------------

struct ConfigCase {
    uintptr_t subCode;
    NoteList onEvent, onWork, onClose;  // with the fixture's UI on
    Strings work;                       // calls of timer 41
};

class FactoryConfigTest : public TuningTest, public testing::WithParamInterface<ConfigCase> {
protected:
    Strings WorkCalls() {
        return Seq({"MSrv_Factory_Default::SetDLTVFactorySignalATVTable2ProgramTable",
                    "MSrv_Factory_Default::SetTCompanySignalATVTable2ProgramTable",
                    "MSrv_Factory_Default::SetOxbrindFactorySignalATVTable2ProgramTable",
                    "MSrv_Control::SetInputSource", "MSrv_Control::SwitchMSrvDtvRoute",
                    "MSrv_DTV_Player_DVBT::ZYT_Factory_Tuning", "MSrv_DTV_Player::ProgramSel"});
    }
};

TEST_P(FactoryConfigTest, WritingThenTheResultThenClosedTwoSecondsApart) {
    const ConfigCase& c = GetParam();
    Tv().Get<sim::PlayerState>().currentSource = MAPI_INPUT_SOURCE_ATV;
    Post(247, 0, c.subCode);
    Advance(1999);
    EXPECT_EQ(UiNotes(), c.onEvent);
    EXPECT_TRUE(WorkCalls().empty());
    ClearUiNotes();
    Advance(1);
    EXPECT_EQ(WorkCalls(), c.work);
    Advance(1999);
    EXPECT_EQ(UiNotes(), c.onWork);
    ClearUiNotes();
    Advance(1);
    EXPECT_EQ(UiNotes(), c.onClose);
}

const Strings kToDtv = {"SetInputSource[28, 1, 0, 0]"};
INSTANTIATE_TEST_SUITE_P(
    SubCodes, FactoryConfigTest,
    // clang-format off
    testing::Values(
        ConfigCase{132, {Str("HideAllUIExcept", "FactoryTuning"), Str("Factory-Tuning", "Factory Tuning : Writing")}, {Str("Factory-Tuning", "Factory Tuning : Finished")}, {Num("Factory-Tuning-Show", 0)}, {"SetDLTVFactorySignalATVTable2ProgramTable[]", kToDtv[0], "ZYT_Factory_Tuning[0]"}},
        ConfigCase{204, {Str("HideAllUIExcept", "FactorySetup"), Str("Factory-Tuning", "CH Preset Writing")}, {Str("Factory-Tuning", "CH Preset OK")}, {Num("Factory-Tuning-Show", 0)}, {"SetTCompanySignalATVTable2ProgramTable[]", kToDtv[0], "ZYT_Factory_Tuning[3]"}},
        ConfigCase{5, {Str("HideAllUIExcept", "CHPreset"), Num("CHPreset", 1), Str("CHPresetData", "CH Preset Writing")}, {Num("CHPreset", 1), Str("CHPresetData", "CH Preset OK")}, {Num("CHPreset", 0)}, {"SetOxbrindFactorySignalATVTable2ProgramTable[]", kToDtv[0], "ZYT_Factory_Tuning[1]"}},
        ConfigCase{6, {Str("HideAllUIExcept", "CHPreset"), Num("CHPreset", 1), Str("CHPresetData", "CH Preset Writing")}, {Num("CHPreset", 1), Str("CHPresetData", "CH Preset OK")}, {Num("CHPreset", 0)}, {"SetDLTVFactorySignalATVTable2ProgramTable[]", kToDtv[0], "ZYT_Factory_Tuning[2]"}},
        ConfigCase{133, {Str("HideAllUIExcept", "FactorySetup"), Str("Factory-Setup", "Factory Setup : Writing")}, {Str("Factory-Setup", "Factory Setup : Finished")}, {Num("Factory-Setup-Show", 0)}, {kToDtv[0], "SetInputSource[1, 1, 0, 0]"}},
        ConfigCase{77, {}, {}, {}, {}}));
// clang-format on

TEST_F(FactoryConfigTest, WithTheFixtureHoldingTheScreenOnlyFactoryTuningShows) {
    Tv().Get<sim::StationState>().uartUi = false;
    for (uintptr_t subCode : {204, 133, 5, 6}) {
        Post(247, 0, subCode);
        Advance(5000);  // the set-up's own waits move its close on by 500 ms
    }
    EXPECT_EQ(UiNotes(), Notes(R"-(
                  Factory-Tuning="CH Preset OK" Factory-Tuning-Show=0 Factory-Setup-Show=0
                  CHPreset=0 CHPreset=0
              )-"))
        << "204 shows its result all the same; each closes";
    EXPECT_EQ(Calls("MSrv_DTV_Player_DVBT::ZYT_Factory_Tuning"), (Strings{"[3]", "[1]", "[2]"}));
    EXPECT_EQ(Calls("MSrv_DTV_Player::ProgramSel"), Strings{"[1, 1, 1, 0]"}) << "5 plays, 6 not";
    ClearUiNotes();
    Post(247, 0, 132);
    EXPECT_EQ(UiNotes(), (NoteList{Str("HideAllUIExcept", "FactoryTuning"),
                                   Str("Factory-Tuning", "Factory Tuning : Writing")}));
}

TEST_F(FactoryConfigTest, PresetFiveKeepsTheDigitalSourceAndPlaysTheFirstProgramAfterClosing) {
    Tv().Get<sim::FrontEndState>().routeTypes[0] = 2;
    Post(247, 0, 5);
    Advance(4000);
    EXPECT_EQ(WorkCalls(),
              (Strings{"SetOxbrindFactorySignalATVTable2ProgramTable[]", "SwitchMSrvDtvRoute[0]",
                       "ZYT_Factory_Tuning[1]", "ProgramSel[1, 1, 1, 0]"}));
    EXPECT_EQ(Seq({"WebAppMgr_ShowPage", "MSrv_DTV_Player::ProgramSel"}),
              (Strings{"WebAppMgr_ShowPage[1]", "ProgramSel[1, 1, 1, 0]"}));
}

TEST_F(FactoryConfigTest, UnknownSubCodeRunsBothTimersAndClosesNothing) {
    Post(247, 0, 77);
    Advance(4000);
    EXPECT_EQ(Calls("MEvtHandle::SetTimer"), (Strings{"[2000, 41, 1]", "[2000, 42, 1]"}));
    EXPECT_EQ(Journal().CountCalls("WebAppMgr_ShowPage"), 0u);
}

TEST_F(FactoryConfigTest, SetupRestoresTheFactorySetupAndKeepsTheVersionRecord) {
    Tv().Get<sim::PlayerState>().currentSource = MAPI_INPUT_SOURCE_ATV;
    Tv().Get<sim::FrontEndState>().route = 2;  // satellite; DTV comes up terrestrial
    Post(247, 0, 133);
    Advance(2000);
    EXPECT_EQ(
        Seq({"DatabaseManager::GetVersionInformation", "MSrv_Control::SetInputSource",
             "MSrv_Control::SwitchMSrvDtvRoute", "MsOS_DelayTask", "MSrv_Control::ZYTFactorySetup",
             "MSrv_System_Database::RestoreFactorySetupForZYT", "MSrv_MHL::SetAutoSwitch",
             "MSrv_Factory_Cmd::SetFactoryMmodeStatus", "DatabaseManager::SetVersionInformation",
             "MSrv_Factory_Cmd::SetUARTExecutingResult"}),
        (Strings{"GetVersionInformation[]", "SetInputSource[28, 1, 0, 0]", "SwitchMSrvDtvRoute[2]",
                 "MsOS_DelayTask[150]", "ZYTFactorySetup[]", "RestoreFactorySetupForZYT[1]",
                 "SetAutoSwitch[1]", "MsOS_DelayTask[350]", "SetInputSource[1, 1, 0, 0]",
                 "SetFactoryMmodeStatus[1]", "SetVersionInformation[\"DPDD 4.2.1\"]",
                 "SetUARTExecutingResult[1]"}));
    EXPECT_EQ(Codes(), std::vector<unsigned long>{0x12005});
    EXPECT_EQ(Tv().Get<sim::SystemInfoState>().dialVersion, "DIAL 1.7.2");
    EXPECT_EQ(Tv().NowMs(), 2500u) << "the set-up waits on the set's clock";
}

// ---- CI, channel preset, clone copy -----------------------------------------------------------

TEST_F(TuningTest, CITestShowsItsResultAfterOneSecondUntilTheExitKey) {
    for (bool pass : {true, false}) {
        Line().ciPass = pass;
        ClearUiNotes();
        Post(239);
        Advance(999);
        EXPECT_EQ(UiNotes(), NoteList{Str("HideAllUIExcept", "CITest")});
        Advance(1);
        EXPECT_EQ(UiNotes().back(), pass ? Str("CITest-OK", "CI FACTORY TEST : OK")
                                         : Str("CITest-NG", "CI FACTORY TEST : NG"));
        EXPECT_EQ(Key(FactoryKey::PanelExit), 1);
        EXPECT_EQ(UiNotes().back(), Num("CITest-Show", 0));
        EXPECT_EQ(Fm().m_bCITestMode, 0);
    }
    EXPECT_EQ(Calls("MSrv_DTV_Player_DVB::SetScreenMuteSwitch"), (Strings{"[1]", "[1]"}));
}

TEST_F(TuningTest, ChannelPresetHidesAtTheFirstTickAfterDone) {
    Post(192, 0, 0);
    Post(192, 0, 0);
    Advance(2500);
    Post(192, 0, 1);
    Advance(1499);
    EXPECT_EQ(UiNotes(), Notes(R"-(
        HideAllUIExcept="CHPreset" CHPreset=1 CHPresetData="CH Preset Writing" CHPreset=1
        CHPresetData="CH Preset OK"
    )-"));
    Advance(1);
    EXPECT_EQ(UiNotes().back(), Num("CHPreset", 0));
    EXPECT_EQ(Calls("MEvtHandle::SetTimer"), Strings{"[2000, 49, 0]"});
    EXPECT_EQ(Fm().m_bCHPresetShown, 0);
}

TEST_F(TuningTest, AStartWhileShownChangesNothing) {
    Post(192, 0, 0);
    Post(192, 0, 1);
    Post(192, 0, 0);
    Advance(2000);
    EXPECT_EQ(UiNotes().back(), Num("CHPreset", 0));
}

TEST_F(TuningTest, ChannelPresetDoneWithoutStartRunsNoTimer) {
    Post(192, 0, 1);
    Advance(10000);
    EXPECT_EQ(Fm().m_bCHPresetDone, 1);
    EXPECT_EQ(UiNotes(), (NoteList{Num("CHPreset", 1), Str("CHPresetData", "CH Preset OK")}));
    EXPECT_EQ(Journal().CountCalls("MEvtHandle::SetTimer"), 0u);
}

TEST_F(TuningTest, CloneCopyHoldsThePowerKeysOnlyWhileCopying) {
    Post(226, 0, 0);
    EXPECT_EQ(Tv().NowMs(), 2000u);
    Post(226, 0, 0);
    EXPECT_EQ(UiNotes(), (NoteList{Str("HideAllUIExcept", "CloneCopy"), Num("Clone-Copy", 0)}));
    EXPECT_EQ(Key(FactoryKey::PanelPower), 1);
    EXPECT_EQ(Key(FactoryKey::Power), 1);
    Post(226, 0, 2);
    EXPECT_EQ(UiNotes().back(), Num("Clone-Copy", 2));
    EXPECT_EQ(Key(FactoryKey::PanelPower), 0);
    EXPECT_EQ(Key(FactoryKey::Power), 0);
    Post(226, 0, 0x101);
    EXPECT_EQ(UiNotes().back(), Num("Clone-Copy", 1)) << "the low byte is the code";
    EXPECT_EQ(Fm().m_bCloneCopyOK, 1);
    EXPECT_EQ(Key(FactoryKey::Exit), 1);
    EXPECT_EQ(UiNotes().back(), Num("Clone-Copy-Show", 0));
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::SetFactoryOSDStatus"), (Strings{"[0]", "[1]", "[0]"}));
}

}  // namespace
