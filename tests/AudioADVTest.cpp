// The advanced-sound console on the set: digit entry, the four commands and what
// they show, and a console that keeps every key.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FactoryKeyCodes.h"
#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimSoundEditors.h"
#include "UiNotes.h"

namespace {

class AudioADVTest : public HostTest {
protected:
    sim::SoundEditorState& Sound() { return Tv().Get<sim::SoundEditorState>(); }
    void Open() { Post(269); }
    void Press(unsigned long key) { ASSERT_EQ(Fm().FactoryDoKeyAction(key), 0); }
    void Type(const std::string& digits) {
        for (char d : digits) Press(static_cast<unsigned long>(d));
    }
    // Types the three fields and moves to OK.
    void Enter(const std::string& p1, const std::string& p2, const std::string& p3) {
        Type(p1);
        Press(FactoryKey::Down);
        Type(p2);
        Press(FactoryKey::Down);
        Type(p3);
        Press(FactoryKey::Down);
        ClearUiNotes();
        Journal().Clear();
    }
};

TEST_F(AudioADVTest, OpensOnTheCommandField) {
    Open();
    EXPECT_EQ(UiNotes(), Notes(R"-(
        HideAllUIExcept="AudioADV" AudioADV-Param1-highlight=1 AudioADV-Show=1
    )-"));
    EXPECT_EQ(Fm().m_bAudioADVMode, 1);
}

TEST_F(AudioADVTest, AFieldKeepsTheLastTwoDigits) {
    Open();
    Press(FactoryKey::Down);
    ClearUiNotes();
    Type("123");
    EXPECT_EQ(UiNotes(), Notes(R"-(AudioADV-Param2=1 AudioADV-Param2=12 AudioADV-Param2=23)-"));
}

TEST_F(AudioADVTest, ReopeningKeepsTheValuesUntilTheFirstDigit) {
    Open();
    Type("54");
    Press(FactoryKey::Exit);
    Open();
    EXPECT_EQ(Fm().m_u8ADVParam1, 54);
    ClearUiNotes();
    Type("7");
    EXPECT_EQ(UiNotes(), NoteList{Num("AudioADV-Param1", 7)});
}

TEST_F(AudioADVTest, UpAndDownWrapOverTheFourItems) {
    Open();
    ClearUiNotes();
    Press(FactoryKey::Up);
    Press(FactoryKey::Up);
    Press(FactoryKey::Down);
    Press(FactoryKey::Down);
    EXPECT_EQ(UiNotes(), Notes(R"-(
                  AudioADV-Param1-highlight=0 AudioADV-OK-highlight=1 AudioADV-OK-highlight=0
                  AudioADV-Param3-highlight=1 AudioADV-Param3-highlight=0
                  AudioADV-OK-highlight=1 AudioADV-OK-highlight=0 AudioADV-Param1-highlight=1
              )-"));
    // On OK the digits go nowhere.
    Press(FactoryKey::Up);
    ClearUiNotes();
    Type("4");
    EXPECT_EQ(UiNotes(), NoteList{});
}

struct CommandCase {
    const char* name;
    const char* command;
    const char* fn;  // null: no call
    const char* args;
    NoteList shown;
};

class AudioADVCommandTest : public AudioADVTest, public testing::WithParamInterface<CommandCase> {};

TEST_P(AudioADVCommandTest, OkRunsTheCommand) {
    const CommandCase& c = GetParam();
    Sound().audyCLevel[12] = 77;
    Sound().audyParam[12] = 300;
    Open();
    Enter(c.command, "12", "34");
    Press(FactoryKey::Select);
    EXPECT_EQ(UiNotes(), c.shown);
    const char* const fns[] = {"mapi_audio::ADVSND_SetAudyParam",
                               "mapi_audio::ADVSND_GetAudyCLevel", "mapi_audio::ADVSND_SetParam",
                               "mapi_audio::ADVSND_GetAudyParam"};
    for (const char* fn : fns) {
        const bool called = c.fn != nullptr && std::string(fn) == c.fn;
        EXPECT_EQ(Calls(fn), called ? std::vector<std::string>{c.args} : std::vector<std::string>{})
            << fn;
    }
}

const NoteList kEmptyResult = {Str("AudioADV-Result-Title", ""), Str("AudioADV-Result-Value", "")};

// clang-format off
INSTANTIATE_TEST_SUITE_P(Commands, AudioADVCommandTest, testing::Values(
    CommandCase{"SetAudyssey", "53", "mapi_audio::ADVSND_SetAudyParam", "[12, 34]", kEmptyResult},
    CommandCase{"ReadCLevel", "54", "mapi_audio::ADVSND_GetAudyCLevel", "[12]", Notes(R"(AudioADV-Result-Title="audy_clevel:" AudioADV-Result-Value=77)")},
    CommandCase{"SetParam", "55", "mapi_audio::ADVSND_SetParam", "[12, 34, 0]", kEmptyResult},
    CommandCase{"ReadParam", "56", "mapi_audio::ADVSND_GetAudyParam", "[12]", Notes(R"(AudioADV-Result-Title="audy_param:" AudioADV-Result-Value=300)")},
    CommandCase{"TheDigitFiveIsNoCommand", "5", nullptr, "", {}},
    CommandCase{"FiftySevenIsNoCommand", "57", nullptr, "", {}}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

TEST_F(AudioADVTest, OkOnAFieldDoesNothing) {
    Open();
    Type("55");
    ClearUiNotes();
    Press(FactoryKey::Select);
    Press(FactoryKey::PanelFunction);
    EXPECT_EQ(UiNotes(), NoteList{});
    EXPECT_EQ(Journal().CountCalls("mapi_audio::ADVSND_SetParam"), 0u);
}

TEST_F(AudioADVTest, EveryKeyIsTheConsolesAndExitClosesIt) {
    Open();
    EXPECT_EQ(Fm().FactoryAudioADVKeyAction(FactoryKey::Menu), 1);
    EXPECT_EQ(Fm().m_bAudioADVMode, 1);
    ClearUiNotes();
    EXPECT_EQ(Fm().FactoryAudioADVKeyAction(FactoryKey::Exit), 1);
    EXPECT_EQ(UiNotes(), NoteList{Num("AudioADV-Show", 0)});
    EXPECT_EQ(Fm().m_bAudioADVMode, 0);
}

}  // namespace
