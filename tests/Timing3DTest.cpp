// The 3D glasses timing editor on the set: its page, the way around it, the value
// keys with their wrap and clamps, and what the 3D manager is given.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FactoryKeyCodes.h"
#include "FactoryManager.h"
#include "SetFixture.h"
#include "Sim3DTiming.h"
#include "SimMMode.h"
#include "UiNotes.h"

namespace {

constexpr unsigned long kLeft = 0xF000;
constexpr unsigned long kRight = 0xF001;
constexpr unsigned long kRed = 0xF042;     // -256
constexpr unsigned long kGreen = 0xF043;   // -16
constexpr unsigned long kYellow = 0xF044;  // +16
constexpr unsigned long kBlue = 0xF045;    // +256

const char* const kHighlight[] = {
    "3DTiming-DefaultMode-highlight", "3DTiming-Mode0-highlight", "3DTiming-Mode1-highlight",
    "3DTiming-Mode2-highlight",       "3DTiming-Mode3-highlight", "3DTiming-LOpen-highlight",
    "3DTiming-LClose-highlight",      "3DTiming-ROpen-highlight", "3DTiming-RClose-highlight",
    "3DTiming-Duty-highlight",        "3DTiming-Shift-highlight",
};

class Timing3DTest : public HostTest {
protected:
    sim::Timing3DState& Glasses() { return Tv().Get<sim::Timing3DState>(); }
    void Open() { Post(268); }
    // The editor acts on every key and still leaves it to the TV.
    void Press(unsigned long key) { ASSERT_EQ(Fm().FactoryDoKeyAction(key), 0); }
    void Reach(int item) {
        if (item >= 1 && item <= 4) {
            for (int i = 0; i < item; ++i) Press(kRight);
        } else {
            for (int i = 0; i < item - 4 && item >= 5; ++i) Press(FactoryKey::Down);
        }
        ClearUiNotes();
        Journal().Clear();
    }
};

class Timing3DTitleTest : public Timing3DTest, public testing::WithParamInterface<int> {};

TEST_P(Timing3DTitleTest, OpensWithThe120HzTitleAndThePlatformsValues) {
    Glasses().outputVFreq = static_cast<MAPI_U16>(GetParam());
    Glasses().lClose = 0x00AB;
    Glasses().duty = 0x1234;
    Open();
    EXPECT_EQ(UiNotes(), Notes(R"-(
                  HideAllUIExcept="3DTimingAdjust"
                  3DTiming-TitleFrequency="3D timing Adjust - 120Hz" 3DTiming-LOpen="2D40"
                  3DTiming-LClose="00AB" 3DTiming-ROpen="2D40" 3DTiming-RClose="1643"
                  3DTiming-Duty="1234" 3DTiming-Shift="0040" 3DTiming-DefaultMode-highlight=1
                  3DTimingAdjust-Show=1
              )-"));
    EXPECT_EQ(Fm().m_b3DTimingMode, 1);
    EXPECT_TRUE(Tv().Get<sim::MModeState>().factoryOsd);
    EXPECT_EQ(Calls("MSrv_3DManager::GetPwmDutyPhase"), (std::vector<std::string>{"[3]"}));
}

INSTANTIATE_TEST_SUITE_P(OutputFrequencies, Timing3DTitleTest, testing::Values(600, 1000, 1200));

struct MoveCase {
    int from;
    unsigned long key;
    int to;  // -1: the highlight stays
};

TEST_F(Timing3DTest, ArrowsMoveTheHighlightAsTheLayoutRequires) {
    const MoveCase cases[] = {
        {0, FactoryKey::Up, 8},
        {5, FactoryKey::Up, 0},
        {6, FactoryKey::Up, 5},
        {9, FactoryKey::Up, 8},
        {10, FactoryKey::Up, 9},
        {0, FactoryKey::Down, 5},
        {8, FactoryKey::Down, 9},
        {10, FactoryKey::Down, 0},
        {0, kRight, 1},
        {3, kRight, 4},
        {4, kRight, 0},
        {0, kLeft, 4},
        {4, kLeft, 3},
        {1, kLeft, 0},
        {2, FactoryKey::Up, -1},
        {3, FactoryKey::Down, -1},
    };
    for (const MoveCase& c : cases) {
        Open();
        Reach(c.from);
        Press(c.key);
        const NoteList expected =
            c.to < 0 ? NoteList{} : NoteList{Num(kHighlight[c.from], 0), Num(kHighlight[c.to], 1)};
        EXPECT_EQ(UiNotes(), expected) << "from " << c.from << " key " << c.key;
        EXPECT_EQ(Fm().m_u8Timing3DItem, c.to < 0 ? c.from : c.to);
        Press(FactoryKey::Exit);
    }
}

struct ValueCase {
    const char* name;
    int item;
    MAPI_U16 start;
    unsigned long key;
    const char* shown;
    const char* fn;
    const char* args;
};

class Timing3DValueTest : public Timing3DTest, public testing::WithParamInterface<ValueCase> {};

TEST_P(Timing3DValueTest, ShowsAndAppliesTheNewValue) {
    const ValueCase& c = GetParam();
    MAPI_U16* const slots[] = {&Glasses().lOpen,  &Glasses().lClose, &Glasses().rOpen,
                               &Glasses().rClose, &Glasses().duty,   &Glasses().phase};
    *slots[c.item - 5] = c.start;
    Open();
    Reach(c.item);
    Press(c.key);
    const char* const cmds[] = {"3DTiming-LOpen",  "3DTiming-LClose", "3DTiming-ROpen",
                                "3DTiming-RClose", "3DTiming-Duty",   "3DTiming-Shift"};
    EXPECT_EQ(UiNotes(), NoteList{Str(cmds[c.item - 5], c.shown)});
    EXPECT_EQ(Calls(c.fn), (std::vector<std::string>{c.args}));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Keys, Timing3DValueTest, testing::Values(
    ValueCase{"LeftWrapsFromZero", 5, 0x0000, kLeft, "FFFF", "MSrv_3DManager::SetLOpenLength", "[255, 0]"},
    ValueCase{"RightWrapsFromTop", 5, 0xFFFF, kRight, "0000", "MSrv_3DManager::SetLOpenLength", "[0, 0]"},
    ValueCase{"MinusBigStepClampsAtZero", 5, 0x0010, kRed, "0000", "MSrv_3DManager::SetLOpenLength", "[0, 0]"},
    ValueCase{"PlusBigStepCrossesIntoTheSignedHalf", 5, 0x7FF0, kBlue, "80F0", "MSrv_3DManager::SetLOpenLength", "[240, 129]"},
    ValueCase{"SignedMinusEightPlusSixteen", 6, 0xFFF8, kYellow, "0008", "MSrv_3DManager::SetLCloseLength", "[8, 0]"},
    ValueCase{"SignedHalfDownClampsToZero", 7, 0x9000, kGreen, "0000", "MSrv_3DManager::SetROpenLength", "[0, 0]"},
    ValueCase{"PlusSmallStep", 8, 0x1234, kYellow, "1244", "MSrv_3DManager::SetRCloseLength", "[68, 18]"},
    ValueCase{"DutyGoesWithThePhase", 9, 0xFFFF, kRight, "0000", "MSrv_3DManager::SetPwmDutyPhase", "[3, 0, 64]"},
    ValueCase{"ShiftGoesWithTheDuty", 10, 0x0040, kGreen, "0030", "MSrv_3DManager::SetPwmDutyPhase", "[3, 512, 48]"}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

TEST_F(Timing3DTest, DutyBelowZeroClearsROpenAndKeepsTheDuty) {
    Glasses().duty = 0x0005;
    Open();
    Reach(9);
    Press(kGreen);
    EXPECT_EQ(UiNotes(), NoteList{Str("3DTiming-Duty", "0005")});
    EXPECT_EQ(Fm().m_u32ROpen, 0u);
    EXPECT_EQ(Fm().m_u32Duty, 5u);
    EXPECT_EQ(Calls("MSrv_3DManager::SetPwmDutyPhase"), (std::vector<std::string>{"[3, 5, 64]"}));
}

TEST_F(Timing3DTest, OkRestoresDefaultsSwitchesModesOrAppliesAgain) {
    Glasses().lOpen = 0x0001;
    Glasses().duty = 0x0777;
    Open();
    ClearUiNotes();
    Press(FactoryKey::Select);
    EXPECT_EQ(Journal().CountCalls("MSrv_3DManager::Reset3DTiming"), 1u);
    EXPECT_EQ(UiNotes(), Notes(R"-(
        3DTiming-LOpen="2D40" 3DTiming-LClose="1643" 3DTiming-ROpen="2D40"
        3DTiming-RClose="1643"
    )-"));
    for (int item = 1; item <= 4; ++item) {
        Press(kRight);
        Journal().Clear();
        Press(FactoryKey::PanelFunction);
        EXPECT_EQ(Calls("MSrv_3DManager::Set3DTimingMode"),
                  (std::vector<std::string>{std::to_string(item - 1).insert(0, "[") + "]"}));
    }
    Press(kRight);
    Reach(7);
    Press(FactoryKey::Select);
    EXPECT_EQ(UiNotes(), NoteList{});
    EXPECT_EQ(Calls("MSrv_3DManager::SetROpenLength"), (std::vector<std::string>{"[64, 45]"}));
}

TEST_F(Timing3DTest, ExitKeysCloseThePageAndTheTvStillGetsThem) {
    for (unsigned long key : {FactoryKey::Menu, FactoryKey::Exit}) {
        Open();
        ClearUiNotes();
        Press(key);
        EXPECT_EQ(UiNotes(), NoteList{Num("3DTimingAdjust-Show", 0)});
        EXPECT_EQ(Fm().m_b3DTimingMode, 0);
        EXPECT_FALSE(Tv().Get<sim::MModeState>().factoryOsd);
    }
}

// The editor says which keys it used; the dispatcher leaves every key to the TV.
TEST_F(Timing3DTest, TheEditorReportsItsKeysAndTheDispatcherLetsThemAllThrough) {
    const std::pair<unsigned long, MAPI_BOOL> kUsed[] = {
        {kLeft, 1}, {kRight, 1}, {FactoryKey::Up, 1}, {FactoryKey::Down, 1}, {kRed, 1}, {'5', 0}};
    Open();
    for (const auto& [key, used] : kUsed) {
        EXPECT_EQ(Fm().Factory3DTimingKeyAction(key), used) << key;
        EXPECT_EQ(Fm().FactoryDoKeyAction(key), 0) << key;
    }
    EXPECT_EQ(Fm().FactoryDoKeyAction(FactoryKey::Exit), 0);
    EXPECT_EQ(Fm().m_b3DTimingMode, 0);
}

}  // namespace
