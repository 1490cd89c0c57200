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
class MSrv_3DManager;

// What the platform knows of the set's tuner routes.
struct ST_MAPI_TV_INFO {
    // Per DTV route, the broadcast type it serves (1 and 32 are digital routes).
    MAPI_U8 u8RouteType[4];
};
class MSrv_CIMMI;
class MSrv_MHL;
class MSrv_ActiveBacklight;

class MSrv_ATV_Database;
class MSrv_ChannelManager;

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
    // The panel's factory control step (enable, step 0..4, 0, level); what a step
    // selects on the panel is the platform's.
    MAPI_BOOL SetFactoryControlStep(MAPI_BOOL enable, MAPI_U8 step, MAPI_U8 reserved,
                                    MAPI_U8 level);
    MSrv_3DManager* GetMSrv3DManager();
    // Switches the source with the platform's own bookkeeping (database, lock).
    MAPI_BOOL SetInputSource(MAPI_INPUT_SOURCE_TYPE source, MAPI_BOOL writeDatabase,
                             MAPI_BOOL updateLock, MAPI_BOOL lock);
    ST_MAPI_TV_INFO GetTVInfo();
    MAPI_BOOL SwitchMSrvDtvRoute(MAPI_U8 route);
    // The digital route (0 terrestrial, 1 cable, 2 satellite).
    MAPI_U8 GetCurrentTvRoute();
    // The factory set-up of the DVB services (channel lists, country, network).
    MAPI_BOOL ZYTFactorySetup();
    // Null on a set without a CI slot.
    MSrv_CIMMI* GetMSrvCIMMI();
    MSrv_MHL* GetMSrvMHL();
    MSrv_ActiveBacklight* GetMSrvActiveBacklight();
    // The DTV route being watched (an index into the TV information's routes).
    MAPI_U32 GetCurrentDtvRoute();
    MSrv_ATV_Database* GetMSrvAtvDatabase();
    MSrv_ChannelManager* GetMSrvChannelManager();
    MAPI_BOOL SetATVManualTuneFinishChannel(unsigned char channel);
    // The blue screen shown on a source without signal.
    MAPI_BOOL SetBlueScreenEnable(unsigned char enable);
    // The set's real-time clock, in seconds.
    MAPI_U32 RTCGetCLK();
};
