// The platform's factory store and factory defaults.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

class MSrv_Factory_Default : public MSrv {
public:
    // One byte of the factory store per item number.
    MAPI_BOOL GetFactoryData(unsigned short id, unsigned char* value);
    MAPI_BOOL SetFactoryData(unsigned short id, unsigned char value);
    // Writes the PC input's EDID into its EEPROM; the read-back byte is 1 when it checks.
    MAPI_BOOL SetVGA_EDID_Data();
    MAPI_BOOL GetVGA_EDID_Data(unsigned char* result);
};
