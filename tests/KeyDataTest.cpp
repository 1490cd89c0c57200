// Key data readers on crafted key files under the set's root: identifiers,
// presence gates, missing and odd files, the PVR fingerprint, the HMAC flags and
// the CI+ usage rules.
#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimKeyData.h"
#include "SimPlayers.h"
#include "SimSystemInfo.h"

namespace {

using Reader = const char* (FactoryManager::*)();

class KeyDataTest : public SetTest {
protected:
    // A key file of `size` bytes, zero except for `bytes` placed at `offset`.
    void WriteKey(const std::string& name, size_t size, size_t offset = 0,
                  const std::string& bytes = "") {
        std::string data(size, '\0');
        data.replace(offset, bytes.size(), bytes);
        Tv().GetRoot().WriteFile("/ciplus/" + name, data.substr(0, size));
    }
    void RemoveKey(const std::string& name) {
        std::filesystem::remove(Tv().GetRoot().Map("/ciplus/" + name));
    }
    std::string HostPath(const std::string& name) { return Tv().GetRoot().Map("/ciplus/" + name); }
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
    {"PVR", &FactoryManager::FactoryGetPVR, "pvrkey.bin", "OK 94c80f1"},
};

// How a key path can fail to hold a key; every reader shows "--" for each.
enum class BadPath { Missing, Empty, Directory, DanglingLink };

class KeyReaderTest : public KeyDataTest,
                      public testing::WithParamInterface<std::tuple<ReaderCase, BadPath>> {};

TEST_F(KeyDataTest, DemoSetShowsItsIdentifiers) {
    for (const ReaderCase& c : kReaders) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Read(c.reader), c.demoValue);
    }
}

TEST_P(KeyReaderTest, BadKeyPathShowsPlaceholder) {
    const ReaderCase& c = std::get<0>(GetParam());
    RemoveKey(c.file);
    switch (std::get<1>(GetParam())) {
        case BadPath::Missing:
            break;
        case BadPath::Empty:
            WriteKey(c.file, 0);
            break;
        case BadPath::Directory:
            std::filesystem::create_directory(HostPath(c.file));
            break;
        case BadPath::DanglingLink:
            std::filesystem::create_symlink(HostPath("nowhere"), HostPath(c.file));
            break;
    }
    EXPECT_EQ(Read(c.reader), "--");
    // The buffer is cleared on each call: nothing of the last identifier is left.
    const char* text = (Fm().*c.reader)();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text[2], '\0');
    EXPECT_EQ(text[3], '\0');
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

TEST_F(KeyDataTest, ReaderReusesItsBufferAndClearsTheOldValue) {
    const char* first = Fm().FactoryGetNetflixESN();
    ASSERT_NE(first, nullptr);
    RemoveKey("nfxkey.bin");
    const char* second = Fm().FactoryGetNetflixESN();
    EXPECT_EQ(second, first);
    EXPECT_STREQ(second, "--");
    for (int i = 2; i < 33; ++i) {
        EXPECT_EQ(second[i], '\0') << "byte " << i;
    }
}

TEST_F(KeyDataTest, ShortCIPlusFileStillYieldsASerial) {
    WriteKey("ci_plus.bin", 70, 68, "\xAB\xCD");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetCIPlusSerialNumber), "ABCD0000");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetCIPlusHostID), "0000000000000000");
}

TEST_F(KeyDataTest, HugeFileIsReadFromItsHeadOnly) {
    WriteKey("dipkey.bin", 64 * 1024, 60, "\x01\x02\x03\x04\x05");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetDevID_DTCPIP), "0102030405");
    WriteKey("widevine.bin", 1 << 20, 76, "HUGE-FILE-DEVICE");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetWidevineDeviceID), "HUGE-FILE-DEVICE");
}

TEST_F(KeyDataTest, ReceiverIdentifierLosesTheLastByteReadWhenTheFileEndsInsideIt) {
    WriteKey("hdcp2.bin", 94, 90, "\x11\x22\x33\x44");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetHDCP20_ReceiveID), "1122330000");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetHDCP20), "0000000000");
}

TEST_F(KeyDataTest, WidevineKeyFileGatesWidevineAndDtcpIp) {
    RemoveKey("widevine_key.bin");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetWidevineDeviceID), "--");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetDevID_DTCPIP), "--");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetNetflixESN), "VQ27DEMO-ESN-001");
    RemoveKey("nfxkey_key.bin");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetNetflixESN), "--");
}

TEST_F(KeyDataTest, CharacterIdentifiersAreCopiedByteForByte) {
    WriteKey("widevine.bin", 92, 76, std::string("AB\x01\x7F", 4) + "CDEFGHIJKLMN");
    const char* id = Fm().FactoryGetWidevineDeviceID();
    ASSERT_NE(id, nullptr);
    EXPECT_EQ(std::string(id, 16), std::string("AB\x01\x7F", 4) + "CDEFGHIJKLMN");
    EXPECT_EQ(id[16], '\0');
}

TEST_F(KeyDataTest, PvrKeyFingerprint) {
    WriteKey("pvrkey.bin", 16);
    EXPECT_EQ(Read(&FactoryManager::FactoryGetPVR), "NG") << "a blank key";
    WriteKey("pvrkey.bin", 32, 16, "not part of the key");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetPVR), "NG") << "only the first 16 bytes count";
    WriteKey("pvrkey.bin", 16, 0, "0123456789ABCDEF");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetPVR), "OK 983c37b5");
    WriteKey("pvrkey.bin", 16, 15, "\x01");
    EXPECT_NE(Read(&FactoryManager::FactoryGetPVR).rfind("OK ", 0), std::string::npos);
}

TEST_F(KeyDataTest, HmacFlagsFollowEachKeyFile) {
    Fm().FactoryLoadKeyRawData();
    EXPECT_EQ(Fm().m_u8Hdcp2KeyHmacOk, 1);
    EXPECT_EQ(Fm().m_u8WidevineKeyHmacOk, 1);
    EXPECT_EQ(Fm().m_u8NetflixKeyHmacOk, 1);
    const auto calls = Journal().Calls("MSrv_PreSharedKey::CheckHmac");
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls[0].args, R"(["/ciplus/hdcp2_key.bin", true])");
    EXPECT_EQ(calls[1].args, R"(["/ciplus/widevine_key.bin", true])");
    EXPECT_EQ(calls[2].args, R"(["/ciplus/nfxkey_key.bin", true])");

    // A missing file is not checked and a failed check clears a flag set before.
    RemoveKey("widevine_key.bin");
    Tv().Get<sim::KeyDataState>().hmacFailing.insert("/ciplus/nfxkey_key.bin");
    Journal().Clear();
    EXPECT_EQ(Fm().FactoryLoadKeyRawData(), 1);
    EXPECT_EQ(Fm().m_u8Hdcp2KeyHmacOk, 1);
    EXPECT_EQ(Fm().m_u8WidevineKeyHmacOk, 0);
    EXPECT_EQ(Fm().m_u8NetflixKeyHmacOk, 0);
    EXPECT_EQ(Journal().CountCalls("MSrv_PreSharedKey::CheckHmac"), 2u);
}

TEST_F(KeyDataTest, VuduChassisFollowsTheFullModelId) {
    const struct {
        MAPI_U32 modelId;
        const char* chassis;
    } cases[] = {{50, "VQCH2S32"}, {73, "VQCU4L65"}, {49, ""}, {0x100 + 50, ""}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.modelId);
        Tv().Get<sim::SystemInfoState>().modelId = c.modelId;
        EXPECT_EQ(Read(&FactoryManager::FactoryGetVudu), c.chassis);
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
    std::string text = "unchanged";
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
    EXPECT_EQ(text, "unchanged");
    Tv().Get<sim::KeyDataState>().uriResult = 1;
    Tv().Get<sim::PlayerState>().dtvPresent = false;
    EXPECT_EQ(Fm().FactoryGetCIPlusURILicense(text), 0);
    EXPECT_EQ(text, "unchanged");
    EXPECT_EQ(Journal().CountCalls("MSrv_DTV_Player_DVB::GetCCUriLicense"), 1u);
}

}  // namespace
