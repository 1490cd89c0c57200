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

    // Service mode. The service fills these from the remote's service protocol before
    // it raises factory event 200; the service-data editor reads and moves them.
    MAPI_U16 g_u16ServiceModeAddr = 0x800;  // the current item's address
    MAPI_U8 g_u8ServiceStepCmd = 0;         // 28/29 one step up/down, 30/31 four steps
    MAPI_U8 g_u8ServiceModeSelect = 0;      // 254 E/D mode, 195 S mode
    MAPI_U8 g_u8WhiteBalanceCmd = 0;        // '3' RDRV, '4' BDRV, '5' read BDRV, '6' read RDRV
    MAPI_U8 g_bServiceNavLock = 0;          // next/previous item keys do nothing
    MAPI_U8 g_bServiceShortRange = 0;       // the white-balance items only
    MAPI_U8 g_bDModeOpen = 0;               // the full editing range; digits toggle bits
    // Stores a service item's value.
    MAPI_BOOL ProcessServiceData(unsigned short addr, unsigned char value);
    // The item's inclusive range.
    MAPI_BOOL ServiceModeCheckRange(unsigned short addr, unsigned char* min, unsigned char* max);
    // 1 while the service-data editor is open.
    MAPI_BOOL Set_S_D_Mode(unsigned char on);
    // Full-screen single-colour test pictures of the panel (burn-in, line checks).
    MAPI_BOOL RedRaster();
    MAPI_BOOL GreenRaster();
    MAPI_BOOL BlueRaster();
    MAPI_BOOL BlackRaster();
    MAPI_BOOL WhiteRaster();
    // The aging mode the service keeps across power cycles: 3 black/white, 4 colours.
    MAPI_U8 GetAgingMode();
    // Whether the serial fixture lets factory panels use the screen.
    MAPI_BOOL IsUARTEnableUI();
    // Tells the serial fixture the last command was carried out (1) or not.
    MAPI_BOOL SetUARTExecutingResult(MAPI_BOOL done);
    // Starts the factory's cable manual tuning run; the DTV player reports its end.
    MAPI_BOOL FT_DVBC_Manual_Tuning_ZYT();
    // Hands the services found by a manual tuning run to the channel manager.
    MAPI_BOOL FinishManualTuneChange2ChannelManager();
    // Production-line commands: the station's command code and its parameter byte
    // (shipout region and the like), the serial UI switch and the serial result.
    MAPI_U8 GetFactoryCmdCode();
    MAPI_U8 GetFactoryCmdParameter();
    MAPI_BOOL CancellationLogSetup();
    MAPI_BOOL IsFactoryOSDStatus();
    MAPI_BOOL SetFullPowerModeInformation(int backlight, int brightness, int volume);
    MAPI_BOOL SetFactoryDefaultMacIp();
    MAPI_BOOL SetADC();
    // Wireless LAN module: signal values, the synchronous full test (1 pass), the
    // error code of the last failure, the wake-on-WLAN test and its status
    // (0 passed, 1 failed, 2 still testing).
    MAPI_BOOL GetRSSI(int* first, int* second);
    MAPI_BOOL WLAN_Full_Test();
    MAPI_U8 GetWLANErrorMessage();
    MAPI_BOOL WakeOnWLANForFactoryThreadStart();
    MAPI_U8 GetWOWTestedStatus();
    // The wired LAN monitor the station may switch on, and its tick counter.
    MAPI_BOOL IsDLNAMonitorEnabled();
    MAPI_U32 GetDLNAMonitorCount();
    // Raises a factory event as the set's own key handling would.
    MAPI_BOOL CMD_HandleEvent(MAPI_U32 type, MAPI_U32 group, MAPI_U32 code, MAPI_U32 p1,
                              MAPI_U32 p2);
    // Starts bringing the Wi-Fi dongle up; the status says when it is ready (1).
    MAPI_BOOL StartWifiDongleThreadStart();
    MAPI_U8 GetWifiDongleInitStatus();
    MAPI_BOOL SetWifiDongleInitStatus(MAPI_U8 status);
};
