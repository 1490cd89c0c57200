// The platform's channel manager service.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

// The program being watched.
struct ST_CURRENT_PROGRAM {
    MAPI_U16 u16Number;
    char szName[33];  // NUL-terminated; empty when the service has no name
};

// The channel now on screen.
struct ST_CHANNEL_INFO {
    MAPI_U8 u8Present;    // non-zero when the channel exists
    MAPI_U8 u8Attribute;  // attribute bits of the channel
};

class MSrv_ChannelManager : public MSrv {
public:
    // 0 when no channel is on screen.
    virtual MAPI_BOOL GetCurrentChannelInfo(ST_CHANNEL_INFO* info);
    // The number of digital TV services in the channel list; 0 when it cannot be read.
    virtual MAPI_BOOL GetDtvServiceCount(long* count);
    virtual MAPI_BOOL GetAtvServiceCount(MAPI_U32* count);
    // 0 when no program is current.
    virtual MAPI_BOOL GetCurrentProgram(ST_CURRENT_PROGRAM* program);
    // Shows the current program's picture again.
    virtual MAPI_BOOL PlayCurrentProgram(MAPI_U8 mode, MAPI_U8 reason);
};
