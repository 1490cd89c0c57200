// The platform's factory store and factory defaults.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

class MSrv_Factory_Default : public MSrv {
public:
    // One byte of the factory store per item number.
    MAPI_BOOL GetFactoryData(unsigned short id, unsigned char* value);
    MAPI_BOOL SetFactoryData(unsigned short id, unsigned char value);
    // Service data back to the factory defaults (white balance, audio, the rest; EDID).
    MAPI_BOOL RestoreDefaultServiceData(unsigned char reserved);
    MAPI_BOOL RestoreDefaultServiceColor(unsigned char reserved);
    MAPI_BOOL RestoreDefaultServiceAudio(unsigned char reserved);
    MAPI_BOOL RestoreDefaultServiceEDID();
    // Bytes of the factory store from an item number on, over the same items as
    // GetFactoryData/SetFactoryData.
    MAPI_BOOL msAPI_rmBurstReadBytes(MAPI_U16 address, MAPI_U8* buffer, MAPI_U16 size);
    MAPI_BOOL msAPI_rmBurstWriteBytes(MAPI_U16 address, MAPI_U8* buffer, MAPI_U16 size);

    // Load one of the factory channel tables into the program table.
    MAPI_BOOL SetDLTVFactorySignalATVTable2ProgramTable();
    MAPI_BOOL SetTCompanySignalATVTable2ProgramTable();
    MAPI_BOOL SetOxbrindFactorySignalATVTable2ProgramTable();
    // Writes the PC input's EDID into its EEPROM; the read-back byte is 1 when it checks.
    MAPI_BOOL SetVGA_EDID_Data();
    MAPI_BOOL GetVGA_EDID_Data(unsigned char* result);
};
