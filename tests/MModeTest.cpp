// M-mode on the simulated set: start, the factory volume, leaving it (to standby or
// on the host's power path), the panel keys and the serial-number status.
#include <gtest/gtest.h>

#include <unistd.h>

#include <string>
#include <vector>

#include "FactoryKeyCodes.h"
#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimDisplay.h"
#include "SimFactoryStore.h"
#include "SimMMode.h"
#include "SimPlayers.h"
#include "SimWebApp.h"

namespace {

std::vector<unsigned long> g_codes;
unsigned char Listener(unsigned long code, void*, void*) {
    g_codes.push_back(code);
    return 0;
}

class MModeTest : public SetTest {
protected:
    void SetUp() override {
        SetTest::SetUp();
        g_codes.clear();
        FactoryManager::SetFactoryModeState(1);
        Fm().setFactoryEventListener(Listener);
    }
    sim::MModeState& MMode() { return Tv().Get<sim::MModeState>(); }
    sim::FactoryStoreState& Store() { return Tv().Get<sim::FactoryStoreState>(); }
    std::vector<std::string> Calls(const std::string& fn) {
        std::vector<std::string> out;
        for (const auto& c : Journal().Calls(fn)) {
            out.push_back(c.args);
        }
        return out;
    }
    // The notes as "cmd=data".
    std::vector<std::string> Notes() {
        std::vector<std::string> out;
        for (const auto& n : Tv().Get<sim::WebAppState>().Notes()) {
            out.push_back(n.cmd + "=" + n.data);
        }
        return out;
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
    Post(191);
    EXPECT_TRUE(Journal().HasLog("MSrv_Factory_Cmd::M_MODE_OPEN: 1"));
    std::vector<std::string> lines;
    for (const std::string& args : Calls("mapi_system::SystemCmd")) {
        lines.push_back(args.substr(0, args.find("\", ")));  // the line, not its result
    }
    EXPECT_EQ(lines, (std::vector<std::string>{"[\"touch /Customer/factory/shipout.code",
                                               "[\"chmod 777 -R /Customer/factory/shipout.code",
                                               "[\"sync"}));
    EXPECT_TRUE(Tv().GetRoot().Exists("/Customer/factory/shipout.code"));
    EXPECT_FALSE(MMode().watchdog);
    EXPECT_EQ(Journal().CountCalls("MSrv_System_Database_DVB::RestoreDefaultDataTransfer"), 1u);
    EXPECT_TRUE(MMode().wifiDongle) << "the M-mode setting had not finished";
    EXPECT_TRUE(RedMarkShown());
    EXPECT_EQ(g_codes, std::vector<unsigned long>{0x12003}) << "the host's UI is killed";
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
        "MAPI_BOOL FactoryManager::ShowMModeIcon\\(MAPI_BOOL\\) 1592");
}

struct VolumeCase {
    const char* name;
    bool mMode;
    int source;
    bool channelKnown;
    MAPI_U8 attribute;
    MAPI_U8 storedAfter;  // audio-setting volume; 20 means untouched
};

std::ostream& operator<<(std::ostream& out, const VolumeCase& c) { return out << c.name; }

class VolumeTest : public MModeTest, public testing::WithParamInterface<VolumeCase> {};

TEST_P(VolumeTest, LiveVolumeIsTheFactoryOneAndTheStoredOneFollowsTheMode) {
    const VolumeCase& c = GetParam();
    MMode().mMode = c.mMode;
    MMode().factoryVolume = 65;
    MMode().channelKnown = c.channelKnown;
    MMode().channel.u8Attribute = c.attribute;
    Tv().Get<sim::PlayerState>().currentSource = c.source;
    Post(203, 0, 0, 12);
    EXPECT_EQ(MMode().audio.Volume, c.storedAfter);
    EXPECT_EQ(Calls("MSrv_SSSound::SetMuteStatus"), std::vector<std::string>{"[4, 0]"});
    EXPECT_EQ(Calls("MSrv_SSSound::SetVolume"), std::vector<std::string>{"[65, 1]"});
    EXPECT_FALSE(MMode().volumeRequest);
    EXPECT_EQ(Notes(), (std::vector<std::string>{"HideAllUIExcept=volume", "set-volume=65",
                                                 "set-volumeBar=65", "volume=1"}));
    Advance(2999);
    EXPECT_EQ(Notes().size(), 4u);
    Advance(1);
    EXPECT_EQ(Notes().back(), "volume=0") << "hidden 3 s later";
}

INSTANTIATE_TEST_SUITE_P(
    Sources, VolumeTest,
    testing::Values(VolumeCase{"InMModeTheFactoryVolumeIsStored", true, 28, true, 0x04, 65},
                    VolumeCase{"OutsideMModeTheEventsVolumeIsStored", false, 1, true, 0x08, 12},
                    VolumeCase{"ChannelWithoutTheAttributesStoresNothing", true, 28, true, 0x03,
                               20},
                    VolumeCase{"NoChannelStoresNothing", false, 28, false, 0x0C, 20},
                    VolumeCase{"OtherSourcesStoreNothing", true, 23, true, 0x0C, 20}),
    [](const testing::TestParamInfo<VolumeCase>& info) { return std::string(info.param.name); });

struct ExitCase {
    MAPI_U8 debugPort;  // item 7838
    MAPI_U8 mode;       // item 3567
    MAPI_U8 debugPortAfter;
    MAPI_U8 modeAfter;
    bool debugPortSwitchedOff;
};

class ExitTest : public MModeTest, public testing::WithParamInterface<ExitCase> {};

TEST_P(ExitTest, LeavingPutsTheSetBackIntoItsConsumerStateAndStandby) {
    const ExitCase& c = GetParam();
    Store().Set(7838, c.debugPort);
    Store().Set(3567, c.mode);
    Post(191);
    MMode().mMode = true;  // as the platform reports after the start
    Post(237);
    EXPECT_TRUE(Journal().HasLog("Exit Factory mode "));
    EXPECT_FALSE(MMode().mMode);
    EXPECT_EQ(Store().Get(7838), c.debugPortAfter);
    EXPECT_EQ(Store().Get(3567), c.modeAfter);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::SetSerialDebugPort"),
              c.debugPortSwitchedOff ? 1u : 0u);
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
    EXPECT_TRUE(Journal().HasLog("Close M mode "));
    EXPECT_FALSE(MMode().mMode);
    EXPECT_EQ(Store().Get(7838), 1);
    EXPECT_EQ(Store().Get(3567), 2);
    EXPECT_TRUE(MMode().energySaving);
    EXPECT_FALSE(MMode().asleep);
}

TEST_F(MModeTest, PanelKeysBecomeKeyNamesForTheWebUi) {
    MMode().mMode = true;
    for (unsigned long key : {FactoryKey::PanelFunction, FactoryKey::PanelDown, FactoryKey::PanelUp,
                              FactoryKey::PanelPower}) {
        EXPECT_EQ(Fm().FactoryDoKeyAction(key), 1);
    }
    EXPECT_EQ(Notes(), (std::vector<std::string>{"M-Mode-Key=FUNCTION KEY", "M-Mode-Key=DOWN KEY",
                                                 "M-Mode-Key=UP KEY", "M-Mode-Key=POWER KEY"}));
    EXPECT_TRUE(Tv().Get<sim::WebAppState>().IsHidden(1));
    Fm().OnEvent_FactoryM_ModeAction(4);
    EXPECT_EQ(Notes().size(), 4u) << "no name for other actions";
    Fm().CloseSideKeyUIOnMmode();
    EXPECT_EQ(Notes().back(), "M-Mode-Key_Finish-Show=0");
    EXPECT_FALSE(Tv().Get<sim::WebAppState>().IsHidden(1));
}

TEST_F(MModeTest, SerialNumberStatusForTheBarcodeReader) {
    Tv().Get<sim::FactoryIdentityState>().SetSerial("AB345678901234");
    Fm().ShowFactorySerialNumStatus(0);
    Fm().ShowFactorySerialNumStatus(1);
    Fm().ShowFactorySerialNumStatus(2);
    Fm().CloseFactorySerialNumOSD();
    EXPECT_EQ(Notes(),
              (std::vector<std::string>{"SerialNum-Ready=Serial No. Ready. Plug Barcode Reader",
                                        "SerialNum-Ready=OK!! Serial No: AB345678901234",
                                        "SerialNum-Show=0", "SerialNum-Show=0"}));
}

TEST_F(MModeTest, AFifteenCharacterSerialIsCutToFourteen) {
    Tv().Get<sim::FactoryIdentityState>().SetSerial("AB3456789012345");
    Fm().ShowFactorySerialNumStatus(1);
    EXPECT_EQ(Notes(), std::vector<std::string>{"SerialNum-Ready=OK!! Serial No: AB345678901234"});
}

}  // namespace
