// The platform's factory-command service.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

class MSrv_Factory_Cmd : public MSrv {
public:
    // Fills at most 15 bytes; bytes 4 and 5 are 0xFF while no serial was ever written.
    MAPI_BOOL ReadSerialNum(unsigned char* serial);
    // 1 in the low byte when the EDID checksum of HDMI port 1..4 is good.
    MAPI_U32 EDIDCheckSum(MAPI_U8 port);
};
