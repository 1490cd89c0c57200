// The AT version record and its file: the fixed-width rows, the shell lines run
// around the file and the failed open.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimFactoryStore.h"
#include "SimSystemInfo.h"

namespace {

const char kFile[] = "/OAD/ATCmdVersionCheck.txt";

class ATCmdRecordTest : public SetTest {
protected:
    // Builds the record the way the fixture asks for it, keeping the console text.
    MAPI_BOOL Build() {
        testing::internal::CaptureStdout();
        const MAPI_BOOL result = Fm().OnEvent_GetATCmd(nullptr, nullptr, nullptr);
        console = testing::internal::GetCapturedStdout();
        return result;
    }
    // The field's bytes, all of them (zeros included).
    std::string Field(size_t offset, size_t width) {
        return std::string(stATCMD_Version.raw + offset, width);
    }
    // The text a field should hold: `text` then zeros up to the width.
    static std::string Padded(const std::string& text, size_t width) {
        std::string out = text.substr(0, width);
        out.resize(width, '\0');
        return out;
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

struct RowCase {
    size_t offset;
    size_t width;
    const char* text;
};

TEST_F(ATCmdRecordTest, KeyRowsOfTheDemoSet) {
    ASSERT_EQ(Build(), 1);
    const RowCase rows[] = {
        {660, 50, "Netflix ESN:VQ27DEMO-ESN-001,"}, {710, 50, "Widevine:VQ27DEMOWV000001,"},
        {760, 40, "HDCP2.2:27DE500001,"},           {800, 40, "27DE400001,"},
        {840, 30, "DTCP-IP:27D1900001,"},           {900, 30, "PVR:OK 94c80f1,"},
        {930, 50, "CI+ Serial Number:27001042,"},   {980, 50, "CI+ Host ID:D0E1270000000001,"},
    };
    for (const RowCase& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(Field(row.offset, row.width), Padded(row.text, row.width));
    }
}

TEST_F(ATCmdRecordTest, IdentityRowsOfTheDemoSet) {
    ASSERT_EQ(Build(), 1);
    const RowCase rows[] = {
        {0, 20, "TV Model:QV32H249,"},
        {600, 30, "MAIN Format:1080i 50,"},
        {870, 30, "Vudu:,"},
        {1130, 50, "WLAN MAC Address:70:5A:B6:12:C3:DE,"},
        {1180, 50, "Bluetooth Address:70:5A:B6:12:C3:DE,"},
    };
    for (const RowCase& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(Field(row.offset, row.width), Padded(row.text, row.width));
    }
}

// A text longer than its field is cut at the width: no comma, no terminator, and
// the next field is untouched. The SoC row shows the same text in full.
struct CutCase {
    const char* name;
    const char* version;
    const char* swField;  // all 30 bytes of the field
};

void PrintTo(const CutCase& c, std::ostream* os) { *os << c.name; }

class ATCmdCutTest : public ATCmdRecordTest, public testing::WithParamInterface<CutCase> {};

TEST_P(ATCmdCutTest, LongTextIsCutAtTheFieldWidth) {
    Tv().Get<sim::SystemInfoState>().socRealSWVersion = GetParam().version;
    ASSERT_EQ(Build(), 1);
    EXPECT_EQ(Field(50, 30), Padded(GetParam().swField, 30));
    EXPECT_EQ(Field(80, 18), "Boot Code Version:");
    EXPECT_EQ(Field(130, 50), Padded(std::string("SoC Version:") + GetParam().version + ",", 50));
}

INSTANTIATE_TEST_SUITE_P(
    SWVersion, ATCmdCutTest,
    testing::Values(CutCase{"Fits", "VQ27.00.1143", "SW Version:VQ27.00.1143,"},
                    CutCase{"FillsExactly", "VQ27.00.1143.21.AB", "SW Version:VQ27.00.1143.21.AB,"},
                    CutCase{"OneOver", "VQ27.00.1143.21.ABC", "SW Version:VQ27.00.1143.21.ABC"},
                    CutCase{"FarOver", "VQ27.00.1143.21.ABCDEFGHIJK",
                            "SW Version:VQ27.00.1143.21.ABC"}),
    [](const testing::TestParamInfo<CutCase>& info) { return std::string(info.param.name); });

// Status rows read OK or NG; the VGA EDID row names the EEPROM state.
struct StatusCase {
    const char* name;
    MAPI_U16 item;
    MAPI_U8 value;
    size_t offset;
    const char* text;
};

void PrintTo(const StatusCase& c, std::ostream* os) { *os << c.name; }

class ATCmdStatusTest : public ATCmdRecordTest, public testing::WithParamInterface<StatusCase> {};

TEST_P(ATCmdStatusTest, RowShowsTheStoredState) {
    Tv().Get<sim::FactoryStoreState>().Set(GetParam().item, GetParam().value);
    ASSERT_EQ(Build(), 1);
    EXPECT_EQ(Field(GetParam().offset, 30), Padded(GetParam().text, 30));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ATCmdStatusTest,
    testing::Values(StatusCase{"PalFailed", 302, 0, 420, "A/D Adjust PAL: NG,"},
                    StatusCase{"NtscFailed", 303, 2, 450, "A/D Adjust NTSC: NG,"},
                    StatusCase{"CompFailed", 301, 0, 480, "A/D Adjust COMP: NG,"},
                    StatusCase{"RgbFailed", 300, 0, 510, "A/D Adjust RGB: NG,"},
                    StatusCase{"CvbsPassesOnNtscAlone", 302, 0, 540, "A/D Adjust CVBS: OK,"},
                    StatusCase{"EdidNotWritten", 87, 0, 570, "EDID VGA: VGA EEPROM _ _ ,"},
                    StatusCase{"EdidVersion01", 87, 1, 570, "EDID VGA: VGA EEPROM Ver.01,"},
                    StatusCase{"EdidUnknownVersion", 87, 5, 570, "EDID VGA: VGA EEPROM NG,"}),
    [](const testing::TestParamInfo<StatusCase>& info) { return std::string(info.param.name); });

TEST_F(ATCmdRecordTest, CvbsFailsWhenBothPalAndNtscFail) {
    Tv().Get<sim::FactoryStoreState>().Set(302, 0);
    Tv().Get<sim::FactoryStoreState>().Set(303, 0);
    ASSERT_EQ(Build(), 1);
    EXPECT_EQ(Field(540, 30), Padded("A/D Adjust CVBS: NG,", 30));
}

TEST_F(ATCmdRecordTest, MissingKeysReadAsPlaceholdersInTheirRows) {
    std::filesystem::remove(Tv().GetRoot().Map("/ciplus/widevine_key.bin"));
    std::filesystem::remove(Tv().GetRoot().Map("/ciplus/pvrkey.bin"));
    ASSERT_EQ(Build(), 1);
    EXPECT_EQ(Field(710, 50), Padded("Widevine:--,", 50));
    EXPECT_EQ(Field(840, 30), Padded("DTCP-IP:--,", 30));
    EXPECT_EQ(Field(900, 30), Padded("PVR:--,", 30));
}

TEST_F(ATCmdRecordTest, FileHoldsTheRecordByteForByteAndThePlatformIsTold) {
    std::memset(&stATCMD_Version, 0xAB, sizeof(stATCMD_Version));
    Tv().GetRoot().WriteFile(kFile, std::string(4000, 'x'));  // an older, longer file
    ASSERT_EQ(Build(), 1);
    const std::string file = Tv().GetRoot().ReadFile(kFile);
    ASSERT_EQ(file.size(), 1230u);
    EXPECT_EQ(file, std::string(stATCMD_Version.raw, sizeof(stATCMD_Version)));
    EXPECT_EQ(file.find('\xAB'), std::string::npos) << "the record is rebuilt from scratch";
    EXPECT_EQ(console, "~~ File open successed !!  ");
    EXPECT_EQ(ShellLines(), (std::vector<std::string>{
                                R"(["rm /OAD/ATCmdVersionCheck.txt", true])",
                                R"(["touch /OAD/ATCmdVersionCheck.txt", true])",
                                R"(["chmod 777 -Rf /OAD/ATCmdVersionCheck.txt", true])",
                                R"(["sync", true])",
                                R"(["sync", true])",
                            }));
    EXPECT_EQ(Journal().CountCalls("TVManager::SetATCmdInfo"), 1u);
}

TEST_F(ATCmdRecordTest, FirstRequestOnAFreshSetCreatesTheFile) {
    Post(265);
    EXPECT_EQ(Tv().GetRoot().ReadFile(kFile).size(), 1230u);
    EXPECT_EQ(ShellLines().front(), R"(["rm /OAD/ATCmdVersionCheck.txt", false])")
        << "nothing to remove yet";
}

TEST_F(ATCmdRecordTest, FileThatCannotBeOpenedTwiceEndsTheRequest) {
    // A directory in the file's place survives rm and touch, and no open can write it.
    Tv().GetRoot().WriteFile(std::string(kFile) + "/keep", "x");
    EXPECT_EQ(Build(), 0);
    EXPECT_EQ(console, "\n~~ OPT File open failed !!  ");
    EXPECT_EQ(Journal().CountCalls("TVManager::SetATCmdInfo"), 0u);
    EXPECT_EQ(ShellLines().size(), 4u) << "no sync after a failed write";
    EXPECT_TRUE(std::filesystem::is_directory(Tv().GetRoot().Map(kFile)));
}

}  // namespace
