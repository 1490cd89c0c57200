// The platform's channel manager.
#pragma once

#include "MTypes.h"

struct ST_CHANNEL_INFO {
    MAPI_U8 u8Present;    // non-zero when the channel exists
    MAPI_U8 u8Attribute;  // attribute bits of the channel
};

class ChannelManager {
public:
    // The channel now on screen; 0 when there is none.
    MAPI_BOOL getCurrentChannelInfo(ST_CHANNEL_INFO* info);
};
