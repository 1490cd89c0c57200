// The set's fields of the aging, pattern, direct tuning, configuration and scan tests.
#include <sstream>

#include "AreaFields.h"
#include "FieldMakers.h"
#include "SimFrontEnd.h"
#include "SimProductionTests2.h"

namespace factorysim {

namespace {

using sim::DtvTuningState;
using sim::FactoryLineState;
using sim::PanelState;

std::string ReadOnly(const char* name) {
    return std::string(name) + " is read-only: the set's own calls change it";
}

Field Panel() {
    return {"panel", nullptr,
            "read-only: the raster colour on the panel (none, red, green, blue, black, white)",
            [](const std::string&, std::string& value) {
                value = AreaOf<PanelState>().raster;
                return std::string();
            },
            [](const std::string&, const std::string&) { return ReadOnly("panel"); }};
}

Field RasterCount() {
    return {"raster-count", nullptr, "read-only: raster pictures shown since the set started",
            [](const std::string&, std::string& value) {
                value = std::to_string(AreaOf<PanelState>().rasterCount);
                return std::string();
            },
            [](const std::string&, const std::string&) { return ReadOnly("raster-count"); }};
}

Field CiTest() {
    return {"ci-test", nullptr, "the CI slot test's result: pass or fail",
            [](const std::string&, std::string& value) {
                value = AreaOf<FactoryLineState>().ciPass ? "pass" : "fail";
                return std::string();
            },
            [](const std::string&, const std::string& value) {
                if (value != "pass" && value != "fail") {
                    return "ci-test is pass or fail: " + value;
                }
                AreaOf<FactoryLineState>().ciPass = value == "pass";
                return std::string();
            }};
}

Field ScanResult() {
    return {"scan-result", nullptr, "services a tuning run finds: \"tv radio data\" (each 0-65535)",
            [](const std::string&, std::string& value) {
                const DtvTuningState& d = AreaOf<DtvTuningState>();
                value = std::to_string(d.scanTv) + " " + std::to_string(d.scanRadio) + " " +
                        std::to_string(d.scanData);
                return std::string();
            },
            [](const std::string&, const std::string& value) {
                std::istringstream in(value);
                std::string words[3], extra;
                MAPI_U16 counts[3] = {};
                for (int i = 0; i < 3; ++i) {
                    const auto n = (in >> words[i]) ? ParseNumber(words[i]) : std::nullopt;
                    if (!n || *n > 0xFFFF) {
                        return "scan-result is \"tv radio data\", each 0-65535: " + value;
                    }
                    counts[i] = static_cast<MAPI_U16>(*n);
                }
                if (in >> extra) {
                    return "scan-result is \"tv radio data\", each 0-65535: " + value;
                }
                DtvTuningState& d = AreaOf<DtvTuningState>();
                d.scanTv = counts[0];
                d.scanRadio = counts[1];
                d.scanData = counts[2];
                return std::string();
            }};
}

// "1:1 2:1 3:2": number:service type (1 TV, 2 radio, 3 data); "none" for no program.
Field DtvPrograms() {
    return {
        "dtv-programs", nullptr,
        "the channel manager's programs: number:type ... (type 1 TV, 2 radio, 3 data), or none",
        [](const std::string&, std::string& value) {
            std::string text;
            for (const auto& p : AreaOf<DtvTuningState>().programs) {
                text += (text.empty() ? "" : " ") + std::to_string(p.u32Number) + ":" +
                        std::to_string(p.u8ServiceType);
            }
            value = text.empty() ? "none" : text;
            return std::string();
        },
        [](const std::string&, const std::string& value) {
            std::vector<ST_DTV_PROGRAM_INFO> programs;
            std::istringstream in(value);
            std::string word;
            while (value != "none" && in >> word) {
                const auto colon = word.find(':');
                const auto number = ParseNumber(word.substr(0, colon));
                const unsigned long long type =
                    colon == std::string::npos ? 0
                                               : ParseNumber(word.substr(colon + 1)).value_or(0);
                if (!number || *number > 0xFFFFFFFFULL || type < 1 || type > 3) {
                    return "not a program (number:type, type 1-3): " + word;
                }
                programs.push_back({static_cast<MAPI_U32>(*number), static_cast<MAPI_U8>(type)});
            }
            AreaOf<DtvTuningState>().programs = programs;
            return std::string();
        }};
}

}  // namespace

std::vector<Field> ProductionTest2Fields() {
    return {
        Panel(),
        RasterCount(),
        Number("aging-mode", "the aging mode the factory service keeps (3 black/white, 4 colours)",
               &PanelState::agingMode, 255),
        Number("light-sensor", "the ambient light sensor's reading", &PanelState::lightSensor,
               0xFFFF),
        Flag("light-sensor-ok", "the light sensor answers", &PanelState::lightSensorOk),
        Number("active-backlight", "the panel's live backlight level (0-100)",
               &PanelState::backlight, 100),
        Number("balance", "the sound's live balance (0 left, 50 centre, 100 right)",
               &PanelState::balance, 100),
        Flag("ci-present", "the set has a CI slot service", &FactoryLineState::ciPresent),
        CiTest(),
        Number("scan-ms", "how long a tuning run of the digital player takes (ms)",
               &DtvTuningState::scanMs, 3600000),
        ScanResult(),
        DtvPrograms(),
        Number("tv-route-on-dtv", "the route the player comes up on when DTV is selected",
               &sim::FrontEndState::routeOnDtv, 255),
    };
}

}  // namespace factorysim
