// Network tests of the line: wireless LAN phases (with the synchronous full test),
// wake-on-WLAN polling, the wired LAN with its pass counter and monitor, the
// wireless MAC check, and the access-point scan list.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FactoryKeyCodes.h"
#include "ProductionFixture.h"
#include "SimFactoryStore.h"
#include "SimMMode.h"
#include "SimNetwork.h"
#include "SimProductionTests.h"

namespace {

class NetworkTest : public ProductionTest {
protected:
    sim::WlanState& Wlan() { return Tv().Get<sim::WlanState>(); }
    sim::StationState& Station() { return Tv().Get<sim::StationState>(); }
    sim::FactoryStoreState& Store() { return Tv().Get<sim::FactoryStoreState>(); }
    bool Osd() { return Tv().Get<sim::MModeState>().factoryOsd; }
};

// ---- Wireless LAN ----------------------------------------------------------------------

TEST_F(NetworkTest, WlanRunWithAPassingFullTestShowsOkWithSignalForTenSeconds) {
    Wlan().rssi1 = -38;
    Wlan().rssi2 = -51;
    Post(251, 0, 2);
    EXPECT_EQ(TakeNotes(), Notes(R"-(
                  HideAllUIExcept="WLANTest" WLANPrepare-Show=0 WLANTest-TEST-RSSI=""
                  WLANTest-Show=0 WLANTest-NG-Show=0 WLANTest-OK-RSSI="-38, -51"
              )-"));
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::WLAN_Full_Test"), 1u);
    EXPECT_EQ(Fm().m_bIsWLANTesting, 1);
    Advance(9999);
    EXPECT_EQ(TakeNotes(), NoteList{});
    Advance(1);
    EXPECT_EQ(TakeNotes(), NoteList{Num("WLANTest-OK-Show", 0)});
    EXPECT_EQ(Fm().m_bIsWLANTesting, 0);
    EXPECT_FALSE(Osd());
}

struct WlanErrorCase {
    uint8_t code;
    const char* text;
};

class WlanErrorTest : public NetworkTest, public testing::WithParamInterface<WlanErrorCase> {};

TEST_P(WlanErrorTest, AFailedRunShowsNgWithSignalAndError) {
    Wlan().fullTestPass = false;
    Wlan().errorCode = GetParam().code;
    Post(251, 0, 2);
    EXPECT_EQ(TakeNotes(),
              (NoteList{Str("HideAllUIExcept", "WLANTest"), Num("WLANPrepare-Show", 0),
                        Str("WLANTest-TEST-RSSI", ""), Num("WLANTest-Show", 0),
                        Num("WLANTest-OK-Show", 0), Str("WLANTest-NG-RSSI", "-42, -47"),
                        Str("WLANTest-NG-Error", GetParam().text)}));
    Advance(9999);
    EXPECT_EQ(TakeNotes(), NoteList{});
    Advance(1);
    EXPECT_EQ(TakeNotes(), NoteList{Num("WLANTest-NG-Show", 0)});
}

INSTANTIATE_TEST_SUITE_P(Codes, WlanErrorTest,
                         testing::Values(WlanErrorCase{0, "RSSI NG"},
                                         WlanErrorCase{1, "Communication error"},
                                         WlanErrorCase{2, "Other error"}, WlanErrorCase{5, ""}),
                         [](const auto& info) { return "Code" + std::to_string(info.param.code); });

TEST_F(NetworkTest, WlanPreparingThenTheStationsVerdictKeepsOnePage) {
    Post(251, 0, 3);
    EXPECT_EQ(TakeNotes(),
              (NoteList{Str("HideAllUIExcept", "WLANTest"), Str("WLAN-PREPARING-RSSI", "")}));
    EXPECT_EQ(Journal().CountCalls("MEvtHandle::SetTimer"), 0u);
    Post(251, 0, 0);
    EXPECT_EQ(TakeNotes(), Notes(R"-(
        WLANTest-Show=0 WLANTest-NG-Show=0 WLANTest-OK-RSSI="-42, -47"
    )-"))
        << "the page is already up";
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::WLAN_Full_Test"), 0u);
    EXPECT_EQ(Calls("MEvtHandle::SetTimer"), std::vector<std::string>{"[10000, 53, 1]"});
}

// ---- Wake-on-WLAN ----------------------------------------------------------------------

struct WowCase {
    const char* name;
    std::vector<uint8_t> statuses;
    uint64_t verdictAtMs;  // 0: none
    bool ok;
};

std::ostream& operator<<(std::ostream& out, const WowCase& c) { return out << c.name; }

class WowTest : public NetworkTest, public testing::WithParamInterface<WowCase> {};

TEST_P(WowTest, PollsEachSecondUntilTheTestEnds) {
    const WowCase& c = GetParam();
    Wlan().wowStatus = c.statuses;
    Post(250, 0, 2);
    EXPECT_EQ(TakeNotes(), (NoteList{Str("HideAllUIExcept", "WOWonWLANTest"),
                                     Str("WOWTest-Testing-Show", "WOW Test : Testing")}));
    EXPECT_TRUE(Wlan().wowStarted);
    if (c.verdictAtMs == 0) {
        Advance(30000);
        EXPECT_EQ(TakeNotes(), NoteList{});
        EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::GetWOWTestedStatus"), 1u)
            << "polling stops";
        EXPECT_EQ(Fm().m_bIsWakeOnWLAN, 1) << "left on Testing";
        return;
    }
    Advance(c.verdictAtMs - 1);
    EXPECT_EQ(TakeNotes(), NoteList{});
    Advance(1);
    EXPECT_EQ(TakeNotes(), (NoteList{Num("WOWTest-Testing-Show", 0),
                                     c.ok ? Str("WOWTest-OK-Show", "WOW Test : OK")
                                          : Str("WOWTest-NG-Show", "WOW Test : NG")}));
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::GetWOWTestedStatus"), c.statuses.size());
    Advance(9999);
    EXPECT_EQ(TakeNotes(), NoteList{});
    Advance(1);
    EXPECT_EQ(TakeNotes(), NoteList{Num(c.ok ? "WOWTest-OK-Show" : "WOWTest-NG-Show", 0)});
    EXPECT_EQ(Fm().m_bIsWakeOnWLAN, 0);
    EXPECT_FALSE(Osd());
}

INSTANTIATE_TEST_SUITE_P(Statuses, WowTest,
                         testing::Values(WowCase{"PassedAtOnce", {0}, 1000, true},
                                         WowCase{"PassedAfterThree", {2, 2, 2, 0}, 4000, true},
                                         WowCase{"Failed", {2, 1}, 2000, false},
                                         WowCase{"UnknownStatus", {9}, 0, false}),
                         [](const auto& info) { return std::string(info.param.name); });

// ---- Wired LAN -------------------------------------------------------------------------

struct CountCase {
    uint8_t before;
    uint8_t after;
};

class DlnaCountTest : public NetworkTest, public testing::WithParamInterface<CountCase> {};

TEST_P(DlnaCountTest, APassCountsOneAndWrapsTo1) {
    Store().Set(69, GetParam().before);
    Post(228);
    EXPECT_EQ(TakeNotes(), (NoteList{Str("HideAllUIExcept", "DLNATest"),
                                     Str("DLNA-Test", "Wired LAN Test : OK")}));
    EXPECT_EQ(Store().Get(69), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(Counter, DlnaCountTest,
                         testing::Values(CountCase{0, 1}, CountCase{254, 255}, CountCase{255, 1}),
                         [](const auto& info) {
                             return "From" + std::to_string(info.param.before);
                         });

TEST_F(NetworkTest, WiredLanDownIsNgUncountedAndClosesAfterEightSeconds) {
    Wlan().netUp = false;
    Store().Set(69, 7);
    Post(228);
    EXPECT_EQ(TakeNotes(), (NoteList{Str("HideAllUIExcept", "DLNATest"),
                                     Str("DLNA-Test-NG", "Wired LAN Test : NG")}));
    EXPECT_EQ(Store().Get(69), 7);
    EXPECT_EQ(Fm().m_bDLNATestMode, 1);
    Advance(7999);
    EXPECT_EQ(TakeNotes(), NoteList{});
    Advance(1);
    EXPECT_EQ(TakeNotes(), NoteList{Num("DLNA-Test-show", 0)});
    EXPECT_EQ(Fm().m_bDLNATestMode, 0);
    Advance(16000);
    EXPECT_EQ(TakeNotes(), NoteList{}) << "the repeating close is killed on its first tick";
}

TEST_F(NetworkTest, ExitKeyEndsTheWiredLanTest) {
    Post(228);
    ClearUiNotes();
    EXPECT_EQ(Fm().FactoryDoKeyAction(FactoryKey::Exit), 1);
    EXPECT_EQ(TakeNotes(), NoteList{Num("DLNA-Test-show", 0)});
    EXPECT_TRUE(Tv().Loop().Timers().empty());
    EXPECT_EQ(Fm().m_bDLNATestMode, 0);
}

struct MonitorCase {
    const char* name;
    bool enabled;
    uint8_t status;
    uint32_t count;
    bool rechecks;
    uint8_t statusAfter;
};

std::ostream& operator<<(std::ostream& out, const MonitorCase& c) { return out << c.name; }

class DlnaMonitorTest : public NetworkTest, public testing::WithParamInterface<MonitorCase> {};

TEST_P(DlnaMonitorTest, RechecksOnAReportedOrOverdueStatus) {
    const MonitorCase& c = GetParam();
    Station().dlnaMonitor = c.enabled;
    Station().dlnaMonitorCount = c.count;
    Store().Set(3565, c.status);
    Fm().OnTimer_DLNATest(nullptr, nullptr, nullptr);
    EXPECT_EQ(Journal().CountCalls("MSrv_Network::DetectNetStatusForKeyWriting"),
              c.rechecks ? 1u : 0u);
    EXPECT_EQ(Fm().m_u8DLNAMonitorStatus, c.statusAfter);
}

INSTANTIATE_TEST_SUITE_P(Monitor, DlnaMonitorTest,
                         testing::Values(MonitorCase{"Disabled", false, 2, 40, false, 0},
                                         MonitorCase{"Reported1", true, 1, 0, true, 1},
                                         MonitorCase{"Reported4", true, 4, 0, true, 4},
                                         MonitorCase{"NothingYet", true, 0, 40, false, 0},
                                         MonitorCase{"OtherNotOverdue", true, 5, 30, false, 5},
                                         MonitorCase{"OtherOverdue", true, 5, 31, true, 3},
                                         MonitorCase{"TwoOverdueStaysTwo", true, 2, 31, true, 2},
                                         MonitorCase{"OneOverdueBecomesThree", true, 1, 31, true,
                                                     3}),
                         [](const auto& info) { return std::string(info.param.name); });

// ---- Wireless MAC --------------------------------------------------------------------------

TEST_F(NetworkTest, MacCheckIsNgOnlyForTheAllZeroAddress) {
    const std::pair<std::array<MAPI_U8, 6>, const char*> cases[] = {
        {{{0, 0, 0, 0, 0, 0}}, "MAC Address(Wireless) : NG"},
        {{{0, 0, 0, 0, 0, 1}}, "MAC Address(Wireless) : OK"},
        {{{0x70, 0x5a, 0xb6, 0x12, 0xc3, 0xde}}, "MAC Address(Wireless) : OK"},
    };
    for (const auto& c : cases) {
        Tv().Get<sim::NetworkState>().wifiMac = c.first;
        Post(248);
        EXPECT_EQ(TakeNotes(),
                  (NoteList{Str("HideAllUIExcept", "MAC_Chk"), Str("MACaddressCheck", c.second)}));
        Advance(1999);
        EXPECT_EQ(TakeNotes(), NoteList{});
        Advance(1);
        EXPECT_EQ(TakeNotes(), NoteList{Num("MACaddressCheck_Finish-Show", 0)});
    }
}

// ---- Access-point scan -------------------------------------------------------------------

TEST_F(NetworkTest, ApScanListsEachAccessPointUntilTheExitKey) {
    Wlan().accessPoints = {{"LINE 5", 86}, {"Office-2.4", 7}};
    Post(362);
    EXPECT_EQ(TakeNotes(), Notes(R"-(
                  HideAllUIExcept="WLANAPScan" WLAN-AP-Scan="Scanning" WLAN-AP-Row="LINE 5	86%"
                  WLAN-AP-Row="Office-2.4	7%" WLAN-AP-Scan="Access points : 2"
              )-"));
    EXPECT_EQ(Fm().m_bAPListShown, 1);
    Advance(60000);
    EXPECT_EQ(TakeNotes(), NoteList{});
    EXPECT_EQ(Fm().FactoryDoKeyAction(FactoryKey::PanelExit), 0) << "only the remote's exit";
    EXPECT_EQ(Fm().FactoryDoKeyAction(FactoryKey::Exit), 0);
    EXPECT_EQ(TakeNotes(), NoteList{Num("WLANAPScan-Show", 0)});
    EXPECT_EQ(Fm().m_bAPListShown, 0);
    EXPECT_EQ(Calls("WebAppMgr_ShowPage").back(), "[1]");
}

TEST_F(NetworkTest, ApScanWithNothingFoundAndWithMoreThanTheListHolds) {
    Wlan().accessPoints.clear();
    Post(362);
    EXPECT_EQ(TakeNotes().back(), Str("WLAN-AP-Scan", "Access points : 0"));
    Wlan().accessPoints.assign(40, sim::AccessPoint{std::string(32, 'S'), 50});
    Post(362);
    NoteList notes = TakeNotes();
    EXPECT_EQ(
        std::count(notes.begin(), notes.end(), Str("WLAN-AP-Row", std::string(32, 'S') + "\t50%")),
        32);
    EXPECT_EQ(notes.back(), Str("WLAN-AP-Scan", "Access points : 32"));
}

}  // namespace
