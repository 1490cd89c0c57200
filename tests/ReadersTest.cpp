// Version and identity readers on crafted set state: what the version pages, the
// serial log and the AT record are given to show.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <string>

#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimAllocation.h"
#include "SimFactoryStore.h"
#include "SimNetwork.h"
#include "SimPlayers.h"
#include "SimSSSound.h"
#include "SimSystemInfo.h"

namespace {

using TextReader = const char* (FactoryManager::*)();
using StatusReader = MAPI_U8 (FactoryManager::*)();

class ReadersTest : public SetTest {
protected:
    sim::SystemInfoState& Info() { return Tv().Get<sim::SystemInfoState>(); }
    sim::FactoryStoreState& Store() { return Tv().Get<sim::FactoryStoreState>(); }
    sim::FactoryIdentityState& Identity() { return Tv().Get<sim::FactoryIdentityState>(); }
    sim::PlayerState& Players() { return Tv().Get<sim::PlayerState>(); }

    std::string Read(TextReader reader) {
        const char* text = (Fm().*reader)();
        return text != nullptr ? text : "(null)";
    }
};

// ---- Texts --------------------------------------------------------------------------------

struct TextCase {
    const char* name;
    std::function<void(sim::Set&)> arrange;
    TextReader reader;
    const char* expected;
};

std::ostream& operator<<(std::ostream& out, const TextCase& c) { return out << c.name; }

class TextReaders : public ReadersTest, public ::testing::WithParamInterface<TextCase> {};

TEST_P(TextReaders, ShowWhatTheSetHolds) {
    GetParam().arrange(Tv());
    EXPECT_EQ(Read(GetParam().reader), GetParam().expected);
}

template <class T>
T& S(sim::Set& tv) {
    return tv.Get<T>();
}
const std::string k32(32, 'D');

// clang-format off
const TextCase kTextCases[] = {
    {"ModelZero", [](sim::Set& tv) {S<sim::SystemInfoState>(tv).modelId = 0; }, &FactoryManager::FactoryGetTVModel, "NO_Name"},
    {"Model79", [](sim::Set& tv) {S<sim::SystemInfoState>(tv).modelId = 79; }, &FactoryManager::FactoryGetTVModel, "NO_Name"},
    {"ModelWithoutRow", [](sim::Set& tv) {S<sim::SystemInfoState>(tv).modelId = 58; }, &FactoryManager::FactoryGetTVModel, "NO_Name"},
    {"ModelNamedByLowByte", [](sim::Set& tv) {S<sim::SystemInfoState>(tv).modelId = 0x4431; }, &FactoryManager::FactoryGetTVModel, "QV32H249"},
    {"ModelIdOrder137Before136", [](sim::Set& tv) {S<sim::SystemInfoState>(tv).modelId = 5; auto& store = S<sim::FactoryStoreState>(tv); store.Set(134, 0xA1), store.Set(135, 0xB2), store.Set(136, 0xC3), store.Set(137, 0xD4); }, &FactoryManager::FactoryGetTVModelId, "05 A1 B2 D4 C3"},
    {"AppVersionHexLowerCase", [](sim::Set& tv) {S<sim::PlayerState>(tv).oadVersion = 0xBEEF; }, &FactoryManager::FactoryGetZYTAppVersion, "7.1.21.0.0.1.beef"},
    {"AppVersionWithoutDigitalTuner", [](sim::Set& tv) {S<sim::PlayerState>(tv).dtvPresent = false; }, &FactoryManager::FactoryGetZYTAppVersion, ""},
    {"SoftwareBuild", [](sim::Set&) {}, &FactoryManager::FactoryGetSWVersion, "Jan 12 2012 - 443156"},
    {"BootSecured", [](sim::Set& tv) {S<sim::SystemInfoState>(tv).mbootVersion = "MB1.07"; }, &FactoryManager::FactoryGetMbootVersion, "MB1.07 (Secured)"},
    {"BootNotSecured", [](sim::Set& tv) {S<sim::SystemInfoState>(tv).mbootVersion = "MB1.07"; S<sim::SystemInfoState>(tv).socSecured = 0; }, &FactoryManager::FactoryGetMbootVersion, "MB1.07"},
    {"PQ2IsMainMap", [](sim::Set&) {}, &FactoryManager::FactoryGetPQ2Version, "QMAP_Main_27.03_20260115"},
    {"PQ3IsMapTwo", [](sim::Set&) {}, &FactoryManager::FactoryGetPQ3Version, "QMAP_Sub_27.01"},
    {"PQ4IsMainMapAgain", [](sim::Set&) {}, &FactoryManager::FactoryGetPQ4Version, "QMAP_Main_27.03_20260115"},
    {"FrcAsWritten", [](sim::Set&) {}, &FactoryManager::FactoryGetFRCVersion, "FRC_R1.4.2"},
    {"LongPQCutToBuffer", [](sim::Set& tv) {S<sim::SystemInfoState>(tv).pqVersion = std::string(40, 'P'); }, &FactoryManager::FactoryGetPQVersion, "PPPPPPPPPPPPPPPPPPPP"},
    {"LongCESICutToBuffer", [](sim::Set& tv) {S<sim::SystemInfoState>(tv).cesiVersion = "CESI-0123456789-ABCDEFGH"; }, &FactoryManager::FactoryGetCESIVersion, "CESI-0123456789-ABCD"},
    {"UnterminatedFieldStopsAtItsEnd", [](sim::Set& tv) {S<sim::SystemInfoState>(tv).dpddVersion = k32; }, &FactoryManager::FactoryGetDPDDVersion, k32.c_str()},
    {"NeuSoft", [](sim::Set&) {}, &FactoryManager::FactoryGetNeuSoftVersion, "NS-SDK 3.0.8"},
    {"IPRC", [](sim::Set&) {}, &FactoryManager::FactoryGetIPRCVersion, "IPRC 1.0.3"},
    {"IRBlaster", [](sim::Set&) {}, &FactoryManager::FactoryGetIRBlasterDB, "IRB_DB_2026_03"},
    {"AsfFieldsOverlap", [](sim::Set& tv) {S<sim::SSSoundState>(tv).asfParams[0] = 0x00010203; }, &FactoryManager::FactoryGetASF_Version, "ver. 1.102.10203"},
    {"AsfCutTo20Characters", [](sim::Set& tv) {S<sim::SSSoundState>(tv).asfParams[0] = 0xFFFFFFFF; }, &FactoryManager::FactoryGetASF_Version, "ver. FFFF.FFFFFF.FFF"},
    {"ChannelDatabaseEmpty", [](sim::Set&) {}, &FactoryManager::FactoryGetChDBVersion, ""},
    {"SerialNumber", [](sim::Set&) {}, &FactoryManager::FactoryGetSerialNo, "VQ2611A0004812"},
    {"SerialOfFifteenCharacters", [](sim::Set& tv) {S<sim::FactoryIdentityState>(tv).SetSerial("ABCDEFGHIJKLMNO"); }, &FactoryManager::FactoryGetSerialNo, "ABCDEFGHIJKLMNO"},
    {"SerialNeverWritten", [](sim::Set& tv) {S<sim::FactoryIdentityState>(tv).EraseSerial(); }, &FactoryManager::FactoryGetSerialNo, " "},
    {"PowerOnCounterLittleEndian", [](sim::Set& tv) {S<sim::FactoryStoreState>(tv).SetU32(79, 0x01020304); }, &FactoryManager::FactoryGetPOT, "16909060"},
    {"CounterSignedAsOnTheSet", [](sim::Set& tv) {S<sim::FactoryStoreState>(tv).SetU32(83, 0xFFFFFFFF); }, &FactoryManager::FactoryGetAST, "-1"},
    {"DlnaByte", [](sim::Set& tv) {S<sim::FactoryStoreState>(tv).Set(69, 200); }, &FactoryManager::FactoryGetDLNACheck, "200"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Readers, TextReaders, ::testing::ValuesIn(kTextCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(ReadersTest, ModelIdReadsItsBytesInThePrintedOrder) {
    Fm();
    Journal().Clear();
    Read(&FactoryManager::FactoryGetTVModelId);
    std::vector<std::string> reads;
    for (const auto& c : Journal().Calls("MSrv_Factory_Default::GetFactoryData")) {
        reads.push_back(c.args);
    }
    EXPECT_EQ(reads, (std::vector<std::string>{"[134]", "[135]", "[137]", "[136]"}));
}

TEST_F(ReadersTest, DialOverwritesTheDpddTextItShares) {
    const char* dpdd = Fm().FactoryGetDPDDVersion();
    ASSERT_STREQ(dpdd, "DPDD 4.2.1");
    const char* dial = Fm().FactoryGetDIALVersion();
    EXPECT_EQ(dpdd, dial);
    EXPECT_STREQ(dpdd, "DIAL 1.7.2");
}

TEST_F(ReadersTest, SameMacBytesLowerCaseWiredUpperCaseWireless) {
    auto& network = Tv().Get<sim::NetworkState>();
    network.ethernetMac = {{0xab, 0xcd, 0xef, 0x01, 0x23, 0x45}};
    network.wifiMac = network.ethernetMac;
    EXPECT_EQ(Read(&FactoryManager::FactoryGetMACAddress), "ab:cd:ef:01:23:45");
    EXPECT_EQ(Read(&FactoryManager::FactoryGetWLANMACAddress), "AB:CD:EF:01:23:45");
}

// ---- Main format -------------------------------------------------------------------------

struct FormatCase {
    ST_VIDEO_INFO timing;
    const char* expected;
};

class MainFormat : public ReadersTest, public ::testing::WithParamInterface<FormatCase> {};

TEST_P(MainFormat, ShowsLinesScanAndWholeHertz) {
    Players().currentSource = 3;
    Players().timing[3] = GetParam().timing;
    EXPECT_EQ(Read(&FactoryManager::FactoryGetMainFormat), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Readers, MainFormat,
                         ::testing::Values(FormatCase{{1080, 5000, 1}, "1080i 50"},
                                           FormatCase{{720, 6000, 0}, "720p 60"},
                                           FormatCase{{1080, 5994, 0}, "1080p 59"},
                                           FormatCase{{576, 2500, 2}, "576p 25"},
                                           FormatCase{{0, 0, 0}, "--"}));

TEST_F(ReadersTest, MainFormatOfASourceWithoutPlayerIsNull) {
    Players().sourcesWithoutPlayer.insert(MAPI_INPUT_SOURCE_DTV);
    EXPECT_EQ(Fm().FactoryGetMainFormat(), nullptr);
}

// ---- Status readers -----------------------------------------------------------------------

struct StatusCase {
    const char* name;
    unsigned short item;
    MAPI_U8 stored;
    StatusReader reader;
    MAPI_U8 expected;
};

std::ostream& operator<<(std::ostream& out, const StatusCase& c) { return out << c.name; }

class StatusReaders : public ReadersTest, public ::testing::WithParamInterface<StatusCase> {};

TEST_P(StatusReaders, MapTheStoredByte) {
    Store().Set(GetParam().item, GetParam().stored);
    EXPECT_EQ((Fm().*GetParam().reader)(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Readers, StatusReaders,
    ::testing::Values(
        StatusCase{"PalPassed", 302, 1, &FactoryManager::FactoryGetADAdjustPALStatus, 1},
        StatusCase{"PalOtherValue", 302, 2, &FactoryManager::FactoryGetADAdjustPALStatus, 0},
        StatusCase{"NtscFailed", 303, 0, &FactoryManager::FactoryGetADAdjustNTSCStatus, 0},
        StatusCase{"CompOtherValue", 301, 0xFF, &FactoryManager::FactoryGetADAdjustCOMPStatus, 0},
        StatusCase{"RgbFailed", 300, 0, &FactoryManager::FactoryGetADAdjustRGBStatus, 0},
        StatusCase{"VgaEdidNotWritten", 87, 0, &FactoryManager::FactoryGetEDIDVGA, 0},
        StatusCase{"VgaEdidVersion01", 87, 1, &FactoryManager::FactoryGetEDIDVGA, 1},
        StatusCase{"VgaEdidUnknownVersion", 87, 5, &FactoryManager::FactoryGetEDIDVGA, 2},
        StatusCase{"WriteProtectOff", 94, 0, &FactoryManager::FactoryGetWriteProtect, 0},
        StatusCase{"WriteProtectOtherValue", 94, 3, &FactoryManager::FactoryGetWriteProtect, 0}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(ReadersTest, CvbsPassesWithEitherStandardAndAlwaysReadsBoth) {
    const struct {
        MAPI_U8 pal, ntsc, expected;
    } cases[] = {{0, 0, 0}, {1, 0, 1}, {0, 1, 1}, {1, 1, 1}, {2, 2, 0}};
    for (const auto& c : cases) {
        Store().Set(302, c.pal);
        Store().Set(303, c.ntsc);
        Journal().Clear();
        EXPECT_EQ(Fm().FactoryGetADAdjustCVBSStatus(), c.expected) << +c.pal << " " << +c.ntsc;
        EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Default::GetFactoryData"), 2u);
    }
}

TEST_F(ReadersTest, HdmiEdidReadersAskTheirOwnPortAndKeepTheLowByte) {
    Identity().edidCheckSum = {{0, 1, 0x100, 0x101, 0}};
    EXPECT_EQ(Fm().FactoryGetEDIDHDMI1(), 1);
    EXPECT_EQ(Fm().FactoryGetEDIDHDMI2(), 0);
    EXPECT_EQ(Fm().FactoryGetEDIDHDMI3(), 1);
    EXPECT_EQ(Fm().FactoryGetEDIDHDMI4(), 0);
    std::string ports;
    for (const auto& call : Journal().Calls("MSrv_Factory_Cmd::EDIDCheckSum")) {
        ports += call.args;
    }
    EXPECT_EQ(ports, "[1][2][3][4]");
}

// ---- Buffers -------------------------------------------------------------------------------

TEST_F(ReadersTest, BufferIsReusedAndZeroedOverItsWholeSizeOnEveryCall) {
    Info().pqVersion = std::string(40, 'P');
    const char* first = Fm().FactoryGetPQVersion();
    Info().pqVersion = "PQ1";
    const char* second = Fm().FactoryGetPQVersion();
    EXPECT_EQ(first, second);
    const char expected[21] = "PQ1";
    EXPECT_EQ(std::memcmp(second, expected, sizeof(expected)), 0);

    Fm().FactoryGetZYTAppVersion();
    Players().dtvPresent = false;
    EXPECT_STREQ(Fm().FactoryGetZYTAppVersion(), "") << "no stale text from the last call";
}

TEST_F(ReadersTest, FailedAllocationGivesNullUntilMemoryComesBack) {
    Fm();
    if (!sim::AllocationsCanFail()) {
        GTEST_SKIP() << "a sanitizer's allocator is in charge";
    }
    sim::FailAllocations(true);
    const char* model = Fm().FactoryGetTVModel();
    const char* format = Fm().FactoryGetMainFormat();
    const MAPI_U8 pal = Fm().FactoryGetADAdjustPALStatus();
    sim::FailAllocations(false);
    EXPECT_EQ(model, nullptr);
    EXPECT_EQ(format, nullptr);
    EXPECT_EQ(pal, 1) << "status readers need no buffer";
    EXPECT_STREQ(Fm().FactoryGetTVModel(), "QV32H249");
}

TEST_F(ReadersTest, FourPanelStubsReturnOneEmptyAreaAndSaySo) {
    const TextReader stubs[] = {
        &FactoryManager::FactoryGetREVICVersion,   &FactoryManager::FactoryGetARMVersion,
        &FactoryManager::FactoryGetCRISCVersion,   &FactoryManager::FactoryGetBRISCVersion,
        &FactoryManager::FactoryGetFPGAVersion,    &FactoryManager::FactoryGetBootLoaderVersion,
        &FactoryManager::FactoryGetUSBConnect,     &FactoryManager::FactoryGetRevicMemory,
        &FactoryManager::FactoryGetRevicCtrl,      &FactoryManager::FactoryGetRevicPQVersion,
        &FactoryManager::FactoryGetInformation,    &FactoryManager::FactoryGetGPIOConnect,
        &FactoryManager::FactoryGetUniformityData, &FactoryManager::FactoryGetRevicLD_DATA,
    };
    Fm();
    testing::internal::CaptureStdout();
    const char* area = (Fm().*stubs[0])();
    for (TextReader stub : stubs) {
        const char* text = (Fm().*stub)();
        EXPECT_EQ(text, area);
        EXPECT_STREQ(text, "");
    }
    const std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(out.find("\n~~ [FactoryGetREVICVersion] is for 4k2k project. \n~~ "
                       "[FactoryGetREVICVersion] is for 4k2k project. \n~~ "
                       "[FactoryGetARMVersion] is for 4k2k project. "),
              0u);
    size_t lines = 0;
    for (size_t at = out.find("is for 4k2k project. "); at != std::string::npos;
         at = out.find("is for 4k2k project. ", at + 1)) {
        ++lines;
    }
    EXPECT_EQ(lines, 15u) << "one line per call";
    EXPECT_NE(out.find("[FactoryGetRevicMemory]"), std::string::npos);
}

}  // namespace
