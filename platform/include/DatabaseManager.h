// The platform's database manager: the version record of the set's software parts.
#pragma once

#include "MTypes.h"

// Fixed 32-byte, zero-terminated text fields; 320 bytes in all.
struct ST_ZYT_VERSION_INFO {
    char szDPDDVersion[32];
    char szNeuSoftVersion[32];
    char szCESIVersion[32];
    char szIPRCVersion[32];
    char szIRBlasterDBVersion[32];
    char szDIALVersion[32];
    MAPI_U8 u8Reserved[128];
};
static_assert(sizeof(ST_ZYT_VERSION_INFO) == 320, "the platform fills 320 bytes");

class DatabaseManager {
public:
    MAPI_BOOL GetVersionInformation(ST_ZYT_VERSION_INFO& info);

    MAPI_BOOL SetVersionInformation(ST_ZYT_VERSION_INFO& info);
};
