// Entry point to the platform's middleware services.
#pragma once

#include "MTypes.h"
#include "MapiInputSource.h"

class MSrv_Factory_Cmd;
class MSrv_Factory_Default;
class MSrv_DTV_Player_DVB;
class MSrv_Network;
class MSrv_Player;
class MSrv_SSSound;
class MSrv_PreSharedKey;
class MSrv_Factory_Mode;
class MSrv_System_Database;
class MSrv_ATV_Player;
class MSrv_ATV_Database;
class MSrv_ChannelManager;

// The type byte of each of the four digital TV routes (4 and 64: satellite).
struct ST_TV_INFO {
    MAPI_U8 u8RouteType[4];
};

class MSrv_Control {
public:
    static MSrv_Control* GetInstance();
    MSrv_Factory_Cmd* GetMSrvFactoryCmd();
    MSrv_Factory_Default* GetMSrvFactoryDefault();

    MAPI_INPUT_SOURCE_TYPE GetCurrentInputSource();
    // The player of a source; null when the source has none.
    MSrv_Player* GetMSrvPlayer(MAPI_INPUT_SOURCE_TYPE source);
    // Null on a set without a digital tuner.
    MSrv_DTV_Player_DVB* GetMSrvDtv();
    MSrv_SSSound* GetMSrvSSSound();
    MSrv_Network* GetMSrvNetwork();

    MSrv_PreSharedKey* GetMSrvPreSharedKey();
    MSrv_Factory_Mode* GetMSrvFactoryMode();
    MSrv_System_Database* GetMSrvSystemDatabase();
    MSrv_ATV_Player* GetMSrvAtv();
    // Standby (1) as from the remote's power key.
    MAPI_BOOL EnterSleepMode(MAPI_BOOL sleep);
    MSrv_ATV_Database* GetMSrvAtvDatabase();
    MSrv_ChannelManager* GetMSrvChannelManager();
    MAPI_BOOL SetInputSource(MAPI_INPUT_SOURCE_TYPE source, MAPI_BOOL writeDb, MAPI_BOOL pipMode,
                             MAPI_BOOL keepMute);
    MAPI_BOOL SetATVManualTuneFinishChannel(unsigned char channel);
    ST_TV_INFO GetTVInfo();
    MAPI_U8 GetCurrentTvRoute();
    MAPI_U8 GetCurrentDtvRoute();
    MAPI_BOOL SwitchMSrvDtvRoute(unsigned char route);
    // The set's real-time clock, in seconds.
    MAPI_U32 RTCGetCLK();
};
