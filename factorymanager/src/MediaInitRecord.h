// The media browser's initialisation record: every value the browser is set up with,
// filled in one place for the start and the stop of the media test.
#pragma once

#include "MediaManager.h"

namespace media {

constexpr long kLimitFallback = 1024;
constexpr unsigned kExtensionListCount = 16;

// The extension list of each kind of media, in the browser's order; null where
// the browser has no kind.
extern const char* const kExtensionLists[kExtensionListCount];

// Zeroes and fills the record; a limit of -1 (pathconf found none) becomes 1024.
void FillBrowserInit(ST_ZYT_MEDIA_BROWSER_INIT& record, long pathMax, long nameMax);
// The same with the limits of the current folder's file system.
void FillBrowserInit(ST_ZYT_MEDIA_BROWSER_INIT& record);

}  // namespace media
