// The key dispatcher as the host sees it: which page takes a key, what closing a page
// does on the set, the page reset, and the factory remote controller's codes.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "FactoryKeyCodes.h"
#include "FactoryManager.h"
#include "MSrv_Control_common.h"
#include "SetFixture.h"
#include "SimMMode.h"
#include "SimWebApp.h"

namespace {

class KeyTest : public HostTest {
protected:
    sim::MModeState& MMode() { return Tv().Get<sim::MModeState>(); }
    sim::FactoryRemoteState& Remote() { return Tv().Get<sim::FactoryRemoteState>(); }
};

// Pages that are not built yet are opened by their flag, as their entry would.
struct RouteCase {
    const char* name;
    std::function<void(FactoryManager&, sim::MModeState&)> open;
    unsigned long key;
    MAPI_BOOL consumed;
    const char* log;    // must be in the log ("" for none)
    const char* noLog;  // must not be
    const char* call;   // platform call that must have been made
};

std::ostream& operator<<(std::ostream& out, const RouteCase& c) { return out << c.name; }

class KeyRoutingTest : public KeyTest, public testing::WithParamInterface<RouteCase> {};

TEST_P(KeyRoutingTest, TheOwningPageDecides) {
    const RouteCase& c = GetParam();
    c.open(Fm(), MMode());
    Journal().Clear();
    EXPECT_EQ(Fm().FactoryDoKeyAction(c.key), c.consumed);
    EXPECT_TRUE(*c.log == '\0' || Journal().HasLog(c.log)) << c.log;
    EXPECT_FALSE(*c.noLog != '\0' && Journal().HasLog(c.noLog)) << c.noLog;
    EXPECT_TRUE(*c.call == '\0' || Journal().CountCalls(c.call) > 0) << c.call;
}

using FM = FactoryManager;
using MM = sim::MModeState;
const char kNothing[] = "Factory don't process the key.";

void DModeInMMode(FM& fm, MM& m) {
    m.mMode = true;
    fm.m_bDModeOpen = 1;
}

INSTANTIATE_TEST_SUITE_P(
    Pages, KeyRoutingTest,
    testing::Values(
        RouteCase{"MModeKeysComeBeforeTheDModeEditor", DModeInMMode, FactoryKey::PanelFunction, 1,
                  "~~ Key Select", "FactoryDModeAction", "WebAppMgr_HidePage"},
        RouteCase{"OtherKeysInMModeReachTheDModeEditor", DModeInMMode, FactoryKey::Exit, 1, "",
                  kNothing, "MSrv_Factory_Cmd::Set_S_D_Mode"},
        RouteCase{"WlanTestIgnoresTheMenuKey", [](FM& fm, MM&) { fm.m_bIsWLANTesting = 1; },
                  FactoryKey::Menu, 0, "", "~~ /WLANTest-", ""},
        RouteCase{"WlanTestEndsAtOnceOnThePanelExit", [](FM& fm, MM&) { fm.m_bIsWLANTesting = 1; },
                  FactoryKey::PanelExit, 1, "~~ /WLANTest-NG-Show/", "", "WebAppMgr_ShowPage"},
        RouteCase{"AdcTestOutranksTheWlanTest",
                  [](FM& fm, MM&) { fm.m_bIsWLANTesting = fm.m_bIsADCAdjustmentTesting = 1; },
                  FactoryKey::Exit, 1, "~~ m_bIsADCAdjustmentTesting = TRUE. /MVK_EXIT/",
                  "m_bIsWLANTesting", ""},
        RouteCase{"CloneCopyLetsThePanelPowerKeyThroughWhenIdle",
                  [](FM& fm, MM&) { fm.m_bCloneCopyMode = 1; }, FactoryKey::PanelPower, 0, "",
                  "ExitCloneCopy", ""},
        RouteCase{"CloneCopySwallowsPowerKeysDuringACopy",
                  [](FM& fm, MM&) { fm.m_bCloneCopyMode = fm.m_bCloneCopyBusy = 1; },
                  FactoryKey::Power, 1, "", "ExitCloneCopy", ""},
        RouteCase{"VersionPageClosesOnThePanelPowerKeyOutsideMMode",
                  [](FM& fm, MM&) { fm.m_bVersionMode = 1; }, FactoryKey::PanelPower, 1,
                  "~~ SetKeyRoute  /E_ZYT_KEY_ROUTING_DEFAULT/", "", "WebAppMgr_ShowPage"},
        RouteCase{"VersionPageStaysOnThePanelPowerKeyInMMode",
                  [](FM& fm, MM& m) { fm.m_bVersionMode = m.mMode = true; }, FactoryKey::PanelPower,
                  1, "~~ Key Power", "ExitVersionMode", ""},
        RouteCase{"InternalPatternGoesOffWithoutGivingTheScreenBack",
                  [](FM& fm, MM&) { fm.m_bInternalPatternMode = 1; }, FactoryKey::Exit, 1, "", "",
                  "MSrv_Factory_Cmd::InternalPatternOff"},
        RouteCase{"AtvSearchLeavesOnThePanelMenuKey",
                  [](FM& fm, MM&) { fm.m_bATVTuningSearchMode = 1; }, FactoryKey::PanelMenu, 1, "",
                  kNothing, "MSrv_ATV_Player::ChangeProgram"},
        RouteCase{"PeqEditorConsumesEveryKey", [](FM& fm, MM&) { fm.m_bPEQMode = 1; }, '5', 1, "",
                  kNothing, ""},
        RouteCase{"TimingEditorActsButLetsTheTvHaveTheKey",
                  [](FM& fm, MM&) { fm.m_b3DTimingMode = 1; }, FactoryKey::Exit, 0,
                  "Factory3DTimingKeyAction", kNothing, "MSrv_Factory_Cmd::SetFactoryOSDStatus"},
        RouteCase{"AccessPointListClosesOnlyOnTheRemoteExit",
                  [](FM& fm, MM&) { fm.m_bAPListShown = 1; }, FactoryKey::PanelExit, 0, "",
                  "DisplayAPListUI", ""},
        RouteCase{"NoPageDeclinesAndSaysSo", [](FM&, MM&) {}, FactoryKey::Exit, 0, kNothing, "",
                  ""}),
    [](const testing::TestParamInfo<RouteCase>& info) { return std::string(info.param.name); });

TEST_F(KeyTest, VersionPageOpenedByCommandGivesTheHostItsUiBackOnce) {
    Fm().m_bVersionMode = 1;
    Fm().m_bVersionShownByCommand = 1;
    EXPECT_EQ(Fm().FactoryDoKeyAction(FactoryKey::Power), 1);
    EXPECT_EQ(Codes(), std::vector<unsigned long>{0x12002});
    EXPECT_EQ(Fm().m_bVersionShownByCommand, 0);
    EXPECT_EQ(Calls("MEvtHandle::KillTimer"), std::vector<std::string>{"[57]"});
}

TEST_F(KeyTest, AtvStoreKeySavesTheChannelBeforeTheCurrentOneInEightBits) {
    Fm().m_bATVTuningSearchMode = 1;
    for (MAPI_U16 current : {MAPI_U16(5), MAPI_U16(0), MAPI_U16(0x0102)}) {
        Fm().m_u16CurrentChannelNum = current;
        EXPECT_EQ(Fm().FactoryDoKeyAction(FactoryKey::AtvStore), 1);
    }
    EXPECT_EQ(Calls("MSrv_ATV_Player::ATVSaveProgram"),
              (std::vector<std::string>{"[4]", "[255]", "[1]"}));
}

TEST_F(KeyTest, ResetClearsOnePageGroupAndLeavesTheRunningTests) {
    MAPI_U8 FactoryManager::*const cleared[] = {
        &FM::m_bRevicInfoMode,      &FM::m_bVersionMode,         &FM::m_bDModeOpen,
        &FM::m_bDLNATestMode,       &FM::m_bMediaPlayerMode,     &FM::m_bCITestMode,
        &FM::m_bAgingMode2,         &FM::m_bCloneCopyMode,       &FM::m_bATVTuningSearchMode,
        &FM::m_b3DTimingMode,       &FM::m_bAudioADVMode,        &FM::m_bPolarizationMode,
        &FM::m_bBackLightLevelMode, &FM::m_bInternalPatternMode,
    };
    MAPI_U8 FactoryManager::*const kept[] = {
        &FM::m_bIsADCAdjustmentTesting,
        &FM::m_bIsWLANTesting,
        &FM::m_bIsWakeOnWLAN,
        &FM::m_bIsVGAEDIDWriting,
        &FM::m_bAudioBalanceCheckMode,
        &FM::m_bDigitalAudioOutMode,
        &FM::m_bPEQMode,
        &FM::m_bAPListShown,
        &FM::m_b9PointPatternMode,
    };
    for (auto flag : cleared) Fm().*flag = 1;
    for (auto flag : kept) Fm().*flag = 1;
    Fm().SetKeywritingStatus(1);
    Fm().ResetStateWithoutKeyWriting();
    for (auto flag : cleared) EXPECT_EQ(Fm().*flag, 0);
    for (auto flag : kept) EXPECT_EQ(Fm().*flag, 1);
    EXPECT_EQ(Fm().GetKeywritingStatus(), 1) << "key writing is left alone";
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::SetFactoryOSDStatus"), std::vector<std::string>{"[0]"});
}

TEST_F(KeyTest, ResetEndsKeyWritingOnlyWhileItRuns) {
    Fm().SetKeywritingStatus(2);
    Fm().ResetState();
    EXPECT_EQ(Fm().GetKeywritingStatus(), 2);
    EXPECT_TRUE(Codes().empty());

    MSrv_Control_common::m_isWriteKeydone = 1;
    Fm().SetKeywritingStatus(1);
    testing::internal::CaptureStdout();
    Fm().ResetState();
    const std::string out = testing::internal::GetCapturedStdout();
    MSrv_Control_common::m_isWriteKeydone = 0;
    EXPECT_EQ(out.find("~~ un-mount Key writing -- isWriteKeydone= 1 \n"), 0u);
    EXPECT_EQ(Fm().GetKeywritingStatus(), 0);
    EXPECT_EQ(Codes(), std::vector<unsigned long>{0x12002});
    EXPECT_TRUE(Journal().HasLog("WidgetManager::clear - m_DFBWindow NULL"))
        << "the key-writing line is taken down";
}

// ---- Factory remote controller ----------------------------------------------------

struct RemoteCase {
    unsigned short code;
    const char* serviceCall;  // the call that reaches the factory-command service first
    const char* handlerLog;
};

class RemoteCodeTest : public KeyTest, public testing::WithParamInterface<RemoteCase> {};

TEST_P(RemoteCodeTest, RunsAtOnce) {
    Remote().code = GetParam().code;
    EXPECT_EQ(Fm().SpeedupSpecificalKey(), 1);
    const auto& entries = Journal().Entries();
    bool serviceFirst = false;
    for (const auto& e : entries) {
        if (e.kind == "call" && GetParam().serviceCall == e.fn + e.args) {
            serviceFirst = true;
        }
        if (e.kind == "log" && e.args.find(GetParam().handlerLog) != std::string::npos) {
            break;
        }
    }
    EXPECT_TRUE(serviceFirst) << GetParam().serviceCall;
    EXPECT_TRUE(Journal().HasLog(GetParam().handlerLog));
}

INSTANTIATE_TEST_SUITE_P(
    Codes, RemoteCodeTest,
    testing::Values(
        RemoteCase{61046, "MSrv_Factory_Cmd::SetFactoryCodeEvent[61046, 118]",
                   "OnEvent_DirectTune"},
        RemoteCase{49130, "MSrv_Factory_Cmd::_HandleFactoryEvent[181, 0, 0]", "OnEvent_Shipout"},
        RemoteCase{61057, "MSrv_Factory_Cmd::_HandleFactoryEvent[173, 0, 0]", "OnEvent_Shipout"}));

TEST_F(KeyTest, OtherRemoteCodesAreNotOurs) {
    Remote().code = 61047;
    EXPECT_EQ(Fm().SpeedupSpecificalKey(), 0);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::_HandleFactoryEvent"), 0u);
}

struct WaitCase {
    bool service;
    unsigned short code;
    bool finished;
    const char* lines;
};

class KeyWaitTest : public KeyTest, public testing::WithParamInterface<WaitCase> {};

TEST_P(KeyWaitTest, ProgressLinesFollowTheServiceAndTheCode) {
    const WaitCase& c = GetParam();
    Tv().Get<sim::WebAppState>().serviceRegistered = c.service;
    Remote().code = c.code;
    Remote().atCmdFinished = c.finished;
    testing::internal::CaptureStdout();
    EXPECT_EQ(Fm().FactoryKeyWaitMWBFinish(), c.finished ? 1 : 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), c.lines);
    EXPECT_EQ(Tv().Loop().Timers().size(), c.finished ? 0u : 1u);
}

#define WAIT_LINE(n) "~~ " n " [FactoryManager::FactoryKeyWaitMWBFinish]\n"
INSTANTIATE_TEST_SUITE_P(
    Labels, KeyWaitTest,
    testing::Values(WaitCase{true, 60985, true, WAIT_LINE("3") WAIT_LINE("3.1") WAIT_LINE("3.2.1")},
                    WaitCase{true, 60298, false, WAIT_LINE("3") WAIT_LINE("3.3") WAIT_LINE("3.4")},
                    WaitCase{false, 60289, false, WAIT_LINE("2") WAIT_LINE("2.1") WAIT_LINE("2.2")},
                    WaitCase{false, 60288, true,
                             WAIT_LINE("2") WAIT_LINE("2.3") WAIT_LINE("2.5")}));

TEST_F(KeyTest, DeferredCodeRunsOnTheFirstTickAfterTheFixtureIsDone) {
    Remote().code = 49129;
    Remote().atCmdFinished = false;
    Fm().FactoryKeyWaitMWBFinish();
    Advance(3000);
    EXPECT_FALSE(Journal().HasLog("OnEvent_Shipout"));
    Remote().atCmdFinished = true;
    Advance(1000);
    EXPECT_TRUE(Journal().HasLog("~~ [FactoryManager::OnTimer_FactoryKeyWaitMWBFinish]"));
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::_HandleFactoryEvent"),
              std::vector<std::string>{"[180, 0, 0]"});
    EXPECT_TRUE(Journal().HasLog("OnEvent_Shipout"));
    EXPECT_EQ(Codes(), std::vector<unsigned long>{0x12006}) << "the shipout ran to its end";
    EXPECT_TRUE(Tv().Loop().Timers().empty());
}

TEST_F(KeyTest, DeferredNonShipoutCodeIsLeftToThePlatform) {
    Remote().code = 61060;  // run at once by the speed-up path, but not deferred
    Remote().atCmdFinished = false;
    Fm().FactoryKeyWaitMWBFinish();
    Remote().atCmdFinished = true;
    Advance(1000);
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::GetFactoryCodeFromZYTSpecialRemoteController2Exe"),
              std::vector<std::string>{"[61060]"});
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::_HandleFactoryEvent"), 0u);
}

}  // namespace
