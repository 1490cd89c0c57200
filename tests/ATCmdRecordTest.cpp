// The AT version record and its file: fixed-width rows, the shell lines run
// around the file and the failed open.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimFactoryStore.h"
#include "SimSystemInfo.h"

namespace {

const char kFile[] = "/OAD/ATCmdVersionCheck.txt";

class ATCmdRecordTest : public SetTest {
protected:
    MAPI_BOOL Build() {
        testing::internal::CaptureStdout();
        const MAPI_BOOL result = Fm().OnEvent_GetATCmd(nullptr, nullptr, nullptr);
        console = testing::internal::GetCapturedStdout();
        return result;
    }
    // The field's bytes must be `text` cut or zero-padded to the width.
    void ExpectField(size_t offset, size_t width, const std::string& text) {
        std::string want = text.substr(0, width);
        want.resize(width, '\0');
        EXPECT_EQ(std::string(stATCMD_Version.raw + offset, width), want) << "at " << offset;
    }
    std::vector<std::string> ShellLines() {
        std::vector<std::string> lines;
        for (const auto& call : Journal().Calls("mapi_system::SystemCmd")) {
            lines.push_back(call.args);
        }
        return lines;
    }
    std::string console;
};

TEST_F(ATCmdRecordTest, RowsOfTheDemoSet) {
    ASSERT_EQ(Build(), 1);
    ExpectField(0, 20, "TV Model:QV32H249,");
    ExpectField(660, 50, "Netflix ESN:VQ27DEMO-ESN-001,");
    ExpectField(760, 40, "HDCP2.2:27DE500001,");
    ExpectField(800, 40, "27DE400001,");
    ExpectField(840, 30, "DTCP-IP:27D1900001,");
    ExpectField(870, 30, "Vudu:,");
    ExpectField(900, 30, "PVR:OK 94c80f1,");
    ExpectField(980, 50, "CI+ Host ID:D0E1270000000001,");
    ExpectField(1180, 50, "Bluetooth Address:70:5A:B6:12:C3:DE,");  // the WLAN MAC
}

TEST_F(ATCmdRecordTest, TextLongerThanItsFieldIsCutWithoutTerminator) {
    // "SW Version:" and 18 characters and the comma fill the 30 bytes exactly.
    const std::pair<std::string, std::string> cases[] = {
        {"VQ27.00.1143.21.AB", "SW Version:VQ27.00.1143.21.AB,"},
        {"VQ27.00.1143.21.ABC", "SW Version:VQ27.00.1143.21.ABC"},
        {"VQ27.00.1143.21.ABCDEFG", "SW Version:VQ27.00.1143.21.ABC"},
    };
    for (const auto& c : cases) {
        Tv().Get<sim::SystemInfoState>().socRealSWVersion = c.first;
        ASSERT_EQ(Build(), 1);
        ExpectField(50, 30, c.second);
        ExpectField(80, 18, "Boot Code Version:");
        ExpectField(130, 50, "SoC Version:" + c.first + ",");
    }
}

TEST_F(ATCmdRecordTest, StatusRowsShowTheStoredState) {
    sim::FactoryStoreState& store = Tv().Get<sim::FactoryStoreState>();
    store.Set(302, 0);  // PAL failed, NTSC passed: CVBS still passes
    store.Set(87, 0);
    ASSERT_EQ(Build(), 1);
    ExpectField(420, 30, "A/D Adjust PAL: NG,");
    ExpectField(450, 30, "A/D Adjust NTSC: OK,");
    ExpectField(540, 30, "A/D Adjust CVBS: OK,");
    ExpectField(570, 30, "EDID VGA: VGA EEPROM _ _ ,");
    store.Set(303, 0);
    store.Set(87, 5);
    ASSERT_EQ(Build(), 1);
    ExpectField(540, 30, "A/D Adjust CVBS: NG,");
    ExpectField(570, 30, "EDID VGA: VGA EEPROM NG,");
}

TEST_F(ATCmdRecordTest, MissingKeysReadAsPlaceholders) {
    std::filesystem::remove(Tv().GetRoot().Map("/ciplus/widevine_key.bin"));
    std::filesystem::remove(Tv().GetRoot().Map("/ciplus/pvrkey.bin"));
    ASSERT_EQ(Build(), 1);
    ExpectField(710, 50, "Widevine:--,");
    ExpectField(840, 30, "DTCP-IP:--,");
    ExpectField(900, 30, "PVR:--,");
}

TEST_F(ATCmdRecordTest, FileHoldsTheRecordByteForByteAndThePlatformIsTold) {
    std::memset(&stATCMD_Version, 0xAB, sizeof(stATCMD_Version));
    Tv().GetRoot().WriteFile(kFile, std::string(4000, 'x'));  // an older, longer file
    ASSERT_EQ(Build(), 1);
    const std::string file = Tv().GetRoot().ReadFile(kFile);
    EXPECT_EQ(file, std::string(stATCMD_Version.raw, 1230));
    EXPECT_EQ(file.find('\xAB'), std::string::npos) << "the record is rebuilt from scratch";
    EXPECT_EQ(console, "~~ File open successed !!  ");
    EXPECT_EQ(ShellLines(),
              (std::vector<std::string>{R"(["rm /OAD/ATCmdVersionCheck.txt", true])",
                                        R"(["touch /OAD/ATCmdVersionCheck.txt", true])",
                                        R"(["chmod 777 -Rf /OAD/ATCmdVersionCheck.txt", true])",
                                        R"(["sync", true])", R"(["sync", true])"}));
    EXPECT_EQ(Journal().CountCalls("TVManager::SetATCmdInfo"), 1u);
}

TEST_F(ATCmdRecordTest, EventOnAFreshSetCreatesTheFile) {
    Post(265);
    EXPECT_EQ(Tv().GetRoot().ReadFile(kFile).size(), 1230u);
}

TEST_F(ATCmdRecordTest, FileThatCannotBeOpenedTwiceEndsTheRequest) {
    // A directory in the file's place survives rm and touch, and cannot be written.
    Tv().GetRoot().WriteFile(std::string(kFile) + "/keep", "x");
    EXPECT_EQ(Build(), 0);
    EXPECT_EQ(console, "\n~~ OPT File open failed !!  ");
    EXPECT_EQ(Journal().CountCalls("TVManager::SetATCmdInfo"), 0u);
    EXPECT_EQ(ShellLines().size(), 4u) << "no sync after a failed write";
}

}  // namespace
