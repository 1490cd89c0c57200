// The USB media test on the set: the browser's set-up record, playing the first file
// of drive 0 whatever the drive holds, and going back to digital TV on exit.
#include <gtest/gtest.h>

#include <unistd.h>

#include <array>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "../factorymanager/src/MediaInitRecord.h"
#include "FactoryKeyCodes.h"
#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimFrontEnd.h"
#include "SimMMode.h"
#include "SimMediaBrowser.h"
#include "SimPlayers.h"
#include "SimProductionTests2.h"

namespace {

TEST(MediaInitRecordTest, HoldsTheBrowsersValuesInOrder) {
    ST_ZYT_MEDIA_BROWSER_INIT r;
    media::FillBrowserInit(r, 4096, 255);
    for (MAPI_U32 q : r.u32QueueSize) EXPECT_EQ(q, 17u);
    EXPECT_EQ(r.u32MaxFileCount, 1000u);
    EXPECT_EQ(r.u32PathMax, 4096u);
    EXPECT_EQ(std::vector<MAPI_U32>(r.u32Limits, r.u32Limits + 4),
              (std::vector<MAPI_U32>{3000, 5000, 32, 5000}));
    EXPECT_EQ(r.u32NameMax, 255u);
    EXPECT_EQ(r.u16ScreenWidth, 1366);
    EXPECT_EQ(r.u16ScreenHeight, 768);
    for (const auto& t : r.stThumbnail) {
        EXPECT_EQ(t.u16Width, 456);
        EXPECT_EQ(t.u16Height, 256);
    }
    EXPECT_EQ(r.u32ThumbnailCount, 256u);
    const char* const lists[16] = {"BMP",
                                   "JPG;JPEG;JPE;MPO",
                                   "PNG",
                                   nullptr,
                                   "MP3",
                                   "M4A;AAC;",
                                   "WAV",
                                   "PCM",
                                   "WMA;ASF;PYV",
                                   nullptr,
                                   "WMV;PYV",
                                   "MPG;MPE;VOB;DAT;BUK;MPEG",
                                   "TS;TP;TRP;M2TS",
                                   "AVI;MP4;DIV;MOV;MKV;DIVX;FLV;ASF;3GP",
                                   "RM;RMV;RMVB",
                                   "TXT"};
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(r.pszExtensions[i] ? std::string(r.pszExtensions[i]) : "(null)",
                  lists[i] ? std::string(lists[i]) : "(null)")
            << i;
    }
    EXPECT_EQ(r.u8Mode, 3);
    EXPECT_EQ(r.u8Enable, 1);
}

TEST(MediaInitRecordTest, LimitsThePlatformCannotTellAre1024) {
    ST_ZYT_MEDIA_BROWSER_INIT r;
    media::FillBrowserInit(r, -1, -1);
    EXPECT_EQ(r.u32PathMax, 1024u);
    EXPECT_EQ(r.u32NameMax, 1024u);
}

class MediaTest : public HostTest {
public:
    sim::MediaState& Media() { return Tv().Get<sim::MediaState>(); }
    void Put(const std::string& path) { Tv().GetRoot().WriteFile("/mnt/usb/sda1/" + path, "x"); }

protected:
    void Start() { Post(241); }
    // The calls of these functions, in the order they were made, as "fn args".
    std::vector<std::string> CallsOf(const std::set<std::string>& fns) {
        std::vector<std::string> out;
        for (const auto& e : Journal().Entries()) {
            if (e.kind == "call" && fns.count(e.fn) != 0) out.push_back(e.fn + " " + e.args);
        }
        return out;
    }
    const std::set<std::string> kBrowserEnd = {"MediaManager::play", "MediaManager::pause",
                                               "MediaManager::unsetOnMediaEventListener",
                                               "MediaManager::Deinit"};
};

TEST_F(MediaTest, PlaysAndPausesTheFirstFileAfterTheFolders) {
    Put("b-folder/inner.mp3");
    Put("a-folder/inner.ts");
    Put("song.mp3");
    Put("clip.ts");
    Start();
    EXPECT_EQ(Tv().Get<sim::PlayerState>().currentSource, 34);
    EXPECT_EQ(Fm().m_bMediaPlayerMode, 1);
    EXPECT_EQ(Calls("MediaManager::setFileSelected"),
              (std::vector<std::string>{"[0, 0, 2]", "[0, 0, 3]"}));
    EXPECT_EQ(Media().playList, (std::vector<std::string>{"clip.ts", "song.mp3"}));
    EXPECT_EQ(Media().playing, "clip.ts");
    EXPECT_EQ(Media().state, "paused");
    EXPECT_TRUE(Journal().HasLog("Add to PlayList:3"));
    EXPECT_TRUE(Journal().HasLog("MMPlay ->ok "));
    EXPECT_EQ(Calls("MediaManager::executeCommand"),
              (std::vector<std::string>{"[0, 52, 0, 0, 0]"}));
    EXPECT_EQ(Calls("MediaManager::setPlayMode"), (std::vector<std::string>{"[0, 0, 1]"}));
    EXPECT_EQ(Journal().CountCalls("MediaManager::Deinit"), 0u);
}

struct FailureCase {
    const char* name;
    std::function<void(MediaTest&)> setUp;
    std::vector<const char*> logs;
};

class MediaFailureTest : public MediaTest, public testing::WithParamInterface<FailureCase> {};

TEST_P(MediaFailureTest, IsLoggedAndTheBrowserIsReleasedAfterThePause) {
    GetParam().setUp(*this);
    Start();
    for (const char* log : GetParam().logs) EXPECT_TRUE(Journal().HasLog(log)) << log;
    EXPECT_EQ(CallsOf(kBrowserEnd),
              (std::vector<std::string>{"MediaManager::play [0, 0]", "MediaManager::pause [0, 0]",
                                        "MediaManager::unsetOnMediaEventListener [1]",
                                        "MediaManager::Deinit []"}));
    EXPECT_EQ(Fm().m_bMediaPlayerMode, 1);  // the page stays until the exit key
}

INSTANTIATE_TEST_SUITE_P(
    Drives, MediaFailureTest,
    testing::Values(FailureCase{"NoDrive",
                                [](MediaTest& t) { t.Media().usbPresent = false; },
                                {"Select Default Drive 0 Error", "GetTotalDriveNum [-1] ",
                                 "Run fail", "CurrentDriveIndex [-1] ", "MMPlay ->fail "}},
                    FailureCase{"OnlySubFolders",
                                [](MediaTest& t) {
                                    t.Put("one/a.ts");
                                    t.Put("two/b.ts");
                                },
                                {"Select Default Drive 0", "Cannot Set Play File from PlayList",
                                 "MMPlay ->fail "}},
                    FailureCase{"PlayFails",
                                [](MediaTest& t) {
                                    t.Put("clip.ts");
                                    t.Media().playFails = true;
                                },
                                {"Add to PlayList:0", "MMPlay ->fail "}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(MediaTest, OnlySubFoldersAddNothingToThePlayList) {
    Put("one/a.ts");
    Start();
    EXPECT_EQ(Journal().CountCalls("MediaManager::setFileSelected"), 0u);
}

TEST_F(MediaTest, AFailedInitStopsAtOnce) {
    Media().initFails = true;
    Start();
    EXPECT_TRUE(Journal().HasLog("Init->fail "));
    EXPECT_EQ(Journal().CountCalls("MediaManager::getTotalDriveNum"), 0u);
    EXPECT_EQ(Journal().CountCalls("MediaManager::Deinit"), 1u);
}

TEST_F(MediaTest, MModeSaysThePlayerIsOn) {
    Tv().Get<sim::MModeState>().mMode = true;
    Start();
    EXPECT_TRUE(Journal().HasLog("(FACTORY:) M-Player On"));
}

struct StopCase {
    const char* name;
    long services;
    std::array<MAPI_U8, 4> routes;
    std::vector<std::string> calls;
};

class MediaStopTest : public MediaTest, public testing::WithParamInterface<StopCase> {};

TEST_P(MediaStopTest, ExitStopsTheBrowserAndGoesBackToDigitalTv) {
    const StopCase& c = GetParam();
    Put("clip.ts");
    Tv().Get<sim::DtvTuningState>().programs.assign(c.services, {1, 1});
    Tv().Get<sim::FrontEndState>().routeTypes = c.routes;
    Start();
    Journal().Clear();
    EXPECT_EQ(Fm().FactoryDoKeyAction(FactoryKey::PanelExit), 1);
    EXPECT_EQ(
        CallsOf({"MediaManager::init", "MediaManager::stop", "MediaManager::Deinit",
                 "TVManager::setInputSource", "MSrv_Control::SetInputSource",
                 "MSrv_Control::SwitchMSrvDtvRoute", "MSrv_ChannelManager::GetDtvServiceCount",
                 "MSrv_DTV_Player::PlayCurrentProgram"}),
        c.calls);
    EXPECT_EQ(Fm().m_bMediaPlayerMode, 0);
    EXPECT_EQ(Tv().Get<sim::PlayerState>().currentSource, 28);
    EXPECT_EQ(Media().state, "stopped");
}

const std::vector<std::string> kStopStart = {"MediaManager::init [1366, 768, \"BMP\"]",
                                             "MediaManager::stop [0, 0]", "MediaManager::Deinit []",
                                             "TVManager::setInputSource [28, 0]",
                                             "MSrv_Control::SetInputSource [28, 1, 0, 0]"};

std::vector<std::string> StopCalls(std::vector<std::string> more) {
    std::vector<std::string> all = kStopStart;
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

INSTANTIATE_TEST_SUITE_P(
    Services, MediaStopTest,
    testing::Values(StopCase{"WithOneServicePlaysTheProgram",
                             1,
                             {{1, 32, 0, 0}},
                             StopCalls({"MSrv_Control::SwitchMSrvDtvRoute [0]",
                                        "MSrv_Control::SwitchMSrvDtvRoute [1]",
                                        "MSrv_ChannelManager::GetDtvServiceCount []",
                                        "MSrv_DTV_Player::PlayCurrentProgram [0]"})},
                    StopCase{"WithoutServicesStaysOnTheSource",
                             0,
                             {{0, 0, 0, 32}},
                             StopCalls({"MSrv_Control::SwitchMSrvDtvRoute [3]",
                                        "MSrv_ChannelManager::GetDtvServiceCount []"})}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(MediaTest, AnUnreadableServiceCountStopsTheProcess) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    Media().serviceCountFails = true;
    Start();
    EXPECT_DEATH(
        {
            dup2(2, 1);  // the line goes to the console
            Fm().FactoryDoKeyAction(FactoryKey::Exit);
        },
        "ASSERT FAIL: \\./factorymanager/src/FactoryManager MAPI_BOOL "
        "FactoryManager::MediaStop\\(\\) 18411");
}

}  // namespace
