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
    // The DTV route being watched (an index into the TV information's routes).
    MAPI_U32 GetCurrentDtvRoute();
};
