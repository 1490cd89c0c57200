// The PEQ editor on the set: the store's record, the band layouts, stepping every
// item at both ends, what is stored and what reaches the sound processor.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "../factorymanager/src/PeqStore.h"
#include "FactoryKeyCodes.h"
#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimFactoryStore.h"
#include "SimMMode.h"
#include "SimSoundEditors.h"
#include "UiNotes.h"

namespace {

constexpr unsigned long kLeft = 0xF000;
constexpr unsigned long kRight = 0xF001;
constexpr unsigned kArea = 3468;
using Record = std::array<MAPI_U8, 6>;

// ---- The record codec --------------------------------------------------------------

struct DecodeCase {
    const char* name;
    Record stored;
    peq::Band expected;
};

class PeqDecodeTest : public testing::TestWithParam<DecodeCase> {};

TEST_P(PeqDecodeTest, OutOfRangeBytesLoadAsZero) {
    const DecodeCase& c = GetParam();
    std::vector<MAPI_U8> area(12, 0xEE);
    std::copy(c.stored.begin(), c.stored.end(), area.begin() + 6);
    const peq::Band b = peq::Decode(area.data(), 1);
    EXPECT_EQ(b.f0Index, c.expected.f0Index);
    EXPECT_EQ(b.f0Div100, c.expected.f0Div100);
    EXPECT_EQ(b.qIndex, c.expected.qIndex);
    EXPECT_EQ(b.gainIndex, c.expected.gainIndex);
    EXPECT_EQ(b.filterMode, c.expected.filterMode);
}

INSTANTIATE_TEST_SUITE_P(
    Records, PeqDecodeTest,
    testing::Values(
        DecodeCase{"TopOfEveryRange", {200, 99, 0x06, 0x41, 240, 3}, {200, 99, 1551, 240, 3}},
        DecodeCase{"OneAboveEveryRange", {201, 100, 0x06, 0x42, 241, 4}, {0, 0, 0, 0, 0}},
        DecodeCase{"QWordBelowItsBias", {1, 2, 0x00, 0x00, 120, 0}, {1, 2, 0, 120, 0}},
        DecodeCase{"QWordIsBigEndian", {0, 0, 0x01, 0x00, 0, 1}, {0, 0, 206, 0, 1}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(PeqCodecTest, QGoesLowByteFirstWithItsBias) {
    std::vector<MAPI_U8> area(12, 0);
    peq::Band value;
    value.qIndex = 1551;  // word 1601 = 0x0641
    unsigned offsets[2] = {};
    ASSERT_EQ(peq::Encode(area.data(), 1, peq::kQLow, value, offsets), 2u);
    EXPECT_EQ(offsets[0], 3u);
    EXPECT_EQ(offsets[1], 2u);
    EXPECT_EQ(area[8], 0x06);
    EXPECT_EQ(area[9], 0x41);
    EXPECT_EQ(peq::Address(27, 5), kArea + 167);
}

struct LabelCase {
    bool audyssey;
    unsigned band;
    const char* label;  // null: never shown
};

TEST(PeqLayoutTest, BandLabelsOfBothLayouts) {
    const LabelCase cases[] = {
        {false, 0, "0 (TV stand)"},  {false, 7, "7 (TV stand)"}, {false, 8, "0 (TV wall)"},
        {false, 15, "7 (TV wall)"},  {false, 16, nullptr},       {true, 6, "6 (TV table)"},
        {true, 7, nullptr},          {true, 8, "7 (LOW table)"}, {true, 9, "7 (HIGH table)"},
        {true, 10, "0 (SKYPE)"},     {true, 17, "7 (SKYPE)"},    {true, 18, "0 (TV wall)"},
        {true, 24, "6 (TV wall)"},   {true, 25, nullptr},        {true, 26, "7 (LOW wall)"},
        {true, 27, "7 (HIGH wall)"}, {true, 28, nullptr},
    };
    for (const LabelCase& c : cases) {
        const char* got = peq::BandLabel(c.audyssey, c.band);
        EXPECT_EQ(got == nullptr ? "(none)" : std::string(got),
                  c.label == nullptr ? "(none)" : std::string(c.label))
            << c.audyssey << " band " << c.band;
    }
    EXPECT_EQ(peq::AreaSize(false), 96);
    EXPECT_EQ(peq::AreaSize(true), 168);
}

TEST(PeqLayoutTest, WhichBandsReachTheProcessor) {
    struct Case {
        bool audyssey;
        unsigned band;
        MAPI_U8 lowHigh;
        bool applied;
    } const cases[] = {
        {false, 12, 0, true}, {true, 0, 0, true},  {true, 6, 2, true},   {true, 8, 1, true},
        {true, 8, 2, false},  {true, 9, 1, false}, {true, 9, 2, true},   {true, 10, 1, false},
        {true, 17, 2, false}, {true, 18, 0, true}, {true, 24, 0, true},  {true, 26, 1, true},
        {true, 26, 0, false}, {true, 27, 2, true}, {true, 27, 1, false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(peq::Applied(c.audyssey, c.band, c.lowHigh), c.applied)
            << c.audyssey << " band " << c.band << " low/high " << int(c.lowHigh);
    }
}

// ---- The editor on the set -----------------------------------------------------------

class PeqTest : public HostTest {
protected:
    sim::FactoryStoreState& Store() { return Tv().Get<sim::FactoryStoreState>(); }
    void StoreRecord(unsigned band, const Record& r) {
        for (unsigned i = 0; i < 6; ++i) {
            Store().Set(static_cast<MAPI_U16>(kArea + 6 * band + i), r[i]);
        }
    }
    Record StoredRecord(unsigned band) {
        Record r{};
        for (unsigned i = 0; i < 6; ++i) {
            r[i] = Store().Get(static_cast<MAPI_U16>(kArea + 6 * band + i));
        }
        return r;
    }
    void Open(bool audyssey, MAPI_U8 lowHigh = 0) {
        Tv().Get<sim::SoundEditorState>().audyssey = audyssey;
        Tv().Get<sim::MModeState>().audio.u8PEQLowHigh = lowHigh;
        Post(267);
    }
    void Press(unsigned long key, int times = 1) {
        for (int i = 0; i < times; ++i) {
            ASSERT_EQ(Fm().FactoryDoKeyAction(key), 1);
        }
    }
    // From the open page: the band, then the item.
    void Select(int rightPresses, int item) {
        Press(kRight, rightPresses);
        Press(FactoryKey::Down, item);
        ClearUiNotes();
        Journal().Clear();
    }
};

TEST_F(PeqTest, OpensOnBandZeroWithItsStoredValues) {
    StoreRecord(0, {12, 34, 0x00, 0x00, 100, 2});  // Q word 0: below the bias
    Open(false);
    EXPECT_EQ(UiNotes(), Notes(R"-(
                  HideAllUIExcept="PEQ" PEQ-Band="0 (TV stand)" PEQ-Filter-Mode="HPF"
                  PEQ-f0=1200 PEQ-f0Div100=34 PEQ-QX10=5 PEQ-GainX10=-20 PEQ-Band-highlight=1
                  PEQ-Filter-Mode-highlight=0 PEQ-f0-highlight=0 PEQ-f0Div100-highlight=0
                  PEQ-QX10-highlight=0 PEQ-GainX10-highlight=0
              )-"));
    EXPECT_EQ(Calls("MSrv_Factory_Default::msAPI_rmBurstReadBytes"),
              (std::vector<std::string>{"[3468, 96]"}));
    EXPECT_TRUE(Tv().Get<sim::MModeState>().factoryOsd);
    EXPECT_EQ(Fm().m_bPEQMode, 1);
}

TEST_F(PeqTest, AdvancedSoundSetsReadTheWholeTwentyEightBands) {
    Open(true);
    EXPECT_EQ(Calls("MSrv_Factory_Default::msAPI_rmBurstReadBytes"),
              (std::vector<std::string>{"[3468, 168]"}));
}

TEST_F(PeqTest, UpAndDownWrapOverTheSixItems) {
    Open(false);
    ClearUiNotes();
    Press(FactoryKey::Up);
    EXPECT_EQ(UiNotes(), Notes(R"-(
                  PEQ-Band-highlight=0 PEQ-Filter-Mode-highlight=0 PEQ-f0-highlight=0
                  PEQ-f0Div100-highlight=0 PEQ-QX10-highlight=0 PEQ-GainX10-highlight=1
              )-"));
    Press(FactoryKey::Down);
    EXPECT_EQ(UiNotes().at(6), Num("PEQ-Band-highlight", 1));
    EXPECT_EQ(Fm().m_u8PEQHighlight, 0);
}

// Band stepping: the labels shown after each key (L left, R right); never a write
// or an apply.
struct BandWalk {
    const char* name;
    bool audyssey;
    const char* keys;
    std::vector<std::string> labels;
};

class PeqBandTest : public PeqTest, public testing::WithParamInterface<BandWalk> {};

TEST_P(PeqBandTest, StepsAndWraps) {
    const BandWalk& w = GetParam();
    Open(w.audyssey);
    ClearUiNotes();
    Journal().Clear();
    std::vector<std::string> shown;
    for (const char* k = w.keys; *k != '\0'; ++k) {
        Press(*k == 'L' ? kLeft : kRight);
        EXPECT_EQ(UiNotes().back().cmd, "PEQ-Band");
        shown.push_back(UiNotes().back().data);
    }
    EXPECT_EQ(shown, w.labels);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Default::msAPI_rmBurstWriteBytes"), 0u);
    EXPECT_EQ(Journal().CountCalls("MSrv_SSSound::SetPEQParam"), 0u);
}

// clang-format off
const BandWalk kWalks[] = {
    {"SixteenWrapsBothWays", false, "LRR", {"7 (TV wall)", "0 (TV stand)", "1 (TV stand)"}},
    {"SixteenWallToStand", false, "RRRRRRRRR", {"1 (TV stand)", "2 (TV stand)", "3 (TV stand)", "4 (TV stand)", "5 (TV stand)", "6 (TV stand)", "7 (TV stand)", "0 (TV wall)", "1 (TV wall)"}},
    {"TwentyEightSkipsTwentyFive", true, "LLLRRR", {"7 (HIGH wall)", "7 (LOW wall)", "6 (TV wall)", "7 (LOW wall)", "7 (HIGH wall)", "0 (TV table)"}},
    {"TwentyEightSkipsSeven", true, "RRRRRRRL", {"1 (TV table)", "2 (TV table)", "3 (TV table)", "4 (TV table)", "5 (TV table)", "6 (TV table)", "7 (LOW table)", "6 (TV table)"}},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Layouts, PeqBandTest, testing::ValuesIn(kWalks),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(PeqTest, ABandChangeLoadsAndShowsTheNewBand) {
    StoreRecord(1, {7, 8, 0x00, 0x5A, 130, 9});  // filter mode 9: out of range
    Open(false);
    Select(0, 0);
    Press(kRight);
    EXPECT_EQ(UiNotes(), Notes(R"-(
        PEQ-f0=700 PEQ-Filter-Mode="PEQ" PEQ-f0Div100=8 PEQ-QX10=9 PEQ-GainX10=10
        PEQ-Band="1 (TV stand)"
    )-"));
}

// Every other item at both ends, both directions, in both layouts: what is shown
// and what band 0's record holds afterwards. Values are the item's stored byte (Q:
// the stored word) in a record that is otherwise kMid.
struct StepCase {
    const char* name;
    int item;
    unsigned before;
    unsigned long key;
    Note shown;
    unsigned after;
};

const Record kMid = {100, 50, 0x02, 0x62, 120, 0};  // Q word 610: index 560

Record WithItem(int item, unsigned value) {
    Record r = kMid;
    const int offsets[] = {-1, 5, 0, 1, 2, 4};
    if (item == 4) {
        r[2] = static_cast<MAPI_U8>(value >> 8);
        r[3] = static_cast<MAPI_U8>(value & 0xFF);
    } else {
        r[offsets[item]] = static_cast<MAPI_U8>(value);
    }
    return r;
}

class PeqStepTest : public PeqTest,
                    public testing::WithParamInterface<std::tuple<StepCase, bool>> {};

TEST_P(PeqStepTest, StoresAndShowsTheNextValue) {
    const StepCase& c = std::get<0>(GetParam());
    StoreRecord(0, WithItem(c.item, c.before));
    Open(std::get<1>(GetParam()));
    Select(0, c.item);
    Press(c.key);
    EXPECT_EQ(UiNotes(), NoteList{c.shown});
    EXPECT_EQ(StoredRecord(0), WithItem(c.item, c.after));
    EXPECT_EQ(Journal().CountCalls("MSrv_SSSound::SetPEQParam") +
                  Journal().CountCalls("MSrv_SSSound::SND_SetHLPFParm"),
              1u);
}

const StepCase kSteps[] = {
    {"FilterLeftFromPeqIsHpf", 1, 0, kLeft, Str("PEQ-Filter-Mode", "HPF"), 2},
    {"FilterLeftFromLpfIsPeq", 1, 1, kLeft, Str("PEQ-Filter-Mode", "PEQ"), 0},
    {"FilterLeftFromHpfIsByPass", 1, 2, kLeft, Str("PEQ-Filter-Mode", "ByPASS"), 3},
    {"FilterLeftFromByPassIsLpf", 1, 3, kLeft, Str("PEQ-Filter-Mode", "LPF"), 1},
    {"FilterRightFromByPassWraps", 1, 3, kRight, Str("PEQ-Filter-Mode", "PEQ"), 0},
    {"F0RightFromTopWraps", 2, 200, kRight, Num("PEQ-f0", 0), 0},
    {"F0LeftFromZeroWraps", 2, 0, kLeft, Num("PEQ-f0", 20000), 200},
    {"F0Div100RightFromTopWraps", 3, 99, kRight, Num("PEQ-f0Div100", 0), 0},
    {"F0Div100LeftFromZeroWraps", 3, 0, kLeft, Num("PEQ-f0Div100", 99), 99},
    {"QRightFromTheTopGoesToZero", 4, 1601, kRight, Num("PEQ-QX10", 5), 50},
    {"QLeftRoundsDownToTens", 4, 1601, kLeft, Num("PEQ-QX10", 159), 1590},
    {"QRightBelowTheTopRoundsUp", 4, 1599, kRight, Num("PEQ-QX10", 160), 1600},
    {"QLeftFromZeroGoesToTheTop", 4, 50, kLeft, Num("PEQ-QX10", 160), 1600},
    {"QLeftBelowTenGoesToTheTop", 4, 59, kLeft, Num("PEQ-QX10", 160), 1600},
    {"GainRightFromTopWraps", 5, 240, kRight, Num("PEQ-GainX10", -120), 0},
    {"GainLeftFromZeroWraps", 5, 0, kLeft, Num("PEQ-GainX10", 120), 240},
};

INSTANTIATE_TEST_SUITE_P(Items, PeqStepTest,
                         testing::Combine(testing::ValuesIn(kSteps), testing::Bool()),
                         [](const auto& info) {
                             return std::string(std::get<0>(info.param).name) +
                                    (std::get<1>(info.param) ? "_28" : "_16");
                         });

TEST_F(PeqTest, TheProcessorGetsTheBandByItsFilterMode) {
    struct Case {
        MAPI_U8 modeBefore;  // Right steps it on
        const char* fn;
        const char* args;
    } const cases[] = {
        {3, "MSrv_SSSound::SetPEQParam", "[0, 130, 9, 5, 160]"},
        {0, "MSrv_SSSound::SND_SetHLPFParm", "[0, 0, 9, 5]"},
        {1, "MSrv_SSSound::SND_SetHLPFParm", "[0, 1, 9, 5]"},
        {2, "MSrv_SSSound::SetPEQParam", "[0, 120, 9, 5, 160]"},
    };
    for (const Case& c : cases) {
        StoreRecord(0, {9, 5, 0x06, 0x41, 130, c.modeBefore});  // q: the word / 10
        Open(false);
        Select(0, 1);
        Press(kRight);
        const auto entries = Journal().Entries();
        ASSERT_FALSE(entries.empty());
        EXPECT_EQ(Calls(c.fn), (std::vector<std::string>{c.args})) << int(c.modeBefore);
        Press(FactoryKey::Exit);
    }
}

TEST_F(PeqTest, BandSixIsMirroredIntoBandSevenOnAdvancedSoundSets) {
    StoreRecord(6, {10, 0, 0x00, 0x32, 120, 0});
    StoreRecord(7, {10, 0, 0x00, 0x32, 120, 0});
    Open(true);
    Select(6, 5);
    Press(kRight);
    EXPECT_EQ(Store().Get(kArea + 40), 121);
    EXPECT_EQ(Store().Get(kArea + 46), 121);
    EXPECT_EQ(Calls("MSrv_Factory_Default::msAPI_rmBurstWriteBytes"),
              (std::vector<std::string>{"[3508, 121, 1]", "[3514, 121, 1]"}));
    // Band 6 is applied once for itself and once after its twin.
    EXPECT_EQ(Calls("MSrv_SSSound::SetPEQParam"),
              (std::vector<std::string>{"[6, 121, 10, 0, 5]", "[6, 121, 10, 0, 5]"}));
}

TEST_F(PeqTest, SixteenBandSetsHaveNoTwinOfBandSix) {
    Open(false);
    Select(6, 5);
    Press(kRight);
    EXPECT_EQ(Calls("MSrv_Factory_Default::msAPI_rmBurstWriteBytes"),
              (std::vector<std::string>{"[3508, 1, 1]"}));
    EXPECT_EQ(Journal().CountCalls("MSrv_SSSound::SetPEQParam"), 2u);
}

TEST_F(PeqTest, SkypeBandsAreStoredButNeverApplied) {
    Open(true, 1);
    Select(11, 5);  // band 12, "2 (SKYPE)"
    Press(kLeft);
    EXPECT_EQ(Store().Get(kArea + 6 * 12 + 4), 240);
    EXPECT_EQ(Journal().CountCalls("MSrv_SSSound::SetPEQParam"), 0u);
}

TEST_F(PeqTest, TheHighVariantOfBandSevenWaitsForItsSetting) {
    for (MAPI_U8 lowHigh : {1, 2}) {
        Open(true, lowHigh);
        Select(8, 2);  // band 9, "7 (HIGH table)": f0 goes 0 -> 1, then on to 2
        Press(kRight);
        EXPECT_EQ(Store().Get(kArea + 6 * 9), lowHigh);
        EXPECT_EQ(Journal().CountCalls("MSrv_SSSound::SetPEQParam"), lowHigh == 2 ? 1u : 0u);
        Press(FactoryKey::Exit);
    }
}

TEST_F(PeqTest, ExitKeysCloseThePage) {
    for (unsigned long key : {FactoryKey::Menu, FactoryKey::Exit, FactoryKey::PanelMenu}) {
        Open(false);
        ClearUiNotes();
        Press(key);
        EXPECT_EQ(UiNotes(), NoteList{Num("PEQ-Show", 0)});
        EXPECT_EQ(Fm().m_bPEQMode, 0);
        EXPECT_FALSE(Tv().Get<sim::MModeState>().factoryOsd);
    }
}

// The editor says which keys it used; the dispatcher consumes every key while it is up.
TEST_F(PeqTest, TheEditorReportsItsKeysAndTheDispatcherKeepsThemAll) {
    const std::pair<unsigned long, MAPI_BOOL> kUsed[] = {
        {0xF000, 1}, {0xF001, 1}, {FactoryKey::Up, 1}, {FactoryKey::Down, 1}, {'5', 0}, {13, 0}};
    Open(false);
    for (const auto& [key, used] : kUsed) {
        EXPECT_EQ(Fm().PEQProcessKey(key), used) << key;
        EXPECT_EQ(Fm().FactoryDoKeyAction(key), 1) << key;
    }
    EXPECT_EQ(Fm().PEQProcessKey(FactoryKey::Exit), 1);
    EXPECT_EQ(Fm().m_bPEQMode, 0);
}

}  // namespace
