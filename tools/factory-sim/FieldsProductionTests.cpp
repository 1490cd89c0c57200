// The set's fields of the timed commands, shipout, signal and network tests.
#include <sstream>

#include "AreaFields.h"
#include "FieldMakers.h"
#include "SimMMode.h"
#include "SimProductionTests.h"

namespace factorysim {

namespace {

using sim::AudioPictureState;
using sim::SignalState;
using sim::StationState;
using sim::WlanState;

// What the set reports and the station cannot change.
Field ReadOnly(const char* name, const char* help, std::function<std::string()> read) {
    return {name, nullptr, help,
            [read](const std::string&, std::string& value) {
                value = read();
                return std::string();
            },
            [name](const std::string&, const std::string&) {
                return std::string("field ") + name + " is read-only";
            }};
}

template <class A>
Field PassFail(const char* name, const char* help, bool A::*member) {
    return {name, nullptr, help,
            [member](const std::string&, std::string& value) {
                value = AreaOf<A>().*member ? "pass" : "fail";
                return std::string();
            },
            [member](const std::string&, const std::string& value) {
                if (value != "pass" && value != "fail") {
                    return "pass or fail: " + value;
                }
                AreaOf<A>().*member = value == "pass";
                return std::string();
            }};
}

// Whole signed numbers separated by blanks or commas; exactly count of them.
bool ParseInts(const std::string& text, size_t count, std::vector<long>& out) {
    std::string spaced = text;
    for (char& c : spaced) {
        c = c == ',' ? ' ' : c;
    }
    std::istringstream in(spaced);
    std::string word;
    out.clear();
    while (in >> word) {
        size_t used = 0;
        long n = 0;
        try {
            n = std::stol(word, &used);
        } catch (...) {
            return false;
        }
        if (used != word.size()) {
            return false;
        }
        out.push_back(n);
    }
    return count == 0 ? !out.empty() : out.size() == count;
}

Field Rssi() {
    return {
        "rssi", nullptr, "the WLAN module's two signal values, \"a, b\"",
        [](const std::string&, std::string& value) {
            value = std::to_string(AreaOf<WlanState>().rssi1) + ", " +
                    std::to_string(AreaOf<WlanState>().rssi2);
            return std::string();
        },
        [](const std::string&, const std::string& value) {
            std::vector<long> n;
            if (!ParseInts(value, 2, n) || n[0] < -128 || n[0] > 127 || n[1] < -128 || n[1] > 127) {
                return "two signal values from -128 to 127 (\"a, b\"): " + value;
            }
            AreaOf<WlanState>().rssi1 = static_cast<int>(n[0]);
            AreaOf<WlanState>().rssi2 = static_cast<int>(n[1]);
            return std::string();
        }};
}

Field WowStatus() {
    return {"wow-status", nullptr,
            "what the wake-on-WLAN status query returns, poll by poll, the last repeating "
            "(0 passed, 1 failed, 2 testing), e.g. \"2 2 0\"",
            [](const std::string&, std::string& value) {
                value.clear();
                for (uint8_t s : AreaOf<WlanState>().wowStatus) {
                    value += (value.empty() ? "" : " ") + std::to_string(s);
                }
                return std::string();
            },
            [](const std::string&, const std::string& value) {
                std::vector<long> n;
                if (!ParseInts(value, 0, n)) {
                    return "statuses from 0 to 255, e.g. \"2 2 0\": " + value;
                }
                std::vector<uint8_t> statuses;
                for (long s : n) {
                    if (s < 0 || s > 255) {
                        return "statuses from 0 to 255, e.g. \"2 2 0\": " + value;
                    }
                    statuses.push_back(static_cast<uint8_t>(s));
                }
                AreaOf<WlanState>().wowStatus = statuses;
                AreaOf<WlanState>().wowPolls = 0;
                return std::string();
            }};
}

Field Timing() {
    return {"timing", nullptr,
            "the external input's timing, \"width height vfreq\" (vfreq in tenths of Hz)",
            [](const std::string&, std::string& value) {
                const SignalState& s = AreaOf<SignalState>();
                value = std::to_string(s.width) + " " + std::to_string(s.height) + " " +
                        std::to_string(s.vfreq);
                return std::string();
            },
            [](const std::string&, const std::string& value) {
                std::vector<long> n;
                if (!ParseInts(value, 3, n) || n[0] < 0 || n[0] > 0xFFFF || n[1] < 0 ||
                    n[1] > 0xFFFF || n[2] < 0 || n[2] > 0xFFFF) {
                    return "\"width height vfreq\", each 0 to 65535: " + value;
                }
                SignalState& s = AreaOf<SignalState>();
                s.width = static_cast<uint16_t>(n[0]);
                s.height = static_cast<uint16_t>(n[1]);
                s.vfreq = static_cast<uint16_t>(n[2]);
                return std::string();
            }};
}

// "SSID signal; SSID signal": the last word of each entry is the signal in percent.
Field AccessPoints() {
    return {"access-points", nullptr,
            "what a WLAN scan finds, \"SSID signal%; SSID signal%\" (empty: nothing)",
            [](const std::string&, std::string& value) {
                value.clear();
                for (const sim::AccessPoint& ap : AreaOf<WlanState>().accessPoints) {
                    value += (value.empty() ? "" : "; ") + ap.ssid + " " +
                             std::to_string(ap.signal) + "%";
                }
                return std::string();
            },
            [](const std::string&, const std::string& value) {
                std::vector<sim::AccessPoint> aps;
                std::istringstream in(value);
                std::string entry;
                while (std::getline(in, entry, ';')) {
                    const auto first = entry.find_first_not_of(' ');
                    if (first == std::string::npos) {
                        continue;
                    }
                    entry = entry.substr(first, entry.find_last_not_of(' ') - first + 1);
                    const auto blank = entry.rfind(' ');
                    std::string signal = blank == std::string::npos ? "" : entry.substr(blank + 1);
                    if (!signal.empty() && signal.back() == '%') {
                        signal.pop_back();
                    }
                    const auto n = ParseNumber(signal);
                    const std::string ssid =
                        blank == std::string::npos
                            ? ""
                            : entry.substr(0, entry.find_last_not_of(' ', blank) + 1);
                    if (ssid.empty() || ssid.size() > 32 || !n || *n > 100) {
                        return "entries \"SSID signal%\" (SSID of 1-32 characters, signal 0-100) "
                               "separated by ';': " +
                               entry;
                    }
                    aps.push_back({ssid, static_cast<int>(*n)});
                }
                AreaOf<WlanState>().accessPoints = aps;
                return std::string();
            }};
}

std::string OrNone(int value) { return value < 0 ? "none" : std::to_string(value); }

}  // namespace

std::vector<Field> ProductionTestFields() {
    return {
        Flag("uart-ui", "the station drives the set over the serial line (IsUARTEnableUI)",
             &StationState::uartUi),
        Number("factory-cmd-param", "the station command's parameter byte (shipout region ...)",
               &StationState::cmdParam, 255),
        Number("factory-cmd-code", "the station's factory-command code (230: digital audio)",
               &StationState::cmdCode, 255),
        ReadOnly("uart-result", "the last serial execution result the set reported",
                 [] { return OrNone(AreaOf<StationState>().uartResult); }),
        Flag("default-mac-ip", "writing the default MAC/IP address succeeds",
             &StationState::defaultMacIpResult),
        PassFail("vga-edid", "the VGA EDID reads back right after writing",
                 &StationState::vgaEdidPass),
        Flag("signal-present", "the current external input shows a stable signal",
             &SignalState::present),
        Timing(),
        Number("video-standard", "the analogue colour standard detected",
               &SignalState::videoStandard, 255),
        PassFail("wlan-full-test", "the WLAN module's full test", &WlanState::fullTestPass),
        Number("wlan-error", "the WLAN module's error code after a failure", &WlanState::errorCode,
               255),
        Rssi(),
        WowStatus(),
        Flag("net-up", "the wired network is up", &WlanState::netUp),
        AccessPoints(),
        Flag("dlna-monitor", "the wired LAN monitor is on", &StationState::dlnaMonitor),
        Number("dlna-monitor-count", "the wired LAN monitor's tick counter",
               &StationState::dlnaMonitorCount, 0xFFFFFFFFULL),
        ReadOnly("speaker-type", "the speaker type chosen (0 SNC, 1 IEC, 2 GW, 3 Estec)",
                 [] { return OrNone(AreaOf<AudioPictureState>().speakerType); }),
        Number("volume", "the TV's volume", &AudioPictureState::volume, 100),
        ReadOnly("full-power", "what full-power mode saved: \"backlight brightness volume\"",
                 [] {
                     const StationState& s = AreaOf<StationState>();
                     return s.savedBacklight < 0 ? std::string("none")
                                                 : std::to_string(s.savedBacklight) + " " +
                                                       std::to_string(s.savedBrightness) + " " +
                                                       std::to_string(s.savedVolume);
                 }),
        ReadOnly("on-timer", "the on-timer: its time and period, or off",
                 [] { return AreaOf<AudioPictureState>().OnTimerText(); }),
        ReadOnly("spdif-mode", "the digital audio output format (0 PCM, 2 automatic)",
                 [] { return std::to_string(AreaOf<AudioPictureState>().spdifMode); }),
        ReadOnly("user-spdif-mode", "the output format kept in the user system setting",
                 [] { return std::to_string(AreaOf<sim::MModeState>().user.enSPDIFMODE); }),
        ReadOnly("shipout-region", "the database region written at shipout",
                 [] { return OrNone(AreaOf<StationState>().shipoutRegion); }),
        ReadOnly("shipout-reset", "the set was reset to its shipping state",
                 [] { return std::string(AreaOf<StationState>().shipoutReset ? "1" : "0"); }),
    };
}

}  // namespace factorysim
