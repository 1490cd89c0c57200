// The platform's system database and its DVB variant.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

struct ST_USER_SYSTEM_SETTING {
    MAPI_U8 fRunInstallationGuide;  // 1: the first-time installation runs at next power-on
    MAPI_U8 bBlueScreen;
    MAPI_U8 u8EnergySaving;
    MAPI_U8 enSPDIFMODE;  // digital audio output format as last chosen
};

struct ST_AUDIO_SETTING {
    MAPI_U8 Volume;
    MAPI_U8 Balance;
    // Variant of the PEQ's band 7: 1 LOW, 2 HIGH.
    MAPI_U8 u8PEQLowHigh = 0;
};

class MSrv_System_Database : public MSrv {
public:
    MAPI_BOOL GetUserSystemSetting(ST_USER_SYSTEM_SETTING* setting);
    MAPI_BOOL SetUserSystemSetting(ST_USER_SYSTEM_SETTING* setting);
    MAPI_BOOL GetAudioSetting(ST_AUDIO_SETTING* setting);
    MAPI_BOOL SetAudioSetting(ST_AUDIO_SETTING* setting);
    MAPI_BOOL SetBlueScreenEnable(MAPI_BOOL enable);

    // The factory set-up of the system settings; save 1 writes it through at once.
    MAPI_BOOL RestoreFactorySetupForZYT(MAPI_BOOL save);
    // Sets the sales region (and the source the set starts on) at shipout.
    MAPI_BOOL ChangeShipoutForZYT(MAPI_U8 region, int inputSource, MAPI_U8 save);
};

class MSrv_System_Database_DVB : public MSrv_System_Database {
public:
    // Copies the factory defaults of the data-transfer settings into place.
    MAPI_BOOL RestoreDefaultDataTransfer();
};
