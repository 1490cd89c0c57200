// Simulated state behind the key-file services: the HMAC verdicts of the
// pre-shared key service and the CI+ usage rules of the DVB player.
#pragma once

#include <filesystem>
#include <set>
#include <string>

#include "MSrv_DTV_Player_DVB.h"
#include "SimSet.h"

namespace sim {

struct KeyDataState : Area {
    // TV paths whose HMAC check fails; any other existing file passes.
    std::set<std::string> hmacFailing;
    MAPI_BOOL uriResult = 1;
    ST_CIPLUS_URI_LICENSE uri{};
};

// Writes the demo set's key files (invented identifiers) under the root folder,
// leaving any file that is already there alone.
void InstallDemoKeyFiles(const std::filesystem::path& rootFolder);

}  // namespace sim
