#include "MediaInitRecord.h"

#include <unistd.h>

#include <cstring>

namespace media {

const char* const kExtensionLists[kExtensionListCount] = {
    "BMP",
    "JPG;JPEG;JPE;MPO",
    "PNG",
    nullptr,
    "MP3",
    "M4A;AAC;",
    "WAV",
    "PCM",
    "WMA;ASF;PYV",
    nullptr,
    "WMV;PYV",
    "MPG;MPE;VOB;DAT;BUK;MPEG",
    "TS;TP;TRP;M2TS",
    "AVI;MP4;DIV;MOV;MKV;DIVX;FLV;ASF;3GP",
    "RM;RMV;RMVB",
    "TXT",
};

namespace {
constexpr MAPI_U32 kQueueSize = 17;
constexpr MAPI_U32 kMaxFileCount = 1000;
constexpr MAPI_U32 kLimits[] = {3000, 5000, 32, 5000};
constexpr MAPI_U16 kScreenWidth = 1366;
constexpr MAPI_U16 kScreenHeight = 768;
constexpr MAPI_U16 kThumbnailWidth = 456;
constexpr MAPI_U16 kThumbnailHeight = 256;
constexpr MAPI_U32 kThumbnailCount = 256;
constexpr MAPI_U8 kMode = 3;
constexpr MAPI_U8 kEnable = 1;

MAPI_U32 Limit(long value) { return static_cast<MAPI_U32>(value == -1 ? kLimitFallback : value); }
}  // namespace

void FillBrowserInit(ST_ZYT_MEDIA_BROWSER_INIT& record, long pathMax, long nameMax) {
    std::memset(&record, 0, sizeof(record));
    for (MAPI_U32& q : record.u32QueueSize) {
        q = kQueueSize;
    }
    record.u32MaxFileCount = kMaxFileCount;
    record.u32PathMax = Limit(pathMax);
    for (unsigned i = 0; i < 4; ++i) {
        record.u32Limits[i] = kLimits[i];
    }
    record.u32NameMax = Limit(nameMax);
    record.u16ScreenWidth = kScreenWidth;
    record.u16ScreenHeight = kScreenHeight;
    for (auto& t : record.stThumbnail) {
        t.u16Width = kThumbnailWidth;
        t.u16Height = kThumbnailHeight;
    }
    record.u32ThumbnailCount = kThumbnailCount;
    for (unsigned i = 0; i < kExtensionListCount; ++i) {
        record.pszExtensions[i] = kExtensionLists[i];
    }
    record.u8Mode = kMode;
    record.u8Enable = kEnable;
}

void FillBrowserInit(ST_ZYT_MEDIA_BROWSER_INIT& record) {
    FillBrowserInit(record, pathconf(".", _PC_PATH_MAX), pathconf(".", _PC_NAME_MAX));
}

}  // namespace media
