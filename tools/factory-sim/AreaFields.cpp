// The fields of the simulated set's areas, one line each: what a --set file and the
// console's set/get can change.
#include <cstdio>
#include <sstream>

#include "AreaFields.h"
#include "Names.h"
#include "SimFactoryStore.h"
#include "SimMMode.h"
#include "SimNetwork.h"
#include "SimPlayers.h"
#include "SimSystemInfo.h"
#include "SimWebApp.h"

namespace factorysim {

namespace {

template <class A>
A& AreaOf() {
    return sim::Set::Instance().Get<A>();
}

template <class A>
Field Text(const char* name, const char* help, std::string A::*member) {
    return {name, nullptr, help,
            [member](const std::string&, std::string& value) {
                value = AreaOf<A>().*member;
                return std::string();
            },
            [member](const std::string&, const std::string& value) {
                AreaOf<A>().*member = value;
                return std::string();
            }};
}

// A number field of any integer type; max bounds what the set can hold.
template <class A, class T>
Field Number(const char* name, const char* help, T A::*member, unsigned long long max) {
    return {name, nullptr, help,
            [member](const std::string&, std::string& value) {
                value = std::to_string(static_cast<long long>(AreaOf<A>().*member));
                return std::string();
            },
            [member, max](const std::string&, const std::string& value) {
                const auto n = ParseNumber(value);
                if (!n || *n > max) {
                    return "not a number from 0 to " + std::to_string(max) + ": " + value;
                }
                AreaOf<A>().*member = static_cast<T>(*n);
                return std::string();
            }};
}

template <class A>
Field Flag(const char* name, const char* help, bool A::*member) {
    return {name, nullptr, help,
            [member](const std::string&, std::string& value) {
                value = AreaOf<A>().*member ? "1" : "0";
                return std::string();
            },
            [member](const std::string&, const std::string& value) {
                bool flag = false;
                std::string error = ParseFlag(value, flag);
                if (error.empty()) {
                    AreaOf<A>().*member = flag;
                }
                return error;
            }};
}

template <class A>
Field Mac(const char* name, const char* help, std::array<MAPI_U8, 6> A::*member) {
    return {name, nullptr, help,
            [member](const std::string&, std::string& value) {
                const auto& m = AreaOf<A>().*member;
                char text[18];
                std::snprintf(text, sizeof(text), "%02x:%02x:%02x:%02x:%02x:%02x", m[0], m[1], m[2],
                              m[3], m[4], m[5]);
                value = text;
                return std::string();
            },
            [member](const std::string&, const std::string& value) {
                std::array<MAPI_U8, 6> mac{};
                std::istringstream in(value);
                std::string part;
                size_t i = 0;
                for (; i < 7 && std::getline(in, part, ':'); ++i) {
                    const auto byte = part.size() == 2 ? ParseNumber("0x" + part) : std::nullopt;
                    if (i == 6 || !byte) {
                        return "not a MAC address (aa:bb:cc:dd:ee:ff): " + value;
                    }
                    mac[i] = static_cast<MAPI_U8>(*byte);
                }
                if (i != 6) {
                    return "not a MAC address (aa:bb:cc:dd:ee:ff): " + value;
                }
                AreaOf<A>().*member = mac;
                return std::string();
            }};
}

Field FactoryByte() {
    return {"factory", "item", "one byte of the factory store, by item number",
            [](const std::string& item, std::string& value) {
                const auto n = ParseNumber(item);
                if (!n || *n > 0xFFFF) {
                    return "not an item number (0-65535): " + item;
                }
                value =
                    std::to_string(AreaOf<sim::FactoryStoreState>().Get(static_cast<MAPI_U16>(*n)));
                return std::string();
            },
            [](const std::string& item, const std::string& value) {
                const auto n = ParseNumber(item);
                if (!n || *n > 0xFFFF) {
                    return "not an item number (0-65535): " + item;
                }
                unsigned char byte = 0;
                std::string error = ParseByte(value, byte);
                if (error.empty()) {
                    AreaOf<sim::FactoryStoreState>().Set(static_cast<MAPI_U16>(*n), byte);
                }
                return error;
            }};
}

Field Serial() {
    return {"serial", nullptr, "the product serial number (at most 14 characters)",
            [](const std::string&, std::string& value) {
                value.clear();
                for (MAPI_U8 c : AreaOf<sim::FactoryIdentityState>().serial) {
                    if (c == 0 || c == 0xFF) {
                        break;
                    }
                    value += static_cast<char>(c);
                }
                return std::string();
            },
            [](const std::string&, const std::string& value) {
                if (value.size() > 14) {
                    return "a serial number has at most 14 characters: " + value;
                }
                AreaOf<sim::FactoryIdentityState>().SetSerial(value);
                return std::string();
            }};
}

}  // namespace

std::vector<Field> AreaFields() {
    using sim::FactoryRemoteState;
    using sim::MModeState;
    using sim::NetworkState;
    using sim::PlayerState;
    using sim::SystemInfoState;
    using sim::WebAppState;
    return {
        Number("model-id", "the model id of the set", &SystemInfoState::modelId, 0xFFFFFFFFULL),
        Text("mboot-version", "boot code version", &SystemInfoState::mbootVersion),
        Text("pq-version", "PQ version", &SystemInfoState::pqVersion),
        Text("frc-version", "FRC version", &SystemInfoState::frcVersion),
        Text("sw-version", "the SoC's real software version", &SystemInfoState::socRealSWVersion),
        Text("fw-version", "the SoC's firmware version", &SystemInfoState::socFWVersion),
        Text("dpdd-version", "DPDD version", &SystemInfoState::dpddVersion),
        Text("neusoft-version", "NeuSoft version", &SystemInfoState::neuSoftVersion),
        Text("cesi-version", "CESI version", &SystemInfoState::cesiVersion),
        Text("iprc-version", "IPRC version", &SystemInfoState::iprcVersion),
        Text("dial-version", "DIAL version", &SystemInfoState::dialVersion),
        Text("ir-blaster-db", "IR blaster database version", &SystemInfoState::irBlasterDBVersion),
        Number("secured", "1 when the SoC is secured", &SystemInfoState::socSecured, 1),
        Mac("mac", "the Ethernet MAC address", &NetworkState::ethernetMac),
        Mac("wlan-mac", "the WLAN MAC address", &NetworkState::wifiMac),
        Serial(),
        FactoryByte(),
        Number("input-source", "the current input source (28 is digital TV)",
               &PlayerState::currentSource, 255),
        Flag("m-mode", "the factory-command service's M-mode status", &MModeState::mMode),
        Flag("m-mode-setting-finished", "the platform finished its M-mode setting",
             &MModeState::mModeSettingFinished),
        Number("factory-volume", "the factory volume of the factory-command service",
               &MModeState::factoryVolume, 100),
        Flag("factory-osd", "the factory OSD status", &MModeState::factoryOsd),
        Number("factory-remote-code", "the last code of the factory remote controller",
               &FactoryRemoteState::code, 0xFFFF),
        Flag("at-cmd-finished", "the fixture's AT command work is done",
             &FactoryRemoteState::atCmdFinished),
        Flag("webappmgr", "the web-application manager service is registered",
             &WebAppState::serviceRegistered),
        Flag("page-connects", "loading the factory UI page connects its page client",
             &WebAppState::pageConnects),
    };
}

}  // namespace factorysim
