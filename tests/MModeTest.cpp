// M-mode on the simulated set: start, the factory volume, leaving it (to standby or
// on the host's power path), the panel keys and the serial-number status.
#include <gtest/gtest.h>

#include <unistd.h>

#include <string>
#include <vector>

#include "CallOrder.h"
#include "FactoryKeyCodes.h"
#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimDisplay.h"
#include "SimFactoryStore.h"
#include "SimMMode.h"
#include "SimPlayers.h"
#include "SimWebApp.h"
#include "UiNotes.h"

namespace {

class MModeTest : public HostTest {
protected:
    sim::MModeState& MMode() { return Tv().Get<sim::MModeState>(); }
    sim::FactoryStoreState& Store() { return Tv().Get<sim::FactoryStoreState>(); }
    void SetUp() override {
        HostTest::SetUp();
        Fm().setFactoryEventListener(&MModeTest::JournalingListener);
    }
    // The host's callback goes into the journal too, so its order among the
    // platform calls can be asserted.
    static unsigned char JournalingListener(unsigned long code, void* a, void* b) {
        sim::Set::Instance().RecordCall("Host::Listener", sim::ArgList(code));
        return Listener(code, a, b);
    }
    bool RedMarkShown() {
        const sim::Frame f = Tv().Get<sim::DisplayState>().NativeFrame();
        int red = 0;
        for (int y = 10; y < 60; ++y) {
            for (int x = 1200; x < 1250; ++x) {
                red += f.At(x, y) == 0xFFFF0000 ? 1 : 0;
            }
        }
        return red > 50 && Tv().Get<sim::DisplayState>().NativeOpacity() == 255;
    }
};

TEST_F(MModeTest, StartMarksTheScreenAndPreparesTheSetForTheLine) {
    Journal().Clear();
    Post(191);
    EXPECT_TRUE(Journal().HasLog("MSrv_Factory_Cmd::M_MODE_OPEN: 1"));
    // Service tools look the routine up by the name and line the set logs.
    EXPECT_TRUE(Journal().HasLog("void FactoryManager::ShowMModeIcon(MAPI_BOOL)[1576]"));
    // Line preparation, then the page reset, then the host's UI is killed.
    EXPECT_EQ(CallOrder(),
              (std::vector<std::string>{
                  "MSrv_Factory_Mode::SetWDT_ONOFF[0]",
                  R"(mapi_system::SystemCmd["touch /Customer/factory/shipout.code", true])",
                  R"(mapi_system::SystemCmd["chmod 777 -R /Customer/factory/shipout.code", true])",
                  R"(mapi_system::SystemCmd["sync", true])",
                  "MSrv_System_Database_DVB::RestoreDefaultDataTransfer[]",
                  "MSrv_Factory_Cmd::EnableWiFiDongle[1]",
                  "MSrv_Factory_Cmd::SetFactoryOSDStatus[0]",
                  "Host::Listener[73731]",
              }));
    EXPECT_TRUE(Tv().GetRoot().Exists("/Customer/factory/shipout.code"));
    EXPECT_FALSE(MMode().watchdog);
    EXPECT_TRUE(MMode().wifiDongle) << "the M-mode setting had not finished";
    EXPECT_TRUE(RedMarkShown());
    EXPECT_EQ(UiNotes(), NoteList{});
}

TEST_F(MModeTest, StartEndsAPageThatWasOpen) {
    Fm().m_bVersionMode = 1;
    Fm().m_bAgingMode1 = 1;
    Post(191);
    EXPECT_EQ(Fm().m_bVersionMode, 0);
    EXPECT_EQ(Fm().m_bAgingMode1, 0);
}

TEST_F(MModeTest, StartAcknowledgesAFinishedSettingInsteadOfTheDongle) {
    MMode().mModeSettingFinished = true;
    Post(191);
    EXPECT_FALSE(MMode().mModeSettingFinished);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::EnableWiFiDongle"), 0u);
}

TEST_F(MModeTest, ASystemDatabaseOfTheWrongKindStopsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    MMode().dvbDatabase = false;
    // The line goes to the serial console (stdout); the death test reads stderr.
    EXPECT_DEATH(
        {
            dup2(2, 1);
            Fm().ShowMModeIcon(1);
        },
        "ASSERT FAIL: \\./factorymanager/src/FactoryManager\\.cpp "
        "void FactoryManager::ShowMModeIcon\\(MAPI_BOOL\\) 1592");
}

struct VolumeCase {
    const char* name;
    bool mMode;
    int source;
    bool channelKnown;
    MAPI_U8 present;
    MAPI_U8 attribute;
    bool storedWithChannel;  // else the live volume is set and unmuted
    MAPI_U8 storedAfter;     // audio-setting volume; 20 means untouched
};

std::ostream& operator<<(std::ostream& out, const VolumeCase& c) { return out << c.name; }

class VolumeTest : public MModeTest, public testing::WithParamInterface<VolumeCase> {};

// Either the channel's audio setting keeps the volume and the live sound is left
// alone, or the set plays the factory volume at once; the page shows it either way.
TEST_P(VolumeTest, StoredWithTheChannelOrHeardAtOnce) {
    const VolumeCase& c = GetParam();
    MMode().mMode = c.mMode;
    MMode().factoryVolume = 65;
    MMode().channelKnown = c.channelKnown;
    MMode().channel = ST_CHANNEL_INFO{c.present, c.attribute};
    Tv().Get<sim::PlayerState>().currentSource = c.source;
    Post(203, 0, 0, 12);
    EXPECT_EQ(MMode().audio.Volume, c.storedAfter);
    if (c.storedWithChannel) {
        EXPECT_EQ(CallOrder({"MSrv_SSSound::"}), std::vector<std::string>{});
        EXPECT_EQ(MMode().liveVolume, 20);
        EXPECT_TRUE(MMode().muted);
    } else {
        EXPECT_EQ(CallOrder({"MSrv_SSSound::"}),
                  (std::vector<std::string>{"MSrv_SSSound::SetMuteStatus[4, 0]",
                                            "MSrv_SSSound::SetVolume[65, 1]"}));
        EXPECT_EQ(Journal().CountCalls("MSrv_System_Database::SetAudioSetting"), 0u);
    }
    EXPECT_FALSE(MMode().volumeRequest);
    EXPECT_EQ(UiNotes(), Notes(R"-(
        HideAllUIExcept="volume" set-volume=65 set-volumeBar=65 volume=1
    )-"));
    EXPECT_EQ(CallOrder({"MEvtHandle::"}),
              (std::vector<std::string>{"MEvtHandle::KillTimer[66]",
                                        "MEvtHandle::SetTimer[3000, 66, 1]"}));
    Advance(2999);
    EXPECT_EQ(UiNotes().size(), 4u);
    Advance(1);
    EXPECT_EQ(UiNotes().back(), Num("volume", 0)) << "hidden 3 s later";
}

INSTANTIATE_TEST_SUITE_P(
    Sources, VolumeTest,
    testing::Values(
        VolumeCase{"InMModeTheFactoryVolumeIsStored", true, 28, true, 1, 0x04, true, 65},
        VolumeCase{"OutsideMModeTheEventsVolumeIsStored", false, 1, true, 1, 0x08, true, 12},
        VolumeCase{"ChannelWithoutTheAttributesIsHeard", true, 28, true, 1, 0x03, false, 20},
        VolumeCase{"AbsentChannelIsHeard", true, 1, true, 0, 0x0C, false, 20},
        VolumeCase{"NoChannelIsHeard", false, 28, false, 1, 0x0C, false, 20},
        VolumeCase{"OtherSourcesAreHeard", true, 23, true, 1, 0x0C, false, 20}),
    [](const testing::TestParamInfo<VolumeCase>& info) { return std::string(info.param.name); });

struct ExitCase {
    MAPI_U8 debugPort;  // item 7838
    MAPI_U8 mode;       // item 3567
    MAPI_U8 debugPortAfter;
    MAPI_U8 modeAfter;
    bool debugPortSwitchedOff;
};

class ExitTest : public MModeTest, public testing::WithParamInterface<ExitCase> {};

TEST_P(ExitTest, LeavingPutsTheSetBackIntoItsConsumerStateAndStandbyLast) {
    const ExitCase& c = GetParam();
    Store().Set(7838, c.debugPort);
    Store().Set(3567, c.mode);
    Post(191);
    MMode().mMode = true;  // as the platform reports after the start
    Journal().Clear();
    Post(237);
    EXPECT_TRUE(Journal().HasLog("Exit Factory mode "));
    std::vector<std::string> want = {
        "MSrv_Factory_Cmd::SetFactoryOSDStatus[0]",  // the page reset
        "MSrv_Factory_Cmd::SetFactoryMmodeStatus[0]",
        "MSrv_Factory_Cmd::EnableWiFiDongle[0]",
        "MSrv_Factory_Default::GetFactoryData[7838]",
    };
    if (c.debugPortSwitchedOff) {
        want.push_back("MSrv_Factory_Default::SetFactoryData[7838, 0]");
        want.push_back("MSrv_Factory_Cmd::SetSerialDebugPort[0]");
    }
    want.push_back("MSrv_Factory_Default::GetFactoryData[3567]");
    if (c.modeAfter != c.mode) {
        want.push_back("MSrv_Factory_Default::SetFactoryData[3567, 2]");
    }
    for (const char* tail :
         {"MSrv_System_Database::GetUserSystemSetting[]",
          "MSrv_System_Database::SetBlueScreenEnable[1]",
          "MSrv_System_Database::SetUserSystemSetting[1, 0, 0]",
          "MSrv_Factory_Cmd::SetEnergySavingSetting[1]", "MSrv_Control::EnterSleepMode[1]"}) {
        want.push_back(tail);
    }
    EXPECT_EQ(CallOrder(), want);
    EXPECT_FALSE(MMode().mMode);
    EXPECT_EQ(Store().Get(7838), c.debugPortAfter);
    EXPECT_EQ(Store().Get(3567), c.modeAfter);
    EXPECT_EQ(MMode().user.fRunInstallationGuide, 1);
    EXPECT_TRUE(MMode().blueScreen);
    EXPECT_TRUE(MMode().energySaving);
    EXPECT_FALSE(MMode().wifiDongle);
    EXPECT_TRUE(MMode().asleep);
    EXPECT_EQ(Tv().Get<sim::DisplayState>().NativeOpacity(), 0) << "the M is gone";
}

INSTANTIATE_TEST_SUITE_P(Items, ExitTest,
                         testing::Values(ExitCase{1, 0, 0, 2, true}, ExitCase{0, 1, 0, 2, false},
                                         ExitCase{2, 2, 2, 2, false}, ExitCase{1, 7, 0, 7, true}));

TEST_F(MModeTest, ClosingOnThePowerPathSkipsTheDebugPortAndStandby) {
    Store().Set(7838, 1);
    Store().Set(3567, 0);
    MMode().mMode = true;
    Fm().CloseMModeAfterPower();
    EXPECT_TRUE(Journal().HasLog("FactoryManager::CloseMModeAfterPower()[1775]"));
    EXPECT_TRUE(Journal().HasLog("Close M mode "));
    EXPECT_EQ(CallOrder({"MSrv_Factory_Cmd::", "MSrv_Factory_Default::", "MSrv_System_Database::",
                         "MSrv_Control::"}),
              (std::vector<std::string>{
                  "MSrv_Factory_Cmd::SetFactoryOSDStatus[0]",
                  "MSrv_Factory_Cmd::SetFactoryMmodeStatus[0]",
                  "MSrv_Factory_Cmd::EnableWiFiDongle[0]",
                  "MSrv_Factory_Default::GetFactoryData[3567]",
                  "MSrv_Factory_Default::SetFactoryData[3567, 2]",
                  "MSrv_System_Database::GetUserSystemSetting[]",
                  "MSrv_System_Database::SetBlueScreenEnable[1]",
                  "MSrv_System_Database::SetUserSystemSetting[1, 0, 0]",
                  "MSrv_Factory_Cmd::SetEnergySavingSetting[1]",
              }));
    EXPECT_FALSE(MMode().mMode);
    EXPECT_EQ(Store().Get(7838), 1);
    EXPECT_FALSE(MMode().asleep);
}

TEST_F(MModeTest, PanelKeysBecomeKeyNamesForTheWebUi) {
    MMode().mMode = true;
    for (unsigned long key : {FactoryKey::PanelFunction, FactoryKey::PanelDown, FactoryKey::PanelUp,
                              FactoryKey::PanelPower}) {
        EXPECT_EQ(Fm().FactoryDoKeyAction(key), 1);
    }
    EXPECT_EQ(UiNotes(), Notes(R"-(
        M-Mode-Key="FUNCTION KEY" M-Mode-Key="DOWN KEY" M-Mode-Key="UP KEY"
        M-Mode-Key="POWER KEY"
    )-"));
    EXPECT_EQ(Calls("WebAppMgr_HidePage"), std::vector<std::string>(4, "[1]"));
    Fm().OnEvent_FactoryM_ModeAction(4);
    EXPECT_EQ(UiNotes().size(), 4u) << "no name for other actions";
    ClearUiNotes();
    Fm().CloseSideKeyUIOnMmode();
    EXPECT_EQ(UiNotes(), NoteList{Num("M-Mode-Key_Finish-Show", 0)});
    EXPECT_EQ(CallOrder({"WebAppMgr_ShowPage"}), std::vector<std::string>{"WebAppMgr_ShowPage[1]"});
}

TEST_F(MModeTest, SerialNumberStatusForTheBarcodeReader) {
    Tv().Get<sim::FactoryIdentityState>().SetSerial("AB345678901234");
    Fm().ShowFactorySerialNumStatus(0);
    Fm().ShowFactorySerialNumStatus(1);
    EXPECT_EQ(Calls("WebAppMgr_ShowPage"), std::vector<std::string>{});
    Fm().ShowFactorySerialNumStatus(2);
    EXPECT_EQ(Calls("WebAppMgr_ShowPage"), std::vector<std::string>{"[1]"});
    Fm().CloseFactorySerialNumOSD();
    EXPECT_EQ(UiNotes(), Notes(R"-(
        SerialNum-Ready="Serial No. Ready. Plug Barcode Reader"
        SerialNum-Ready="OK!! Serial No: AB345678901234" SerialNum-Show=0 SerialNum-Show=0
    )-"));
}

TEST_F(MModeTest, AFifteenCharacterSerialIsCutToFourteen) {
    Tv().Get<sim::FactoryIdentityState>().SetSerial("AB3456789012345");
    Fm().ShowFactorySerialNumStatus(1);
    EXPECT_EQ(UiNotes(), NoteList{Str("SerialNum-Ready", "OK!! Serial No: AB345678901234")});
}

TEST_F(MModeTest, ModeQueriesAskThePlatformAndTheEditor) {
    EXPECT_EQ(Fm().IsMMode(), 0);
    MMode().mMode = true;
    EXPECT_EQ(Fm().IsMMode(), 1);
    EXPECT_EQ(Fm().IsSDMode(), 0);
    Fm().m_bDModeOpen = 1;
    EXPECT_EQ(Fm().IsSDMode(), 1);
    EXPECT_TRUE(Journal().HasLog("Is M mode "));
    EXPECT_TRUE(Journal().HasLog("Is S/D mode "));
}

TEST_F(MModeTest, SerialReadWithoutABufferFailsInsteadOfCrashing) {
    EXPECT_EQ(Fm().GetProductSerialNum(nullptr), 0);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::ReadSerialNum"), 0u);
}

}  // namespace
