#include "SatelliteNames.h"

#include <cstring>

namespace SatelliteNames {

namespace {
struct Name {
    const char* platform;
    const char* shown;
};
constexpr Name kNames[] = {
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
};
}  // namespace

const char* DisplayName(const char* platformName) {
    if (platformName == nullptr) {
        return "";
    }
    for (const Name& n : kNames) {
        if (std::strcmp(n.platform, platformName) == 0) {
            return n.shown;
        }
    }
    return platformName;
}

}  // namespace SatelliteNames
