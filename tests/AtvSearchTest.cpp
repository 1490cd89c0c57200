// ATV tuning search on the simulated tuner, in virtual time: the channel plans, the
// sweep and its scan-info events, the numbering variant, storing and leaving.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "AtvChannelPlan.h"
#include "FactoryKeyCodes.h"
#include "MSrv_ATV_Player.h"
#include "SetFixture.h"
#include "SimAtvTuner.h"
#include "SimFactoryStore.h"
#include "SimMMode.h"
#include "UiNotes.h"

namespace {

// Every used row of both plans: its bounds in kHz and the row each bound is
// reported as (on a shared bound the row found first, from row 0 up).
struct PlanRow {
    char table;
    int row;
    uint32_t lowerKHz;
    uint32_t upperKHz;
    int lowerGoesTo;
    int upperGoesTo;
};
const PlanRow kPlan[] = {
    {'C', 2, 45750, 51750, 2, 2},      {'C', 3, 51750, 58750, 2, 3},
    {'C', 4, 58750, 65750, 3, 4},      {'C', 5, 171750, 178750, 5, 5},
    {'C', 6, 178750, 185750, 5, 6},    {'C', 7, 185750, 192750, 6, 7},
    {'C', 8, 192750, 199750, 7, 8},    {'C', 9, 199750, 206750, 8, 9},
    {'C', 10, 206750, 213750, 9, 10},  {'C', 11, 213750, 220750, 10, 11},
    {'C', 12, 220750, 227750, 11, 12}, {'C', 21, 467250, 475250, 21, 21},
    {'C', 22, 475250, 483250, 21, 22}, {'C', 23, 483250, 491250, 22, 23},
    {'C', 24, 491250, 499250, 23, 24}, {'C', 25, 499250, 507250, 24, 25},
    {'C', 26, 507250, 515250, 25, 26}, {'C', 27, 515250, 523250, 26, 27},
    {'C', 28, 523250, 531250, 27, 28}, {'C', 29, 531250, 539250, 28, 29},
    {'C', 30, 539250, 547250, 29, 30}, {'C', 31, 547250, 555250, 30, 31},
    {'C', 32, 555250, 563250, 31, 32}, {'C', 33, 563250, 571250, 32, 33},
    {'C', 34, 571250, 579250, 33, 34}, {'C', 35, 579250, 587250, 34, 35},
    {'C', 36, 587250, 595250, 35, 36}, {'C', 37, 595250, 603250, 36, 37},
    {'C', 38, 603250, 611250, 37, 38}, {'C', 39, 611250, 619250, 38, 39},
    {'C', 40, 619250, 627250, 39, 40}, {'C', 41, 627250, 635250, 40, 41},
    {'C', 42, 635250, 643250, 41, 42}, {'C', 43, 643250, 651250, 42, 43},
    {'C', 44, 651250, 659250, 43, 44}, {'C', 45, 659250, 667250, 44, 45},
    {'C', 46, 667250, 675250, 45, 46}, {'C', 47, 675250, 683250, 46, 47},
    {'C', 48, 683250, 691250, 47, 48}, {'C', 49, 691250, 699250, 48, 49},
    {'C', 50, 699250, 707250, 49, 50}, {'C', 51, 707250, 715250, 50, 51},
    {'C', 52, 715250, 723250, 51, 52}, {'C', 53, 723250, 731250, 52, 53},
    {'C', 54, 731250, 739250, 53, 54}, {'C', 55, 739250, 747250, 54, 55},
    {'C', 56, 747250, 755250, 55, 56}, {'C', 57, 755250, 763250, 56, 57},
    {'C', 58, 763250, 771250, 57, 58}, {'C', 59, 771250, 779250, 58, 59},
    {'C', 60, 779250, 787250, 59, 60}, {'C', 61, 787250, 795250, 60, 61},
    {'C', 62, 795250, 803250, 61, 62}, {'C', 63, 803250, 811250, 62, 63},
    {'C', 64, 811250, 819250, 63, 64}, {'C', 65, 819250, 827250, 64, 65},
    {'C', 66, 827250, 835250, 65, 66}, {'C', 67, 835250, 843250, 66, 67},
    {'C', 68, 843250, 851250, 67, 68}, {'C', 69, 851250, 859000, 68, 69},
    {'S', 1, 101250, 108750, 1, 1},    {'S', 2, 108750, 115750, 1, 2},
    {'S', 3, 115750, 122750, 2, 3},    {'S', 4, 122750, 129750, 3, 4},
    {'S', 5, 129750, 136750, 4, 5},    {'S', 6, 136750, 143750, 5, 6},
    {'S', 7, 143750, 150750, 6, 7},    {'S', 8, 150750, 157750, 7, 8},
    {'S', 9, 157750, 164750, 8, 9},    {'S', 10, 164750, 171750, 9, 10},
    {'S', 11, 227750, 234750, 11, 11}, {'S', 12, 234750, 241750, 11, 12},
    {'S', 13, 241750, 248750, 12, 13}, {'S', 14, 248750, 255750, 13, 14},
    {'S', 15, 255750, 262750, 14, 15}, {'S', 16, 262750, 269750, 15, 16},
    {'S', 17, 269750, 276750, 16, 17}, {'S', 18, 276750, 283750, 17, 18},
    {'S', 19, 283750, 290750, 18, 19}, {'S', 20, 290750, 298750, 19, 20},
    {'S', 21, 298750, 307250, 20, 21}, {'S', 22, 307250, 315250, 21, 22},
    {'S', 23, 315250, 323250, 22, 23}, {'S', 24, 323250, 331250, 23, 24},
    {'S', 25, 331250, 339250, 24, 25}, {'S', 26, 339250, 347250, 25, 26},
    {'S', 27, 347250, 355250, 26, 27}, {'S', 28, 355250, 363250, 27, 28},
    {'S', 29, 363250, 371250, 28, 29}, {'S', 30, 371250, 379250, 29, 30},
    {'S', 31, 379250, 387250, 30, 31}, {'S', 32, 387250, 395250, 31, 32},
    {'S', 33, 395250, 403250, 32, 33}, {'S', 34, 403250, 411250, 33, 34},
    {'S', 35, 411250, 419250, 34, 35}, {'S', 36, 419250, 427250, 35, 36},
    {'S', 37, 427250, 435250, 36, 37}, {'S', 38, 435250, 443250, 37, 38},
    {'S', 39, 443250, 451250, 38, 39}, {'S', 40, 451250, 459250, 39, 40},
    {'S', 41, 459250, 467250, 40, 41}, {'S', 51, 65750, 72750, 51, 51},
    {'S', 52, 72750, 79750, 51, 52},   {'S', 53, 79750, 86750, 52, 53},
    {'S', 54, 86750, 93750, 53, 54},   {'S', 55, 93750, 101250, 54, 1},
};

TEST(AtvChannelPlanTest, EveryRowBoundIsClassifiedAsTheIndependentPlanSays) {
    size_t used[2] = {0, 0};
    for (const PlanRow& p : kPlan) {
        const uint8_t table = p.table == 'C' ? AtvChannelPlan::C : AtvChannelPlan::S;
        SCOPED_TRACE(std::string(1, p.table) + "-" + std::to_string(p.row));
        EXPECT_EQ(AtvChannelPlan::FindRow(table, p.lowerKHz * 1000), p.lowerGoesTo);
        EXPECT_EQ(AtvChannelPlan::FindRow(table, p.upperKHz * 1000), p.upperGoesTo);
        EXPECT_EQ(AtvChannelPlan::FindRow(table, p.lowerKHz * 1000 + 1), p.row);
        EXPECT_EQ(AtvChannelPlan::FindRow(table, p.upperKHz * 1000 - 1), p.row);
        EXPECT_TRUE(AtvChannelPlan::IsUsed(table, static_cast<uint16_t>(p.row)));
        ++used[table];
    }
    // Nothing else is used: the plans have no rows the independent table lacks.
    size_t count[2] = {0, 0};
    for (uint8_t table : {AtvChannelPlan::C, AtvChannelPlan::S}) {
        for (uint16_t row = 0; row < 80; ++row) {
            count[table] += AtvChannelPlan::IsUsed(table, row) ? 1 : 0;
        }
    }
    EXPECT_EQ(count[0], used[0]);
    EXPECT_EQ(count[1], used[1]);
    EXPECT_EQ(AtvChannelPlan::LowestKHz(), 45750u);
    EXPECT_EQ(AtvChannelPlan::HighestKHz(), 859000u);
}

class AtvSearchTest : public HostTest {
protected:
    sim::AtvTunerState& Tuner() { return Tv().Get<sim::AtvTunerState>(); }
    void Open(uintptr_t direction) { Post(243, 0, direction); }
    // A scan-info event as the ATV player delivers it.
    void ScanInfo(MAPI_U8 percent, MAPI_U32 khz) {
        ST_ATV_SCAN_INFO info{};
        info.u8Percent = percent;
        info.u32FrequencyKHz = khz;
        Fm().OnEvent(43, nullptr, &info, nullptr);
    }
    // The (class, channel) pairs the page was shown, each change once.
    std::vector<std::string> ChannelsShown(const std::string& way) {
        std::vector<std::string> out;
        std::string cls;
        for (const Note& n : UiNotes()) {
            if (n.cmd == "ATV-Tunning-" + way + "-Search-SignalClass") {
                cls = n.data;
            } else if (n.cmd == "ATV-Tunning-" + way + "-Search-CurrentChannel") {
                const std::string shown = cls + "-" + n.data;
                EXPECT_TRUE(n.numeric);
                if (out.empty() || out.back() != shown) {
                    out.push_back(shown);
                }
            }
        }
        return out;
    }
    void SetPrograms(MAPI_U16 count, MAPI_U16 current) {
        Tuner().programs.clear();
        for (MAPI_U16 p = 1; p <= count; ++p) {
            Tuner().programs[p].pll = sim::AtvTunerState::PllOfFrequency(55250);
        }
        Tuner().currentProgram = current;
    }
};

TEST_F(AtvSearchTest, SearchUpSweepsThroughBothPlansAndLocksOnTheNextStation) {
    Open(0);
    EXPECT_EQ(Fm().m_bATVTuningSearchMode, 1);
    EXPECT_EQ(Calls("MSrv_ATV_Player::ZYT_SetManualTuningStart"),
              std::vector<std::string>{"[800000, 55250, 0, 2, 0, 0]"});
    Advance(10000);
    const NoteList notes = UiNotes();
    ASSERT_GE(notes.size(), 4u);
    EXPECT_EQ(notes[0], Str("HideAllUIExcept", "ATVTuningUpSearch"));
    EXPECT_EQ(notes[1], Num("ATV-Tunning-Up-Search-Show", 1));
    EXPECT_EQ(ChannelsShown("Up"),
              (std::vector<std::string>{"C-3", "C-4", "S-51", "S-52", "S-53", "S-54", "S-55", "S-1",
                                        "S-2", "S-3", "S-4", "S-5", "S-6"}));
    EXPECT_EQ(notes.back(), Num("ATV-Tunning-Up-Search-CurrentChannel", 6));
    // The run ended at the lock: idle, stopped, and the page knows where the tuner is.
    EXPECT_EQ(Tuner().searchType, 2);
    EXPECT_FALSE(Tuner().Sweeping());
    EXPECT_EQ(Fm().m_bManualTuning, 0);
    EXPECT_EQ(Fm().u32FrequencyKHz, 140250u);
    EXPECT_EQ(Fm().m_u8ChannelTable, 1);
    EXPECT_EQ(Fm().m_u16CurrentChannelNum, 6);
    EXPECT_EQ(Journal().CountCalls("MSrv_Control::SetATVManualTuneFinishChannel"), 0u);
}

TEST_F(AtvSearchTest, OnlyADownwardSTableHitTellsThePlatformWhereTheRunFinished) {
    Tuner().stations = {112250, 140250};
    Tuner().currentProgram = 2;  // on 140250, S-6
    Tuner().frequencyKHz = 140250;
    Open(1);
    Advance(10000);
    EXPECT_EQ(ChannelsShown("Down"), (std::vector<std::string>{"S-6", "S-5", "S-4", "S-3", "S-2"}));
    const auto finish = Calls("MSrv_Control::SetATVManualTuneFinishChannel");
    ASSERT_FALSE(finish.empty());
    EXPECT_EQ(finish.front(), "[6]");
    EXPECT_EQ(finish.back(), "[2]");
    EXPECT_EQ(Fm().m_bATVSearchDown, 1);
    EXPECT_EQ(Tuner().frequencyKHz, 112250u);

    // Down through the C table only: no such call.
    Journal().Clear();
    Tuner().stations = {48250, 62250};
    Tuner().frequencyKHz = 62250;
    Open(1);
    Advance(10000);
    EXPECT_EQ(Tuner().frequencyKHz, 48250u);
    EXPECT_EQ(Journal().CountCalls("MSrv_Control::SetATVManualTuneFinishChannel"), 0u);
}

TEST_F(AtvSearchTest, ASweepWithNoStationAheadEndsAtTheBandEdge) {
    Open(1);  // below the demo's first station there is none
    Advance(20000);
    EXPECT_FALSE(Tuner().Sweeping());
    EXPECT_EQ(Tuner().searchType, 2);
    EXPECT_EQ(Fm().u32FrequencyKHz, sim::AtvTunerState::kBandLowKHz);
    EXPECT_EQ(ChannelsShown("Down"), (std::vector<std::string>{"C-3", "C-2"}));
}

struct Coverage {
    MAPI_U32 khz;
    const char* cls;  // null: in neither plan
    long channel;
};
class AtvCoverageTest : public AtvSearchTest, public testing::WithParamInterface<Coverage> {};

TEST_P(AtvCoverageTest, AScanInfoFrequencyIsShownByItsPlanRow) {
    const Coverage c = GetParam();
    Open(0);
    ClearUiNotes();
    ScanInfo(50, c.khz);
    if (c.cls == nullptr) {
        EXPECT_EQ(UiNotes(), NoteList{});
    } else {
        EXPECT_EQ(UiNotes(), (NoteList{Str("ATV-Tunning-Up-Search-SignalClass", c.cls),
                                       Num("ATV-Tunning-Up-Search-CurrentChannel", c.channel)}));
    }
}

INSTANTIATE_TEST_SUITE_P(Edges, AtvCoverageTest,
                         testing::Values(Coverage{44000, nullptr, 0}, Coverage{860000, nullptr, 0},
                                         Coverage{45750, "C", 2}, Coverage{50000, "C", 2},
                                         Coverage{51750, "C", 2}, Coverage{70000, "S", 51},
                                         Coverage{101250, "S", 1}, Coverage{170000, "S", 10},
                                         Coverage{171750, "C", 5}, Coverage{859000, "C", 69}));

TEST_F(AtvSearchTest, ScanInfoIsIgnoredWithoutARunAndAfterTheRunStopped) {
    Open(2);  // an unknown direction: no run, and the page is not a recipient
    EXPECT_EQ(Fm().m_bATVTuningSearchMode, 0);
    ClearUiNotes();
    ScanInfo(50, 55250);
    EXPECT_EQ(UiNotes(), NoteList{});
    // Only a manual run is asked for its direction: no middleware call otherwise.
    EXPECT_EQ(Journal().CountCalls("MSrv_ATV_Player::GetManualTuneMode"), 0u);
    Tuner().Start(55250, 0);
    Advance(5000);
    EXPECT_EQ(UiNotes(), NoteList{});
}

TEST_F(AtvSearchTest, Progress99KeepsTheRunAndProgress100EndsIt) {
    Open(0);
    ScanInfo(99, 60000);
    EXPECT_EQ(Fm().m_bManualTuning, 1);
    EXPECT_EQ(Tuner().searchType, 1);
    EXPECT_EQ(Fm().u32FrequencyKHz, 60000u);
    EXPECT_EQ(Journal().CountCalls("MSrv_ATV_Player::StopManualTuning"), 0u);
    Tuner().frequencyKHz = 61000;
    ScanInfo(100, 60000);
    EXPECT_EQ(Fm().m_bManualTuning, 0);
    EXPECT_EQ(Tuner().searchType, 2);
    EXPECT_EQ(Journal().CountCalls("MSrv_ATV_Player::StopManualTuning"), 1u);
    EXPECT_EQ(Fm().u32FrequencyKHz, 61000u);
}

struct Numbering {
    MAPI_U8 variant;
    MAPI_U16 current;
    MAPI_U16 services;
    MAPI_U16 target;
};
class AtvNumberingTest : public AtvSearchTest, public testing::WithParamInterface<Numbering> {};

TEST_P(AtvNumberingTest, TheStoreTargetFollowsTheNumberingVariantAndWraps) {
    const Numbering n = GetParam();
    Tv().Get<sim::FactoryStoreState>().Set(3564, n.variant);
    SetPrograms(n.services, n.current);
    Open(2);
    EXPECT_EQ(Fm().m_u16CurrentChannelNum, n.target);
    EXPECT_EQ(Fm().m_u16PreviousChannelNum, n.current);
    EXPECT_EQ(Fm().m_nServiceNum, n.services);
}

INSTANTIATE_TEST_SUITE_P(Variants, AtvNumberingTest,
                         testing::Values(Numbering{153, 5, 5, 5}, Numbering{153, 5, 4, 0},
                                         Numbering{0, 5, 5, 1}, Numbering{0, 3, 5, 4},
                                         Numbering{152, 4, 5, 5}));

TEST_F(AtvSearchTest, TheSameWayDoesNothingAndTheOtherWayStopsTheRun) {
    Open(0);
    Fm().ATVTuningSearchUp();
    EXPECT_EQ(Journal().CountCalls("MSrv_ATV_Player::ZYT_SetManualTuningStart"), 1u);
    EXPECT_EQ(Journal().CountCalls("MSrv_ATV_Player::StopManualTuning"), 0u);
    Fm().ATVTuningSearchDown();
    EXPECT_EQ(Journal().CountCalls("MSrv_ATV_Player::StopManualTuning"), 1u);
    EXPECT_EQ(Fm().m_bManualTuning, 0);
    EXPECT_EQ(Journal().CountCalls("MSrv_ATV_Player::ZYT_SetManualTuningStart"), 1u);
}

TEST_F(AtvSearchTest, OutOfRangeStartFallsBackByTheTableFlagUpAndTheChannelDown) {
    Tuner().frequencyKHz = 900000;
    Tuner().aftOffset = 0;
    Open(0);  // C table, flag 0: row 0 has no carrier
    Tuner().Stop();
    Tuner().frequencyKHz = 900000;
    Open(1);  // target program 2: C row 2
    EXPECT_EQ(
        Calls("MSrv_ATV_Player::ZYT_SetManualTuningStart"),
        (std::vector<std::string>{"[800000, 855250, 0, 2, 0, 0]", "[800000, 48250, 1, 2, 0, 0]"}));
}

TEST_F(AtvSearchTest, SavingC21FromProgram7SplitsTuningAndNameBetweenTheTwoPrograms) {
    SetPrograms(8, 7);
    Tuner().programs[7].pll = sim::AtvTunerState::PllOfFrequency(463250);
    Tuner().programs[7].misc = ST_ATV_MISC{0x0003 | (1 << 6), 0x52, 0x01};
    Tuner().programs[8].misc.u8AudioStandard = 0x04;  // the target's sound: B/G
    Tuner().frequencyKHz = 463250;
    Tuner().fineTuneKHz = 250;
    Tuner().aftOffset = 3;
    Open(0);
    Advance(10000);
    ASSERT_EQ(Fm().m_u16CurrentChannelNum, 21);
    Journal().Clear();
    ClearUiNotes();
    EXPECT_EQ(Fm().FactoryDoKeyAction(FactoryKey::Select), 1);

    std::vector<std::string> order;
    for (const auto& e : Journal().Entries()) {
        if (e.kind == "call" &&
            (e.fn.rfind("MSrv_ATV_Database::", 0) == 0 || e.fn == "MW_TTX::Reset")) {
            order.push_back(e.fn.substr(e.fn.find("::") + 2) + e.args);
        }
    }
    // PLL, AFT and request 6 to program 7; name, misc record and fine tune to 21. The misc
    // record keeps program 7's other bits, B/G sound (4), the C flag and colour "auto" (8).
    EXPECT_EQ(order,
              (std::vector<std::string>{
                  "GetProgramInfo[15, 7, 0]",
                  "SetProgramInfo[0, 7, " + std::to_string((471250 - 250) * 16 / 1000) + "]",
                  "SetProgramInfo[8, 7, 3]",
                  "SetProgramInfo[6, 7, 0]",
                  "Reset[]",
                  "ATVSetChannelName[21, \"C-21 \"]",
                  "SetProgramInfo[13, 21, 0, " + std::to_string(0x0003 | (8 << 6)) + ", 84, 1]",
                  "ATVSetFineTune[21, 0]",
              }));
    EXPECT_EQ(Tuner().programs[21].name, "C-21 ");
    EXPECT_EQ(UiNotes(), NoteList{Str("ATV-Tunning-Up-Search-SaveOK", "Save OK")});
    Advance(499);
    EXPECT_EQ(UiNotes().size(), 1u);
    Advance(1);
    EXPECT_EQ(UiNotes(), (NoteList{Str("ATV-Tunning-Up-Search-SaveOK", "Save OK"),
                                   Str("ATV-Tunning-Up-Search-SaveOK", "")}));
}

TEST_F(AtvSearchTest, ADownwardSTableSaveUsesTheDownKeysAndTheSFlag) {
    Tuner().currentProgram = 3;  // 182250, C-6
    Tuner().frequencyKHz = 182250;
    Open(1);
    Advance(10000);
    ASSERT_EQ(Fm().m_u16CurrentChannelNum, 6);  // S-6, 140250
    ClearUiNotes();
    Fm().FactoryDoKeyAction(FactoryKey::Select);
    EXPECT_EQ(Tuner().programs[6].name, "S-06 ");
    EXPECT_EQ(Tuner().programs[6].misc.u8Flags & 0x20, 0x20);
    Advance(500);
    EXPECT_EQ(UiNotes(), (NoteList{Str("ATV-Tunning-Down-Search-Save", "Save OK"),
                                   Str("ATV-Tunning-Down-Search-Save", "")}));
}

TEST_F(AtvSearchTest, AChannelOutsideThePlanIsNotStored) {
    Open(2);
    Fm().m_u8ChannelTable = 0;
    for (MAPI_U16 unused : {0, 1, 13, 20, 70}) {
        Fm().m_u16CurrentChannelNum = unused;
        Fm().ATVTuningSearchSelect();
    }
    Fm().m_u8ChannelTable = 1;
    for (MAPI_U16 unused : {0, 42, 50, 56}) {
        Fm().m_u16CurrentChannelNum = unused;
        Fm().ATVTuningSearchSelect();
    }
    Fm().m_u8ChannelTable = 2;
    Fm().m_u16CurrentChannelNum = 5;
    Fm().ATVTuningSearchSelect();
    EXPECT_EQ(Journal().CountCalls("MSrv_ATV_Database::ATVSetChannelName"), 0u);
    EXPECT_TRUE(Journal().HasLog("CheckChannelValid failed"));
}

struct ExitCase {
    bool mMode;
    MAPI_U8 blueFlag;
    bool signal;
    bool blueScreenSet;
};
class AtvExitTest : public AtvSearchTest, public testing::WithParamInterface<ExitCase> {};

TEST_P(AtvExitTest, ExitRestoresTheProgramAndShowsBlueOnlyWithoutSignalOutsideMMode) {
    const ExitCase c = GetParam();
    if (!c.signal) {
        Tuner().stations = {140250};  // the program that was on has no station
    }
    Open(0);
    Advance(10000);
    auto& mMode = Tv().Get<sim::MModeState>();
    mMode.mMode = c.mMode;
    mMode.user.bBlueScreen = c.blueFlag;
    ClearUiNotes();
    Journal().Clear();
    EXPECT_EQ(Fm().FactoryDoKeyAction(c.mMode ? FactoryKey::Menu : FactoryKey::Exit), 1);
    EXPECT_EQ(Fm().m_bATVTuningSearchMode, 0);
    EXPECT_EQ(Calls("MSrv_ATV_Player::ChangeProgram"), std::vector<std::string>{"[1, 1]"});
    EXPECT_EQ(Tuner().currentProgram, 1);
    EXPECT_EQ(Calls("MSrv_Control::SetBlueScreenEnable"),
              c.blueScreenSet ? std::vector<std::string>{"[1]"} : std::vector<std::string>{});
    EXPECT_EQ(mMode.user.bBlueScreen, c.blueScreenSet ? 1 : c.blueFlag);
    EXPECT_EQ(UiNotes(), NoteList{Num("ATV-Tunning-Up-Search-Show", 0)});
    // No longer a recipient: a later sweep reaches nobody.
    Tuner().Start(55250, 0);
    Advance(10000);
    EXPECT_EQ(UiNotes().size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(BlueScreen, AtvExitTest,
                         testing::Values(ExitCase{false, 0, false, true},
                                         ExitCase{false, 0, true, false},
                                         ExitCase{false, 1, false, false},
                                         ExitCase{true, 0, false, false}));

// The page that closes is the one of the last run's way, whichever key opened it.
TEST_F(AtvSearchTest, ExitAfterADownwardRunClosesTheDownwardPage) {
    Tuner().stations = {112250, 140250};
    Tuner().currentProgram = 2;
    Tuner().frequencyKHz = 140250;
    Open(1);
    Advance(10000);
    ClearUiNotes();
    EXPECT_EQ(Fm().FactoryDoKeyAction(FactoryKey::Exit), 1);
    EXPECT_EQ(UiNotes(), NoteList{Num("ATV-Tunning-Down-Search-Show", 0)});
}

}  // namespace
