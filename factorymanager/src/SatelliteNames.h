// How the program banner names a satellite.
#pragma once

namespace SatelliteNames {

// The banner's text for the platform's satellite name; names not in the table are
// shown as the platform gives them.
const char* DisplayName(const char* platformName);

}  // namespace SatelliteNames
