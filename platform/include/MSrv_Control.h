// Entry point to the platform's middleware services.
#pragma once

class MSrv_Factory_Cmd;
class MSrv_Factory_Default;
class MSrv_PreSharedKey;
class MSrv_DTV_Player;

class MSrv_Control {
public:
    static MSrv_Control* GetInstance();
    MSrv_Factory_Cmd* GetMSrvFactoryCmd();
    MSrv_Factory_Default* GetMSrvFactoryDefault();
    MSrv_PreSharedKey* GetMSrvPreSharedKey();
    // Null on a set without a digital tuner.
    MSrv_DTV_Player* GetMSrvDtv();
};
