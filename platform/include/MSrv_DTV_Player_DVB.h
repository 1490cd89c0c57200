// The platform's DVB player.
#pragma once

#include "MSrv_DTV_Player.h"
#include "MTypes.h"

// CI+ usage rules of the programme being watched, one value per byte.
struct ST_CIPLUS_URI_LICENSE {
    MAPI_U8 u8ProtocolVersion;
    MAPI_U8 u8DOT;  // digital-only token, 1 bit
    MAPI_U8 u8RCT;  // redistribution control trigger, 1 bit
    MAPI_U8 u8EMI;  // copy control, 2 bits
    MAPI_U8 u8APS;  // analogue protection, 2 bits
    MAPI_U8 u8ICT;  // image constraint token, 1 bit
    MAPI_U8 u8RL;   // retention limit, 8 bits
};
static_assert(sizeof(ST_CIPLUS_URI_LICENSE) == 7, "the player fills 7 bytes");

class mapi_demodulator;

// The multiplex being received.
struct ST_DTV_MUX_INFO {
    MAPI_U32 u32Frequency;  // kHz
    MAPI_U32 u32SymbolRate;
};

// Radio-frequency information of the channel being received.
struct ST_DTV_RF_INFO {
    MAPI_U32 u32Frequency;  // kHz
    MAPI_U8 u8Bandwidth;
};

// Bits of the player's error status.
enum { E_DVB_ERROR_LNB_SHORT_PROTECT = 0x01 };

// The multiplex being received.
struct _DVB_MUXINFO {
    MAPI_U32 u32FrequencyKHz;
    MAPI_U16 u16SymbolRate;
    MAPI_U8 u8Polarity;  // bit 0: horizontal
};

// Present event of the programme being watched, as the EIT gives it.
struct ST_EIT_PRESENT_INFO {
    MAPI_U8 u8StartHour;
    MAPI_U8 u8StartMinute;
    MAPI_U8 u8EndHour;
    MAPI_U8 u8EndMinute;
    MAPI_U32 u32StartTime;  // seconds, on the real-time clock's scale
    MAPI_U32 u32Duration;   // seconds
    MAPI_U8 u8GenreClass;
};

class MSrv_DTV_Player_DVB : public MSrv_DTV_Player {
public:
    // Version of the TV software as known to over-air download.
    MAPI_U32 OADGetTVversion();
    // 1 when the record was filled.
    MAPI_BOOL GetCCUriLicense(ST_CIPLUS_URI_LICENSE* record);

    // 1: the picture stays black while the player changes what it shows.
    MAPI_BOOL SetScreenMuteSwitch(MAPI_BOOL on);
    // The demodulator of the current route; null when there is none.
    mapi_demodulator* GetCurrentDemodulator();
    MAPI_BOOL GetCurrentMuxInfo(ST_DTV_MUX_INFO* info);
    // Two ways to the same reading: the tuned RF channel, or that of the current program.
    MAPI_BOOL GetCurrentRFInfo(ST_DTV_RF_INFO* info);
    MAPI_BOOL GetCurrentProgramRFInfo(ST_DTV_RF_INFO* info);
    MAPI_U32 GetErrorStatus();
    MAPI_BOOL GetCurrentMuxInfo(_DVB_MUXINFO& mux);
    // 1 when the present event's data is there.
    MAPI_BOOL GetEITInfo(ST_EIT_PRESENT_INFO* present);
};
