// The platform's DVB player.
#pragma once

#include "MSrv_DTV_Player.h"
#include "MTypes.h"

// CI+ usage rules of the programme being watched, one value per byte.
struct ST_CIPLUS_URI_LICENSE {
    MAPI_U8 u8ProtocolVersion;
    MAPI_U8 u8DOT;  // digital-only token, 1 bit
    MAPI_U8 u8RCT;  // redistribution control trigger, 1 bit
    MAPI_U8 u8EMI;  // copy control, 2 bits
    MAPI_U8 u8APS;  // analogue protection, 2 bits
    MAPI_U8 u8ICT;  // image constraint token, 1 bit
    MAPI_U8 u8RL;   // retention limit, 8 bits
};
static_assert(sizeof(ST_CIPLUS_URI_LICENSE) == 7, "the player fills 7 bytes");

class MSrv_DTV_Player_DVB : public MSrv_DTV_Player {
public:
    // Version of the TV software as known to over-air download.
    MAPI_U32 OADGetTVversion();
    // 1 when the record was filled.
    MAPI_BOOL GetCCUriLicense(ST_CIPLUS_URI_LICENSE* record);

    // 1: the picture stays black while the player changes what it shows.
    MAPI_BOOL SetScreenMuteSwitch(MAPI_BOOL on);
};
