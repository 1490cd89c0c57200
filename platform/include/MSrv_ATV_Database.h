// The platform's database of stored analogue programs.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

enum EN_GET_PROGRAM_INFO : int {
    E_GET_MISC = 15,  // the program's misc record
};
enum EN_SET_PROGRAM_INFO : int {
    E_SET_PLL = 0,
    E_SET_SKIP = 6,
    E_SET_AFT_OFFSET = 8,
    E_SET_MISC = 13,
};

// The misc record of a stored program.
struct ST_ATV_MISC {
    MAPI_U16 u16Video;        // bits 6 to 9: colour system
    MAPI_U8 u8AudioStandard;  // low four bits: stored audio standard
    MAPI_U8 u8Flags;          // bit 5: the channel is from the S table
};
static_assert(sizeof(ST_ATV_MISC) == 4, "the table flag is in the fourth byte");

class MSrv_ATV_Database : public MSrv {
public:
    // 1 when the program's record was read.
    MAPI_BOOL GetProgramInfo(EN_GET_PROGRAM_INFO request, MAPI_U16 program, MAPI_U16 param,
                             void* record);
    MAPI_BOOL SetProgramInfo(EN_SET_PROGRAM_INFO request, MAPI_U16 program, MAPI_U16 value,
                             void* record);
    // The name is five characters and a NUL.
    MAPI_BOOL ATVSetChannelName(unsigned char program, unsigned char* name);
    MAPI_BOOL ATVSetFineTune(unsigned char program, signed char fineTune);
};
