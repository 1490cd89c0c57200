// The platform's media browser and player (USB drives).
#pragma once

#include "MTypes.h"

// How the browser is set up: list sizes, path and name limits, screen and
// thumbnail sizes, and the file extensions of each kind of media.
struct ST_ZYT_MEDIA_BROWSER_INIT {
    MAPI_U32 u32QueueSize[5];
    MAPI_U32 u32MaxFileCount;
    MAPI_U32 u32PathMax;
    MAPI_U32 u32Limits[4];
    MAPI_U32 u32NameMax;
    MAPI_U16 u16ScreenWidth;
    MAPI_U16 u16ScreenHeight;
    struct {
        MAPI_U16 u16Width;
        MAPI_U16 u16Height;
    } stThumbnail[4];
    MAPI_U32 u32ThumbnailCount;
    // "EXT;EXT" lists; null for an unused kind.
    const char* pszExtensions[16];
    MAPI_U8 u8Mode;
    MAPI_U8 u8Enable;
};

enum _EN_ZYT_MM_EVENT_LIST : int {
    E_ZYT_MM_EVENT_ALL = 1,
};

class MediaManager {
public:
    static MediaManager* GetInstance();

    // 0 on success for every int result.
    int init(const ST_ZYT_MEDIA_BROWSER_INIT* setup);
    // All bits set when there is no drive.
    MAPI_U32 getTotalDriveNum();
    int changeDrive(MAPI_U8 deviceList, MAPI_U32 drive);
    int setCurrentMediaType(MAPI_U8 mediaType);
    int clearPlayList();
    int run();
    MAPI_U32 getCurrentDriveIndex();
    // Entries of the current folder: its sub-folders come first.
    MAPI_U32 getCurrentFolderNumer();
    MAPI_U32 getTotalFileNumber();
    int setFileSelected(MAPI_U8 deviceList, MAPI_U8 mediaType, MAPI_U32 index);
    int executeCommand(MAPI_U8 device, MAPI_U32 command, MAPI_U32 p1, MAPI_U32 p2, MAPI_U32 p3);
    int setPlayMode(MAPI_U8 device, MAPI_U8 mediaType, MAPI_U8 mode);
    int play(MAPI_U8 device, MAPI_U8 mediaType);
    int pause(MAPI_U8 device, MAPI_U8 mediaType);
    int stop(MAPI_U8 device, MAPI_U8 mediaType);
    int unsetOnMediaEventListener(_EN_ZYT_MM_EVENT_LIST events);
    int Deinit();
};
