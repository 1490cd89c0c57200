// The set's fields of the information and tuner pages: picture settings, colour
// temperatures, network type and Wi-Fi dongle, DTV route, demodulator, satellite
// demodulator. The satellites, transponders and dish are in FieldsChannelTools.cpp;
// both are fields of the one front end (SimFrontEnd.h).
#include <cmath>
#include <cstdlib>
#include <sstream>

#include "AreaFields.h"
#include "FieldMakers.h"
#include "SimFactoryStore.h"
#include "SimFrontEnd.h"
#include "SimInfoPages.h"
#include "SimKeyData.h"
#include "SimMMode.h"
#include "SimPlayers.h"

namespace factorysim {

namespace {

// A signed whole number within [min, max].
template <class A, class T>
Field Signed(const char* name, const char* help, T A::*member, long long min, long long max) {
    return {name, nullptr, help,
            [member](const std::string&, std::string& value) {
                value = std::to_string(static_cast<long long>(AreaOf<A>().*member));
                return std::string();
            },
            [member, min, max](const std::string&, const std::string& value) {
                char* end = nullptr;
                const long long n = std::strtoll(value.c_str(), &end, 0);
                if (value.empty() || *end != '\0' || n < min || n > max) {
                    return "not a number from " + std::to_string(min) + " to " +
                           std::to_string(max) + ": " + value;
                }
                AreaOf<A>().*member = static_cast<T>(n);
                return std::string();
            }};
}

// A real number (SNR, bit error rate, RSSI...), as 28.4 or 1.2e-7.
template <class A, class T>
Field Real(const char* name, const char* help, T A::*member) {
    return {name, nullptr, help,
            [member](const std::string&, std::string& value) {
                std::ostringstream out;
                out << AreaOf<A>().*member;
                value = out.str();
                return std::string();
            },
            [member](const std::string&, const std::string& value) {
                char* end = nullptr;
                const double n = std::strtod(value.c_str(), &end);
                if (value.empty() || *end != '\0' || !std::isfinite(n)) {
                    return "not a number: " + value;
                }
                AreaOf<A>().*member = static_cast<T>(n);
                return std::string();
            }};
}

Field DongleReady() {
    return {"wifi-dongle-ready", nullptr,
            "ms after the dongle is started until it is ready, or never",
            [](const std::string&, std::string& value) {
                const int64_t ms = AreaOf<sim::WifiDongleState>().readyAfterMs;
                value = ms < 0 ? "never" : std::to_string(ms);
                return std::string();
            },
            [](const std::string&, const std::string& value) {
                if (value == "never") {
                    AreaOf<sim::WifiDongleState>().readyAfterMs = -1;
                    return std::string();
                }
                const auto n = ParseNumber(value);
                if (!n || *n > 86400000ULL) {
                    return "not a time in ms (0-86400000) or never: " + value;
                }
                AreaOf<sim::WifiDongleState>().readyAfterMs = static_cast<int64_t>(*n);
                return std::string();
            }};
}

Field RouteSystem() {
    return {"dtv-route-system", nullptr,
            "system byte of the current DTV route: 0x40/4 satellite, 1/0x20 terrestrial, 2 cable",
            [](const std::string&, std::string& value) {
                const auto& t = AreaOf<sim::FrontEndState>();
                value = std::to_string(t.routeTypes[t.route & 3]);
                return std::string();
            },
            [](const std::string&, const std::string& value) {
                unsigned char byte = 0;
                std::string error = ParseByte(value, byte);
                if (error.empty()) {
                    auto& t = AreaOf<sim::FrontEndState>();
                    t.routeTypes[t.route & 3] = byte;
                }
                return error;
            }};
}

// color-temp[cool|medium|warm] = "R-gain G-gain B-gain R-offset G-offset B-offset" of
// the current source and picture mode.
Field ColorTemp() {
    auto index = [](const std::string& arg) {
        return arg == "cool" ? 0 : arg == "medium" ? 1 : arg == "warm" ? 2 : -1;
    };
    auto record = [](int temp) -> mapi_pql_datatype::MAPI_PQL_COLOR_TEMP_DATA& {
        return AreaOf<sim::ColorTempState>().At(AreaOf<sim::PlayerState>().currentSource,
                                                AreaOf<sim::PictureState>().pictureMode)[temp];
    };
    return {"color-temp", "cool|medium|warm",
            "gains and offsets R G B R G B of the current source and picture mode",
            [index, record](const std::string& arg, std::string& value) {
                const int temp = index(arg);
                if (temp < 0) {
                    return "not a colour temperature (cool, medium, warm): " + arg;
                }
                const auto& r = record(temp);
                std::ostringstream out;
                out << +r.u8RedGain << ' ' << +r.u8GreenGain << ' ' << +r.u8BlueGain << ' '
                    << +r.u8RedOffset << ' ' << +r.u8GreenOffset << ' ' << +r.u8BlueOffset;
                value = out.str();
                return std::string();
            },
            [index, record](const std::string& arg, const std::string& value) {
                const int temp = index(arg);
                if (temp < 0) {
                    return "not a colour temperature (cool, medium, warm): " + arg;
                }
                std::istringstream in(value);
                MAPI_U8 bytes[6];
                for (MAPI_U8& b : bytes) {
                    std::string word;
                    in >> word;
                    if (!ParseByte(word, b).empty()) {
                        return "six bytes R G B gains and offsets: " + value;
                    }
                }
                std::string rest;
                if (in >> rest) {
                    return "six bytes R G B gains and offsets: " + value;
                }
                auto& r = record(temp);
                r.u8RedGain = bytes[0];
                r.u8GreenGain = bytes[1];
                r.u8BlueGain = bytes[2];
                r.u8RedOffset = bytes[3];
                r.u8GreenOffset = bytes[4];
                r.u8BlueOffset = bytes[5];
                return std::string();
            }};
}

// hdmi-edid[1..4] = what the EDID checksum of that HDMI port reports (1 good); the
// self-check page shows any other value as the port's NG row.
Field HdmiEdid() {
    auto port = [](const std::string& arg) -> size_t {
        return arg.size() == 1 && arg[0] >= '1' && arg[0] <= '4' ? arg[0] - '0' : 0;
    };
    return {"hdmi-edid", "1|2|3|4", "EDID checksum result of an HDMI port: 1 good, else NG",
            [port](const std::string& arg, std::string& value) {
                const size_t p = port(arg);
                if (p == 0) {
                    return "not an HDMI port (1-4): " + arg;
                }
                value = std::to_string(AreaOf<sim::FactoryIdentityState>().edidCheckSum[p]);
                return std::string();
            },
            [port](const std::string& arg, const std::string& value) {
                const size_t p = port(arg);
                const auto n = ParseNumber(value);
                if (p == 0) {
                    return "not an HDMI port (1-4): " + arg;
                }
                if (!n || *n > 0xFFFFFFFFull) {
                    return "not a 32-bit number: " + value;
                }
                AreaOf<sim::FactoryIdentityState>().edidCheckSum[p] = static_cast<MAPI_U32>(*n);
                return std::string();
            }};
}

Field LnbNumber() {
    return {"lnb-number", nullptr, "LNB number of the current satellite",
            [](const std::string&, std::string& value) {
                const sim::SimSatellite* sat = AreaOf<sim::FrontEndState>().Satellite(
                    AreaOf<sim::FrontEndState>().currentSatellite);
                if (sat == nullptr) {
                    return std::string("no current satellite");
                }
                value = std::to_string(sat->lnbNumber);
                return std::string();
            },
            [](const std::string&, const std::string& value) {
                unsigned char byte = 0;
                std::string error = ParseByte(value, byte);
                sim::FrontEndState& f = AreaOf<sim::FrontEndState>();
                sim::SimSatellite* sat = f.Satellite(f.currentSatellite);
                if (error.empty() && sat == nullptr) {
                    error = "no current satellite";
                }
                if (error.empty()) {
                    sat->lnbNumber = byte;
                }
                return error;
            }};
}

// The LNB fields live in the user system setting of the system database.
Field UserSettingByte(const char* name, const char* help, MAPI_U8 ST_USER_SYSTEM_SETTING::*member,
                      unsigned max) {
    return {name, nullptr, help,
            [member](const std::string&, std::string& value) {
                value = std::to_string(AreaOf<sim::MModeState>().user.*member);
                return std::string();
            },
            [member, max](const std::string&, const std::string& value) {
                const auto n = ParseNumber(value);
                if (!n || *n > max) {
                    return "not a number from 0 to " + std::to_string(max) + ": " + value;
                }
                AreaOf<sim::MModeState>().user.*member = static_cast<MAPI_U8>(*n);
                return std::string();
            }};
}

}  // namespace

std::vector<Field> InfoPageFields() {
    using P = sim::PictureState;
    using T = sim::FrontEndState;
    using W = sim::WifiDongleState;
    return {
        // Picture manager.
        Flag("picture-manager", "the picture manager is up", &P::present),
        Number("picture-mode", "the picture mode of every source", &P::pictureMode, 255),
        Number("contrast", "picture contrast", &P::contrast, 255),
        Number("backlight", "picture backlight", &P::backlight, 255),
        Number("dynamic-light", "dynamic backlight", &P::dynamicLight, 255),
        Number("brightness", "picture brightness", &P::brightness, 255),
        Number("colour", "picture colour", &P::colour, 255),
        Signed("tint", "picture tint", &P::tint, -128, 127),
        Number("sharpness", "picture sharpness", &P::sharpness, 255),
        Number("dynamic-contrast", "black/white level: 0 off, 1 low, 2 middle, 3 high",
               &P::blackWhiteLevel, 255),
        Number("cinema-mode", "cinema mode", &P::cinemaMode, 255),
        Number("dynamic-nr", "dynamic noise reduction: 0 off, 1 low, 2 middle, 3 high, else auto",
               &P::dynamicNR, 255),
        Flag("dynamic-nr-readable", "the dynamic noise reduction can be read",
             &P::dynamicNRReadable),
        Number("mpeg-nr", "MPEG noise reduction: 1 low, 2 middle, 3 high, else off", &P::mpegNR,
               255),
        Number("aspect-ratio", "0 default, 1 full, 2 4x3, 3 auto ... 12 PC wide", &P::aspectRatio,
               255),
        Flag("aspect-ratio-readable", "the aspect ratio can be read", &P::aspectRatioReadable),
        ColorTemp(),
        // Network and Wi-Fi dongle.
        Number("network-type", "0 wireless (the version page waits for the dongle), else wired",
               &W::networkType, 255),
        DongleReady(),
        // Self-check rows that read the platform.
        HdmiEdid(),
        Number("uri-read",
               "the CI+ URI licence read: 1 read (the page shows its message), else failed "
               "(the page shows \"NONE\")",
               &sim::KeyDataState::uriResult, 255),
        // DTV route and demodulator.
        Number("dtv-route",
               "the live DTV route (0-3; the demo set: 0 DVB-T2, 1 cable, 2 satellite)",
               &sim::FrontEndState::route, 3),
        RouteSystem(),
        Flag("demodulator", "the DVB player has a demodulator", &T::demodulatorPresent),
        Number("demod-type", "1 DVB-T, 11 DVB-T2, 2 DVB-C", &T::demodType, 255),
        Flag("demod-lock", "the demodulator is locked", &T::locked),
        Real("demod-snr", "SNR, dB", &T::snr),
        Real("demod-ber", "post-decoder bit error rate", &T::ber),
        Number("demod-packet-errors", "uncorrected packets", &T::packetErrors, 0xFFFF),
        Number("demod-quality", "signal quality, %", &T::quality, 255),
        Number("demod-strength", "signal strength, %", &T::strength, 255),
        Real("tuner-rssi", "signal power, dBm", &T::rssi),
        Number("tuner-bandwidth", "0 unknown, 1 1.7, 2 5, 3 6, 4 7, 5 8, 6 10 MHz, 7 reserved",
               &T::bandwidth, 255),
        Real("demod-freq-offset", "frequency offset, kHz", &T::freqOffset),
        Number("demod-modulation-t", "DVB-T/T2: 0 QPSK, 1 16-QAM, 2 64-QAM, 3 256-QAM",
               &T::modulationT, 255),
        Number("demod-modulation-c", "DVB-C: 0 16-QAM ... 4 256-QAM, 5 auto", &T::modulationC, 255),
        Number("demod-fft", "DVB-T FFT: 0 2K, 1 8K, 2 4K, 3 1K, 4 16K, 5 32K, 9/12/13 extended",
               &T::fftT, 255),
        Number("demod-code-rate-hp", "DVB-T high-priority code rate: 0 1/2 ... 7 8/9",
               &T::codeRateHP, 255),
        Number("demod-code-rate-lp", "DVB-T low-priority code rate", &T::codeRateLP, 255),
        Number("demod-guard-interval", "DVB-T guard: 0 1/32, 1 1/16, 2 1/8, 3 1/4 ...", &T::guardT,
               255),
        Number("demod-symbol-rate-c", "DVB-C symbol rate, kS/s", &T::symbolRateC, 0xFFFF),
        Flag("t2-info-readable", "the T2 information can be read", &T::t2InfoReadable),
        Number("t2-siso-miso", "0 SISO, 1 MISO", &T::t2SisoMiso, 255),
        Number("t2-plp-count", "number of PLPs", &T::t2PlpCount, 255),
        Number("t2-plp-id", "current PLP id", &T::t2PlpId, 255),
        Number("t2-l1-modulation", "0 BPSK, 1 QPSK, 2 16QAM, 3 64QAM", &T::t2L1Modulation, 255),
        Number("t2-l1-code-rate", "0 1/2", &T::t2L1CodeRate, 255),
        Number("t2-plp-modulation", "0 QPSK, 1 16QAM, 2 64QAM, 3 256QAM", &T::t2PlpModulation, 255),
        Number("t2-plp-code-rate", "0 1/2, 1 3/5, 2 2/3, 3 3/4, 4 4/5, 5 5/6", &T::t2PlpCodeRate,
               255),
        Number("t2-fec", "0 16K, 1 64K", &T::t2Fec, 255),
        Number("t2-pilot", "pilot pattern PPn", &T::t2Pilot, 255),
        Number("t2-fft", "0 1K, 1 2K, 2 4K, 3 8K, 4 16K, 5 32K", &T::t2Fft, 255),
        Flag("t2-fef", "future-extension frames are present", &T::t2FefPresent),
        Number("t2-fef-length", "length of the future-extension frames", &T::t2FefLength,
               0xFFFFFFFFULL),
        Number("t2-papr", "0 none, 1 ACE, 2 TR, 3 ACE and TR", &T::t2Papr, 255),
        Number("t2-guard-interval", "0 1/32 ... 4 1/128, 5 19/128, 6 19/256", &T::t2Guard, 255),
        Number("mux-frequency",
               "the terrestrial or cable multiplex's frequency, kHz (a satellite route receives "
               "the current transponder)",
               &T::muxFrequency, 0xFFFFFFFFULL),
        Flag("mux-readable", "the received multiplex can be read, in either record form",
             &T::muxReadable),
        // Satellite front end.
        Flag("sat-player", "a satellite route has the satellite player", &T::satellitePlayer),
        Number("sat-modulation", "1 DVB-S, 0 DVB-S2", &T::satModulation, 255),
        Signed("sat-freq-offset", "frequency offset", &T::satFreqOffset, -32768, 32767),
        Number("sat-roll-off", "0 0.35, 1 0.25, 2 0.20", &T::satRollOff, 255),
        Flag("sat-lock", "the satellite demodulator is locked", &T::satLocked),
        Real("sat-snr", "C/N, dB", &T::satSnr),
        Signed("sat-signal-level", "signal level, dBm", &T::satSignalLevel, -32768, 32767),
        Number("sat-quality", "signal quality, %", &T::satQuality, 255),
        Number("sat-strength", "signal strength, %", &T::satStrength, 255),
        Number("sat-packet-errors", "uncorrected packets", &T::satPacketErrors, 0xFFFFFFFFULL),
        Real("sat-ber", "bit error rate", &T::satBer),
        Number("sat-constellation", "0 or 2 QPSK, 1 8PSK", &T::satConstellation, 255),
        Number("sat-code-rate", "0 1/2, 1 1/3, 2 2/3, 3 1/4, 4 3/4 ... 11 9/10", &T::satCodeRate,
               255),

        UserSettingByte("lnb-system", "0 none, 1 tone burst, 2/3 DiSEqC 2/4-way, 4 single cable",
                        &ST_USER_SYSTEM_SETTING::u8LNBSystem, 255),
        LnbNumber(),
        Flag("lnb-short-protect", "LNB short-circuit protection active", &T::lnbShortProtect),
    };
}

}  // namespace factorysim
