// Shipout: every region with the serial UI on and off, the wipe of the set's
// production files (and nothing outside the set), the region written with its
// deadline, and the codes that are no region.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "ProductionFixture.h"
#include "SimFrontEnd.h"
#include "SimMMode.h"
#include "SimPlayers.h"
#include "SimProductionTests.h"

namespace {

struct Region {
    unsigned code;
    const char* page;
    const char* key;
    const char* writing;
    const char* result;
    int database;  // -1: none
};

const Region kRegions[] = {
    {0, "USAShipout", "USA-Shipout", "Set region to USA : Writing", "Set region to USA : Finished",
     -1},
    {1, "CanadaShipout", "Canada-Shipout", "Set region to Canada : Writing",
     "Set region to Canada : Finished", -1},
    {2, "MexicoShipout", "Mexico-Shipout", "Set region to Mexico : Writing",
     "Set region to Mexico : Finished", -1},
    {16, "UKShipout", "UK-Shipout", "UK Writing", "UK OK", 1},
    {17, "FranceShipout", "France-Shipout", "France Writing", "France OK", 3},
    {18, "ContinentalShipout", "Continental-Shipout", "Continental Writing", "Continental OK", 0},
    {19, "RussiaShipout", "Russia-Shipout", "Russia Writing", "Russia OK", 2},
    {20, "NordicShipout", "Nordic-Shipout", "Nordic Writing", "Nordic OK", 4},
    {25, "AustrariaShipout", "Austraria-Shipout", "Australia Shipment Writing", "Australia OK", 6},
};

const std::vector<std::string> kWipe = {
    R"(["rm -f /Customer/dpdc/iprc/HomeControl", true])",
    R"(["rm -f /Customer/factory/shipout.code", true])",
    R"(["rm -f /Customer/stagecraft-data/cookies", true])",
    R"(["rm -rf /Customer/stagecraft-data/shared-objects", true])",
    R"(["rm -rf /OAD/*", true])",
    R"(["cp /applications/Intel_Widi/config/profiles.config /Customer/profiles.config", true])",
    R"(["cp /applications/Intel_Widi/config/adapter.config /Customer/adapter.config", true])",
    R"(["sync", true])",
};

class ShipoutTest : public ProductionTest {
protected:
    sim::StationState& Station() { return Tv().Get<sim::StationState>(); }
    sim::Root& Root() { return Tv().GetRoot(); }
};

class ShipoutRegionTest : public ShipoutTest,
                          public testing::WithParamInterface<std::tuple<Region, bool>> {};

TEST_P(ShipoutRegionTest, WritesTheRegionWipesTheSetAndReports) {
    const Region& r = std::get<0>(GetParam());
    const bool uart = std::get<1>(GetParam());
    const bool shown = uart || r.code == 25;
    Station().cmdParam = static_cast<uint8_t>(r.code);
    Station().uartUi = uart;
    Tv().Get<sim::PlayerState>().currentSource = 1;
    Post(213);

    const NoteList writing = {Str("HideAllUIExcept", r.page), Str(r.key, r.writing)};
    EXPECT_EQ(TakeNotes(), shown ? writing : NoteList{});
    EXPECT_EQ(Fm().isShipoutExecuing(), 1);
    EXPECT_EQ(Codes(), std::vector<unsigned long>{0x12006});
    EXPECT_EQ(Calls("mapi_system::SystemCmd"), kWipe);
    std::vector<std::string> steps = {
        "MSrv_Factory_Cmd::CancellationLogSetup []",  "sleep [1]",
        "MSrv_Control::SetInputSource [28, 1, 0, 0]", "MsOS_DelayTask [200]",
        R"(WebAppMgr_SendCommand [4, ""])",
    };
    if (r.database >= 0) {
        steps.push_back("MSrv_System_Database::ChangeShipoutForZYT [" + std::to_string(r.database) +
                        ", 1, 1]");
        steps.push_back("TVManager::ResetShipoutTV []");
        steps.push_back("MEvtHandle::SetTimer [2000, 18, 1]");
    }
    EXPECT_EQ(CallsIn({"MSrv_Factory_Cmd::CancellationLogSetup", "sleep",
                       "MSrv_Control::SetInputSource", "MsOS_DelayTask", "WebAppMgr_SendCommand",
                       "MSrv_System_Database::ChangeShipoutForZYT", "TVManager::ResetShipoutTV",
                       "MEvtHandle::SetTimer"}),
              steps);
    for (const char* gone :
         {"/Customer/dpdc/iprc/HomeControl", "/Customer/factory/shipout.code",
          "/Customer/stagecraft-data/cookies", "/Customer/stagecraft-data/shared-objects",
          "/OAD/line-download.bin"}) {
        EXPECT_FALSE(Root().Exists(gone)) << gone;
    }
    EXPECT_TRUE(Root().Exists("/OAD/.keep")) << "the shell's * leaves dot-entries";
    EXPECT_EQ(Root().ReadFile("/Customer/profiles.config"), "# shipping profiles\n");
    EXPECT_EQ(Root().ReadFile("/Customer/adapter.config"), "# shipping adapter\n");

    if (r.database < 0) {
        Advance(60000);
        EXPECT_EQ(TakeNotes(), NoteList{});
        EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::SetUARTExecutingResult"), 0u);
        return;
    }
    Advance(1999);
    EXPECT_EQ(TakeNotes(), NoteList{});
    EXPECT_EQ(Station().uartResult, -1);
    Advance(1);
    if (shown) {
        EXPECT_EQ(TakeNotes(), NoteList{Str(r.key, r.result)});
        EXPECT_EQ(Station().uartResult, -1);
    } else {
        EXPECT_EQ(TakeNotes(), NoteList{});
        EXPECT_EQ(Station().uartResult, 1);
    }
    EXPECT_EQ(Fm().isShipoutExecuing(), 1) << "never cleared";
}

INSTANTIATE_TEST_SUITE_P(Regions, ShipoutRegionTest,
                         testing::Combine(testing::ValuesIn(kRegions), testing::Bool()),
                         [](const auto& info) {
                             return std::string(std::get<0>(info.param).page) +
                                    (std::get<1>(info.param) ? "SerialUi" : "NoSerialUi");
                         });

TEST_F(ShipoutTest, ACodeThatIsNoRegionStopsAfterSettingTheFlag) {
    for (unsigned code : {3u, 15u, 21u, 24u, 26u, 255u}) {
        Station().cmdParam = static_cast<uint8_t>(code);
        Station().uartUi = true;
        EXPECT_EQ(Fm().OnEvent_Shipout(nullptr, nullptr, nullptr), 0) << code;
    }
    EXPECT_EQ(Fm().isShipoutExecuing(), 1);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::CancellationLogSetup"), 6u);
    EXPECT_EQ(TakeNotes(), NoteList{});
    EXPECT_EQ(Journal().CountCalls("mapi_system::SystemCmd"), 0u);
    EXPECT_TRUE(Root().Exists("/Customer/factory/shipout.code"));
    EXPECT_EQ(Codes(), std::vector<unsigned long>{});
}

TEST_F(ShipoutTest, TheWipeNeverReachesOutsideTheSet) {
    namespace fs = std::filesystem;
    const fs::path outside =
        Root().Folder().parent_path() / ("outside-" + Root().Folder().filename().string());
    fs::create_directories(outside / "shared");
    std::ofstream(outside / "keep.bin") << "host file";
    std::ofstream(outside / "shared" / "keep.sol") << "host file";
    fs::create_symlink(outside / "keep.bin", Root().Folder() / "OAD" / "link.bin");
    fs::remove_all(Root().Folder() / "Customer/stagecraft-data/shared-objects");
    fs::create_directory_symlink(outside / "shared",
                                 Root().Folder() / "Customer/stagecraft-data/shared-objects");
    Post(213);
    EXPECT_TRUE(fs::exists(outside / "keep.bin"));
    EXPECT_TRUE(fs::exists(outside / "shared" / "keep.sol"));
    EXPECT_FALSE(fs::exists(fs::symlink_status(Root().Folder() / "OAD" / "link.bin")));
    fs::remove_all(outside);
}

TEST_F(ShipoutTest, OnTheDigitalSourceItStaysAndSwitchesToEachDvbRoute) {
    Station().cmdParam = 16;
    Tv().Get<sim::FrontEndState>().routeTypes = {{1, 0x20, 2, 0x20}};
    Post(213);
    EXPECT_EQ(Journal().CountCalls("MSrv_Control::SetInputSource"), 0u);
    EXPECT_EQ(Calls("MSrv_Control::SwitchMSrvDtvRoute"), (std::vector<std::string>{"[1]", "[3]"}));
    EXPECT_EQ(Journal().CountCalls("MSrv_Control::GetTVInfo"), 1u) << "the routes are read once";
    EXPECT_EQ(Calls("MSrv_System_Database::ChangeShipoutForZYT"),
              std::vector<std::string>{"[1, 28, 1]"});
}

TEST_F(ShipoutTest, RegionTimerRewritesTheRegionAfterASecond) {
    Station().cmdParam = 20;
    Fm();
    EXPECT_EQ(Fm().OnTimer_Shipout(nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(CallsIn({"MsOS_DelayTask", "MSrv_System_Database::ChangeShipoutForZYT",
                       "TVManager::ResetShipoutTV"}),
              (std::vector<std::string>{"MsOS_DelayTask [1000]",
                                        "MSrv_System_Database::ChangeShipoutForZYT [4, 28, 1]",
                                        "TVManager::ResetShipoutTV []"}));
    EXPECT_EQ(Journal().CountCalls("mapi_system::SystemCmd"), 0u) << "no second wipe";
    Station().cmdParam = 1;
    EXPECT_EQ(Fm().OnTimer_Shipout(nullptr, nullptr, nullptr), 0);
}

}  // namespace
