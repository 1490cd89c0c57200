// The platform's system database and its DVB variant.
#pragma once

#include "MSrv.h"
#include "MSrv_Picture.h"
#include "MTypes.h"
#include "MapiInputSource.h"
#include "mapi_pql_datatype.h"

struct ST_USER_SYSTEM_SETTING {
    MAPI_U8 fRunInstallationGuide;  // 1: the first-time installation runs at next power-on
    MAPI_U8 bBlueScreen;
    MAPI_U8 u8EnergySaving;
    MAPI_U8 enSPDIFMODE;  // digital audio output format as last chosen
    MAPI_U8 u8LNBPower;   // satellite switch: LNB supply on, and DiSEqC input B (one byte)
    MAPI_U8 u8LNBSystem;  // 0 none, 1 tone burst, 2 DiSEqC 2-way, 3 DiSEqC 4-way, 4 single cable
};

// The picture settings of one source; the picture mode selects its colour temperatures.
struct ST_VIDEO {
    MAPI_U8 ePicture;           // the current picture mode
    MAPI_U8 u8SatelliteSwitch;  // LNB supply on, and DiSEqC input B
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
    MAPI_BOOL GetVideoSetting(ST_VIDEO* setting, MAPI_INPUT_SOURCE_TYPE source);
    MAPI_BOOL GetColorTempBySourceAndPictureMode(mapi_pql_datatype::MAPI_PQL_COLOR_TEMP_DATA* out,
                                                 MSrv_Picture::EN_MS_COLOR_TEMP colorTemp,
                                                 MAPI_INPUT_SOURCE_TYPE source,
                                                 MAPI_U8 pictureMode);
    MAPI_U8 GetSystemCountry();
    MAPI_BOOL GetEpgGenreColors(MAPI_U8 genre, MAPI_U32* colour);
};

class MSrv_System_Database_DVB : public MSrv_System_Database {
public:
    // Copies the factory defaults of the data-transfer settings into place.
    MAPI_BOOL RestoreDefaultDataTransfer();
};
