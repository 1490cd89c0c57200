// The platform's digital TV player.
#pragma once

#include "MSrv_Player.h"
#include "MTypes.h"

// One program of the channel manager.
struct ST_DTV_PROGRAM_INFO {
    MAPI_U32 u32Number;     // the program number; the query starts its search here
    MAPI_U8 u8ServiceType;  // 1 TV, 2 radio, 3 data
};

// The data of the player's scan event (platform event 45), as the player lays it out.
struct ST_DTV_SCAN_STATUS {
    MAPI_U32 enScanStatus;  // 10: the scan has stopped
    MAPI_U16 u16Reserved;
    MAPI_U16 u16TVNum;  // services found, by kind
    MAPI_U16 u16RadioNum;
    MAPI_U16 u16DataNum;
};
static_assert(sizeof(ST_DTV_SCAN_STATUS) == 12, "the player sends 12 bytes");

class MSrv_DTV_Player : public MSrv_Player {
public:
    MAPI_BOOL PlayCurrentProgram(MAPI_BOOL force);
    // The channel manager: the first program of the service type whose number is at
    // least the record's; fills the record, 0 when there is none.
    virtual MAPI_BOOL GetProgramInfo(MAPI_U8 serviceType, ST_DTV_PROGRAM_INFO* info);
    MAPI_BOOL ProgramSel(MAPI_U32 number, MAPI_U8 serviceType, MAPI_BOOL play, MAPI_BOOL keep);
    MAPI_BOOL ManualScanFreq(unsigned long frequencyKHz);
    MAPI_BOOL ChangeManualScanFreq(unsigned long frequencyKHz);
    MAPI_BOOL StopScan();
};
