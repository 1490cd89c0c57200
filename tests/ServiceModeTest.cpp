// The D-mode / S-mode service-data editor on the simulated set: service commands
// (event 200), the remote's keys while it is open, what the page is sent and what
// reaches the factory store.
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "CallOrder.h"
#include "FactoryManager.h"
#include "MSrv_Factory_Cmd.h"
#include "SetFixture.h"
#include "SimFactoryStore.h"
#include "SimMMode.h"
#include "SimServiceMode.h"
#include "UiNotes.h"

namespace {

constexpr unsigned long kNext = 0xF002, kNext2 = 0xF046, kPrev = 0xF003, kPrev2 = 0xF047;
constexpr unsigned long kValueUp = 0xF001, kValueUp2 = 0xF04C, kValueDown = 0xF000,
                        kValueDown2 = 0xF04D;
constexpr unsigned long kExit = 0xF062, kPanelExit = 0xF557, kControl = 0xF068;
constexpr unsigned long kResetFirst = 0xF014, kResetSecond = 0xF554;

class ServiceModeTest : public HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        Service();  // the service fields as on a fresh set
    }
    sim::ServiceModeState& Service() { return Tv().Get<sim::ServiceModeState>(); }
    MSrv_Factory_Cmd& Cmd() { return sim::ServiceModeState::Cmd(); }
    sim::FactoryStoreState& Store() { return Tv().Get<sim::FactoryStoreState>(); }
    MAPI_U8 Value(MAPI_U16 addr) { return Store().Get(addr); }

    // The editor open at addr with the given value, nothing recorded yet.
    void OpenAt(MAPI_U16 addr, MAPI_U8 value = 0) {
        Cmd().g_u16ServiceModeAddr = addr;
        Store().Set(addr, value);
        Post(200);
        Forget();
    }
    void Forget() {
        ClearUiNotes();
        Journal().Clear();
    }
    MAPI_BOOL Key(unsigned long key) { return Fm().FactoryDoKeyAction(key); }
};

NoteList ValueNotes(const std::string& addr, const std::string& hex, const std::string& bin) {
    return {Str("DMode-Addr", addr), Str("DMode-Data", hex), Str("DMode-Bin", bin)};
}
NoteList LoadNotes(bool editable, const std::string& addr, const std::string& hex,
                   const std::string& bin) {
    NoteList notes = {Num("DMode-Value-Color", editable ? 1 : 0)};
    for (const Note& n : ValueNotes(addr, hex, bin)) {
        notes.push_back(n);
    }
    return notes;
}

// ---- Item names --------------------------------------------------------------------

TEST_F(ServiceModeTest, TheItemAtTheCurrentAddressIsNamed) {
    const std::pair<MAPI_U16, const char*> listed[] = {
        {0x800, "RCUT"},
        {0x7FF, "RCUT"},
        {0x000, "RCUT"},
        {0xD83, "AUD DAEQ PARA121_4"},
        {0xBA0, "AUD DAEQ PARA1_1"},
        {0xBA2, "AUD DAEQ PARA1_3"},
        {0xD84, ""},
        {0xFFFF, ""},
        {0xB17, ""},
        {0xB2D, ""},
        {0xB3F, ""},
        {0xB91, ""},
        {0xB93, ""},
        {0x856, "COLC VIDEO DYNA"},
        {0x93B, "BL_WHITE_DET"},
        // Item 158 repeats 159; 0x89A is item 154, in the HDMI 4K run before them.
        {0x89E, "SHPC HDMI HD MOVIE"},
        {0x89F, "SHPC HDMI HD MOVIE"},
        {0x89A, "SHPC HDMI 4K STANDARD"},
        {0x95E, "SOC SHPC DTV SD DYNAMIC"},
        {0x964, "SOC SHPC 3D VIDEO DYNAMIC"},
        {0x984, "SOC RESO PLUS"},
        {0xAD9, "AUD OUTPUT"},
    };
    NoteList expected;
    for (const auto& item : listed) {
        Cmd().g_u16ServiceModeAddr = item.first;
        Fm().FactoryLoadMode();
        expected.push_back(Str("DMode-Option", item.second));
    }
    EXPECT_EQ(UiNotes(), expected);
}

// ---- Opening ------------------------------------------------------------------------

TEST_F(ServiceModeTest, AServiceCommandOpensTheEditorOnTheItemThePlatformHolds) {
    Cmd().g_u16ServiceModeAddr = 0x856;
    Store().Set(0x856, 5);
    Fm().m_bVersionMode = 1;
    Post(200);
    EXPECT_EQ(UiNotes(), Notes(R"-(
        HideAllUIExcept="DMode" DMode=1 DMode-Option="COLC VIDEO DYNA" DMode-Value-Color=1
        DMode-Addr="0x0856" DMode-Data="05H" DMode-Bin="00000101B"
    )-"));
    EXPECT_EQ(Fm().m_bDModeOpen, 1);
    EXPECT_EQ(Fm().m_bVersionMode, 0) << "the page reset runs first";
    EXPECT_EQ(
        CallOrder({"MSrv_Factory_Cmd::SetFactoryOSDStatus", "MSrv_Factory_Cmd::Set_S_D_Mode",
                   "WebAppMgr_HidePage"}),
        (std::vector<std::string>{
            "MSrv_Factory_Cmd::SetFactoryOSDStatus[0]", "WebAppMgr_HidePage[1]",
            "MSrv_Factory_Cmd::SetFactoryOSDStatus[1]", "MSrv_Factory_Cmd::Set_S_D_Mode[1]"}));
    EXPECT_EQ(Cmd().g_u16ServiceModeAddr, 0x856) << "opening never moves the address";
    EXPECT_TRUE(Journal().HasLog("~~ /OTHER/ "));
}

TEST_F(ServiceModeTest, ACommandWhileOpenNeitherResetsNorHidesThePagesAgain) {
    OpenAt(0x800, 0x80);
    Post(200);
    EXPECT_EQ(UiNotes(), Notes(R"-(
        DMode=1 DMode-Option="RCUT" DMode-Value-Color=1 DMode-Addr="0x0800" DMode-Data="80H"
        DMode-Bin="10000000B"
    )-"));
    EXPECT_EQ(Journal().CountCalls("WebAppMgr_HidePage"), 0u);
}

// ---- Service commands ----------------------------------------------------------------

struct CommandCase {
    const char* name;
    MAPI_U8 step, mode, wb;
    MAPI_U8 value, min, max;
    MAPI_U8 expected;
    NoteList after;  // what follows the value notes
    const char* log;
};
std::ostream& operator<<(std::ostream& out, const CommandCase& c) { return out << c.name; }

class ServiceCommandTest : public ServiceModeTest,
                           public testing::WithParamInterface<CommandCase> {};

TEST_P(ServiceCommandTest, StepsTheValueAndStoresItThroughTheFactoryStore) {
    const CommandCase& c = GetParam();
    OpenAt(0x805, c.value);
    Fm().m_bDModeOpen = 1;
    Service().ranges[0x805] = {c.min, c.max};
    Cmd().g_u8ServiceStepCmd = c.step;
    Cmd().g_u8ServiceModeSelect = c.mode;
    Cmd().g_u8WhiteBalanceCmd = c.wb;
    Post(200);
    char hex[8];
    std::snprintf(hex, sizeof(hex), "%02XH", c.expected);
    std::string bin;
    for (int bit = 7; bit >= 0; --bit) {
        bin += (c.expected >> bit) & 1 ? '1' : '0';
    }
    NoteList expected = {Num("DMode", 1), Str("DMode-Option", "BDRV")};
    for (const Note& n : ValueNotes("0x805", hex, bin + "B")) {
        expected.push_back(n);
    }
    expected.insert(expected.end(), c.after.begin(), c.after.end());
    EXPECT_EQ(UiNotes(), expected);
    EXPECT_EQ(Value(0x805), c.expected);
    EXPECT_EQ(
        CallOrder({"MSrv_Factory_Default::SetFactoryData", "MSrv_Factory_Cmd::ProcessServiceData"}),
        std::vector<std::string>{"MSrv_Factory_Default::SetFactoryData[2053, " +
                                 std::to_string(c.expected) + "]"})
        << "written even when unchanged, and never through the service-data call";
    EXPECT_TRUE(Journal().HasLog(c.log)) << c.log;
}

INSTANTIATE_TEST_SUITE_P(
    Commands, ServiceCommandTest,
    // clang-format off
    testing::Values(
        CommandCase{"UpOne", 28, 0, 0, 5, 0, 10, 6, {}, "~~ ByStep TRUE"},
        CommandCase{"UpOneWrapsAtMax", 28, 0, 0, 10, 2, 10, 2, {}, "~~ ByStep TRUE"},
        CommandCase{"UpFourReachesMax", 30, 0, 0, 6, 0, 10, 10, {}, "~~ ByStep TRUE"},
        CommandCase{"UpFourAtMaxMinus3Stays", 30, 0, 0, 7, 0, 10, 7, {}, "~~ ByStep TRUE"},
        CommandCase{"UpFourAtMaxMinus2Stays", 30, 0, 0, 8, 0, 10, 8, {}, "~~ ByStep TRUE"},
        CommandCase{"UpFourAtMaxStays", 30, 0, 0, 10, 0, 10, 10, {}, "~~ ByStep TRUE"},
        CommandCase{"DownOne", 29, 0, 0, 5, 0, 10, 4, {}, "~~ ByStep FALSE"},
        CommandCase{"DownOneWrapsAtMin", 29, 0, 0, 2, 2, 10, 10, {}, "~~ ByStep FALSE"},
        CommandCase{"DownFourReachesMin", 31, 0, 0, 6, 2, 10, 2, {}, "~~ ByStep FALSE"},
        CommandCase{"DownFourAtMinPlus3Stays", 31, 0, 0, 5, 2, 10, 5, {}, "~~ ByStep FALSE"},
        CommandCase{"DownFourAtMinPlus2Stays", 31, 0, 0, 4, 2, 10, 4, {}, "~~ ByStep FALSE"},
        CommandCase{"OutsideTheRangeStays", 28, 0, 0, 20, 0, 10, 20, {}, "~~ ByStep TRUE"},
        CommandCase{"StepWinsOverTheModeSelector", 28, 254, '3', 5, 0, 10, 6, {}, "~~ ByStep TRUE"},
        CommandCase{"EDModeRewritesTheValue", 0, 254, '3', 5, 0, 10, 5, {Str("S-D", "D"), Num("S-Mode", 1)}, "~~ /E/D-mode/ "},
        CommandCase{"SModeRewritesTheValue", 0, 195, 0, 5, 0, 10, 5, {Str("S-D", "S"), Num("S-Mode", 1)}, "~~ /S-mode/ "},
        CommandCase{"Rdrv", 0, 0, '3', 5, 0, 10, 5, {Num("S-Mode", 0)}, "~~ /RDRV/ "},
        CommandCase{"Bdrv", 0, 0, '4', 5, 0, 10, 5, {Num("S-Mode", 0)}, "~~ /BDRV/ "},
        CommandCase{"ReadBdrv", 0, 0, '5', 5, 0, 10, 5, {Num("S-Mode", 0)}, "~~ /Read BDRV/ "},
        CommandCase{"ReadRdrv", 0, 0, '6', 5, 0, 10, 5, {Num("S-Mode", 0)}, "~~ /Read RDRV/ "}),
    // clang-format on
    [](const testing::TestParamInfo<CommandCase>& info) { return std::string(info.param.name); });

TEST_F(ServiceModeTest, ServiceCommandsChangeReadOnlyItems) {
    OpenAt(0xB17, 5);
    Cmd().g_u8ServiceStepCmd = 28;
    Post(200);
    EXPECT_EQ(Value(0xB17), 6);
}

TEST_F(ServiceModeTest, AnyOtherCommandOnlyShowsTheItem) {
    OpenAt(0xB20, 0x7F);
    Cmd().g_u8WhiteBalanceCmd = '7';
    Post(200);
    const NoteList expected = {Num("DMode", 1),
                               Str("DMode-Option", ""),
                               Num("DMode-Value-Color", 0),
                               Str("DMode-Addr", "0x0B20"),
                               Str("DMode-Data", "7FH"),
                               Str("DMode-Bin", "01111111B")};
    EXPECT_EQ(UiNotes(), expected);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Default::SetFactoryData"), 0u);
}

// ---- Value and digit keys ------------------------------------------------------------

struct ValueKeyCase {
    unsigned long key;
    MAPI_U8 value, min, max, expected;
};

class ServiceValueKeyTest : public ServiceModeTest,
                            public testing::WithParamInterface<ValueKeyCase> {};

TEST_P(ServiceValueKeyTest, StepByOneWithWrapThroughTheServiceDataCall) {
    const ValueKeyCase& c = GetParam();
    OpenAt(0x829, c.value);
    Service().ranges[0x829] = {c.min, c.max};
    EXPECT_EQ(Key(c.key), 1);
    char hex[8];
    std::snprintf(hex, sizeof(hex), "%02XH", c.expected);
    EXPECT_EQ(UiNotes().at(0), Str("DMode-Addr", "0x0829"));
    EXPECT_EQ(UiNotes().at(1), Str("DMode-Data", hex));
    EXPECT_EQ(
        CallOrder({"MSrv_Factory_Default::SetFactoryData", "MSrv_Factory_Cmd::ProcessServiceData"}),
        std::vector<std::string>{"MSrv_Factory_Cmd::ProcessServiceData[2089, " +
                                 std::to_string(c.expected) + "]"});
    EXPECT_EQ(Value(0x829), c.expected);
}

INSTANTIATE_TEST_SUITE_P(Keys, ServiceValueKeyTest,
                         testing::Values(ValueKeyCase{kValueUp, 5, 0, 10, 6},
                                         ValueKeyCase{kValueUp2, 10, 3, 10, 3},
                                         ValueKeyCase{kValueUp, 255, 0, 255, 0},
                                         ValueKeyCase{kValueDown, 5, 0, 10, 4},
                                         ValueKeyCase{kValueDown2, 3, 3, 10, 10},
                                         ValueKeyCase{kValueDown, 0, 0, 255, 255}));

TEST_F(ServiceModeTest, ValueKeysLeaveOldMemoryDataAloneButDigitKeysToggleIt) {
    for (MAPI_U16 addr : {MAPI_U16(0xB17), MAPI_U16(0xB2D)}) {
        OpenAt(addr, 5);
        EXPECT_EQ(Key(kValueUp), 1);
        EXPECT_EQ(Key(kValueDown2), 1);
        EXPECT_EQ(UiNotes(), NoteList{});
        EXPECT_EQ(Value(addr), 5);
        Cmd().g_bDModeOpen = 1;
        EXPECT_EQ(Key('2'), 1);
        EXPECT_EQ(Value(addr), 7);
        Cmd().g_bDModeOpen = 0;
    }
    // The neighbours are ordinary items.
    for (MAPI_U16 addr : {MAPI_U16(0xB16), MAPI_U16(0xB2E)}) {
        OpenAt(addr, 5);
        Key(kValueUp);
        EXPECT_EQ(Value(addr), 6) << std::hex << addr;
    }
}

TEST_F(ServiceModeTest, DigitKeysToggleBitsWhateverTheRange) {
    OpenAt(0x900, 0x80);
    Cmd().g_bDModeOpen = 1;
    Service().ranges[0x900] = {0, 10};
    EXPECT_EQ(Key('8'), 1);
    EXPECT_EQ(UiNotes(), ValueNotes("0x900", "00H", "00000000B"));
    EXPECT_EQ(Key('8'), 1);
    EXPECT_EQ(Key('1'), 1);
    EXPECT_EQ(Value(0x900), 0x81);
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::ProcessServiceData"),
              (std::vector<std::string>{"[2304, 0]", "[2304, 128]", "[2304, 129]"}));
    EXPECT_TRUE(Journal().HasLog("~~ 1 [num key]"));
}

TEST_F(ServiceModeTest, ShortRangeDigitsJumpWithoutRedrawing) {
    struct Jump {
        unsigned long key;
        MAPI_U16 addr;
    };
    OpenAt(0x810);
    Cmd().g_bServiceShortRange = 1;
    for (Jump j : {Jump{'1', 0x800}, Jump{'2', 0x801}, Jump{'3', 0x802}, Jump{'4', 0x835}}) {
        Cmd().g_u16ServiceModeAddr = 0x810;
        EXPECT_EQ(Key(j.key), 1);
        EXPECT_EQ(Cmd().g_u16ServiceModeAddr, j.addr);
    }
    for (unsigned long key : {'5', '6', '8'}) {
        EXPECT_EQ(Key(key), 1);
        EXPECT_EQ(Cmd().g_u16ServiceModeAddr, 0x835);
    }
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::CMD_HandleEvent"), std::vector<std::string>{});
    EXPECT_EQ(Key('7'), 1);
    EXPECT_EQ(Calls("MSrv_Factory_Cmd::CMD_HandleEvent"),
              std::vector<std::string>{"[64, 238, 163, 0, 1]"});
    EXPECT_EQ(UiNotes(), NoteList{});
    EXPECT_TRUE(Journal().HasLog("~~ 2 [num key]"));
    EXPECT_FALSE(Journal().HasLog("~~ 1 [num key]"));
}

TEST_F(ServiceModeTest, DigitsDoNothingWithoutARangeFlag) {
    OpenAt(0x810, 3);
    for (unsigned long key : {'1', '4', '7', '8'}) {
        EXPECT_EQ(Key(key), 1);
    }
    EXPECT_EQ(Cmd().g_u16ServiceModeAddr, 0x810);
    EXPECT_EQ(Value(0x810), 3);
    EXPECT_EQ(UiNotes(), NoteList{});
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Cmd::CMD_HandleEvent"), 0u);
}

// ---- Navigation ------------------------------------------------------------------------

struct NavCase {
    const char* name;
    bool shortRange, dModeOpen;
    MAPI_U16 from;
    unsigned long key;
    MAPI_U16 to;
    const char* shown;  // the name published, or null when nothing is redrawn
};
std::ostream& operator<<(std::ostream& out, const NavCase& c) { return out << c.name; }

class ServiceNavTest : public ServiceModeTest, public testing::WithParamInterface<NavCase> {};

TEST_P(ServiceNavTest, MovesInsideTheRangeOfTheFlags) {
    const NavCase& c = GetParam();
    OpenAt(c.from);
    Cmd().g_bServiceShortRange = c.shortRange;
    Cmd().g_bDModeOpen = c.dModeOpen;
    Store().Set(c.to, 0x2A);
    EXPECT_EQ(Key(c.key), 1);
    EXPECT_EQ(Cmd().g_u16ServiceModeAddr, c.to);
    if (c.shown == nullptr) {
        EXPECT_EQ(UiNotes(), NoteList{});
        return;
    }
    char addr[8];
    std::snprintf(addr, sizeof(addr), "0x%04X", c.to);
    NoteList expected = {Str("DMode-Option", c.shown)};
    for (const Note& n : LoadNotes(true, addr, "2AH", "00101010B")) {
        expected.push_back(n);
    }
    EXPECT_EQ(UiNotes(), expected);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Ranges, ServiceNavTest, testing::Values(
    NavCase{"FullRangeNext", false, true, 0x835, kNext, 0x836, "CNTX DTV"},
    NavCase{"FullRangeNextWrapsAfterAudOutput", false, true, 0xAD9, kNext2, 0x800, "RCUT"},
    NavCase{"FullRangePreviousWrapsToAudOutput", false, true, 0x800, kPrev, 0xAD9, "AUD OUTPUT"},
    NavCase{"ShortRangeNextWrapsAfterTheWhiteBalance", true, false, 0x820, kNext, 0x800, "RCUT"},
    NavCase{"ShortRangePreviousWrapsToTheLastWhiteBalanceItem", true, false, 0x800, kPrev2, 0x820, "OSBD 3D WARM"},
    NavCase{"ShortRangePrevious", true, false, 0x805, kPrev, 0x804, "GDRV"},
    NavCase{"AboveTheRangeNextGoesToItsStart", true, false, 0xB00, kNext, 0x800, "RCUT"},
    NavCase{"BelowTheRangePreviousStays", true, false, 0x700, kPrev, 0x700, nullptr},
    NavCase{"DModeOpenWinsOverShortRange", true, true, 0x820, kNext, 0x821, "OPT1"},
    // Without either flag the range is the single address 0.
    NavCase{"NoFlagNextGoesToZero", false, false, 0x800, kNext, 0x000, "RCUT"},
    NavCase{"NoFlagPreviousLeavesTheRange", false, false, 0x800, kPrev, 0x7FF, nullptr}),
    [](const testing::TestParamInfo<NavCase>& info) { return std::string(info.param.name); });
// clang-format on

TEST_F(ServiceModeTest, TheNavigationLockHoldsTheItem) {
    OpenAt(0x805);
    Cmd().g_bDModeOpen = 1;
    Cmd().g_bServiceNavLock = 1;
    EXPECT_EQ(Key(kNext), 1);
    EXPECT_EQ(Key(kPrev), 1);
    EXPECT_EQ(Cmd().g_u16ServiceModeAddr, 0x805);
    EXPECT_EQ(UiNotes(), NoteList{});
}

// ---- Reset combination, control step, other keys ----------------------------------------

TEST_F(ServiceModeTest, TheResetCombinationRestoresAllServiceData) {
    OpenAt(0x800, 0x11);
    Store().Set(0x900, 0x22);
    Store().Set(0xA10, 0x33);
    Store().Set(0xB17, 0x44);
    Tv().Get<sim::FactoryIdentityState>().edidCheckSum[2] = 0;
    EXPECT_EQ(Key(kResetFirst), 0) << "the first key is not the editor's";
    EXPECT_EQ(Key(kResetSecond), 1);
    EXPECT_EQ(CallOrder({"MSrv_Factory_Default::RestoreDefaultServiceData",
                         "MSrv_Factory_Default::RestoreDefaultServiceColor",
                         "MSrv_Factory_Default::RestoreDefaultServiceAudio",
                         "MSrv_Factory_Default::RestoreDefaultServiceEDID"}),
              (std::vector<std::string>{"MSrv_Factory_Default::RestoreDefaultServiceData[0]",
                                        "MSrv_Factory_Default::RestoreDefaultServiceColor[0]",
                                        "MSrv_Factory_Default::RestoreDefaultServiceAudio[0]",
                                        "MSrv_Factory_Default::RestoreDefaultServiceEDID[]"}));
    EXPECT_EQ(Value(0x800), sim::ServiceDefaultValue(0x800));
    EXPECT_EQ(Value(0x900), 0);
    EXPECT_EQ(Value(0xA10), 0);
    EXPECT_EQ(Value(0xB17), 0x44) << "old memory data is never restored";
    EXPECT_EQ(Tv().Get<sim::FactoryIdentityState>().edidCheckSum[2], 1u);
    EXPECT_TRUE(Journal().HasLog(
        "~~ /MVKP_RIGHT/ (m_pcFactoryCmd->g_u16ServiceModeAddr, SERVICE_MODE_NUM)-(2048, 1412), "
        "u8KeyPadRepeated = 1"));
    EXPECT_EQ(Fm().m_u8KeyPadRepeated, 0);
    EXPECT_EQ(Fm().m_u32DModeLastKey, 0u);
    // The combination is used up: the second key alone only logs.
    Journal().Clear();
    EXPECT_EQ(Key(kResetSecond), 1);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Default::RestoreDefaultServiceData"), 0u);
}

TEST_F(ServiceModeTest, TheSecondResetKeyAloneOnlyLogs) {
    for (auto keys :
         {std::vector<unsigned long>{kResetSecond},
          std::vector<unsigned long>{kResetFirst, kNext, kResetSecond},
          std::vector<unsigned long>{kResetSecond, kResetFirst, 0x1234, kResetSecond}}) {
        OpenAt(0x800, 0x11);
        for (unsigned long key : keys) {
            Key(key);
        }
        EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Default::RestoreDefaultServiceData"), 0u);
        EXPECT_EQ(Value(0x800), 0x11);
        EXPECT_TRUE(Journal().HasLog("u8KeyPadRepeated = 0"));
    }
}

TEST_F(ServiceModeTest, TheControlKeyCyclesThePanelStep) {
    OpenAt(0x800);
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(Key(kControl), 1);
    }
    EXPECT_EQ(Calls("MSrv_Control::SetFactoryControlStep"),
              (std::vector<std::string>{"[1, 2, 0, 40]", "[1, 4, 0, 40]", "[1, 3, 0, 40]",
                                        "[1, 1, 0, 40]", "[1, 0, 0, 40]", "[0, 0, 0, 40]",
                                        "[1, 2, 0, 40]"}));
    EXPECT_TRUE(Service().controlEnabled);
}

TEST_F(ServiceModeTest, OtherKeysAreLeftToTheTv) {
    OpenAt(0x800, 1);
    for (unsigned long key : {0x0DUL, 0xF012UL, 0xF00FUL, static_cast<unsigned long>('0')}) {
        EXPECT_EQ(Key(key), 0) << std::hex << key;
    }
    EXPECT_EQ(UiNotes(), NoteList{});
    EXPECT_EQ(Fm().m_bDModeOpen, 1);
}

// ---- Leaving ----------------------------------------------------------------------------

TEST_F(ServiceModeTest, ExitKeysCloseTheEditorAndEndAWhiteBalanceSession) {
    for (unsigned long key : {kExit, kPanelExit}) {
        OpenAt(0x803);
        Cmd().g_u8WhiteBalanceCmd = '4';
        Cmd().g_bServiceNavLock = 1;
        EXPECT_EQ(Key(key), 1);
        EXPECT_EQ(Fm().m_bDModeOpen, 0);
        EXPECT_EQ(Cmd().g_u8WhiteBalanceCmd, 0);
        EXPECT_EQ(Cmd().g_bServiceNavLock, 0);
        EXPECT_EQ(UiNotes(), NoteList{Num("DMode", 0)});
        EXPECT_EQ(CallOrder({"MSrv_Factory_Cmd::SetFactoryOSDStatus",
                             "MSrv_Factory_Cmd::Set_S_D_Mode", "WebAppMgr_ShowPage"}),
                  (std::vector<std::string>{"MSrv_Factory_Cmd::SetFactoryOSDStatus[0]",
                                            "MSrv_Factory_Cmd::Set_S_D_Mode[0]",
                                            "WebAppMgr_ShowPage[1]"}));
        EXPECT_EQ(Key(kNext), 0) << "the editor no longer takes keys";
    }
}

TEST_F(ServiceModeTest, ExitKeepsTheNavigationLockWithoutAWhiteBalanceCommand) {
    OpenAt(0x803);
    Cmd().g_u8WhiteBalanceCmd = '7';
    Cmd().g_bServiceNavLock = 1;
    Key(kExit);
    EXPECT_EQ(Cmd().g_u8WhiteBalanceCmd, '7');
    EXPECT_EQ(Cmd().g_bServiceNavLock, 1);
}

TEST_F(ServiceModeTest, NineGoesOnToTheVersionPage) {
    OpenAt(0x803);
    EXPECT_EQ(Key('9'), 1);
    const auto calls =
        CallOrder({"MSrv_Factory_Cmd::SetFactoryOSDStatus", "MSrv_Factory_Cmd::Set_S_D_Mode"});
    ASSERT_GE(calls.size(), 2u);
    EXPECT_EQ(calls[0], "MSrv_Factory_Cmd::SetFactoryOSDStatus[0]");
    EXPECT_EQ(calls[1], "MSrv_Factory_Cmd::Set_S_D_Mode[0]");
    EXPECT_EQ(Service().sdMode, 0);
    for (const Note& n : UiNotes()) {
        EXPECT_NE(n, Num("DMode", 0)) << "the version page takes the screen over";
    }
    EXPECT_TRUE(Journal().HasLog("OnEvent_FactoryVersion") || Fm().m_bVersionMode == 1);
    EXPECT_EQ(Fm().m_bDModeOpen, 0);
}

// ---- Binary text routines ----------------------------------------------------------------

TEST_F(ServiceModeTest, BinaryTextRoutinesFillEveryPosition) {
    char text[9];
    Fm().FactoryBinUlongToString(5, text, 8);
    EXPECT_STREQ(text, "00000101");
    unsigned short wide[9];
    Fm().FactoryBinUlongToU16String(0xA0, wide, 8);
    EXPECT_EQ(std::u16string(wide, wide + 9), std::u16string(u"10100000") + u'\0');
}

}  // namespace
