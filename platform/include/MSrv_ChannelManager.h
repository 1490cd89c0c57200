// The platform's channel manager service.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

// The program being watched.
struct ST_CURRENT_PROGRAM {
    MAPI_U16 u16Number;
    char szName[33];  // NUL-terminated; empty when the service has no name
};

class MSrv_ChannelManager : public MSrv {
public:
    virtual MAPI_BOOL GetAtvServiceCount(MAPI_U32* count);
    // 0 when no program is current.
    virtual MAPI_BOOL GetCurrentProgram(ST_CURRENT_PROGRAM* program);
    // Shows the current program's picture again.
    virtual MAPI_BOOL PlayCurrentProgram(MAPI_U8 mode, MAPI_U8 reason);
};
