// The platform's system database and its DVB variant.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

struct ST_USER_SYSTEM_SETTING {
    MAPI_U8 fRunInstallationGuide;  // 1: the first-time installation runs at next power-on
    MAPI_U8 bBlueScreen;
    MAPI_U8 u8EnergySaving;
    MAPI_U8 u8SatelliteSwitch;  // LNB supply on, and DiSEqC input B
};

struct ST_AUDIO_SETTING {
    MAPI_U8 Volume;
    MAPI_U8 Balance;
};

class MSrv_System_Database : public MSrv {
public:
    MAPI_BOOL GetUserSystemSetting(ST_USER_SYSTEM_SETTING* setting);
    MAPI_BOOL SetUserSystemSetting(ST_USER_SYSTEM_SETTING* setting);
    MAPI_BOOL GetAudioSetting(ST_AUDIO_SETTING* setting);
    MAPI_BOOL SetAudioSetting(ST_AUDIO_SETTING* setting);
    MAPI_BOOL SetBlueScreenEnable(MAPI_BOOL enable);
    MAPI_U8 GetSystemCountry();
    MAPI_BOOL GetEpgGenreColors(MAPI_U8 genre, MAPI_U32* colour);
};

class MSrv_System_Database_DVB : public MSrv_System_Database {
public:
    // Copies the factory defaults of the data-transfer settings into place.
    MAPI_BOOL RestoreDefaultDataTransfer();
};
