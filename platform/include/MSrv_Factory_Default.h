// The platform's factory store and factory defaults.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

class MSrv_Factory_Default : public MSrv {
public:
    // One byte of the factory store per item number.
    MAPI_BOOL GetFactoryData(unsigned short id, unsigned char* value);
    MAPI_BOOL SetFactoryData(unsigned short id, unsigned char value);

    // Load one of the factory channel tables into the program table.
    MAPI_BOOL SetDLTVFactorySignalATVTable2ProgramTable();
    MAPI_BOOL SetTCompanySignalATVTable2ProgramTable();
    MAPI_BOOL SetOxbrindFactorySignalATVTable2ProgramTable();
};
