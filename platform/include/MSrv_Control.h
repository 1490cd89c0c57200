// Entry point to the platform's middleware services.
#pragma once

class MSrv_Factory_Cmd;
class MSrv_Factory_Default;

class MSrv_Control {
public:
    static MSrv_Control* GetInstance();
    MSrv_Factory_Cmd* GetMSrvFactoryCmd();
    MSrv_Factory_Default* GetMSrvFactoryDefault();
};
