// The platform's satellite (DVB-S) player.
#pragma once

#include "MSrv_DTV_Player_DVB.h"
#include "MTypes.h"

// What the satellite demodulator reports on the current program; 36 bytes.
struct ST_DVBS_DEMOD_INFO {
    MAPI_S32 s32Frequency;  // tuned intermediate frequency, MHz
    float fCN;              // carrier to noise, dB
    float fBER;
    MAPI_S32 s32dBm;  // signal level
    MAPI_S32 s32FEC;
    MAPI_S32 s32Modulation;  // 1 DVB-S, 0 DVB-S2
    MAPI_S32 s32ModType;
    MAPI_S32 s32SymbolRate;
    MAPI_S32 s32PacketCount;
};
static_assert(sizeof(ST_DVBS_DEMOD_INFO) == 36, "the player fills 36 bytes");

struct ST_SATELLITE_INFO {
    MAPI_U8 u8LNBNumber;
    MAPI_U16 u16LoLOF;
    MAPI_U16 u16HiLOF;
};

enum EN_DVBS_POLARITY { E_DVBS_POLARITY_H = 0, E_DVBS_POLARITY_V = 1 };

struct ST_TRANSPONDER_INFO {
    MAPI_U32 u32Frequency;  // MHz
    MAPI_U32 u32SymbolRate;
    MAPI_U8 u8Polarity;  // EN_DVBS_POLARITY
};

class MW_DTV_ScanParam;

enum MS_EN_LNBPWR_ONOFF : int {
    EN_LNBPWR_OFF = 0,
    EN_LNBPWR_13OR18V = 1,
    EN_LNBPWR_13V = 2,
    EN_LNBPWR_18V = 3,
};

struct MS_SAT_INFO {
    char aSatName[32];
    MAPI_U8 u8LNBPwrMode;   // 0 with the supply on, 2 with it off
    MAPI_U8 u8LNBPwrOnOff;  // 1 on, 0 off
    MAPI_U8 u8Port;
};

struct MS_TP_INFO {
    MAPI_U32 u32Frequency;  // kHz
    MAPI_U16 u16SymbolRate;
    MAPI_U8 u8Polarity;  // bit 0: horizontal
};

class MSrv_DTV_Player_DVBS : public MSrv_DTV_Player_DVB {
public:
    MAPI_BOOL GetCurrProgramDemodInfo(ST_DVBS_DEMOD_INFO* info);
    MAPI_U8 GetCurrentSateliteNo();
    MAPI_BOOL GetSatelliteInfoByID(MAPI_U8 satellite, ST_SATELLITE_INFO* info);
    MAPI_U16 GetCurrentTransponderNo();
    MAPI_BOOL GetTransponderInfo(MAPI_U8 satellite, MAPI_U16 transponder,
                                 ST_TRANSPONDER_INFO* info);
    MAPI_U32 GetCurrentSateliteCount();
    bool GetSatelliteInfo(unsigned long satellite, MS_SAT_INFO& info);
    bool UpdateSatelliteInfo(unsigned long satellite, MS_SAT_INFO& info);
    MAPI_BOOL DishSetLNBPower(MS_EN_LNBPWR_ONOFF power);
    MAPI_BOOL DiSEqCSwitchPort(unsigned char port, unsigned char repeat);
    bool GetTransponderInfo(unsigned long satellite, unsigned long transponder, MS_TP_INFO& tp);
    bool UpdateTransponderInfo(unsigned long satellite, unsigned long transponder, MS_TP_INFO& tp);
    MAPI_BOOL SetCurrentSatellite(unsigned char satellite);
    MAPI_BOOL SetCurrentTransponder(unsigned short transponder);
    MAPI_BOOL SetScanParam(MW_DTV_ScanParam* param);
    MAPI_BOOL EnableSingleCableSignalRecover(unsigned char enable);
};
