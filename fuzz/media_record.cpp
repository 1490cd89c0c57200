// The media browser's record over any path and name limits: filled whole, its
// strings terminated within their fields.
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "MediaInitRecord.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    long limits[2] = {0, 0};
    std::memcpy(limits, data, size < sizeof limits ? size : sizeof limits);
    ST_ZYT_MEDIA_BROWSER_INIT record;
    std::memset(&record, 0xA5, sizeof record);
    media::FillBrowserInit(record, limits[0], limits[1]);
    return 0;
}
