// The platform's satellite (DVB-S) player.
#pragma once

#include "MSrv_DTV_Player_DVB.h"
#include "MTypes.h"

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
    MAPI_U32 GetCurrentSateliteCount();
    MAPI_U8 GetCurrentSateliteNo();
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
