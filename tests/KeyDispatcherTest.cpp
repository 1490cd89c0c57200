// The key dispatcher as the host sees it: which page takes a key, what closing a page
// does on the set, the page reset, and the factory remote controller's codes.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "CallOrder.h"
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

// Pages are opened by their flag, as their entry would.
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
    // clang-format off
    testing::Values(
        RouteCase{"MModeKeysComeBeforeTheDModeEditor", DModeInMMode, FactoryKey::PanelFunction, 1, "~~ Key Select", "FactoryDModeAction", "WebAppMgr_HidePage"},
        RouteCase{"OtherKeysInMModeReachTheDModeEditor", DModeInMMode, FactoryKey::Exit, 1, "", kNothing, "MSrv_Factory_Cmd::Set_S_D_Mode"},
        RouteCase{"WlanTestIgnoresTheMenuKey", [](FM& fm, MM&) {fm.m_bIsWLANTesting = 1; }, FactoryKey::Menu, 0, "", "~~ /WLANTest-", ""},
        RouteCase{"WlanTestEndsAtOnceOnThePanelExit", [](FM& fm, MM&) {fm.m_bIsWLANTesting = 1; }, FactoryKey::PanelExit, 1, "~~ /WLANTest-NG-Show/", "", "WebAppMgr_ShowPage"},
        RouteCase{"AdcTestOutranksTheWlanTest", [](FM& fm, MM&) {fm.m_bIsWLANTesting = fm.m_bIsADCAdjustmentTesting = 1; }, FactoryKey::Exit, 1, "~~ m_bIsADCAdjustmentTesting = TRUE. /MVK_EXIT/", "m_bIsWLANTesting", ""},
        RouteCase{"CloneCopyLetsThePanelPowerKeyThroughWhenIdle", [](FM& fm, MM&) {fm.m_bCloneCopyMode = 1; }, FactoryKey::PanelPower, 0, "", "ExitCloneCopy", ""},
        RouteCase{"CloneCopySwallowsPowerKeysDuringACopy", [](FM& fm, MM&) {fm.m_bCloneCopyMode = fm.m_bCloneCopyBusy = 1; }, FactoryKey::Power, 1, "", "ExitCloneCopy", ""},
        RouteCase{"VersionPageClosesOnThePanelPowerKeyOutsideMMode", [](FM& fm, MM&) {fm.m_bVersionMode = 1; }, FactoryKey::PanelPower, 1, "~~ SetKeyRoute  /E_ZYT_KEY_ROUTING_DEFAULT/", "", "WebAppMgr_ShowPage"},
        RouteCase{"VersionPageStaysOnThePanelPowerKeyInMMode", [](FM& fm, MM& m) {fm.m_bVersionMode = m.mMode = true; }, FactoryKey::PanelPower, 1, "~~ Key Power", "ExitVersionMode", ""},
        RouteCase{"InternalPatternGoesOffWithoutGivingTheScreenBack", [](FM& fm, MM&) {fm.m_bInternalPatternMode = 1; }, FactoryKey::Exit, 1, "", "", "MSrv_Factory_Cmd::InternalPatternOff"},
        RouteCase{"AtvSearchLeavesOnThePanelMenuKey", [](FM& fm, MM&) {fm.m_bATVTuningSearchMode = 1; }, FactoryKey::PanelMenu, 1, "", kNothing, "MSrv_ATV_Player::ChangeProgram"},
        RouteCase{"PeqEditorConsumesEveryKey", [](FM& fm, MM&) {fm.m_bPEQMode = 1; }, '5', 1, "", kNothing, ""},
        RouteCase{"TimingEditorActsButLetsTheTvHaveTheKey", [](FM& fm, MM&) {fm.m_b3DTimingMode = 1; }, FactoryKey::Exit, 0, "Factory3DTimingKeyAction", kNothing, "MSrv_Factory_Cmd::SetFactoryOSDStatus"},
        RouteCase{"AccessPointListClosesOnlyOnTheRemoteExit", [](FM& fm, MM&) {fm.m_bAPListShown = 1; }, FactoryKey::PanelExit, 0, "", "DisplayAPListUI", ""},
        RouteCase{"NoPageDeclinesAndSaysSo", [](FM&, MM&) {}, FactoryKey::Exit, 0, kNothing, "", ""}),
    [](const testing::TestParamInfo<RouteCase>& info) { return std::string(info.param.name); });
// clang-format on

// ---- Pages that close on an exit key, row by row ------------------------------------

// Written out from the dispatcher's required table, not from the library's own: what
// each page does on the two exit keys and that it ignores the others.
struct ExitRow {
    const char* name;
    MAPI_U8 FactoryManager::*flag;
    const char* log;                    // logged on exit, or null
    std::vector<const char*> routines;  // the page's own exit routines, in order
};

std::ostream& operator<<(std::ostream& out, const ExitRow& r) { return out << r.name; }

// clang-format off
const ExitRow kExitRows[] = {
    {"Adc", &FM::m_bIsADCAdjustmentTesting, "~~ m_bIsADCAdjustmentTesting = TRUE. /MVK_EXIT/", {"OnTimer_FactoryADCAdjustment"}},
    {"VgaEdid", &FM::m_bIsVGAEDIDWriting, nullptr, {"OnTimer_FactoryWriteVGA_EDID_EEPRPOM"}},
    {"Wlan", &FM::m_bIsWLANTesting, "~~ m_bIsWLANTesting = TRUE. /MVK_EXIT/", {"OnTimer_FactoryWLANTest"}},
    {"WakeOnWlan", &FM::m_bIsWakeOnWLAN, "~~ m_bIsWakeOnWLAN = TRUE. /MVK_EXIT/", {"OnTimer_FactoryWakeOnWLAN"}},
    {"MediaPlayer", &FM::m_bMediaPlayerMode, nullptr, {"OnEvent_MediaPlayerStop"}},
    {"ReceiverInfo", &FM::m_bRevicInfoMode, nullptr, {"ExitRevicInfo"}},
    {"SensorValue", &FM::m_bAutoBrightnessSensorValueMode, nullptr, {"ExitAutoBrightnessSensorValueMode"}},
    {"Dlna", &FM::m_bDLNATestMode, nullptr, {"ExitDLNATest"}},
    {"InternalPattern", &FM::m_bInternalPatternMode, nullptr, {}},
    {"Aging1", &FM::m_bAgingMode1, nullptr, {"ExitAgingMode1", "ExitAgingMode2"}},
    {"Aging2", &FM::m_bAgingMode2, nullptr, {"ExitAgingMode1", "ExitAgingMode2"}},
    {"AudioBalance", &FM::m_bAudioBalanceCheckMode, nullptr, {"ExitAudioBalanceCheck"}},
    {"Backlight", &FM::m_bBackLightLevelMode, nullptr, {"ExitBackLightLevel"}},
    {"Sensor", &FM::m_bAutoBrightnessSensorMode, nullptr, {"ExitAutoBrightnessSensor"}},
    {"Polarization", &FM::m_bPolarizationMode, nullptr, {"DisplayVideoAfterPolarizatonChanged"}},
    {"DigitalAudioOut", &FM::m_bDigitalAudioOutMode, nullptr, {"ExitDigitalAudioOut"}},
    {"CiTest", &FM::m_bCITestMode, nullptr, {"ExitCITestStatus"}},
    {"CloneCopy", &FM::m_bCloneCopyMode, nullptr, {"ExitCloneCopy"}},
};
// clang-format on

class ExitRowTest : public KeyTest, public testing::WithParamInterface<ExitRow> {
protected:
    // The calls a closing page leaves on the set, in order.
    std::vector<std::string> Tail() {
        return CallOrder({"WebAppMgr_ShowPage", "WebAppMgr_HidePage", "KeyManager::setKeyRouting",
                          "MSrv_Factory_Cmd::InternalPatternOff"});
    }
};

TEST_P(ExitRowTest, OtherKeysAreDeclinedAndChangeNothing) {
    const ExitRow& r = GetParam();
    Fm().*r.flag = 1;
    for (unsigned long key : {61458UL, 62805UL, 61442UL, 61443UL, 13UL, 62806UL}) {
        EXPECT_EQ(Fm().FactoryDoKeyAction(key), 0) << key;
    }
    EXPECT_EQ(Fm().*r.flag, 1);
    EXPECT_EQ(Tail(), std::vector<std::string>{});
    EXPECT_FALSE(Journal().HasLog("Factory don't process the key."));
}

// How each page closes is the lifecycle table's to check (on the remote's exit); the
// panel's exit must do just the same.
TEST_P(ExitRowTest, ThePanelExitClosesThePageAsTheRemoteExitDoes) {
    const ExitRow& r = GetParam();
    std::vector<std::string> closed[2];
    for (int i = 0; i < 2; ++i) {
        Journal().Clear();
        Fm().*r.flag = 1;
        EXPECT_EQ(Fm().FactoryDoKeyAction(i == 0 ? 61538UL : 62807UL), 1);
        closed[i] = Tail();
        if (r.log != nullptr) {
            EXPECT_TRUE(Journal().HasLog(r.log));
        }
    }
    EXPECT_FALSE(closed[0].empty());
    EXPECT_EQ(closed[1], closed[0]);
    EXPECT_EQ(Codes(), std::vector<unsigned long>{}) << "the host's UI is not asked for";
}

INSTANTIATE_TEST_SUITE_P(Pages, ExitRowTest, testing::ValuesIn(kExitRows),
                         [](const testing::TestParamInfo<ExitRow>& info) {
                             return std::string(info.param.name);
                         });

// The first active page in the flag order takes the key, whatever is set after it.
TEST_F(KeyTest, FirstPageInTheFlagOrderTakesTheKey) {
    for (size_t i = 0; i + 1 < std::size(kExitRows); ++i) {
        Journal().Clear();
        for (size_t j = i; j < std::size(kExitRows); ++j) {
            Fm().*kExitRows[j].flag = 1;
        }
        Fm().FactoryDoKeyAction(61538);
        // A page whose exit resets the page state clears other pages' flags too;
        // otherwise a page passed over keeps its flag, its exit routine never ran.
        bool reset = false;
        for (size_t j = i + 1; j < std::size(kExitRows); ++j) {
            reset = reset || Fm().*kExitRows[j].flag == 0;
        }
        for (size_t j = i + 1; j < std::size(kExitRows); ++j) {
            if (kExitRows[j].log != nullptr && kExitRows[j].log != kExitRows[i].log) {
                EXPECT_FALSE(Journal().HasLog(kExitRows[j].log))
                    << kExitRows[i].name << " comes before " << kExitRows[j].name;
            }
            const bool alsoOwn = std::any_of(
                kExitRows[i].routines.begin(), kExitRows[i].routines.end(), [&](const char* own) {
                    return std::find_if(kExitRows[j].routines.begin(), kExitRows[j].routines.end(),
                                        [&](const char* other) {
                                            return std::string(own) == other;
                                        }) != kExitRows[j].routines.end();
                });
            if (!reset && !alsoOwn) {
                EXPECT_EQ(Fm().*kExitRows[j].flag, 1)
                    << kExitRows[i].name << " comes before " << kExitRows[j].name;
            }
        }
        for (const ExitRow& r : kExitRows) {
            Fm().*r.flag = 0;
        }
    }
}

// ---- Pages that take the keys themselves ----------------------------------------------

// What each of them does with a key, from the dispatcher's required steps: returned
// value, flag afterwards, host UI asked back, OSD off, calls in order.
struct HandlerCase {
    const char* name;
    MAPI_U8 FactoryManager::*flag;
    unsigned long key;
    MAPI_BOOL consumed;
    bool flagCleared;
    std::vector<unsigned long> codes;  // host listener codes
    std::vector<std::string> calls;    // tail calls, in order
    const char* routine;               // the page routine that must run, or null
};

void PrintTo(const HandlerCase& c, std::ostream* out) { *out << c.name; }

class HandlerPageTest : public KeyTest, public testing::WithParamInterface<HandlerCase> {};

TEST_P(HandlerPageTest, KeyGoesWhereTheTableSays) {
    const HandlerCase& c = GetParam();
    Fm().*c.flag = 1;
    Journal().Clear();
    EXPECT_EQ(Fm().FactoryDoKeyAction(c.key), c.consumed);
    if (c.flagCleared) {
        EXPECT_EQ(Fm().*c.flag, 0);
    } else if (c.routine == nullptr) {
        EXPECT_EQ(Fm().*c.flag, 1);
    }
    EXPECT_EQ(Codes(), c.codes);
    const std::vector<std::string> calls =
        CallOrder({"WebAppMgr_ShowPage", "WebAppMgr_HidePage", "KeyManager::setKeyRouting",
                   "MSrv_Factory_Cmd::SetFactoryOSDStatus", "MEvtHandle::KillTimer",
                   "MSrv_ATV_Player::ATVSaveProgram"});
    if (c.routine == nullptr) {
        EXPECT_EQ(calls, c.calls);
    } else {
        // The page's own routine may make calls of its own in between.
        auto at = calls.begin();
        for (const std::string& want : c.calls) {
            at = std::find(at, calls.end(), want);
            EXPECT_NE(at, calls.end()) << want << " in order";
            if (at == calls.end()) break;
            ++at;
        }
    }
    EXPECT_FALSE(Journal().HasLog("Factory don't process the key."));
}

const std::vector<std::string> kNoCalls;
const std::vector<unsigned long> kNoCodes;
const std::vector<std::string> kAtvClose = {"MSrv_Factory_Cmd::SetFactoryOSDStatus[0]"};
const std::vector<std::string> kVersionClose = {
    "KeyManager::setKeyRouting[1]", "MEvtHandle::KillTimer[57]", "WebAppMgr_ShowPage[1]"};

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Pages, HandlerPageTest,
    testing::Values(
        HandlerCase{"VersionExit", &FM::m_bVersionMode, 61538, 1, false, kNoCodes, kVersionClose, "ExitVersionMode"},
        HandlerCase{"VersionPanelExit", &FM::m_bVersionMode, 62807, 1, false, kNoCodes, kVersionClose, "ExitVersionMode"},
        HandlerCase{"VersionPower", &FM::m_bVersionMode, 61455, 1, false, kNoCodes, kVersionClose, "ExitVersionMode"},
        HandlerCase{"VersionUp", &FM::m_bVersionMode, 61442, 1, false, kNoCodes, kNoCalls, "VersionAction"},
        HandlerCase{"VersionDown", &FM::m_bVersionMode, 61443, 1, false, kNoCodes, kNoCalls, "VersionAction"},
        HandlerCase{"VersionOther", &FM::m_bVersionMode, 61458, 0, false, kNoCodes, kNoCalls, nullptr},
        HandlerCase{"AtvExit", &FM::m_bATVTuningSearchMode, 61538, 1, true, {0x12002}, kAtvClose, "ExitATVTuningSearch"},
        HandlerCase{"AtvPanelExit", &FM::m_bATVTuningSearchMode, 62807, 1, true, {0x12002}, kAtvClose, "ExitATVTuningSearch"},
        HandlerCase{"AtvMenu", &FM::m_bATVTuningSearchMode, 61458, 1, true, {0x12002}, kAtvClose, "ExitATVTuningSearch"},
        HandlerCase{"AtvPanelMenu", &FM::m_bATVTuningSearchMode, 62805, 1, true, {0x12002}, kAtvClose, "ExitATVTuningSearch"},
        HandlerCase{"AtvSelect", &FM::m_bATVTuningSearchMode, 13, 1, false, kNoCodes, kNoCalls, "ATVTuningSearchSelect"},
        HandlerCase{"AtvOther", &FM::m_bATVTuningSearchMode, 61442, 0, false, kNoCodes, kNoCalls, nullptr},
        HandlerCase{"PeqAnyKey", &FM::m_bPEQMode, 61442, 1, false, kNoCodes, kNoCalls, "PEQProcessKey"},
        HandlerCase{"PeqExit", &FM::m_bPEQMode, 61538, 1, false, kNoCodes, kNoCalls, "PEQProcessKey"},
        HandlerCase{"Timing3D", &FM::m_b3DTimingMode, 61442, 0, false, kNoCodes, kNoCalls, "Factory3DTimingKeyAction"},
        HandlerCase{"AudioAdv", &FM::m_bAudioADVMode, 61538, 0, false, kNoCodes, kNoCalls, "FactoryAudioADVKeyAction"},
        HandlerCase{"ApListExit", &FM::m_bAPListShown, 61538, 0, true, kNoCodes, kNoCalls, "DisplayAPListUI"},
        HandlerCase{"ApListPanelExit", &FM::m_bAPListShown, 62807, 0, false, kNoCodes, kNoCalls, nullptr},
        HandlerCase{"NinePointExit", &FM::m_b9PointPatternMode, 61538, 0, false, kNoCodes, kNoCalls, "Display9PointPattern"},
        HandlerCase{"NinePointPanelExit", &FM::m_b9PointPatternMode, 62807, 0, false, kNoCodes, kNoCalls, nullptr}),
    [](const testing::TestParamInfo<HandlerCase>& info) { return std::string(info.param.name); });
// clang-format on

// The key-writing result is the one page whose mark the dispatcher cannot see from
// outside: it is set by the result page and cleared by an exit key.
TEST_F(KeyTest, KeyWritingResultClosesOnExitAndStillDeclines) {
    Fm().ShowKeyWriting(1);
    Codes().clear();
    Journal().Clear();
    EXPECT_EQ(Fm().FactoryDoKeyAction(61442), 0);
    EXPECT_EQ(Codes(), std::vector<unsigned long>{});
    EXPECT_EQ(Fm().FactoryDoKeyAction(62807), 0);
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::SetFactoryOSDStatus"), std::vector<std::string>{"[0]"});
    EXPECT_EQ(Codes(), std::vector<unsigned long>{0x12002});
    EXPECT_EQ(Fm().FactoryDoKeyAction(61538), 0);
    EXPECT_TRUE(Journal().HasLog("Factory don't process the key.")) << "the mark was cleared";
}

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
        &FM::m_bRevicInfoMode,
        &FM::m_bVersionMode,
        &FM::m_bAutoBrightnessSensorValueMode,
        &FM::m_bDModeOpen,
        &FM::m_bDLNATestMode,
        &FM::m_bSModeShown,
        &FM::m_bCHPresetShown,
        &FM::m_bMediaPlayerMode,
        &FM::m_bCITestMode,
        &FM::m_bInternalPatternMode,
        &FM::m_bAgingMode1,
        &FM::m_bAgingMode2,
        &FM::m_bCloneCopyMode,
        &FM::m_bATVTuningSearchMode,
        &FM::m_b3DTimingMode,
        &FM::m_bAudioADVMode,
        &FM::m_bAutoBrightnessSensorMode,
        &FM::m_bBackLightLevelMode,
        &FM::m_bPolarizationMode,
    };
    MAPI_U8 FactoryManager::*const kept[] = {
        &FM::m_bIsADCAdjustmentTesting,
        &FM::m_bIsVGAEDIDWriting,
        &FM::m_bIsWLANTesting,
        &FM::m_bIsWakeOnWLAN,
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
    for (size_t i = 0; i < std::size(cleared); ++i)
        EXPECT_EQ(Fm().*cleared[i], 0) << "cleared " << i;
    for (size_t i = 0; i < std::size(kept); ++i) EXPECT_EQ(Fm().*kept[i], 1) << "kept " << i;
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
    const char* handler;
};

void PrintTo(const RemoteCase& c, std::ostream* out) { *out << c.code; }

class RemoteCodeTest : public KeyTest, public testing::WithParamInterface<RemoteCase> {};

TEST_P(RemoteCodeTest, ServiceFirstThenTheHandlerAtOnce) {
    Remote().code = GetParam().code;
    EXPECT_EQ(Fm().SpeedupSpecificalKey(), 1);
    // The first thing the factory-command service hears is the event (or the record).
    std::vector<std::string> service;
    for (const std::string& call : CallOrder({"MSrv_Factory_Cmd::"})) {
        if (call.find("::GetFactoryCode[") == std::string::npos) {
            service.push_back(call);
        }
    }
    ASSERT_FALSE(service.empty());
    EXPECT_EQ(service.front(), GetParam().serviceCall);
    EXPECT_TRUE(Journal().HasLog(GetParam().handler)) << GetParam().handler;
}

const RemoteCase kRemoteCodes[] = {
    {61046, "MSrv_Factory_Cmd::SetFactoryCodeEvent[61046, 118]", "OnEvent_DirectTune"},
    {61060, "MSrv_Factory_Cmd::_HandleFactoryEvent[170, 0, 0]", "OnEvent_FactoryConfiguration"},
    {61061, "MSrv_Factory_Cmd::_HandleFactoryEvent[171, 0, 0]", "OnEvent_FactoryConfiguration"},
    {49129, "MSrv_Factory_Cmd::_HandleFactoryEvent[180, 0, 0]", "OnEvent_Shipout"},
    {49130, "MSrv_Factory_Cmd::_HandleFactoryEvent[181, 0, 0]", "OnEvent_Shipout"},
    {61049, "MSrv_Factory_Cmd::_HandleFactoryEvent[168, 0, 0]", "OnEvent_Shipout"},
    {61056, "MSrv_Factory_Cmd::_HandleFactoryEvent[169, 0, 0]", "OnEvent_Shipout"},
    {61057, "MSrv_Factory_Cmd::_HandleFactoryEvent[173, 0, 0]", "OnEvent_Shipout"},
};

INSTANTIATE_TEST_SUITE_P(Codes, RemoteCodeTest, testing::ValuesIn(kRemoteCodes));

// Deferred until the fixture is done, only the five shipout codes run here; the
// others go back to the platform.
TEST_F(KeyTest, DeferredCodesRunOnlyWhenTheyAreShipouts) {
    for (const RemoteCase& c : kRemoteCodes) {
        Journal().Clear();
        Remote().code = c.code;
        Remote().atCmdFinished = false;
        Fm().FactoryKeyWaitMWBFinish();
        Remote().atCmdFinished = true;
        Advance(1000);
        const bool shipout = std::string(c.handler) == "OnEvent_Shipout";
        EXPECT_EQ(Calls("MSrv_Factory_Cmd::_HandleFactoryEvent").size(), shipout ? 1u : 0u)
            << c.code;
        EXPECT_EQ(
            Calls("MSrv_Factory_Cmd::GetFactoryCodeFromZYTSpecialRemoteController2Exe").size(),
            shipout ? 0u : 1u)
            << c.code;
        EXPECT_TRUE(Tv().Loop().Timers().empty());
    }
}

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
    testing::Values(
        WaitCase{true, 60985, true, WAIT_LINE("3") WAIT_LINE("3.1") WAIT_LINE("3.2.1")},
        WaitCase{true, 61081, false, WAIT_LINE("3") WAIT_LINE("3.1") WAIT_LINE("3.2")},
        WaitCase{true, 60288, true, WAIT_LINE("3") WAIT_LINE("3.3") WAIT_LINE("3.5")},
        WaitCase{true, 60298, false, WAIT_LINE("3") WAIT_LINE("3.3") WAIT_LINE("3.4")},
        WaitCase{false, 49067, true, WAIT_LINE("2") WAIT_LINE("2.1") WAIT_LINE("2.2.2")},
        WaitCase{false, 60289, false, WAIT_LINE("2") WAIT_LINE("2.1") WAIT_LINE("2.2")},
        WaitCase{false, 60288, true, WAIT_LINE("2") WAIT_LINE("2.3") WAIT_LINE("2.5")},
        WaitCase{false, 61046, false, WAIT_LINE("2") WAIT_LINE("2.3") WAIT_LINE("2.4")}));

// Which codes the fixture treats specially: the six listed and 60289 to 60297.
TEST_F(KeyTest, SpecialFixtureCodes) {
    const unsigned short special[] = {60985, 61081, 49067, 61141, 49065,
                                      60946, 60289, 60293, 60297};
    const unsigned short other[] = {60288, 60298, 60984, 49066, 61046, 0};
    for (bool isSpecial : {true, false}) {
        for (unsigned short code :
             isSpecial ? std::vector<unsigned short>(std::begin(special), std::end(special))
                       : std::vector<unsigned short>(std::begin(other), std::end(other))) {
            Remote().code = code;
            testing::internal::CaptureStdout();
            Fm().FactoryKeyWaitMWBFinish();
            const std::string out = testing::internal::GetCapturedStdout();
            EXPECT_NE(out.find(isSpecial ? WAIT_LINE("3.1") : WAIT_LINE("3.3")), std::string::npos)
                << code;
        }
    }
}

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

}  // namespace
