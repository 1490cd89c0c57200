// Every "(FACTORY:)" line of the library: a line-station line, shown on the console
// and in the log in M-mode only, whichever page prints it.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "SetFixture.h"
#include "SimFrontEnd.h"
#include "SimMMode.h"
#include "SimPlayers.h"
#include "SimProductionTests.h"
#include "SimProductionTests2.h"

namespace {

class FactoryLinesTest;

struct LineCase {
    const char* name;
    std::function<void(FactoryLinesTest&)> drive;
    const char* console;  // exactly as printed
    const char* log;      // "" when the line is not logged
};

class FactoryLinesTest : public HostTest,
                         public testing::WithParamInterface<std::tuple<LineCase, bool>> {
public:
    void Event(unsigned id, uintptr_t p2 = 0) { Post(id, 0, p2); }
    void Run(uint64_t ms) { Advance(ms); }
    sim::Set& Set() { return Tv(); }
};

std::ostream& operator<<(std::ostream& out, const LineCase& c) { return out << c.name; }

void Adc(FactoryLinesTest& t, unsigned phase) {
    t.Set().Get<sim::PlayerState>().currentSource = 0;
    auto& signal = t.Set().Get<sim::SignalState>();
    signal.width = 1920;
    signal.height = 1080;
    signal.vfreq = 600;
    t.Event(232, phase);
}

void Edid(FactoryLinesTest& t, bool pass) {
    t.Set().Get<sim::StationState>().vgaEdidPass = pass;
    t.Event(233);
}

// The demo set's LNB supply and DiSEqC switch byte is on, its tone off.
void Satellite(FactoryLinesTest& t, unsigned sub, MAPI_U8 lnb = 1, bool toneFails = true) {
    t.Set().Get<sim::FrontEndState>().routeTypes = {{2, 4, 0, 0}};
    t.Set().Get<sim::FrontEndState>().dish22kFails = toneFails;
    t.Set().Get<sim::MModeState>().user.u8LNBPower = lnb;
    t.Event(230, sub);
}

void Ci(FactoryLinesTest& t, bool pass) {
    t.Set().Get<sim::FactoryLineState>().ciPass = pass;
    t.Event(239);
    t.Run(1000);
}

TEST_P(FactoryLinesTest, ShownOnlyInMMode) {
    const auto& [c, mMode] = GetParam();
    Tv().Get<sim::MModeState>().mMode = mMode;
    testing::internal::CaptureStdout();
    c.drive(*this);
    const std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(out.find(c.console) != std::string::npos, mMode) << out;
    if (*c.log) {
        EXPECT_EQ(Journal().HasLog(c.log), mMode);
    }
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(AllLines, FactoryLinesTest, testing::Combine(testing::Values(
    LineCase{"AdcOk", [](auto& t) { Adc(t, 1); }, "\n(FACTORY:) AD RGB OK  \n", "(FACTORY:) AD RGB OK "},
    LineCase{"AdcNg", [](auto& t) { Adc(t, 2); }, "\n(FACTORY:) AD RGB NG  \n", "(FACTORY:) AD RGB NG "},
    LineCase{"VgaEdidOk", [](auto& t) { Edid(t, true); }, "\n(FACTORY:) VGA EDID OK  \n", "(FACTORY:) VGA EDID OK "},
    LineCase{"VgaEdidNg", [](auto& t) { Edid(t, false); }, "\n(FACTORY:) VGA EDID NG  \n", " (FACTORY:) VGA EDID NG "},
    LineCase{"LnbOff", [](auto& t) { Satellite(t, 169); }, "\n(FACTORY:) LNB Off \n", "(FACTORY:) LNB Off"},
    LineCase{"LnbOn", [](auto& t) { Satellite(t, 169, 0); }, "\n(FACTORY:) LNB On \n", "(FACTORY:) LNB On"},
    LineCase{"ToneOnFail", [](auto& t) { Satellite(t, 218); }, "\n(FACTORY:) 22kHz Tone On fail \n", "(FACTORY:) 22kHz Tone On fail"},
    LineCase{"ToneOn", [](auto& t) { Satellite(t, 218, 1, false); }, "\n(FACTORY:) 22kHz Tone On \n", "(FACTORY:) 22kHz Tone On"},
    LineCase{"DiseqcA", [](auto& t) { Satellite(t, 213); }, "\n(FACTORY:) DiSEqC SW A \n", "(FACTORY:) DiSEqC SW A"},
    LineCase{"DiseqcB", [](auto& t) { Satellite(t, 213, 0); }, "\n(FACTORY:) DiSEqC SW B \n", "(FACTORY:) DiSEqC SW B"},
    LineCase{"HdmiSwitchDown", [](auto& t) { t.Event(236, 0x85); t.Run(11000); }, "\n(FACTORY:) HDMI SWITCH DOWN\n", ""},
    LineCase{"CiOk", [](auto& t) { Ci(t, true); }, "\n(FACTORY:) CI test OK \n", "(FACTORY:) CI test OK"},
    LineCase{"CiNg", [](auto& t) { Ci(t, false); }, "\n(FACTORY:) CI test NG \n", "(FACTORY:) CI test NG"},
    LineCase{"MediaPlayer", [](auto& t) { t.Event(241); }, "\n(FACTORY:) M-Player On \n", "(FACTORY:) M-Player On"}),
    testing::Bool()),
    [](const auto& info) {
        return std::string(std::get<0>(info.param).name) + (std::get<1>(info.param) ? "_MMode" : "_Consumer");
    });
// clang-format on

}  // namespace
