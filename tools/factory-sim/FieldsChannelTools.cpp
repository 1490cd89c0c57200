// The set's fields of the ATV search, satellite tests and program banner.
#include <cstdio>
#include <sstream>

#include "AreaFields.h"
#include "FieldMakers.h"
#include "SimAtvTuner.h"
#include "SimFrontEnd.h"
#include "SimMMode.h"
#include "SimProgramInfo.h"

namespace factorysim {

namespace {

using sim::AtvTunerState;
using sim::FrontEndState;
using sim::ProgramInfoState;

using Getter = std::function<std::string()>;
using Setter = std::function<std::string(const std::string&)>;

Field Custom(const char* name, const char* help, Getter get, Setter set) {
    return {name, nullptr, help,
            [get](const std::string&, std::string& value) {
                value = get();
                return std::string();
            },
            [name, set](const std::string&, const std::string& value) {
                return set ? set(value) : std::string(name) + " is read-only";
            }};
}

std::vector<std::string> SplitList(const std::string& text, char separator) {
    std::vector<std::string> items;
    std::istringstream in(text);
    std::string item;
    while (std::getline(in, item, separator)) {
        const size_t first = item.find_first_not_of(' ');
        if (first != std::string::npos) {
            items.push_back(item.substr(first));
        }
    }
    return items;
}

std::optional<uint32_t> ParseKHz(const std::string& text) {
    const auto n = ParseNumber(text);
    if (!n || *n > 2000000) {
        return std::nullopt;
    }
    return static_cast<uint32_t>(*n);
}

Field Stations() {
    return Custom(
        "atv-stations", "analogue stations on air: picture carriers in kHz, comma-separated",
        [] {
            std::string out;
            for (uint32_t s : AreaOf<AtvTunerState>().stations) {
                out += (out.empty() ? "" : ",") + std::to_string(s);
            }
            return out;
        },
        [](const std::string& value) {
            std::vector<uint32_t> stations;
            for (const std::string& item : SplitList(value, ',')) {
                const auto khz = ParseKHz(item);
                if (!khz) {
                    return "not a frequency in kHz (0-2000000): " + item;
                }
                stations.push_back(*khz);
            }
            AreaOf<AtvTunerState>().stations = stations;
            return std::string();
        });
}

// "number:kHz:name" per stored program; the name keeps its trailing blank.
Field Programs() {
    return Custom(
        "atv-programs",
        "stored analogue programs, comma-separated <number>:<kHz>[:<name>] (the search "
        "stores names such as \"C-21 \")",
        [] {
            std::string out;
            for (const auto& [number, p] : AreaOf<AtvTunerState>().programs) {
                out += (out.empty() ? "" : ",") + std::to_string(number) + ":" +
                       std::to_string(AtvTunerState::FrequencyOfPll(p.pll)) + ":" + p.name;
            }
            return out;
        },
        [](const std::string& value) {
            std::map<MAPI_U16, sim::AtvProgram> programs;
            for (const std::string& item : SplitList(value, ',')) {
                const size_t a = item.find(':');
                const size_t b = a == std::string::npos ? a : item.find(':', a + 1);
                const auto number = ParseNumber(item.substr(0, a));
                const auto khz =
                    a == std::string::npos
                        ? std::nullopt
                        : ParseKHz(item.substr(
                              a + 1, b == std::string::npos ? std::string::npos : b - a - 1));
                if (!number || *number > 0xFFFF || !khz) {
                    return "not <number>:<kHz>[:<name>]: " + item;
                }
                sim::AtvProgram p;
                p.pll = AtvTunerState::PllOfFrequency(*khz);
                p.name = b == std::string::npos ? "" : item.substr(b + 1, 5);
                p.misc.u16Video = 8 << 6;
                programs[static_cast<MAPI_U16>(*number)] = p;
            }
            AreaOf<AtvTunerState>().programs = programs;
            return std::string();
        });
}

Field Routes() {
    return Custom(
        "dtv-routes",
        "type byte of each of the four digital routes (4, 64: satellite; 2: "
        "an unnamed service is a \"New Program\")",
        [] {
            const auto& r = AreaOf<FrontEndState>().routeTypes;
            return std::to_string(r[0]) + "," + std::to_string(r[1]) + "," + std::to_string(r[2]) +
                   "," + std::to_string(r[3]);
        },
        [](const std::string& value) {
            const auto items = SplitList(value, ',');
            MAPI_U8 types[4] = {0, 0, 0, 0};
            if (items.size() != 4) {
                return "four route types, comma-separated: " + value;
            }
            for (size_t i = 0; i < 4; ++i) {
                std::string error = ParseByte(items[i], types[i]);
                if (!error.empty()) {
                    return error;
                }
            }
            std::copy(types, types + 4, AreaOf<FrontEndState>().routeTypes.begin());
            return std::string();
        });
}

Field Satellites() {
    return Custom(
        "satellites",
        "the satellites' names, comma-separated (a new list has one "
        "horizontal transponder each)",
        [] {
            std::string out;
            for (const auto& s : AreaOf<FrontEndState>().satellites) {
                out += (out.empty() ? "" : ",") + s.name;
            }
            return out;
        },
        [](const std::string& value) {
            std::vector<sim::SimSatellite> sats;
            for (const std::string& name : SplitList(value, ',')) {
                if (name.size() > 31) {
                    return "a satellite name has at most 31 characters: " + name;
                }
                sats.push_back({name, 0, 1, {{11494000, 22000, 1}}});
            }
            AreaOf<FrontEndState>().satellites = sats;
            return std::string();
        });
}

std::string TransponderText(const MS_TP_INFO& tp) {
    return std::to_string(tp.u32Frequency) + "/" + std::to_string(tp.u16SymbolRate) + "/" +
           ((tp.u8Polarity & 1) ? "H" : "V");
}

Field FirstTransponder() {
    return Custom(
        "transponder",
        "first transponder of the first satellite, the one the polarisation test tunes and "
        "the tuner page shows while it is the current one: <kHz>/<symbol rate>/<H or V>",
        [] {
            const auto& sats = AreaOf<FrontEndState>().satellites;
            return sats.empty() || sats[0].transponders.empty()
                       ? std::string("none")
                       : TransponderText(sats[0].transponders[0]);
        },
        [](const std::string& value) {
            const auto parts = SplitList(value, '/');
            auto& sats = AreaOf<FrontEndState>().satellites;
            if (value == "none") {
                if (!sats.empty()) {
                    sats[0].transponders.clear();
                }
                return std::string();
            }
            const auto khz = parts.size() == 3 ? ParseNumber(parts[0]) : std::nullopt;
            const auto rate = parts.size() == 3 ? ParseNumber(parts[1]) : std::nullopt;
            if (!khz || *khz > 0xFFFFFFFFULL || !rate || *rate > 0xFFFF ||
                (parts[2] != "H" && parts[2] != "V") || sats.empty()) {
                return "not <kHz>/<symbol rate>/<H or V> (or none): " + value;
            }
            MS_TP_INFO tp{static_cast<MAPI_U32>(*khz), static_cast<MAPI_U16>(*rate),
                          static_cast<MAPI_U8>(parts[2] == "H" ? 1 : 0)};
            if (sats[0].transponders.empty()) {
                sats[0].transponders.push_back(tp);
            } else {
                sats[0].transponders[0] = tp;
            }
            return std::string();
        });
}

Field SatelliteLnb() {
    return Custom(
        "satellite-lnb", "each satellite's two LNB bytes as stored by the LNB test (mode/on)",
        [] {
            std::string out;
            for (const auto& s : AreaOf<FrontEndState>().satellites) {
                out += (out.empty() ? "" : ",") + std::to_string(s.lnbPwrMode) + "/" +
                       std::to_string(s.lnbPwrOnOff);
            }
            return out;
        },
        nullptr);
}

Field ScanParams() {
    return Custom(
        "scan-param", "satellite scan parameters last set: symbol rate/network/type/blind/H=1",
        [] {
            const auto& s = AreaOf<FrontEndState>();
            return std::to_string(s.scanSymbolRate) + "/" + std::to_string(s.scanNetwork) + "/" +
                   std::to_string(s.scanType) + "/" + std::to_string(s.scanBlind) + "/" +
                   std::to_string(s.scanPolarity);
        },
        nullptr);
}

Field UserByte(const char* name, const char* help, MAPI_U8 ST_USER_SYSTEM_SETTING::*member) {
    return Custom(
        name, help, [member] { return std::to_string(AreaOf<sim::MModeState>().user.*member); },
        [member](const std::string& value) {
            unsigned char byte = 0;
            std::string error = ParseByte(value, byte);
            if (error.empty()) {
                AreaOf<sim::MModeState>().user.*member = byte;
            }
            return error;
        });
}

Field EitTime() {
    return Custom(
        "eit-time", "present event's start and end as the EIT gives them: hh:mm-hh:mm",
        [] {
            const auto& s = AreaOf<ProgramInfoState>();
            char text[24];
            std::snprintf(text, sizeof(text), "%02u:%02u-%02u:%02u", s.startHour, s.startMinute,
                          s.endHour, s.endMinute);
            return std::string(text);
        },
        [](const std::string& value) {
            unsigned v[4];
            char tail = 0;
            if (std::sscanf(value.c_str(), "%u:%u-%u:%u%c", &v[0], &v[1], &v[2], &v[3], &tail) !=
                    4 ||
                v[0] > 255 || v[1] > 255 || v[2] > 255 || v[3] > 255) {
                return "not hh:mm-hh:mm: " + value;
            }
            auto& s = AreaOf<ProgramInfoState>();
            s.startHour = static_cast<MAPI_U8>(v[0]);
            s.startMinute = static_cast<MAPI_U8>(v[1]);
            s.endHour = static_cast<MAPI_U8>(v[2]);
            s.endMinute = static_cast<MAPI_U8>(v[3]);
            return std::string();
        });
}

Field Rtc() {
    return Custom(
        "rtc", "the real-time clock in seconds; it runs on with the set's clock",
        [] { return std::to_string(AreaOf<ProgramInfoState>().RtcNow()); },
        [](const std::string& value) {
            const auto n = ParseNumber(value);
            if (!n || *n > 0xFFFFFFFFULL) {
                return "not a time in seconds (0-4294967295): " + value;
            }
            auto& s = AreaOf<ProgramInfoState>();
            s.rtcAtBoot = static_cast<int64_t>(*n) -
                          static_cast<int64_t>(sim::Set::Instance().NowMs() / 1000);
            return std::string();
        });
}

}  // namespace

std::vector<Field> ChannelToolFields() {
    return {
        // Analogue tuner and ATV database.
        Stations(),
        Programs(),
        Number("atv-program", "the analogue program on screen", &AtvTunerState::currentProgram,
               0xFFFF),
        Number("atv-frequency", "the analogue tuner's frequency in kHz",
               &AtvTunerState::frequencyKHz, 2000000),
        Number("atv-search-type", "who runs a channel search: 0 down, 1 up, 2 nobody",
               &AtvTunerState::searchType, 2),
        Number("atv-tune-mode", "the manual tuning run: 0 up, 1 down, 2 none",
               &AtvTunerState::manualMode, 2),
        Number("atv-aft-offset", "the tuner's AFT offset (a signed byte)",
               &AtvTunerState::aftOffset, 255),
        Number("atv-sweep-step-khz", "how far the sweep moves per step, kHz",
               &AtvTunerState::stepKHz, 100000),
        Number("atv-sweep-period-ms", "how long one sweep step takes, ms", &AtvTunerState::periodMs,
               60000),
        Custom(
            "atv-finish-channel", "the channel the last downward S-table hit reported",
            [] { return std::to_string(AreaOf<AtvTunerState>().finishChannel); }, nullptr),
        Custom(
            "atv-signal-lock", "1 when the tuner rests on a station",
            [] {
                const auto& t = AreaOf<AtvTunerState>();
                return std::string(!t.Sweeping() && t.StationAt(t.frequencyKHz) ? "1" : "0");
            },
            nullptr),
        Number("teletext-resets", "how often teletext was reset", &AtvTunerState::teletextResets,
               0xFFFFFFFF),
        UserByte("blue-screen", "the user setting's blue-screen flag",
                 &ST_USER_SYSTEM_SETTING::bBlueScreen),
        // Satellite front end.
        UserByte("lnb-switch", "the user setting's satellite switch: LNB supply on / DiSEqC B",
                 &ST_USER_SYSTEM_SETTING::u8LNBPower),
        Flag("dvbs", "the set has a satellite tuner", &FrontEndState::dvbsEnabled),
        Satellites(),
        FirstTransponder(),
        SatelliteLnb(),
        Number("satellite-unreadable", "a satellite whose record cannot be read (255: none)",
               &FrontEndState::unreadableSatellite, 255),
        Number("current-satellite", "the satellite in use", &FrontEndState::currentSatellite, 255),
        Number("current-transponder", "the transponder in use, of the current satellite",
               &FrontEndState::currentTransponder, 0xFFFF),
        Number("lnb-power", "the LNB supply: 0 off, 1 13/18 V, 2 13 V, 3 18 V",
               &FrontEndState::lnbPower, 3),
        Flag("tone-22k", "the 22 kHz tone is on", &FrontEndState::tone22k),
        Flag("dish-22k-fails", "the dish refuses to switch the 22 kHz tone",
             &FrontEndState::dish22kFails),
        Number("diseqc-port", "the DiSEqC switch's port", &FrontEndState::diseqcPort, 255),
        ScanParams(),
        Flag("scanning", "a satellite scan runs", &FrontEndState::scanning),
        Number("scan-frequency", "the scan's frequency, kHz", &FrontEndState::scanFrequency,
               0xFFFFFFFF),
        Routes(),
        // Program banner.
        Flag("dtv-program-known", "a digital program is on screen",
             &ProgramInfoState::programKnown),
        Number("dtv-program-number", "the digital program's number", &ProgramInfoState::number,
               0xFFFF),
        Text("dtv-program-name", "the digital program's service name", &ProgramInfoState::name),
        Flag("eit-present", "the present event's data is there", &ProgramInfoState::eitPresent),
        EitTime(),
        Number("eit-start", "the present event's start on the real-time clock, seconds",
               &ProgramInfoState::eitStart, 0xFFFFFFFF),
        Number("eit-duration", "the present event's duration, seconds",
               &ProgramInfoState::eitDuration, 0xFFFFFFFF),
        Number("eit-genre", "the present event's genre class", &ProgramInfoState::genre, 255),
        Number("country", "the system country (25 and 22 have their own genre schemes)",
               &ProgramInfoState::country, 255),
        Rtc(),
        Number("sif-sound-mode", "the analogue sound mode (3, 4, 11 stereo; 7, 8, 10, 12, 13 dual)",
               &ProgramInfoState::sifSoundMode, 255),
    };
}

}  // namespace factorysim
