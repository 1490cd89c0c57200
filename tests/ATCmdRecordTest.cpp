// The AT version record and its file: fixed-width rows, the shell lines run
// around the file and the failed open.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimAllocation.h"
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

// The field's bytes: `text` cut or zero-padded to the width.
std::string Field(const std::string& text, size_t width) {
    std::string field = text.substr(0, width);
    field.resize(width, '\0');
    return field;
}

// The demo set's record, kept byte for byte: every label, offset, width and reader.
TEST_F(ATCmdRecordTest, DemoSetRecordIsTheGoldenOne) {
    const std::string golden = VQ27_TEST_DATA "/atcmd-version-demo.bin";
    std::ifstream in(golden, std::ios::binary);
    ASSERT_TRUE(in) << golden;
    std::string want{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    ASSERT_EQ(want.size(), 1230u);
    ASSERT_EQ(Build(), 1);
    // The tuner row carries whatever the tuner pages' reader gives on this set.
    want.replace(630, 30,
                 Field(std::string("MAIN Tuner Freq:") + Fm().GetTunerFrequency() + ",", 30));
    const std::string got(stATCMD_Version.raw, 1230);
    for (size_t at = 0; at < want.size(); at += 10) {
        EXPECT_EQ(got.substr(at, 10), want.substr(at, 10)) << "bytes " << at << "-" << at + 9;
    }
}

TEST_F(ATCmdRecordTest, ReadersWithoutMemoryStillGiveTheirLabels) {
    Tv().Get<sim::SystemInfoState>().socRealSWVersion = "SOC1";
    if (!sim::AllocationsCanFail()) {
        GTEST_SKIP() << "a sanitizer's allocator is in charge";
    }
    sim::FailAllocations(true);
    const MAPI_BOOL built = Build();
    sim::FailAllocations(false);
    ASSERT_EQ(built, 1);
    std::string want;
    const std::pair<const char*, size_t> rows[] = {
        {"TV Model:,", 20},
        {"Model Info:,", 30},
        {"SW Version:SOC1,", 30},
        {"Boot Code Version:,", 50},
        {"SoC Version:SOC1,", 50},
        {"DPDD Version:,", 50},
        {"NewSoft Version:,", 40},
        {"CESI Version:,", 30},
        {"IPRC Version:,", 30},
        {"IR Blaster DB:,", 30},
        {"PQ Version:,", 30},
        {"FRC Version:,", 30},
        {"A/D Adjust PAL: OK,", 30},
        {"A/D Adjust NTSC: OK,", 30},
        {"A/D Adjust COMP: OK,", 30},
        {"A/D Adjust RGB: OK,", 30},
        {"A/D Adjust CVBS: OK,", 30},
        {"EDID VGA: VGA EEPROM Ver.01,", 30},
        {"MAIN Format:,", 30},
        {"MAIN Tuner Freq:,", 30},
        {"Netflix ESN:,", 50},
        {"Widevine:,", 50},
        {"HDCP2.2:,", 40},
        {",", 40},
        {"DTCP-IP:,", 30},
        {"Vudu:,", 30},
        {"PVR:,", 30},
        {"CI+ Serial Number:,", 50},
        {"CI+ Host ID:,", 50},
        {"Serial Number:,", 50},
        {"MAC Address:,", 50},
        {"WLAN MAC Address:,", 50},
        {"Bluetooth Address:,", 50},
    };
    for (const auto& row : rows) {
        want += Field(row.first, row.second);
    }
    ASSERT_EQ(want.size(), 1230u);
    const std::string got(stATCMD_Version.raw, 1230);
    for (size_t at = 0; at < want.size(); at += 10) {
        EXPECT_EQ(got.substr(at, 10), want.substr(at, 10)) << "bytes " << at << "-" << at + 9;
    }
}

// "TV Model:" with a ten-character name and the comma fill the 20 bytes exactly;
// an eleven-character name loses the comma and has no terminator either.
TEST_F(ATCmdRecordTest, ModelNameRowFilledExactlyAndCut) {
    Tv().Get<sim::SystemInfoState>().modelId = 75;
    ASSERT_EQ(Build(), 1);
    EXPECT_EQ(std::string(stATCMD_Version.raw, 20), "TV Model:QV55U475EU,");
    Tv().Get<sim::SystemInfoState>().modelId = 76;
    ASSERT_EQ(Build(), 1);
    EXPECT_EQ(std::string(stATCMD_Version.raw, 20), "TV Model:QV65U476EUX");
    EXPECT_EQ(std::string(stATCMD_Version.raw + 20, 11), "Model Info:")
        << "next row starts at once";
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

// Each status row shows its own reader: one adjustment failed at a time.
TEST_F(ATCmdRecordTest, EachStatusRowReadsItsOwnAdjustment) {
    using Status = MAPI_U8 (FactoryManager::*)();
    const struct {
        size_t offset;
        const char* label;
        Status reader;
    } rows[] = {
        {420, "A/D Adjust PAL: ", &FactoryManager::FactoryGetADAdjustPALStatus},
        {450, "A/D Adjust NTSC: ", &FactoryManager::FactoryGetADAdjustNTSCStatus},
        {480, "A/D Adjust COMP: ", &FactoryManager::FactoryGetADAdjustCOMPStatus},
        {510, "A/D Adjust RGB: ", &FactoryManager::FactoryGetADAdjustRGBStatus},
        {540, "A/D Adjust CVBS: ", &FactoryManager::FactoryGetADAdjustCVBSStatus},
    };
    sim::FactoryStoreState& store = Tv().Get<sim::FactoryStoreState>();
    for (unsigned short failed : {300, 301, 302, 303}) {
        for (unsigned short item : {300, 301, 302, 303}) {
            store.Set(item, item == failed ? 0 : 1);
        }
        ASSERT_EQ(Build(), 1);
        for (const auto& row : rows) {
            ExpectField(row.offset, 30,
                        std::string(row.label) + ((Fm().*row.reader)() ? "OK," : "NG,"));
        }
    }
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
