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
    EXPECT_EQ(UiNotes(),
              (NoteList{Str("HideAllUIExcept", "PEQ"), Str("PEQ-Band", "0 (TV stand)"),
                        Str("PEQ-Filter-Mode", "HPF"), Num("PEQ-f0", 1200), Num("PEQ-f0Div100", 34),
                        Num("PEQ-QX10", 5), Num("PEQ-GainX10", -20), Num("PEQ-Band-highlight", 1),
                        Num("PEQ-Filter-Mode-highlight", 0), Num("PEQ-f0-highlight", 0),
                        Num("PEQ-f0Div100-highlight", 0), Num("PEQ-QX10-highlight", 0),
                        Num("PEQ-GainX10-highlight", 0)}));
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
    EXPECT_EQ(UiNotes(),
              (NoteList{Num("PEQ-Band-highlight", 0), Num("PEQ-Filter-Mode-highlight", 0),
                        Num("PEQ-f0-highlight", 0), Num("PEQ-f0Div100-highlight", 0),
                        Num("PEQ-QX10-highlight", 0), Num("PEQ-GainX10-highlight", 1)}));
    Press(FactoryKey::Down);
    EXPECT_EQ(UiNotes().at(6), Num("PEQ-Band-highlight", 1));
    EXPECT_EQ(Fm().m_u8PEQHighlight, 0);
}

// Band stepping: the labels shown after each key; never a write or an apply.
struct BandWalk {
    const char* name;
    bool audyssey;
    std::vector<unsigned long> keys;
    std::vector<const char*> labels;
};

class PeqBandTest : public PeqTest, public testing::WithParamInterface<BandWalk> {};

TEST_P(PeqBandTest, StepsAndWraps) {
    const BandWalk& w = GetParam();
    Open(w.audyssey);
    ClearUiNotes();
    Journal().Clear();
    std::vector<std::string> shown;
    for (unsigned long key : w.keys) {
        Press(key);
        shown.push_back(UiNotes().back().data);
        EXPECT_EQ(UiNotes().back().cmd, "PEQ-Band");
    }
    EXPECT_EQ(shown, std::vector<std::string>(w.labels.begin(), w.labels.end()));
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Default::msAPI_rmBurstWriteBytes"), 0u);
    EXPECT_EQ(Journal().CountCalls("MSrv_SSSound::SetPEQParam"), 0u);
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, PeqBandTest,
    testing::Values(BandWalk{"SixteenLeftWrapsToFifteen",
                             false,
                             {kLeft, kRight, kRight},
                             {"7 (TV wall)", "0 (TV stand)", "1 (TV stand)"}},
                    BandWalk{"SixteenSevenToEight",
                             false,
                             {kLeft, kLeft, kLeft, kLeft, kLeft, kLeft, kLeft, kLeft},
                             {"7 (TV wall)", "6 (TV wall)", "5 (TV wall)", "4 (TV wall)",
                              "3 (TV wall)", "2 (TV wall)", "1 (TV wall)", "0 (TV wall)"}},
                    BandWalk{"TwentyEightSkipsSevenAndTwentyFive",
                             true,
                             {kLeft, kLeft, kLeft, kRight, kRight, kRight},
                             {"7 (HIGH wall)", "7 (LOW wall)", "6 (TV wall)", "7 (LOW wall)",
                              "7 (HIGH wall)", "0 (TV table)"}},
                    BandWalk{"TwentyEightSixToLowTable",
                             true,
                             {kRight, kRight, kRight, kRight, kRight, kRight, kRight, kLeft},
                             {"1 (TV table)", "2 (TV table)", "3 (TV table)", "4 (TV table)",
                              "5 (TV table)", "6 (TV table)", "7 (LOW table)", "6 (TV table)"}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(PeqTest, ABandChangeLoadsAndShowsTheNewBand) {
    StoreRecord(1, {7, 8, 0x00, 0x5A, 130, 9});  // filter mode 9: out of range
    Open(false);
    Select(0, 0);
    Press(kRight);
    EXPECT_EQ(UiNotes(), (NoteList{Num("PEQ-f0", 700), Str("PEQ-Filter-Mode", "PEQ"),
                                   Num("PEQ-f0Div100", 8), Num("PEQ-QX10", 9),
                                   Num("PEQ-GainX10", 10), Str("PEQ-Band", "1 (TV stand)")}));
}

// Every other item at both ends, both directions, in both layouts: what is shown
// and what band 0's record holds afterwards.
struct StepCase {
    const char* name;
    int item;
    Record before;
    unsigned long key;
    Note shown;
    Record after;
};

class PeqStepTest : public PeqTest,
                    public testing::WithParamInterface<std::tuple<StepCase, bool>> {};

TEST_P(PeqStepTest, StoresAndShowsTheNextValue) {
    const StepCase& c = std::get<0>(GetParam());
    StoreRecord(0, c.before);
    Open(std::get<1>(GetParam()));
    Select(0, c.item);
    Press(c.key);
    EXPECT_EQ(UiNotes(), NoteList{c.shown});
    EXPECT_EQ(StoredRecord(0), c.after);
    EXPECT_EQ(Journal().CountCalls("MSrv_SSSound::SetPEQParam") +
                  Journal().CountCalls("MSrv_SSSound::SND_SetHLPFParm"),
              1u);
}

const Record kMid = {100, 50, 0x02, 0x62, 120, 0};  // Q word 610: index 560

INSTANTIATE_TEST_SUITE_P(Items, PeqStepTest,
                         testing::Combine(testing::Values(StepCase{"FilterLeftFromPeqIsHpf",
                                                                   1,
                                                                   kMid,
                                                                   kLeft,
                                                                   Str("PEQ-Filter-Mode", "HPF"),
                                                                   {100, 50, 0x02, 0x62, 120, 2}},
                                                          StepCase{"FilterLeftFromLpfIsPeq",
                                                                   1,
                                                                   {100, 50, 0x02, 0x62, 120, 1},
                                                                   kLeft,
                                                                   Str("PEQ-Filter-Mode", "PEQ"),
                                                                   kMid},
                                                          StepCase{"FilterLeftFromHpfIsByPass",
                                                                   1,
                                                                   {100, 50, 0x02, 0x62, 120, 2},
                                                                   kLeft,
                                                                   Str("PEQ-Filter-Mode", "ByPASS"),
                                                                   {100, 50, 0x02, 0x62, 120, 3}},
                                                          StepCase{"FilterLeftFromByPassIsLpf",
                                                                   1,
                                                                   {100, 50, 0x02, 0x62, 120, 3},
                                                                   kLeft,
                                                                   Str("PEQ-Filter-Mode", "LPF"),
                                                                   {100, 50, 0x02, 0x62, 120, 1}},
                                                          StepCase{"FilterRightFromByPassWraps",
                                                                   1,
                                                                   {100, 50, 0x02, 0x62, 120, 3},
                                                                   kRight,
                                                                   Str("PEQ-Filter-Mode", "PEQ"),
                                                                   kMid},
                                                          StepCase{"F0RightFromTopWraps",
                                                                   2,
                                                                   {200, 50, 0x02, 0x62, 120, 0},
                                                                   kRight,
                                                                   Num("PEQ-f0", 0),
                                                                   {0, 50, 0x02, 0x62, 120, 0}},
                                                          StepCase{"F0LeftFromZeroWraps",
                                                                   2,
                                                                   {0, 50, 0x02, 0x62, 120, 0},
                                                                   kLeft,
                                                                   Num("PEQ-f0", 20000),
                                                                   {200, 50, 0x02, 0x62, 120, 0}},
                                                          StepCase{"F0Div100RightFromTopWraps",
                                                                   3,
                                                                   {100, 99, 0x02, 0x62, 120, 0},
                                                                   kRight,
                                                                   Num("PEQ-f0Div100", 0),
                                                                   {100, 0, 0x02, 0x62, 120, 0}},
                                                          StepCase{"F0Div100LeftFromZeroWraps",
                                                                   3,
                                                                   {100, 0, 0x02, 0x62, 120, 0},
                                                                   kLeft,
                                                                   Num("PEQ-f0Div100", 99),
                                                                   {100, 99, 0x02, 0x62, 120, 0}},
                                                          StepCase{"QRightFromTheTopGoesToZero",
                                                                   4,
                                                                   {100, 50, 0x06, 0x41, 120, 0},
                                                                   kRight,
                                                                   Num("PEQ-QX10", 5),
                                                                   {100, 50, 0x00, 0x32, 120, 0}},
                                                          StepCase{"QLeftRoundsDownToTens",
                                                                   4,
                                                                   {100, 50, 0x06, 0x41, 120, 0},
                                                                   kLeft,
                                                                   Num("PEQ-QX10", 159),
                                                                   {100, 50, 0x06, 0x36, 120, 0}},
                                                          StepCase{"QRightBelowTheTopRoundsUp",
                                                                   4,
                                                                   {100, 50, 0x06, 0x3F, 120, 0},
                                                                   kRight,
                                                                   Num("PEQ-QX10", 160),
                                                                   {100, 50, 0x06, 0x40, 120, 0}},
                                                          StepCase{"QLeftFromZeroGoesToTheTop",
                                                                   4,
                                                                   {100, 50, 0x00, 0x32, 120, 0},
                                                                   kLeft,
                                                                   Num("PEQ-QX10", 160),
                                                                   {100, 50, 0x06, 0x40, 120, 0}},
                                                          StepCase{"QLeftBelowTenGoesToTheTop",
                                                                   4,
                                                                   {100, 50, 0x00, 0x3B, 120, 0},
                                                                   kLeft,
                                                                   Num("PEQ-QX10", 160),
                                                                   {100, 50, 0x06, 0x40, 120, 0}},
                                                          StepCase{"GainRightFromTopWraps",
                                                                   5,
                                                                   {100, 50, 0x02, 0x62, 240, 0},
                                                                   kRight,
                                                                   Num("PEQ-GainX10", -120),
                                                                   {100, 50, 0x02, 0x62, 0, 0}},
                                                          StepCase{"GainLeftFromZeroWraps",
                                                                   5,
                                                                   {100, 50, 0x02, 0x62, 0, 0},
                                                                   kLeft,
                                                                   Num("PEQ-GainX10", 120),
                                                                   {100, 50, 0x02, 0x62, 240, 0}}),
                                          testing::Bool()),
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
    Open(false);
    EXPECT_EQ(Fm().PEQProcessKey('5'), 0);
    EXPECT_EQ(Fm().m_bPEQMode, 1);
}

}  // namespace
