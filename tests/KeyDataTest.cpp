// Key data readers on crafted key files under the set's root: identifiers,
// presence gates, missing and odd files, the PVR fingerprint, the HMAC flags, the
// Vudu chassis and the CI+ usage rules.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <string>
#include <utility>

#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimKeyData.h"
#include "SimPlayers.h"
#include "SimSystemInfo.h"

namespace {

using Reader = const char* (FactoryManager::*)();

class KeyDataTest : public SetTest {
protected:
    // A key file of `size` bytes, zero but for `bytes` at `offset`.
    void WriteKey(const std::string& name, size_t size, size_t offset = 0,
                  const std::string& bytes = "") {
        std::string data(std::max(size, offset + bytes.size()), '\0');
        data.replace(offset, bytes.size(), bytes);
        Tv().GetRoot().WriteFile("/ciplus/" + name, data.substr(0, size));
    }
    std::string Path(const std::string& name) { return Tv().GetRoot().Map("/ciplus/" + name); }
    void RemoveKey(const std::string& name) { std::filesystem::remove(Path(name)); }
    std::string Read(Reader reader) {
        const char* text = (Fm().*reader)();
        return text ? text : "<null>";
    }
};

struct ReaderCase {
    const char* name;
    Reader reader;
    const char* file;
    const char* demoValue;
};
void PrintTo(const ReaderCase& c, std::ostream* os) { *os << c.name; }

const ReaderCase kReaders[] = {
    {"CIPlusSerial", &FactoryManager::FactoryGetCIPlusSerialNumber, "ci_plus.bin", "27001042"},
    {"CIPlusHostID", &FactoryManager::FactoryGetCIPlusHostID, "ci_plus.bin", "D0E1270000000001"},
    {"HDCP20", &FactoryManager::FactoryGetHDCP20, "hdcp2.bin", "27DE400001"},
    {"HDCP20Receiver", &FactoryManager::FactoryGetHDCP20_ReceiveID, "hdcp2.bin", "27DE500001"},
    {"Widevine", &FactoryManager::FactoryGetWidevineDeviceID, "widevine.bin", "VQ27DEMOWV000001"},
    {"NetflixESN", &FactoryManager::FactoryGetNetflixESN, "nfxkey.bin", "VQ27DEMO-ESN-001"},
    {"DTCPIP", &FactoryManager::FactoryGetDevID_DTCPIP, "dipkey.bin", "27D1900001"},
    // CRC-32 0x094C80F1: no leading zero.
    {"PVR", &FactoryManager::FactoryGetPVR, "pvrkey.bin", "OK 94c80f1"},
};

TEST_F(KeyDataTest, DemoSetShowsItsIdentifiers) {
    for (const ReaderCase& c : kReaders) {
        EXPECT_EQ(Read(c.reader), c.demoValue) << c.name;
    }
}

// Every way a key path can fail to hold a key shows "--", with nothing of the
// previous identifier left in the buffer.
enum class BadPath { Missing, Empty, Directory, DanglingLink };
class KeyReaderTest : public KeyDataTest,
                      public testing::WithParamInterface<std::tuple<ReaderCase, BadPath>> {};

TEST_P(KeyReaderTest, BadKeyPathShowsPlaceholder) {
    const ReaderCase& c = std::get<0>(GetParam());
    Read(c.reader);
    RemoveKey(c.file);
    const BadPath bad = std::get<1>(GetParam());
    if (bad == BadPath::Empty) {
        WriteKey(c.file, 0);
    } else if (bad == BadPath::Directory) {
        std::filesystem::create_directory(Path(c.file));
    } else if (bad == BadPath::DanglingLink) {
        std::filesystem::create_symlink(Path("nowhere"), Path(c.file));
    }
    const char* text = (Fm().*c.reader)();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(std::string(text, 5), std::string("--\0\0\0", 5));
}

std::string BadPathCaseName(const testing::TestParamInfo<KeyReaderTest::ParamType>& info) {
    static const char* const kBad[] = {"Missing", "Empty", "Directory", "DanglingLink"};
    return std::string(std::get<0>(info.param).name) +
           kBad[static_cast<int>(std::get<1>(info.param))];
}

INSTANTIATE_TEST_SUITE_P(AllReaders, KeyReaderTest,
                         testing::Combine(testing::ValuesIn(kReaders),
                                          testing::Values(BadPath::Missing, BadPath::Empty,
                                                          BadPath::Directory,
                                                          BadPath::DanglingLink)),
                         BadPathCaseName);

TEST_F(KeyDataTest, ShortAndHugeFiles) {
    // Bytes a short file lacks read as zero.
    WriteKey("ci_plus.bin", 70, 68, "\xAB\xCD");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetCIPlusSerialNumber), "ABCD0000");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetCIPlusHostID), "0000000000000000");
    // The receiver identifier loses the last byte read when the file ends inside it.
    WriteKey("hdcp2.bin", 94, 90, "\x11\x22\x33\x44");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetHDCP20_ReceiveID), "1122330000");
    // Only the head of a huge file is read; identifier bytes are copied as they are.
    WriteKey("widevine.bin", 1 << 20, 76, std::string("AB\x01\x7F", 4) + "CDEFGHIJKLMN");
    const char* id = Fm().FactoryGetWidevineDeviceID();
    ASSERT_NE(id, nullptr);
    EXPECT_EQ(std::string(id, 17), std::string("AB\x01\x7F", 4) + "CDEFGHIJKLMN" + '\0');
}

TEST_F(KeyDataTest, KeyFilesGateTheirIdentifiers) {
    RemoveKey("widevine_key.bin");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetWidevineDeviceID), "--");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetDevID_DTCPIP), "--") << "Widevine gates DTCP-IP";
    EXPECT_EQ(Read(&FactoryManager::FactoryGetNetflixESN), "VQ27DEMO-ESN-001");
    RemoveKey("nfxkey_key.bin");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetNetflixESN), "--");
}

TEST_F(KeyDataTest, PvrKeyFingerprint) {
    WriteKey("pvrkey.bin", 32, 16, "beyond the key");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetPVR), "NG") << "blank first 16 bytes";
    WriteKey("pvrkey.bin", 16, 0, "0123456789ABCDEF");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetPVR), "OK 983c37b5");
}

TEST_F(KeyDataTest, HmacFlagsFollowEachKeyFile) {
    Fm().FactoryLoadKeyRawData();
    EXPECT_EQ(Fm().m_u8Hdcp2KeyHmacOk + Fm().m_u8WidevineKeyHmacOk + Fm().m_u8NetflixKeyHmacOk, 3);
    // A missing file is not checked; a failed check clears a flag set before.
    RemoveKey("widevine_key.bin");
    Tv().Get<sim::KeyDataState>().hmacFailing.insert("/ciplus/nfxkey_key.bin");
    Journal().Clear();
    EXPECT_EQ(Fm().FactoryLoadKeyRawData(), 1);
    EXPECT_EQ(Fm().m_u8Hdcp2KeyHmacOk, 1);
    EXPECT_EQ(Fm().m_u8WidevineKeyHmacOk, 0);
    EXPECT_EQ(Fm().m_u8NetflixKeyHmacOk, 0);
    const auto calls = Journal().Calls("MSrv_PreSharedKey::CheckHmac");
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].args, R"(["/ciplus/hdcp2_key.bin", true])");
    EXPECT_EQ(calls[1].args, R"(["/ciplus/nfxkey_key.bin", false])");
}

TEST_F(KeyDataTest, VuduChassisFollowsTheFullModelId) {
    const std::pair<MAPI_U32, const char*> cases[] = {
        {50, "VQCH2S32"}, {73, "VQCU4L65"}, {49, ""}, {0x100 + 50, ""}};
    for (const auto& c : cases) {
        Tv().Get<sim::SystemInfoState>().modelId = c.first;
        EXPECT_EQ(Read(&FactoryManager::FactoryGetVudu), c.second) << c.first;
    }
}

struct UriCase {
    const char* name;
    ST_CIPLUS_URI_LICENSE uri;  // version, DOT, RCT, EMI, APS, ICT, RL
    const char* text;
};
void PrintTo(const UriCase& c, std::ostream* os) { *os << c.name; }

class UriTest : public KeyDataTest, public testing::WithParamInterface<UriCase> {};

TEST_P(UriTest, UsageRulesArePackedAsTheUriMessage) {
    Tv().Get<sim::KeyDataState>().uri = GetParam().uri;
    std::string text;
    EXPECT_EQ(Fm().FactoryGetCIPlusURILicense(text), 1);
    EXPECT_EQ(text, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Rules, UriTest,
                         testing::Values(
                             // Copy-never: DOT and RL count, RCT does not.
                             UriCase{"Emi3", {1, 1, 1, 3, 2, 1, 0x1E}, "0x01BA_3C00_0000_0000"},
                             // Copy-freely: RCT counts, DOT and RL do not.
                             UriCase{"Emi0", {1, 1, 1, 0, 0, 0, 0xFF}, "0x0104_0000_0000_0000"},
                             UriCase{"Emi2", {2, 1, 1, 2, 3, 0, 0xFF}, "0x02E0_0000_0000_0000"}),
                         [](const testing::TestParamInfo<UriCase>& info) {
                             return std::string(info.param.name);
                         });

TEST_F(KeyDataTest, UriFailureLeavesTheTextAlone) {
    std::string text = "unchanged";
    Tv().Get<sim::KeyDataState>().uriResult = 0;
    EXPECT_EQ(Fm().FactoryGetCIPlusURILicense(text), 0);
    Tv().Get<sim::KeyDataState>().uriResult = 1;
    Tv().Get<sim::PlayerState>().dtvPresent = false;
    EXPECT_EQ(Fm().FactoryGetCIPlusURILicense(text), 0);
    EXPECT_EQ(text, "unchanged");
}

}  // namespace
