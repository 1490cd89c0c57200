// The fields of the simulated set's areas, one line each: what a --set file and the
// console's set/get can change.
#include <cstdio>
#include <sstream>

#include "AreaFields.h"
#include "FieldMakers.h"
#include "Names.h"
#include "SimFactoryStore.h"
#include "SimMMode.h"
#include "SimNetwork.h"
#include "SimPlayers.h"
#include "SimSystemInfo.h"
#include "SimWebApp.h"

namespace factorysim {

namespace {

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
    std::vector<Field> fields = {
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
    // Each page family lists its own fields in a file of its own.
    for (auto family : {InfoPageFields, ServiceModeFields, ProductionTestFields,
                        ProductionTest2Fields, ChannelToolFields, SoundMediaFields}) {
        auto more = family();
        fields.insert(fields.end(), more.begin(), more.end());
    }
    return fields;
}

}  // namespace factorysim
