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
    // The number of digital TV services in the channel list; 0 when it cannot be read.
    MAPI_BOOL getDtvServiceCount(long* count);
};
