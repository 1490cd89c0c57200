// The timed one-shot setting commands: each member's page, texts, platform call and
// both sides of each of its deadlines, checked against a table of our own; then the
// members that differ.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FactoryKeyCodes.h"
#include "ProductionFixture.h"
#include "SimMMode.h"
#include "SimProductionTests.h"

namespace {

struct Member {
    const char* name;
    unsigned event;
    const char* page;
    const char* key;
    const char* writing;
    const char* finished;  // null: the first timer closes
    const char* show;
    unsigned long timer1, period1, timer2, period2;
    bool resets;
    std::vector<std::string> calls;  // platform calls of the member, in order
};

std::ostream& operator<<(std::ostream& out, const Member& m) { return out << m.name; }

const char kPlatformZeroOnTime[] = R"(TimerManager::setOnTime [0, 0, 0, 0, 0, 0, 0, "zero", 1])";

// clang-format off
const Member kMembers[] = {
    {"SpeakerSNC", 215, "SpeakerSNC", "Set-Speaker-SNC", "Set SKP to CMSNC : Writing", "Set SPK to CMSNC : Finished", "Set-Speaker-SNC-Show", 19, 2000, 20, 2000, true, {"AudioManager::selectAudysseySpeakerType [0]"}},
    {"SpeakerIEC", 216, "SpeakerIEC", "Set-Speaker-IEC", "Set SKP to IEC : Writing", "Set SPK to IEC : Finished", "Set-Speaker-IEC-Show", 21, 2000, 22, 2000, true, {"AudioManager::selectAudysseySpeakerType [1]"}},
    {"SpeakerGW", 217, "SpeakerGW", "Set-Speaker-GW", "Set SKP to GW : Writing", "Set SPK to GW : Finished", "Set-Speaker-GW-Show", 23, 2000, 24, 2000, true, {"AudioManager::selectAudysseySpeakerType [2]"}},
    {"SpeakerEstec", 218, "SpeakerEstec", "Set-Speaker-Estec", "Set SKP to Estec : Writing", "Set SPK to Estec : Finished", "Set-Speaker-Estec-Show", 25, 2000, 26, 2000, true, {"AudioManager::selectAudysseySpeakerType [3]"}},
    {"StoreNone", 222, "SetStoreNone", "Set-Store-None", "Set Store to None : Writing", "Set Store to None : Finished", "Set-Store-None-Show", 27, 2000, 28, 2000, true, {}},
    {"StoreBestBuy", 223, "SetStoreBestBuy", "Set-Store-Best-Buy", "Set Store to BestBuy : Writing", "Set Store to BestBuy : Finished", "Set-Store-Best-Buy-Show", 29, 2000, 30, 2000, true, {}},
    {"StoreCostco", 224, "SetStoreCostco", "Set-Store-Costco", "Set Store to Costco : Writing", "Set Store to Costco : Finished", "Set-Store-Costco-Show", 31, 2000, 32, 2000, true, {}},
    {"StoreWalmart", 225, "SetStoreWalmart", "Set-Store-Walmart", "Set Store to Walmart : Writing", "Set Store to Walmart : Finished", "Set-Store-Walmart-Show", 33, 2000, 34, 2000, true, {}},
    {"ShipoutSetting", 214, "ShipoutSetting", "Shipout-Setting", "NA Shipout", nullptr, "Shipout-Setting-Show", 35, 2000, 0, 0, true, {"TVManager::resetToFactoryDefault []", kPlatformZeroOnTime}},
    {"FullPowerMode", 220, "FullPowerMode", "Full-Power-Mode", "Full Power mode", nullptr, "Full-Power-Mode-Show", 37, 2000, 0, 0, true, {"MSrv_Factory_Cmd::SetFullPowerModeInformation [80, 50, 30]", "PictureManager::setPictureMode [1]", "PictureManager::setBacklight [100]", "PictureManager::setBrightness [50]", "AudioManager::setVolume [100]"}},
    {"ClearPowerOnTime", 221, "ClearPowerOnTime", "Clear-Power-On-Time", "Clear Power On Time", nullptr, "Clear-Power-On-Time-Show", 38, 2000, 0, 0, false, {kPlatformZeroOnTime}},
    {"NetworkDefaultMAC", 242, "NetworkDefaultMAC", "Network-Default-MAC", "Default MAC/IP address writing", "Default MAC/IP address Finished", "Network-Default-MAC-Show", 7, 500, 8, 1000, true, {"MSrv_Factory_Cmd::SetFactoryDefaultMacIp []"}},
    {"DefaultIPAddress", 235, "DefaultIPAddress", "Default-IP-Address", "Default IP address writing", nullptr, "Default-IP-Address-Show", 10, 2000, 0, 0, true, {}},
};
// clang-format on

const std::vector<std::string> kMemberCalls = {
    "AudioManager::selectAudysseySpeakerType",
    "AudioManager::setVolume",
    "PictureManager::setPictureMode",
    "PictureManager::setBacklight",
    "PictureManager::setBrightness",
    "TimerManager::setOnTime",
    "TVManager::resetToFactoryDefault",
    "MSrv_Factory_Cmd::SetFullPowerModeInformation",
    "MSrv_Factory_Cmd::SetFactoryDefaultMacIp",
};

std::string Kill(unsigned long id) { return "MEvtHandle::KillTimer [" + std::to_string(id) + "]"; }
std::string Arm(unsigned long ms, unsigned long id) {
    return "MEvtHandle::SetTimer [" + std::to_string(ms) + ", " + std::to_string(id) + ", 1]";
}

class TimedMemberTest : public ProductionTest, public testing::WithParamInterface<Member> {};

TEST_P(TimedMemberTest, WritesThenShowsTheResultThenClosesOnTime) {
    const Member& m = GetParam();
    Fm().m_bVersionMode = 1;  // a page left up by the operator
    Post(m.event);
    EXPECT_EQ(TakeNotes(), (NoteList{Str("HideAllUIExcept", m.page), Str(m.key, m.writing)}));
    EXPECT_EQ(Fm().m_bVersionMode, m.resets ? 0 : 1);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::SetFactoryOSDStatus"), m.resets ? 1u : 0u);

    Advance(m.period1 - 1);
    EXPECT_EQ(TakeNotes(), NoteList{});
    Advance(1);
    const NoteList close = {Num(m.show, 0)};
    if (m.finished != nullptr) {
        EXPECT_EQ(TakeNotes(), NoteList{Str(m.key, m.finished)});
        Advance(m.period2 - 1);
        EXPECT_EQ(TakeNotes(), NoteList{});
        Advance(1);
    }
    EXPECT_EQ(TakeNotes(), close);
    EXPECT_EQ(Calls("WebAppMgr_ShowPage").back(), "[1]") << "the factory page is put away";

    std::vector<std::string> timers = {Kill(m.timer1), Arm(m.period1, m.timer1)};
    if (m.timer2 != 0) {
        timers.push_back(Kill(m.timer2));
        timers.push_back(Arm(m.period2, m.timer2));
    }
    EXPECT_EQ(TimerCalls(), timers);
    EXPECT_EQ(CallsIn(kMemberCalls), m.calls);
    EXPECT_TRUE(Tv().Loop().Timers().empty());
}

INSTANTIATE_TEST_SUITE_P(Family, TimedMemberTest, testing::ValuesIn(kMembers),
                         [](const auto& info) { return std::string(info.param.name); });

class TimedCommandTest : public ProductionTest {
protected:
    sim::StationState& Station() { return Tv().Get<sim::StationState>(); }
    sim::AudioPictureState& AudioPicture() { return Tv().Get<sim::AudioPictureState>(); }
};

TEST_F(TimedCommandTest, ARepeatedSpeakerCommandRestartsItsSequence) {
    Post(215);
    Advance(1000);
    Post(215);
    Advance(1999);
    const Note finished = Str("Set-Speaker-SNC", "Set SPK to CMSNC : Finished");
    NoteList notes = TakeNotes();
    EXPECT_EQ(std::count(notes.begin(), notes.end(), finished), 0);
    Advance(1);
    EXPECT_EQ(TakeNotes(), NoteList{finished}) << "2 s after the second event, once";
    Advance(2000);
    EXPECT_EQ(TakeNotes(), NoteList{Num("Set-Speaker-SNC-Show", 0)});
    EXPECT_EQ(AudioPicture().speakerType, 0);
}

TEST_F(TimedCommandTest, ClearingThePowerOnTimeLeavesNoOnTimer) {
    ASSERT_TRUE(AudioPicture().onEnabled);
    Post(221);
    EXPECT_FALSE(AudioPicture().onEnabled);
}

struct ParamCase {
    const char* name;
    unsigned event;
    unsigned param;
    NoteList atEvent;       // after "HideAllUIExcept"
    unsigned long closeMs;  // 0: no timer at all
    const char* show;
};

std::ostream& operator<<(std::ostream& out, const ParamCase& c) { return out << c.name; }

class TimedParamTest : public ProductionTest, public testing::WithParamInterface<ParamCase> {};

TEST_P(TimedParamTest, TheParameterChoosesTheText) {
    const ParamCase& c = GetParam();
    Post(c.event, 0, c.param);
    NoteList notes = TakeNotes();
    ASSERT_FALSE(notes.empty());
    notes.erase(notes.begin());
    EXPECT_EQ(notes, c.atEvent);
    if (c.closeMs == 0) {
        Advance(60000);
        EXPECT_EQ(TakeNotes(), NoteList{}) << "the page stays as it is";
        EXPECT_EQ(Journal().CountCalls("MEvtHandle::SetTimer"), 0u);
        return;
    }
    Advance(c.closeMs - 1);
    EXPECT_EQ(TakeNotes(), NoteList{});
    Advance(1);
    EXPECT_EQ(TakeNotes(), NoteList{Num(c.show, 0)});
}

INSTANTIATE_TEST_SUITE_P(
    Members, TimedParamTest,
    // clang-format off
    testing::Values(
        ParamCase{"ArcEnabled", 258, 0x99, {Str("HDMI-ARC-Output", "HDMI ARC : Enabled")}, 2000, "HDMI-ARC-Output-Show"},
        ParamCase{"ArcDisabled", 258, 0xD3, {Str("HDMI-ARC-Output", "HDMI ARC : Disabled")}, 2000, "HDMI-ARC-Output-Show"},
        ParamCase{"ArcUnknownStillCloses", 258, 0x42, {}, 2000, "HDMI-ARC-Output-Show"},
        ParamCase{"WriteProtectComplete", 261, 0, {Str("WP-Complete", "WP COMPLETE")}, 2000, "WP-Show"},
        ParamCase{"WriteProtectError", 261, 1, {Str("WP-Error", "WP ERROR")}, 2000, "WP-Show"},
        ParamCase{"WriteProtectOtherLeavesThePage", 261, 2, {}, 0, nullptr}),
    // clang-format on
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(TimedCommandTest, ArcCloseAlsoKillsItsTimer) {
    Post(258, 0, 0x99);
    EXPECT_TRUE(Journal().HasLog("~~ [OnEvent_HDMIARCOutput] /0x99/"));
    Advance(2000);
    EXPECT_EQ(TimerCalls(), (std::vector<std::string>{"MEvtHandle::KillTimer [6]",
                                                      "MEvtHandle::SetTimer [2000, 6, 1]",
                                                      "MEvtHandle::KillTimer [6]"}));
}

TEST_F(TimedCommandTest, ARefusedDefaultAddressStopsOnWriting) {
    Station().defaultMacIpResult = false;
    Post(242);
    Advance(500);
    Advance(10000);
    EXPECT_EQ(TakeNotes(),
              (NoteList{Str("HideAllUIExcept", "NetworkDefaultMAC"),
                        Str("Network-Default-MAC", "Default MAC/IP address writing")}));
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::SetFactoryDefaultMacIp"), 1u);
    EXPECT_TRUE(Tv().Loop().Timers().empty());
}

TEST_F(TimedCommandTest, DigitalAudioOutAlternatesPcmAndAutoAndKeepsTheChoice) {
    Station().cmdCode = 230;
    const char* texts[] = {"Audio Format : PCM", "Audio Format : Auto", "Audio Format : PCM"};
    const int modes[] = {0, 2, 0};
    for (int i = 0; i < 3; ++i) {
        Post(197);
        EXPECT_EQ(TakeNotes(), (NoteList{Str("HideAllUIExcept", "DigitalAudioOut"),
                                         Str("Digital-Audio-Out", texts[i])}));
        EXPECT_EQ(AudioPicture().spdifMode, modes[i]);
        EXPECT_EQ(Tv().Get<sim::MModeState>().user.enSPDIFMODE, modes[i]);
        EXPECT_TRUE(Tv().Get<sim::MModeState>().factoryOsd);
    }
    EXPECT_EQ(Calls("WebAppMgr_HidePage").back(), "[1]") << "the factory page is brought up";
    // The page stays until the exit key.
    Advance(60000);
    EXPECT_EQ(TakeNotes(), NoteList{});
    EXPECT_EQ(Fm().FactoryDoKeyAction(FactoryKey::Exit), 1);
    EXPECT_EQ(TakeNotes(), NoteList{Num("Digital-Audio-Out-Show", 0)});
    EXPECT_EQ(Fm().m_bDigitalAudioOutMode, 0);
    EXPECT_TRUE(Tv().Get<sim::MModeState>().factoryOsd) << "the exit makes no OSD call";
}

TEST_F(TimedCommandTest, DigitalAudioOutWithAnotherCodeOnlyBringsUpThePage) {
    Station().cmdCode = 229;
    Post(197);
    EXPECT_EQ(TakeNotes(), NoteList{Str("HideAllUIExcept", "DigitalAudioOut")});
    EXPECT_EQ(Journal().CountCalls("MSrv_SSSound::SetSPDIFmode"), 0u);
    EXPECT_EQ(Journal().CountCalls("MSrv_System_Database::SetUserSystemSetting"), 0u);
    EXPECT_EQ(Fm().m_bDigitalAudioOutMode, 1);
}

TEST_F(TimedCommandTest, TemperatureCheckStaysUpWhileRunningAndClosesOnTheNextTick) {
    Post(234, 0, 1);
    EXPECT_EQ(TakeNotes(), (NoteList{Str("HideAllUIExcept", "TempIOCheck"),
                                     Str("Temp-IO-Check", "TEMP I/O CHECK")}));
    Advance(5000);
    EXPECT_EQ(TakeNotes(), NoteList{});
    Advance(500);
    Post(234, 0, 0);
    Advance(499);
    EXPECT_EQ(TakeNotes(), NoteList{});
    Advance(1);
    EXPECT_EQ(TakeNotes(), NoteList{Num("Temp-IO-Check-Show", 0)});
    EXPECT_TRUE(Tv().Loop().Timers().empty()) << "the repeating check is killed";
    EXPECT_EQ(Fm().OnEvent_TempIOCheck(nullptr, reinterpret_cast<void*>(2), nullptr), 0);
}

TEST_F(TimedCommandTest, OverCurrentReportsShowAndHideThePage) {
    Post(196, 0, 1);
    EXPECT_EQ(TakeNotes(), (NoteList{Str("HideAllUIExcept", "OverCurrentUSBOut"),
                                     Str("OverCurrent-USB", "USB Overcurrent")}));
    Post(196, 0, 0);
    EXPECT_EQ(TakeNotes(), (NoteList{Str("HideAllUIExcept", "OverCurrentUSBOut"),
                                     Str("OverCurrent-USB", "MHL Overcurrent")}));
    Post(196, 0, 2);
    EXPECT_EQ(TakeNotes(), NoteList{Num("OverCurrent-USB-Show", 0)});
    EXPECT_EQ(CallsIn({"WebAppMgr_HidePage", "WebAppMgr_ShowPage"}),
              (std::vector<std::string>{"WebAppMgr_HidePage [4]", "WebAppMgr_HidePage [4]",
                                        "WebAppMgr_ShowPage [4]"}));
    Fm().OnTimer_OverCurrentUSB(nullptr, nullptr, nullptr);
    EXPECT_EQ(TakeNotes(), NoteList{Num("OverCurrent-USB-Show", 0)});
    EXPECT_EQ(Codes(), std::vector<unsigned long>{0x12002}) << "the host's UI comes back";
}

TEST_F(TimedCommandTest, IrBlasterTestIsHandedToTheHost) {
    Post(271);
    EXPECT_EQ(Codes(), std::vector<unsigned long>{0x12004});
    EXPECT_EQ(TakeNotes(), NoteList{});
    Fm().setFactoryEventListener(nullptr);
    Post(271);  // no host to hand it to: nothing happens
    EXPECT_EQ(Codes(), std::vector<unsigned long>{0x12004});
}

TEST_F(TimedCommandTest, WhiteWindowShowsItsCodeForFiveSecondsAndOpensWithTheEventByte) {
    Post(246, 0, 0x0A1B2C3D);
    EXPECT_EQ(TakeNotes(), (NoteList{Str("HideAllUIExcept", "WhiteWindowON"),
                                     Str("White-Window-ON", "0A1B2C3D")}));
    Advance(4999);
    EXPECT_EQ(TakeNotes(), NoteList{});
    Advance(1);
    EXPECT_EQ(TakeNotes(), NoteList{Num("White-Window-ON-Show", 0)});

    Post(244, 0, 7);
    EXPECT_EQ(Calls("MEvtHandle::SetTimer").back(), "[100, 45, 0]") << "a repeating tick";
    Advance(99);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::_HandleFactoryEvent"), 0u);
    Advance(1);
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::_HandleFactoryEvent"),
              std::vector<std::string>{"[25, 7, 0]"});
    EXPECT_TRUE(
        Journal().HasLog("####### g_u8Code1 = 10, g_u8Code2 = 27, g_u8Code3 = 44, g_u8Code4 = 61"));
    Advance(1000);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::_HandleFactoryEvent"), 1u);
}

TEST_F(TimedCommandTest, ChannelPresetTimerOnlyClosesItsPage) {
    Fm();
    Tv().Loop().SetTimer(&Fm(), 1000, 36, E_TIMER_ONESHOT);
    Advance(1000);
    EXPECT_EQ(TakeNotes(), NoteList{Num("C_company-Channel-Preset-Show", 0)});
}

}  // namespace
