// Every page's life on the set, one row a page: the event that opens it, the key or
// timer that closes it, and what it must do on the way in and out, in order: the page
// reset, the host hooks, the factory OSD state, the web page shown or hidden, and the
// page's own HideAllUIExcept / show-hide notifications.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "CallOrder.h"
#include "FactoryKeyCodes.h"
#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimFrontEnd.h"
#include "UiNotes.h"

// The page reset and the host hook do nothing a set can see, so the tests stand in
// for them (the library calls them through the dynamic linker) and note each call in
// the journal, between the platform calls.
namespace {
void Record(const char* fn, const sim::ArgList& args = sim::ArgList()) {
    sim::Set& tv = sim::Set::Instance();
    tv.GetJournal().Call(tv.NowMs(), fn, args);
}
template <class Fn>
Fn Next(const char* symbol) {
    return reinterpret_cast<Fn>(dlsym(RTLD_NEXT, symbol));
}
}  // namespace

void FactoryManager::InfoZYTAppMgr(unsigned char on) {
    Record("FactoryManager::InfoZYTAppMgr", sim::ArgList(on));
}
// ResetState's own reset without key writing is part of it (a compiler may inline it),
// so only the reset a page calls by itself is noted.
thread_local bool g_inResetState = false;

void FactoryManager::ResetState() {
    Record("FactoryManager::ResetState");
    static const auto real = Next<void (*)(FactoryManager*)>("_ZN14FactoryManager10ResetStateEv");
    g_inResetState = true;
    real(this);
    g_inResetState = false;
}
void FactoryManager::ResetStateWithoutKeyWriting() {
    if (!g_inResetState) {
        Record("FactoryManager::ResetStateWithoutKeyWriting");
    }
    static const auto real =
        Next<void (*)(FactoryManager*)>("_ZN14FactoryManager27ResetStateWithoutKeyWritingEv");
    real(this);
}

namespace {

struct PageRow {
    const char* name;
    unsigned long event;
    uintptr_t param;
    unsigned long exitKey;  // 0: closed by its timer instead
    unsigned long closeMs;  // virtual time until the page is gone
    const char* entry;      // what opening it does, in the shorthand of Life()
    const char* exit;       // what closing it does
};

std::ostream& operator<<(std::ostream& out, const PageRow& r) { return out << r.name; }

class PageLifecycleTest : public HostTest, public testing::WithParamInterface<PageRow> {
protected:
    void SetUp() override {
        HostTest::SetUp();
        Tv().Get<sim::FrontEndState>().routeTypes = {{2, 4, 0, 0}};
    }
    // Since the last look: the lifecycle calls in order (ResetState as "Reset", the
    // reset without key writing as "reset", osdN, zytN for InfoZYTAppMgr(N), hideN and
    // showN for web page N), then the host listener codes (hostN), then the framing notifications.
    std::string Life() {
        static const std::vector<std::pair<std::string, std::string>> kShort = {
            {"FactoryManager::ResetState[]", "Reset"},
            {"FactoryManager::ResetStateWithoutKeyWriting[]", "reset"},
            {"MSrv_Factory_Cmd::SetFactoryOSDStatus[", "osd"},
            {"FactoryManager::InfoZYTAppMgr[", "zyt"},
            {"WebAppMgr_HidePage[", "hide"},
            {"WebAppMgr_ShowPage[", "show"}};
        std::string out;
        for (const std::string& call :
             CallOrder({"FactoryManager::", "MSrv_Factory_Cmd::SetFactoryOSDStatus",
                        "WebAppMgr_ShowPage", "WebAppMgr_HidePage"})) {
            for (const auto& [full, brief] : kShort) {
                if (call.compare(0, full.size(), full) == 0) {
                    std::string rest = call.substr(full.size());
                    out += " " + brief + rest.substr(0, rest.size() - (rest.empty() ? 0 : 1));
                }
            }
        }
        for (unsigned long code : Codes()) {
            out += " host" + std::to_string(code);
        }
        for (const Note& n : UiNotes()) {
            const std::string& c = n.cmd;
            const auto ends = [&](const std::string& tail) {
                return c.size() >= tail.size() &&
                       c.compare(c.size() - tail.size(), tail.size(), tail) == 0;
            };
            if (c == "HideAllUIExcept" || ends("-Show") || ends("-show") || ends("-hide")) {
                std::ostringstream text;
                PrintTo(n, &text);
                out += " " + text.str();
            }
        }
        Journal().Clear();
        ClearUiNotes();
        Codes().clear();
        return out.empty() ? out : out.substr(1);
    }
};

TEST_P(PageLifecycleTest, OpensAndClosesAsThePageMust) {
    const PageRow& r = GetParam();
    Post(r.event, 0, r.param);
    EXPECT_EQ(Life(), r.entry) << "entry";
    if (r.exitKey != 0) {
        Fm().FactoryDoKeyAction(r.exitKey);
    }
    Advance(r.closeMs);
    EXPECT_EQ(Life(), r.exit) << "exit";
}

// clang-format off
const PageRow kPages[] = {
    {"Version", 188, 0, FactoryKey::Exit, 0, "osd1 zyt1 hide1 hide1 hide4 HideAllUIExcept=\"Version\"", "show1 show4 osd0 show1"},
    {"AdcAdjustment", 232, 0, FactoryKey::Exit, 0, "Reset osd0 osd1 zyt1 hide1 HideAllUIExcept=\"ADCAdjustment\"", "osd0 zyt0 show1 zyt0 show1 ADC-Adjustment-NG-Show=0"},
    {"VgaEdid", 233, 0, FactoryKey::Exit, 0, "Reset osd0 osd1 zyt1 hide1 HideAllUIExcept=\"VGA_EDID_EEPROM\"", "osd0 zyt0 show1 zyt0 show1 WriteVGA_EDID_EEPRPOM-Show=0"},
    {"WlanTest", 251, 0, FactoryKey::Exit, 0, "Reset osd0 Reset osd0 osd1 HideAllUIExcept=\"WLANTest\" WLANTest-Show=0 " "WLANTest-NG-Show=0", "osd0 zyt0 show1 zyt0 show1 WLANTest-OK-Show=0"},
    {"WakeOnWlan", 250, 0, FactoryKey::Exit, 0, "Reset osd0 Reset osd0 osd1 HideAllUIExcept=\"WOWonWLANTest\" " "WOWTest-Testing-Show=0 WOWTest-OK-Show=\"WOW Test : OK\"", "osd0 zyt0 show1 zyt0 show1 WOWTest-OK-Show=0"},
    {"MediaPlayer", 241, 0, FactoryKey::Exit, 0, "Reset osd0 osd1 zyt1 hide1", "Reset osd0 zyt0 show1"},
    {"BrightnessSensorValue", 194, 0, FactoryKey::Exit, 0, "Reset osd0 osd1 zyt1 hide1 HideAllUIExcept=\"AutoBrightnessSensorValue\"", "osd0 zyt0 show1 AutoBrightnessSensorValue-Show=0"},
    {"Dlna", 228, 0, FactoryKey::Exit, 0, "Reset osd0 HideAllUIExcept=\"DLNATest\"", "zyt0 show1 osd0 zyt0 show1 DLNA-Test-show=0"},
    {"Aging1", 254, 0, FactoryKey::Exit, 0, "Reset osd0 zyt1 hide1 osd1", "osd1 osd0 zyt0 show1"},
    {"Aging2", 255, 0, FactoryKey::Exit, 0, "Reset osd0 zyt1 hide1 osd1", "osd0 osd1 zyt0 show1"},
    {"AudioBalance", 198, 0, FactoryKey::Exit, 0, "Reset osd0 osd1 zyt1 hide1 HideAllUIExcept=\"AudioBalanceCheck\"", "osd0 zyt0 show1 AudioBalanceCheck-Show=0"},
    {"BackLight", 195, 0, FactoryKey::Exit, 0, "Reset osd0 osd1 zyt1 hide1 HideAllUIExcept=\"BackLightCheck\"", "osd0 zyt0 show1 BackLightCheck-Show=0"},
    {"Polarisation", 227, 0, FactoryKey::Exit, 0, "Reset osd0 zyt1 hide1 HideAllUIExcept=\"PolarizationHV\"", "zyt0 show1"},
    {"DigitalAudioOut", 197, 0, FactoryKey::Exit, 0, "Reset osd0 zyt1 hide1 HideAllUIExcept=\"DigitalAudioOut\"", "zyt0 show1 Digital-Audio-Out-Show=0"},
    {"CiTest", 239, 0, FactoryKey::Exit, 0, "Reset osd0 zyt1 hide1 osd1 HideAllUIExcept=\"CITest\"", "osd0 zyt0 show1 CITest-Show=0"},
    {"CloneCopy", 226, 0, FactoryKey::Exit, 0, "Reset osd0 osd1 zyt1 hide1 HideAllUIExcept=\"CloneCopy\"", "osd0 zyt0 show1 Clone-Copy-Show=0"},
    {"AtvSearchUp", 243, 0, FactoryKey::Exit, 0, "reset osd0 osd1 host73731 HideAllUIExcept=\"ATVTuningUpSearch\" ATV-Tunning-Up-Search-Show=1", "osd0 zyt0 host73730 ATV-Tunning-Up-Search-Show=0"},
    {"AtvSearchDown", 243, 1, FactoryKey::Exit, 0, "reset osd0 osd1 host73731 HideAllUIExcept=\"ATVTuningDownSearch\" " "ATV-Tunning-Down-Search-Show=1", "osd0 zyt0 host73730 ATV-Tunning-Up-Search-Show=0"},
    {"Peq", 267, 0, FactoryKey::Exit, 0, "zyt1 hide1 osd1 HideAllUIExcept=\"PEQ\"", "osd0 zyt0 show1 zyt0 show1 PEQ-Show=0"},
    {"Timing3D", 268, 0, FactoryKey::Exit, 0, "Reset osd0 zyt1 hide1 osd1 HideAllUIExcept=\"3DTimingAdjust\" 3DTimingAdjust-Show=1", "osd0 zyt0 show1 zyt0 show1 3DTimingAdjust-Show=0"},
    {"AudioAdv", 269, 0, FactoryKey::Exit, 0, "Reset osd0 zyt1 hide1 osd1 HideAllUIExcept=\"AudioADV\" AudioADV-Show=1", "osd0 zyt0 show1 zyt0 show1 AudioADV-Show=0"},
    {"NinePoint", 257, 0, FactoryKey::Exit, 0, "Reset osd0 zyt1 hide1 HideAllUIExcept=\"9-Point Pattern\"", "zyt0 show1 9-Point-Pattern-Show=0"},
    {"Shipout", 213, 0, 0, 10000, "Reset osd0 host73734 HideAllUIExcept=\"USAShipout\"", ""},
    {"LnbPower", 230, 169, 0, 2000, "Reset osd0 HideAllUIExcept=\"LNBPowerSwitch\" LNB-power-show=\"LNB Power: OFF\"", "zyt0 show1 LNB-power-hide=0"},
    {"Tone22k", 230, 218, 0, 2000, "Reset osd0 HideAllUIExcept=\"22kHzTone\"", "zyt0 show1 22kHz-Tone-Show=0"},
    {"DiSEqC", 230, 213, 0, 2000, "Reset osd0 HideAllUIExcept=\"DiSEqCSwitching\"", "zyt0 show1 DiSEqC-Switching-Show=0"},
    {"SpeakerSnc", 215, 0, 0, 10000, "Reset osd0 HideAllUIExcept=\"SpeakerSNC\"", "zyt0 show1 Set-Speaker-SNC-Show=0"},
    {"StoreBestBuy", 223, 0, 0, 10000, "Reset osd0 HideAllUIExcept=\"SetStoreBestBuy\"", "zyt0 show1 Set-Store-Best-Buy-Show=0"},
    {"FullPower", 220, 0, 0, 10000, "Reset osd0 HideAllUIExcept=\"FullPowerMode\"", "zyt0 show1 Full-Power-Mode-Show=0"},
    {"ClearPowerOnTime", 221, 0, 0, 10000, "HideAllUIExcept=\"ClearPowerOnTime\"", "zyt0 show1 Clear-Power-On-Time-Show=0"},
    {"OverCurrentUsb", 196, 1, 0, 10000, "hide4 Reset osd0 HideAllUIExcept=\"OverCurrentUSBOut\"", ""},
    {"FactoryConfig132", 247, 132, 0, 10000, "hide1 HideAllUIExcept=\"FactoryTuning\"", "zyt0 show1 Factory-Tuning-Show=0"},
    {"FactoryConfig133", 247, 133, 0, 10000, "HideAllUIExcept=\"FactorySetup\"", "zyt0 show1 host73733 Factory-Setup-Show=0"},
    {"PictureDynamic", 252, 0, 0, 10000, "Reset osd0 HideAllUIExcept=\"PictureDynamic\"", "zyt0 show1"},
    {"LocalDimming", 256, 0, 0, 10000, "Reset osd0 show4 host73736 HideAllUIExcept=\"Local Dimming Pattern\"", ""},
    {"MacCheck", 248, 0, 0, 10000, "Reset osd0 HideAllUIExcept=\"MAC_Chk\"", "zyt0 show1 MACaddressCheck_Finish-Show=0"},
    {"HdmiArc", 258, 0, 0, 10000, "Reset osd0 HideAllUIExcept=\"HDMIArcOutput\"", "zyt0 show1 HDMI-ARC-Output-Show=0"},
    {"WriteProtect", 261, 0, 0, 10000, "Reset osd0 HideAllUIExcept=\"WriteProtect\"", "zyt0 show1 WP-Show=0"},
    {"DefaultIp", 235, 0, 0, 10000, "Reset osd0 HideAllUIExcept=\"DefaultIPAddress\"", "zyt0 show1 Default-IP-Address-Show=0"},
    {"NetworkDefaultMac", 242, 0, 0, 10000, "Reset osd0 HideAllUIExcept=\"NetworkDefaultMAC\"", "zyt0 show1 Network-Default-MAC-Show=0"},
    {"SwitchInput", 236, 0, 0, 10000, "Reset osd0 HideAllUIExcept=\"SwitchVideo1\"", ""},
    {"ShipoutSetting", 214, 0, 0, 10000, "Reset osd0 HideAllUIExcept=\"ShipoutSetting\"", "zyt0 show1 Shipout-Setting-Show=0"},
    {"DltvSignal", 192, 0, 0, 10000, "Reset osd0 HideAllUIExcept=\"CHPreset\"", ""},
    {"VolumeAdj", 203, 0, 0, 10000, "HideAllUIExcept=\"volume\"", ""},
    {"WlanApScan", 362, 0, 0, 10000, "Reset osd0 zyt1 hide1 HideAllUIExcept=\"WLANAPScan\"", ""},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Pages, PageLifecycleTest, testing::ValuesIn(kPages),
                         [](const testing::TestParamInfo<PageRow>& info) {
                             return std::string(info.param.name);
                         });

}  // namespace
