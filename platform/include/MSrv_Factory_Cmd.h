// The platform's factory-command service.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

class MSrv_Factory_Cmd : public MSrv {
public:
    // Fills at most 15 bytes; bytes 4 and 5 are 0xFF while no serial was ever written.
    MAPI_BOOL ReadSerialNum(unsigned char* serial);
    // 1 in the low byte when the EDID checksum of HDMI port 1..4 is good.
    MAPI_U32 EDIDCheckSum(MAPI_U8 port);

    // M-mode: the production line's factory mode, kept by this service.
    enum { M_MODE_OPEN = 1 };
    MAPI_BOOL GetFactoryMmodeStatus();
    MAPI_BOOL SetFactoryMmodeStatus(MAPI_BOOL on);
    MAPI_BOOL IsSettingMModeFisished();
    MAPI_BOOL SettingMModeFisishedStatus(MAPI_BOOL finished);
    MAPI_BOOL EnableWiFiDongle(MAPI_BOOL enable);
    MAPI_BOOL SetSerialDebugPort(MAPI_BOOL on);
    MAPI_BOOL SetEnergySavingSetting(MAPI_BOOL on);
    // The factory volume asked for by the line, and the mark that a request is pending.
    MAPI_U8 GetFactoryVolume();
    MAPI_BOOL SetFactoryVolumeRequest(MAPI_BOOL pending);
    // Whether a factory page is on screen (the service holds back its own OSD).
    MAPI_BOOL SetFactoryOSDStatus(MAPI_BOOL shown);
    MAPI_BOOL InternalPatternOff();
    // The last code of the factory remote controller and what the service does with it.
    MAPI_BOOL GetFactoryCode(unsigned short* code);
    MAPI_BOOL SetFactoryCodeEvent(unsigned short code, unsigned short event);
    MAPI_BOOL _HandleFactoryEvent(unsigned int event, unsigned int p1, unsigned int p2);
    MAPI_BOOL GetFactoryCodeFromZYTSpecialRemoteController2Exe();
    // Whether the serial fixture wants results on screen, and its result of the last test.
    MAPI_BOOL IsUARTEnableUI();
    MAPI_BOOL SetUARTExecutingResult(unsigned char result);
};
