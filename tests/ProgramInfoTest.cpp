// The program information banner on the simulated set: what a direct channel change
// shows for digital and analogue programs, and for how long.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "MapiInputSource.h"
#include "SetFixture.h"
#include "SimFrontEnd.h"
#include "SimPlayers.h"
#include "SimProgramInfo.h"
#include "UiNotes.h"

namespace {

class ProgramInfoTest : public HostTest {
protected:
    sim::ProgramInfoState& Info() { return Tv().Get<sim::ProgramInfoState>(); }
    sim::FrontEndState& Sat() { return Tv().Get<sim::FrontEndState>(); }
    void SetUp() override {
        HostTest::SetUp();
        Tv().Get<sim::FrontEndState>().routeTypes = {{2, 4, 0, 0}};  // cable, then satellite
    }
    void OnSatellite() { Tv().Get<sim::FrontEndState>().route = 1; }
    void DirectCH() { Post(207); }
    // The data of every note with this cmd.
    std::vector<std::string> Sent(const std::string& cmd) {
        std::vector<std::string> out;
        for (const Note& n : UiNotes()) {
            if (n.cmd == cmd) {
                out.push_back(n.data);
            }
        }
        return out;
    }
};

TEST_F(ProgramInfoTest, ADigitalSatelliteBannerShowsEveryFieldForFiveSeconds) {
    OnSatellite();
    Info().eitStart = Info().RtcNow() - 600;
    Info().eitDuration = 3000;  // 2400 s left: 41 minutes counting the started one
    DirectCH();
    Advance(4999);
    EXPECT_EQ(UiNotes(), Notes(R"-(
            HideAllUIExcept="ProgramInfo" ProgramInfo-DTVChannelNum=1
            ProgramInfo-DTVChannelName="Das Erste HD" ProgramInfo-SatelliteName="ASTRA 19.2E"
            ProgramInfo-DTV_GENRE="Movie" ProgramInfo-TimeInfo="20:15-21:45"
            ProgramInfo-TimeInfo="41 min left"
        )-"));
    ClearUiNotes();
    Advance(1);
    EXPECT_EQ(UiNotes(), NoteList{Num("ProgramInfo-Show", 0)});
    EXPECT_EQ(Calls("MEvtHandle::KillTimer"), std::vector<std::string>{"[11]"});
}

struct GenreCase {
    bool satellite;
    MAPI_U8 country;
    MAPI_U8 genre;
    const char* label;
    MAPI_U8 normalised;
};
class GenreTest : public ProgramInfoTest, public testing::WithParamInterface<GenreCase> {};

TEST_P(GenreTest, TheGenreLabelDependsOnRouteAndCountry) {
    const GenreCase c = GetParam();
    if (c.satellite) {
        OnSatellite();
    }
    Info().country = c.country;
    Info().genre = c.genre;
    DirectCH();
    EXPECT_EQ(Sent("ProgramInfo-DTV_GENRE"), std::vector<std::string>{c.label});
    EXPECT_EQ(Fm().GenreType_Color_Setup(c.genre), c.normalised);
}

constexpr MAPI_U8 kA = 25, kB = 22, kOther = 7;
INSTANTIATE_TEST_SUITE_P(
    Countries, GenreTest,
    testing::Values(
        GenreCase{false, kA, 2, "News and Factual", 2}, GenreCase{false, kA, 6, "Entertainment", 3},
        GenreCase{false, kA, 7, "News and Factual", 2},
        GenreCase{false, kA, 8, "News and Factual", 2}, GenreCase{false, kA, 11, "", 0},
        GenreCase{false, kA, 15, "Drama", 15}, GenreCase{false, kB, 7, "Factual", 8},
        GenreCase{false, kB, 9, "Factual", 8}, GenreCase{false, kB, 15, "", 0},
        GenreCase{false, kOther, 7, "Arts", 7}, GenreCase{false, kOther, 9, "Education", 9},
        GenreCase{false, kOther, 11, "Special", 11}, GenreCase{false, kOther, 15, "", 0},
        GenreCase{true, kA, 2, "News", 2}, GenreCase{true, kA, 6, "Music", 6},
        GenreCase{true, kA, 15, "", 0}, GenreCase{true, kB, 9, "Education", 9},
        GenreCase{true, kB, 7, "Arts", 7}, GenreCase{false, kOther, 3, "Entertainment", 3},
        GenreCase{false, kOther, 4, "Sport", 4}, GenreCase{false, kOther, 5, "Children's", 5},
        GenreCase{false, kOther, 10, "Lifestyle", 10}, GenreCase{false, kOther, 12, "", 12}));

struct LeftCase {
    int secondsLeft;
    const char* text;
};
class MinutesLeftTest : public ProgramInfoTest, public testing::WithParamInterface<LeftCase> {};

TEST_P(MinutesLeftTest, AStartedMinuteCountsAndAnEndedEventLeavesNone) {
    Advance(123000);  // the clock has moved on since boot
    Info().eitDuration = 3600;
    Info().eitStart = Info().RtcNow() - 3600 + GetParam().secondsLeft;
    DirectCH();
    EXPECT_EQ(Sent("ProgramInfo-TimeInfo"),
              (std::vector<std::string>{"20:15-21:45", GetParam().text}));
}

INSTANTIATE_TEST_SUITE_P(Left, MinutesLeftTest,
                         testing::Values(LeftCase{30, "1 min left"}, LeftCase{0, "0 min left"},
                                         LeftCase{-300, "0 min left"}, LeftCase{1, "1 min left"},
                                         LeftCase{60, "2 min left"}, LeftCase{59, "1 min left"}));

TEST_F(ProgramInfoTest, AnOutOfRangeTimeShowsZerosAndNoEventShowsAnEmptyLine) {
    Info().endMinute = 60;
    DirectCH();
    EXPECT_EQ(Sent("ProgramInfo-TimeInfo").front(), "00:00-00:00");
    ClearUiNotes();
    Info().endMinute = 59;
    Info().startHour = 23;
    DirectCH();
    EXPECT_EQ(Sent("ProgramInfo-TimeInfo").front(), "23:15-21:59");
    ClearUiNotes();
    Info().eitPresent = false;
    DirectCH();
    EXPECT_EQ(Sent("ProgramInfo-TimeInfo"), std::vector<std::string>{""});
    EXPECT_EQ(Sent("ProgramInfo-DTV_GENRE"), std::vector<std::string>{""});
}

TEST_F(ProgramInfoTest, SatelliteNamesComeFromTheDisplayTable) {
    const std::pair<const char*, const char*> kShown[] = {
        {"Astra 19.2E", "ASTRA 19.2E"},
        {"Astra 23.5E", "ASTRA 23.5E"},
        {"Astra 28.2E", "ASTRA 28.2E"},
        {"Astra 4.8E", "ASTRA 4.8E"},
        {"Eutelsat 7.0E", "Eutelsat 7.0E"},
        {"Turksat 42.0E", "Turksat 42.0E"},
        {"Hispasat 30.0W", "Hispasat 30.0W"},
        {"Hotbird 13.0E", "Hotbird 13.0E"},
        {"Thor 0.8W", "Thor 0.8W / Intelsat 1.0W"},
        {"UserSat1", "UserSat1"},
        {"UserSat2", "UserSat2"},
        {"Amazonas 61.0W", "Amazonas 61.0W"},
        {"astra 19.2E", "astra 19.2E"}};
    OnSatellite();
    for (const auto& [name, shown] : kShown) {
        Sat().satellites[Sat().currentSatellite].name = name;
        ClearUiNotes();
        DirectCH();
        EXPECT_EQ(Sent("ProgramInfo-SatelliteName"), std::vector<std::string>{shown}) << name;
    }
}

TEST_F(ProgramInfoTest, AnUnnamedServiceIsANewProgramOnlyOnRouteTypeTwo) {
    Info().name = "";
    DirectCH();  // route 0 is of type 2
    EXPECT_EQ(Sent("ProgramInfo-DTVChannelName"), std::vector<std::string>{"New Program"});
    ClearUiNotes();
    OnSatellite();
    DirectCH();
    EXPECT_EQ(Sent("ProgramInfo-DTVChannelName"), std::vector<std::string>{""});
}

TEST_F(ProgramInfoTest, ASetWithoutSatelliteTunerShowsNoSatelliteAndNoGenre) {
    OnSatellite();
    Sat().dvbsEnabled = false;
    DirectCH();
    EXPECT_EQ(Sent("ProgramInfo-SatelliteName"), std::vector<std::string>{});
    EXPECT_EQ(Sent("ProgramInfo-DTV_GENRE"), std::vector<std::string>{""});
    EXPECT_EQ(Journal().CountCalls("MSrv_Control::GetCurrentDtvRoute"), 0u) << "no route asked";
}

struct SoundCase {
    MAPI_U8 mode;
    const char* text;
};
class AnalogueBannerTest : public ProgramInfoTest, public testing::WithParamInterface<SoundCase> {};

TEST_P(AnalogueBannerTest, AnAnalogueBannerShowsNumberNameAndSoundMode) {
    Tv().Get<sim::PlayerState>().currentSource = MAPI_INPUT_SOURCE_ATV;
    Info().sifSoundMode = GetParam().mode;
    DirectCH();
    EXPECT_EQ(UiNotes(),
              (NoteList{Str("HideAllUIExcept", "ProgramInfo"), Str("ProgramInfo-ChannelNum", "1"),
                        Str("ProgramInfo-ChannelName", "C-03 "),
                        Str("ProgramInfo-Audio", GetParam().text)}));
}

INSTANTIATE_TEST_SUITE_P(Sound, AnalogueBannerTest,
                         testing::Values(SoundCase{3, "Stereo"}, SoundCase{4, "Stereo"},
                                         SoundCase{11, "Stereo"}, SoundCase{7, "Dual"},
                                         SoundCase{8, "Dual"}, SoundCase{10, "Dual"},
                                         SoundCase{12, "Dual"}, SoundCase{13, "Dual"},
                                         SoundCase{0, "Mono"}, SoundCase{9, "Mono"}));

TEST_F(ProgramInfoTest, NoCurrentProgramOrAnotherSourceSendsNothingButThePage) {
    Info().programKnown = false;
    DirectCH();
    Tv().Get<sim::PlayerState>().currentSource = 23;
    Info().programKnown = true;
    DirectCH();
    EXPECT_EQ(UiNotes(), (NoteList{Str("HideAllUIExcept", "ProgramInfo"),
                                   Str("HideAllUIExcept", "ProgramInfo")}));
}

}  // namespace
