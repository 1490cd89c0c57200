// FactoryManager: the factory-mode library's one object. The platform process
// creates it, gives it a host callback and delivers factory events, timer ticks and
// keys to it; every page, test and editor is a method of this class.
#pragma once

#include <pthread.h>

#include <atomic>
#include <cstddef>
#include <string>
#include <type_traits>

#include "FactoryATCmdVersion.h"
#include "FactoryExport.h"
#include "MEvtHandle.h"
#include "MSrv_DTV_Player_DVBS.h"
#include "MTypes.h"
#include "WidgetTypes.h"

class MSrv_Factory_Cmd;
class MSrv_Factory_Default;
struct _IDirectFB;
typedef struct _IDirectFB IDirectFB;
struct _IDirectFBWindow;
typedef struct _IDirectFBWindow IDirectFBWindow;
struct _IDirectFBSurface;
typedef struct _IDirectFBSurface IDirectFBSurface;
struct lws_context;
struct json_object;
struct FactoryKeyIdentifier;
struct TimedCommand;

// Clone copy of the settings between sets; what a mode means is the platform's.
enum EN_CLONE_COPY : MAPI_U32 {
    E_CLONE_COPY_NONE = 0,
    E_CLONE_COPY_START = 1,
};

// Host callback: (code, 0, 0); the return value is ignored.
typedef unsigned char (*EventListener)(unsigned long code, void* p1, void* p2);

// Shared with the server thread, hence atomic; null until the host installs one.
extern VQ27_FACTORY_API std::atomic<EventListener> g_pFactoryListener;
// Version strings gathered for the serial fixture's version check.
extern VQ27_FACTORY_API ST_ATCMD_VERSION stATCMD_Version;
// Platform version string buffer shared by the version readers.
extern VQ27_FACTORY_API char u8VersionSoC[30];

VQ27_FACTORY_API unsigned char FactoryKeyEventListener(unsigned long keyCode, unsigned long id,
                                                       unsigned long sym);
VQ27_FACTORY_API int onReceiveEvent(int evtType, int index);

class VQ27_FACTORY_API FactoryManager : public MEvtHandle {
public:
    FactoryManager();
    ~FactoryManager() override;

    // ---- Core: lifecycle, host callback, dispatch -------------------------------
    const MSGMAP* GetMessageMap() const override;
    static const MSGMAP* GetThisMessageMap();
    static PMSG_HANDLER MapHandler(MAPI_BOOL (FactoryManager::*handler)(void*, void*, void*)) {
        return static_cast<PMSG_HANDLER>(handler);
    }
    // The framework's three arguments are simply not read by such a handler.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wcast-function-type"
    static PMSG_HANDLER MapHandler(MAPI_BOOL (FactoryManager::*handler)()) {
        return reinterpret_cast<PMSG_HANDLER>(handler);
    }
#pragma GCC diagnostic pop

    void setFactoryEventListener(EventListener listener);
    static void SetFactoryModeState(MAPI_BOOL state);
    static MAPI_BOOL GetFactoryModeState();
    void InitKeyEventListener();

    unsigned char GetKeywritingStatus();
    void SetKeywritingStatus(unsigned char status);
    MAPI_U8 GetPreviousKeyCodeStatus();
    void SetPreviousKeyCodeStatus(unsigned char status);
    MAPI_BOOL isShipoutExecuing();

    unsigned long GetSystemTime();
    unsigned long long getSystemTime();

    MAPI_BOOL OnEvent_FactorySDTest(void* p1, void* p2, void* p3);

    static std::atomic<MAPI_BOOL> m_bIsFactoryEnabled;
    static std::atomic<MAPI_U8> m_isFactoryUiLoaded;
    static std::atomic<lws_context*> m_stContext;
    static MAPI_U16 u16Times;

private:
    // Calls the host listener, if one is installed.
    static void NotifyFactoryListener(unsigned long code);

    MSrv_Factory_Cmd* m_pFactoryCmd = nullptr;
    MSrv_Factory_Default* m_pFactoryDefault = nullptr;
    IDirectFB* m_pDfb = nullptr;
    IDirectFBWindow* m_pDfbWindow = nullptr;

    MAPI_U8 m_u8PreviousKeyCodeStatus = 0;
    MAPI_U8 m_u8KeywritingStatus = 0;
    MAPI_U8 m_bShipoutExecuting = 0;
    MAPI_U8 m_bWebSocketThreadStarted = 0;

public:
    // ---- UI channel: WebSocket server, notifications, page control --------------
    // Creates the server context; the server thread then runs its service loop.
    void InitWebSocketServer();

    // Sends {"cmd":cmd,"data":data} to every connection of the channel's protocol
    // (0: "factorymode-0", 1: "factorymode-1", else nobody).
    void NotifyUI(int channel, const char* cmd, long data);
    void NotifyUI(int channel, const char* cmd, long long data);
    void NotifyUI(int channel, const char* cmd, char* data);
    // Page texts are mostly literals; they are sent exactly like the char* form.
    void NotifyUI(int channel, const char* cmd, const char* data);
    // Any other integer (MAPI_U8, int, unsigned ...) goes out as a JSON integer. In
    // 64 bits: where long has 32 (armhf) a MAPI_U32 over 2^31 would turn negative.
    template <class T, std::enable_if_t<std::is_integral<T>::value, int> = 0>
    void NotifyUI(int channel, const char* cmd, T data) {
        NotifyUI(channel, cmd, static_cast<long long>(data));
    }

    void CheckFactoryUiIsReady();
    BOOL isWebAppMgrServiceInitialized();
    void LoadPageFromEnv();
    MAPI_BOOL ClearFactoryUiWeb();
    void InfoZYTAppMgr(unsigned char on);
    void InfoZYTAppMgrForVersion(unsigned char kill);
    void InfoWebAppMgrHideShowPage(unsigned char hide, unsigned char index);
    void ShowKeyWriting(MAPI_U16 status);
    void ShowSerialNoWriting(MAPI_U16 status);

private:
    // Stops the service loop and joins the server thread (the destructor, before
    // the context goes).
    void StopWebSocketServer();
    // Sends {"cmd":cmd,"data":data} and releases it.
    void SendNotification(int channel, const char* cmd, json_object* data);

    pthread_t m_hWebSocketThread{};
    // Set by ShowKeyWriting and the key-writing line; tested by the key dispatcher.
    MAPI_BOOL m_bKeyWritingResult = 0;

public:
    // ---- Native on-screen text ---------------------------------------------------
    // The window's surface, shown and on top; the caller releases it. Null on failure.
    IDirectFBSurface* GetDFBSurface();
    void DrawText(ST_WIDGET_POSITION pos, const unsigned char* text, unsigned long colour,
                  unsigned short size);
    void DrawTextForKeywriting(ST_WIDGET_POSITION pos, const unsigned char* text,
                               unsigned long textColour, unsigned long boxColour,
                               unsigned short size);
    void ClearFactoryUiNative();
    void ShowKeyWritingIcon(MAPI_BOOL on, MAPI_U16 status);
    void ShowOomAlertMessage();

private:
    // Both drawing routines; a null box colour pointer draws the text alone.
    void DrawNativeText(ST_WIDGET_POSITION pos, const unsigned char* text, unsigned long colour,
                        const unsigned long* boxColour, unsigned short size);

public:
    // ---- Key dispatcher and page reset -------------------------------------------
    // 1 when the key was consumed, 0 when the TV should handle it.
    MAPI_BOOL FactoryDoKeyAction(unsigned long key);
    // Runs the factory remote controller's last code at once; 1 when it is one we run.
    MAPI_BOOL SpeedupSpecificalKey();
    // Defers that code until the serial fixture's work is done (timer 56 polls).
    MAPI_BOOL FactoryKeyWaitMWBFinish();
    MAPI_BOOL OnTimer_FactoryKeyWaitMWBFinish(void* p1, void* p2, void* p3);
    // Every page calls one of these on entry, so that one page at a time is active.
    void ResetState();
    void ResetStateWithoutKeyWriting();
    void ResetKeyWriting();

    // Mode flags of the pages (1 = the page is active and may own keys), in the
    // dispatcher's order of priority. Each page sets its own on entry and clears it
    // in its exit routine; the dispatcher never sets one.
    MAPI_U8 m_bDModeOpen = 0;
    MAPI_U8 m_bIsADCAdjustmentTesting = 0;
    MAPI_U8 m_bIsVGAEDIDWriting = 0;
    MAPI_U8 m_bIsWLANTesting = 0;
    MAPI_U8 m_bIsWakeOnWLAN = 0;
    MAPI_U8 m_bMediaPlayerMode = 0;
    MAPI_U8 m_bVersionMode = 0;
    MAPI_U8 m_bRevicInfoMode = 0;
    MAPI_U8 m_bAutoBrightnessSensorValueMode = 0;
    MAPI_U8 m_bDLNATestMode = 0;
    MAPI_U8 m_bInternalPatternMode = 0;
    MAPI_U8 m_bAgingMode1 = 0;
    MAPI_U8 m_bAgingMode2 = 0;
    MAPI_U8 m_bAudioBalanceCheckMode = 0;
    MAPI_U8 m_bBackLightLevelMode = 0;
    MAPI_U8 m_bAutoBrightnessSensorMode = 0;
    MAPI_U8 m_bPolarizationMode = 0;
    MAPI_U8 m_bDigitalAudioOutMode = 0;
    MAPI_U8 m_bCITestMode = 0;
    MAPI_U8 m_bCloneCopyMode = 0;
    MAPI_U8 m_bCloneCopyBusy = 0;  // a copy is running: the power keys are swallowed
    MAPI_U8 m_bATVTuningSearchMode = 0;
    MAPI_U8 m_bPEQMode = 0;
    MAPI_U8 m_b3DTimingMode = 0;
    MAPI_U8 m_bAudioADVMode = 0;
    MAPI_U8 m_bAPListShown = 0;
    MAPI_U8 m_b9PointPatternMode = 0;
    // Page flags cleared on reset that no key reaches.
    MAPI_U8 m_bSModeShown = 0;
    MAPI_U8 m_bCHPresetShown = 0;
    // Version page opened by an application command: the host's UI comes back on exit.
    MAPI_U8 m_bVersionShownByCommand = 0;
    // ATV search: the program number the found channel goes to next.
    MAPI_U16 m_u16CurrentChannelNum = 0;

    // Routines of pages not in this build yet, called by the dispatcher.
    MAPI_BOOL FactoryDModeAction(unsigned long key);
    MAPI_BOOL OnEvent_MediaPlayerStop(void* p1, void* p2, void* p3);
    MAPI_BOOL ExitVersionMode();
    MAPI_BOOL VersionAction(unsigned long key);
    MAPI_BOOL ExitRevicInfo();
    MAPI_BOOL ExitAutoBrightnessSensorValueMode();
    MAPI_BOOL ExitDLNATest();
    MAPI_BOOL ExitAgingMode1();
    MAPI_BOOL ExitAgingMode2();
    MAPI_BOOL ExitAudioBalanceCheck();
    MAPI_BOOL ExitBackLightLevel();
    MAPI_BOOL ExitAutoBrightnessSensor();
    MAPI_BOOL DisplayVideoAfterPolarizatonChanged();
    MAPI_BOOL ExitDigitalAudioOut();
    MAPI_BOOL ExitCITestStatus();
    MAPI_BOOL ExitCloneCopy();
    MAPI_BOOL ExitATVTuningSearch();
    MAPI_BOOL ATVTuningSearchSelect();
    MAPI_BOOL PEQProcessKey(unsigned long key);
    MAPI_BOOL Factory3DTimingKeyAction(unsigned long key);
    MAPI_BOOL FactoryAudioADVKeyAction(unsigned long key);
    MAPI_BOOL DisplayAPListUI(char* ssid, char* signal);
    MAPI_BOOL Display9PointPattern(MAPI_BOOL on);

private:
    struct KeyOwner;
    struct RemoteCodeRow;
    static const KeyOwner* KeyOwners(size_t& count);
    MAPI_BOOL CloseExitPage(const KeyOwner& page, unsigned long key);
    MAPI_BOOL VersionModeKey(unsigned long key);
    MAPI_BOOL CloneCopyKey(unsigned long key);
    MAPI_BOOL ATVTuningSearchKey(unsigned long key);
    MAPI_BOOL KeyWritingResultKey(unsigned long key);
    MAPI_BOOL PEQKey(unsigned long key);
    MAPI_BOOL Timing3DKey(unsigned long key);
    MAPI_BOOL AudioADVKey(unsigned long key);
    MAPI_BOOL APListKey(unsigned long key);
    MAPI_BOOL NinePointKey(unsigned long key);
    static void CloseAging(FactoryManager& fm);
    void SetKeyRouteDefault();
    static const RemoteCodeRow* FindRemoteCode(unsigned short code);
    void RunRemoteCode(const RemoteCodeRow& row);

public:
    // ---- M-mode ------------------------------------------------------------------
    MAPI_BOOL OnEvent_FactoryMModeStart(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_FactoryVolumeAdj(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_ExitFactoryMode(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_FactoryVolumeAdj(void* p1, void* p2, void* p3);
    // Leaves M-mode on the host's power path: no standby.
    MAPI_BOOL CloseMModeAfterPower();
    // On: the red "M" and the line preparation; off: the mark goes.
    void ShowMModeIcon(MAPI_BOOL on);
    MAPI_BOOL IsMMode();
    MAPI_BOOL IsSDMode();
    // Action 0..3: the panel key's name for the web UI.
    MAPI_BOOL OnEvent_FactoryM_ModeAction(unsigned char action);
    MAPI_BOOL CloseSideKeyUIOnMmode();
    MAPI_BOOL ShowFactorySerialNumStatus(unsigned char state);
    MAPI_BOOL CloseFactorySerialNumOSD();
    MAPI_BOOL GetProductSerialNum(unsigned char* serial);
    // Set while the M-mode key name is on screen.
    MAPI_U8 m_bMModeKeyShown = 0;

private:
    // Consumer defaults of leaving M-mode; the standby step only on the exit event.
    void RestoreConsumerState(MAPI_BOOL standby);

public:
    // ---- AT command channel --------------------------------------------------------
    MAPI_BOOL OnEvent_ReleaseAT_Cmd();
    MAPI_BOOL OnEvent_TJP(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_GetATCmd(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_GetWoLWakeupEvent(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_TeletextOnOffForUARTCmd(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_ReleaseAT_Cmd(void* p1, void* p2, void* p3);

private:
    // Values of the version record that no reader gives as text.
    const char* ATCmdFetchSoCVersion();
    const char* ATCmdSoCVersion();
    const char* ATCmdEDIDVGA();
    static const FactoryATCmdRow s_atCmdRows[];

public:
    // ---- Version and identity readers --------------------------------------------
    // Each string reader returns its own buffer, rewritten on every call (the DPDD
    // and DIAL readers share one), or null when the buffer cannot be allocated.
    const char* FactoryGetTVModel();
    const char* FactoryGetTVModelId();
    const char* FactoryGetZYTAppVersion();
    const char* FactoryGetSWVersion();
    const char* FactoryGetMbootVersion();
    const char* FactoryGetPQVersion();
    const char* FactoryGetPQ2Version();
    const char* FactoryGetPQ3Version();
    const char* FactoryGetPQ4Version();
    const char* FactoryGetFRCVersion();
    const char* FactoryGetDPDDVersion();
    const char* FactoryGetNeuSoftVersion();
    const char* FactoryGetCESIVersion();
    const char* FactoryGetIPRCVersion();
    const char* FactoryGetIRBlasterDB();
    const char* FactoryGetDIALVersion();
    const char* FactoryGetASF_Version();
    MAPI_U32 ASF_GetVersion();
    const char* FactoryGetChDBVersion();
    const char* FactoryGetMainBoardTemp();
    const char* FactoryGetODTable();
    const char* FactoryGetSerialNo();
    const char* FactoryGetMACAddress();
    const char* FactoryGetWLANMACAddress();
    const char* FactoryGetPOT();
    const char* FactoryGetAST();
    const char* FactoryGetDLNACheck();
    // Null also when the current source has no player.
    const char* FactoryGetMainFormat();

    // Status readers: 1 good, 0 not (the VGA EDID reader also 2, written but unknown).
    MAPI_U8 FactoryGetADAdjustPALStatus();
    MAPI_U8 FactoryGetADAdjustNTSCStatus();
    MAPI_U8 FactoryGetADAdjustCOMPStatus();
    MAPI_U8 FactoryGetADAdjustRGBStatus();
    MAPI_U8 FactoryGetADAdjustCVBSStatus();
    MAPI_U8 FactoryGetEDIDVGA();
    MAPI_U8 FactoryGetEDIDHDMI1();
    MAPI_U8 FactoryGetEDIDHDMI2();
    MAPI_U8 FactoryGetEDIDHDMI3();
    MAPI_U8 FactoryGetEDIDHDMI4();
    MAPI_U8 FactoryGetWriteProtect();
    MAPI_U8 has4KDemoData();

    // Readers of the four-panel products; here they return an empty text so that
    // every product answers the same AT commands.
    const char* FactoryGetREVICVersion();
    const char* FactoryGetARMVersion();
    const char* FactoryGetCRISCVersion();
    const char* FactoryGetBRISCVersion();
    const char* FactoryGetFPGAVersion();
    const char* FactoryGetBootLoaderVersion();
    const char* FactoryGetUSBConnect();
    const char* FactoryGetRevicMemory();
    const char* FactoryGetRevicCtrl();
    const char* FactoryGetRevicPQVersion();
    const char* FactoryGetInformation();
    const char* FactoryGetGPIOConnect();
    const char* FactoryGetUniformityData();
    const char* FactoryGetRevicLD_DATA();

private:
    // Allocates the buffer on first use and zeroes it; null when out of memory.
    static char* ReaderBuffer(char*& buffer, unsigned int size);
    // Copies a platform text into a reader buffer, cut to fit.
    const char* ReaderCopy(char*& buffer, unsigned int size, const char* text);
    const char* ReaderVersionRecordField(char*& buffer, unsigned int size, unsigned int offset);
    const char* ReaderCounter(char*& buffer, unsigned short firstItem);
    // One byte of the factory store; 0 when it cannot be read.
    MAPI_U8 ReaderFactoryData(unsigned short item);
    MAPI_U8 ReaderHdmiEdid(MAPI_U8 port);
    const char* FourPanelStub(const char* reader);
    // Frees the reader buffers in declared order (destructor).
    void FreeVersionReaderBuffers();

    char* m_pszTVModel = nullptr;
    char* m_pszTVModelId = nullptr;
    char* m_pszZYTAppVersion = nullptr;
    char* m_pszSWVersion = nullptr;
    char* m_pszMbootVersion = nullptr;
    char* m_pszPQVersion = nullptr;
    char* m_pszPQ2Version = nullptr;
    char* m_pszPQ3Version = nullptr;
    char* m_pszPQ4Version = nullptr;
    char* m_pszFRCVersion = nullptr;
    char* m_pszDPDDDIALVersion = nullptr;  // shared by the DPDD and DIAL readers
    char* m_pszNeuSoftVersion = nullptr;
    char* m_pszCESIVersion = nullptr;
    char* m_pszIPRCVersion = nullptr;
    char* m_pszIRBlasterDB = nullptr;
    char* m_pszASFVersion = nullptr;
    char* m_pszChDBVersion = nullptr;
    char* m_pszMainBoardTemp = nullptr;
    char* m_pszODTable = nullptr;
    char* m_pszSerialNo = nullptr;
    char* m_pszMACAddress = nullptr;
    char* m_pszWLANMACAddress = nullptr;
    char* m_pszPOT = nullptr;
    char* m_pszAST = nullptr;
    char* m_pszDLNACheck = nullptr;
    char* m_pszMainFormat = nullptr;
    char m_szFourPanelStub[51] = {};
    static char* FactoryManager::*const s_versionReaderBuffers[];

public:
    // ---- Key data readers ----------------------------------------------------------
    // Identities of the key files under /ciplus; "--" for a missing or empty file.
    MAPI_BOOL FactoryLoadKeyRawData();
    const char* FactoryGetCIPlusSerialNumber();
    const char* FactoryGetCIPlusHostID();
    const char* FactoryGetHDCP20();
    const char* FactoryGetHDCP20_ReceiveID();
    const char* FactoryGetWidevineDeviceID();
    const char* FactoryGetNetflixESN();
    const char* FactoryGetDevID_DTCPIP();
    const char* FactoryGetPVR();
    const char* FactoryGetVudu();
    MAPI_BOOL FactoryGetCIPlusURILicense(std::string& text);

    // HMAC verdicts of the key files, set by FactoryLoadKeyRawData.
    MAPI_U8 m_u8Hdcp2KeyHmacOk = 0;
    MAPI_U8 m_u8WidevineKeyHmacOk = 0;
    MAPI_U8 m_u8NetflixKeyHmacOk = 0;

private:
    const char* ReadKeyIdentifier(char*& buffer, size_t size, const FactoryKeyIdentifier& source);
    void FreeKeyDataBuffers();

    char* m_pszCIPlusSerialNumber = nullptr;
    char* m_pszCIPlusHostID = nullptr;
    char* m_pszHDCP20 = nullptr;
    char* m_pszHDCP20ReceiveID = nullptr;
    char* m_pszWidevineDeviceID = nullptr;
    char* m_pszNetflixESN = nullptr;
    char* m_pszDevIDDTCPIP = nullptr;
    char* m_pszPVR = nullptr;
    char* m_pszVudu = nullptr;

public:
    // ---- Information pages, serial log ---------------------------------------------
    MAPI_BOOL OnEvent_FactoryVersion(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_FactoryWifiDongleStatus(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SerialLog(void* p1, void* p2, void* p3);
    // Draws page m_u8VersionPage: 0 self-check, 1 colour temperature, 2 PQ, 3 tuner.
    void ShowVersion();
    void ShowVersionSelfCheck();
    void ShowColorTemperature();
    void ShowPQ();
    // Entries of the host's application commands.
    MAPI_BOOL mAPI_ShowVersionSelfCheck();
    MAPI_BOOL mAPI_ShowTuner();
    MAPI_BOOL mAPI_Show_S_Mode();
    // The receiver information page, the tuner page's reception summary.
    MAPI_BOOL mAPI_ShowReceiverInfo();

    enum EN_ZYT_COLOR_TEMP : int {
        E_ZYT_COLOR_TEMP_COOL = 0,
        E_ZYT_COLOR_TEMP_MEDIUM = 1,
        E_ZYT_COLOR_TEMP_WARM = 2,
    };
    // The platform's 9-byte white-balance record: bytes 3-5 gains, 6-8 offsets.
    struct ST_ZYT_PQL_COLOR_TEMP_DATA {
        MAPI_U8 u8Data[9];
    };
    MAPI_BOOL GetColorTemp(EN_ZYT_COLOR_TEMP ct, ST_ZYT_PQL_COLOR_TEMP_DATA* out);
    int GetColorWarmRGain();
    int GetColorWarmGGain();
    int GetColorWarmBGain();
    int GetColorWarmROffset();
    int GetColorWarmGOffset();
    int GetColorWarmBOffset();
    int GetColorMediumRGain();
    int GetColorMediumGGain();
    int GetColorMediumBGain();
    int GetColorMediumROffset();
    int GetColorMediumGOffset();
    int GetColorMediumBOffset();
    int GetColorCoolRGain();
    int GetColorCoolGGain();
    int GetColorCoolBGain();
    int GetColorCoolROffset();
    int GetColorCoolGOffset();
    int GetColorCoolBOffset();

    void SerialLogVersionsSelfCheck();
    void SerialLogVersionsColorTemperature();
    void SerialLogVersionsPQ();
    void SerialLogVersionsTuner();

    MAPI_U8 m_u8VersionPage = 0;
    MAPI_U8 m_u8NetworkType = 0;
    MAPI_U8 m_u8WifiDongleWaitCount = 0;

private:
    int ColorTempByte(EN_ZYT_COLOR_TEMP ct, unsigned int offset);
    // Restarts timer 40 so that the page just drawn goes to the serial console once.
    void StartSerialLog();

public:
    // ---- Tuner pages ---------------------------------------------------------------
    MAPI_BOOL OnTimer_TunerInfo(void* p1, void* p2, void* p3);
    // 1-3 terrestrial and cable (3 cable), 4-5 satellite, 6 analogue, 9 other, 0 none.
    MAPI_U32 GetTVSource();
    void GetDVBS_DemodInfo();
    void ShowTuner();
    void ShowTunerDVBS();
    void ShowTuner_ATSC();

    // Buffer formatters: the reading as text, empty where it does not apply; null
    // only when the buffer cannot be allocated.
    const char* GetTunerModulationSystem();
    const char* GetTunerFrequency();
    const char* GetFrequencyOffset();
    const char* GetBandwidth();
    const char* GetLockStatus();
    const char* GetTunerSNR();
    const char* GetTunerSignalPower();
    const char* GetTunerSignalQualityIndex();
    const char* GetTunerSignalStrengthIndex();
    const char* GetTunerGetBitErrorRate();
    const char* GetTunerGetUncorrectedError();
    const char* GetTunerModulation();
    const char* GetTunerMode();
    // Fills the high- and low-priority texts; 0 when a buffer cannot be allocated.
    MAPI_BOOL GetTunerCodeRate(const char*& highPriority, const char*& lowPriority);
    const char* GetTunerGuardInterval();
    const char* GetTuner2ndIFFrequency();
    const char* GetTunerSymbolRate();
    const char* GetTunerRollOff();
    const char* GetTunerLNBPower();
    const char* GetTunerLNBSystem();
    const char* GetTunerLNBNumber();
    const char* GetTunerLNBBand();
    const char* GetTunerLNBPolarity();
    const char* GetTunerLNBAntError();

    // Text formatters of the DVB-T2 layer: 1 when they wrote the text.
    MAPI_U8 GetTunerMISOSISO(std::string& text);
    MAPI_U8 GetTunerNumberOfPLPs(std::string& text);
    MAPI_U8 GetTunerCurrentPLPID(std::string& text);
    MAPI_U8 GetTunerL1Modulation(std::string& text);
    MAPI_U8 GetTunerL1CodeRate(std::string& text);
    MAPI_U8 GetTunerCPLPModulation(std::string& text);
    MAPI_U8 GetTunerCPLPCodeRate(std::string& text);
    MAPI_U8 GetTunerFECType(std::string& text);
    MAPI_U8 GetTunerPILOT(std::string& text);
    MAPI_U8 GetTunerModeFFT(std::string& text);
    MAPI_U8 GetTunerFEF(std::string& text);
    MAPI_U8 GetTunerPAPR(std::string& text);
    MAPI_U8 GetTunerSymbolRateDVBC(std::string& text);

    ST_DVBS_DEMOD_INFO m_stDVBSDemodInfo{};

private:
    struct TunerRow;
    struct TunerTextRow;
    // Sends each row whose formatter gave a text.
    void SendTunerRows(const TunerRow* rows, size_t count);
    void SendTunerTextRows(const TunerTextRow* rows, size_t count);
    // Hide command, the settling wait, the rows (by the caller), page on, timer 57.
    void BeginTunerLayout(const char* layout, unsigned int waitMs);
    void EndTunerLayout(const char* layout);
    void ShowTunerPage();
    // Writes the text only on a DVB-T2 demodulator whose information was refreshed.
    MAPI_U8 TunerT2Text(std::string& text, std::string (*format)(class mapi_demodulator&));
    // Zeroed member buffer of a formatter; null when it cannot be allocated.
    char* TunerBuffer(unsigned int index, unsigned int size);

    struct TunerTextBuffer {
        char* text = nullptr;
        ~TunerTextBuffer() { delete[] text; }
    };
    TunerTextBuffer m_tunerBuffers[26];

public:
    // ---- Service-mode editor -------------------------------------------------------
    MAPI_BOOL OnEvent_FactoryVideoCheck(void* p1, void* p2, void* p3);
    // Publishes the name of the item at the current service address.
    MAPI_BOOL FactoryLoadMode();
    // Publishes address, value, binary text and editability of the current item.
    void FactoryDModeLoadInfo();
    // The platform's step command (up for 28/30); stored through the factory store.
    void FactoryDModeChangeDataByStep(unsigned char up);
    // Value keys: one step with wrap; stored through the service-data call.
    void FactoryDModeChangeInfo(unsigned char up);
    // Toggles bit 0..7 whatever the range; stored through the service-data call.
    void FactoryDModeChangeDataByBit(unsigned char bit);
    // 1 when the current item is old memory data, which the value keys leave alone.
    MAPI_BOOL FactoryOldMemoryData();
    void FactoryShowDModeUI(unsigned char show);
    void FactoryBinUlongToString(unsigned long value, char* out, signed char len);
    void FactoryBinUlongToU16String(unsigned long value, unsigned short* out, signed char len);

    // Reset combination: 0xF014 then 0xF554 resets all service data.
    MAPI_U32 m_u32DModeLastKey = 0;
    MAPI_U8 m_u8KeyPadRepeated = 0;
    MAPI_U32 m_u32KeyPadRepeatedTime = 0;
    // The panel's factory control step: 0xFF off, else 0..4.
    MAPI_U8 m_u8ControlStep = 0xFF;

private:
    // Sends the value as "%02XH" and its binary text as "DMode-Data" and "DMode-Bin".
    void NotifyDModeValue(MAPI_U8 value);
    // Sends the current address in one of the set's two formats.
    void NotifyDModeAddr(const char* format);
    // Every value change alike: the address shown in the given format, the stored value
    // read, changed, written back (through the service-data call or the factory store)
    // and shown. Defined and used in the service-mode file only.
    template <class Change>
    void DModeChangeValue(const char* addrFormat, bool viaServiceData, Change change);
    void DModeMoveItem(bool next);
    void DModeDigitKey(unsigned long key);
    void DModeClose();
    void DModeControlStep();
    void DModeResetKey();

public:
    // ---- Timed one-shot setting commands ---------------------------------------------
    MAPI_BOOL OnEvent_OverCurrentUSB(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_DigitalAudioOut(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_ShipoutSetting(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_SelectSpeakerTypeToSNC(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_SelectSpeakerTypeToIEC(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_SelectSpeakerTypeToGW(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_SelectSpeakerTypeToEstec(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_FullPowerMode(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_ClearPowerOnTime(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_SetStoreToNone(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_SetStoreToBestBuy(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_SetStoreToCostco(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_SetStoreToWalmart(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_TempIOCheck(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_DefaultIPAddress(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_NetworkDefaultMAC(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_PrepareOpenWhiteWindow(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_WhiteWindowCodeInformation(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_HDMIARCOutput(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_WriteProtect(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_StarIRBlasterTest(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_HDMIARCOutput(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_DefaultMAC(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_MACFinished(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_WriteProtect(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_DefaultIPAddress(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_TempIOCheck(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SelectSpeakerTypeToSNC(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SelectSpeakerTypeToSNCFinished(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SelectSpeakerTypeToIEC(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SelectSpeakerTypeToIECFinished(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SelectSpeakerTypeToGW(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SelectSpeakerTypeToGWFinished(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SelectSpeakerTypeToEstec(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SelectSpeakerTypeToEstecFinished(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SetStoreToNone(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SetStoreToNoneFinished(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SetStoreToBestBuy(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SetStoreToBestBuyFinished(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SetStoreToCostco(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SetStoreToCostcoFinished(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SetStoreToWalmart(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SetStoreToWalmartFinished(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_ShipoutSetting(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_CCompanyChannelPreset(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_FullPowerMode(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_ClearPowerOnTime(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_WhiteWindowCodeInformation(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_PrepareOpenWhiteWindow(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_OverCurrentUSB(void* p1, void* p2, void* p3);

    // The timed one-shot pattern, one routine over a row of data (TimedCommand.h):
    // the event (page, "writing" text, platform call, first timer), the first timer
    // (result text and the closing timer, or the close) and the close. Any page
    // family with a member of this pattern calls these with a row of its own.
    MAPI_BOOL RunTimedCommand(const TimedCommand& row, MAPI_U8 param, const char* text = nullptr);
    MAPI_BOOL TimedCommandTimer(const TimedCommand& row);
    MAPI_BOOL TimedCommandClose(const TimedCommand& row);
    // The next digital audio output format starts at PCM.
    void InitDigitalAudioOut();

    MAPI_U8 m_u8TempIOCheckRunning = 0;
    MAPI_U8 m_u8DigitalAudioToggle = 0;
    MAPI_U8 m_u8FactoryOSDStatus = 0;
    // The white-window code of the last code event, and the byte the open uses.
    MAPI_U8 m_au8WhiteWindowCode[4] = {};
    MAPI_U8 m_u8WhiteWindowOpenCode = 0;

    // ---- Shipout ---------------------------------------------------------------------
    MAPI_BOOL OnEvent_Shipout(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_Shipout(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_ShipoutFinishedTimer(void* p1, void* p2, void* p3);
    // The shipout work of the event: digital route, wipe, region.
    void ShipHandle();

private:
    // Puts the set on the digital source and route; returns the source it was on.
    int ShipoutToDigitalRoute();
    // Region codes with a database region: write it, reset the set, arm the result.
    MAPI_BOOL ShipoutWriteRegion(MAPI_U8 code, int source);

public:
    // ---- Signal adjustment tests -----------------------------------------------------
    MAPI_BOOL OnEvent_FactoryADCAdjustment(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_FactoryWriteVGA_EDID_EEPRPOM(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_FactoryADCAdjustment(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_FactoryWriteVGA_EDID_EEPRPOM(void* p1, void* p2, void* p3);

    // 1 after an OK report, 0 after an NG one: chooses the closing key.
    MAPI_U8 m_u8ADCResult = 0;

private:
    // Phase 0: signal and format of the current input; 1 when the adjustment may start.
    MAPI_BOOL ADCInputReady(int source);

public:
    // ---- Network tests ---------------------------------------------------------------
    MAPI_BOOL OnEvent_DLNATest(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_FactoryWLANTest(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_FactoryWakeOnWLAN(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_MACaddressCheck(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_DLNAAlive(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_DLNATest(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_FactoryWLANTest(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_FactoryWakeOnWLAN(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_FactoryWakeOnWLANTesting(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_MACaddressCheck(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_WLANAPScan(void* p1, void* p2, void* p3);
    MAPI_BOOL FactoryDLNAStatusCheck();
    MAPI_BOOL ModifyDLNACount();

    // 1 OK, 0 NG: shared by the wireless and wake-on-WLAN tests.
    MAPI_U8 m_u8WLANResult = 0;
    MAPI_U8 m_u8DLNAMonitorStatus = 0;

private:
    // Reads the two signal values as "a, b".
    void WLANSignalText(char* text, size_t size);

public:
    // ---- Picture, pattern and aging tests --------------------------------------------
    MAPI_BOOL OnEvent_AutoBrightnessSensorValue(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_BackLightCheck(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_AudioBalanceCheck(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_InternalPatternOff(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_SwitchInputSource(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_PictureModeDynamic(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_PatternStatus(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_OnAgingMode1(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_OnAgingMode2(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_LocalDimming(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_9PointPattern(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_PictureDynamic(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_AutoBrightnessSensorValue(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SwitchInputSource(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_OnAgingMode1(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_OnAgingMode2(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_SwitchInputSourceFinished(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_LocalDimming(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_9PointPattern(void* p1, void* p2, void* p3);
    // Called by the platform at start-up: resumes the burn-in cycle it has stored.
    MAPI_BOOL DoAgingModeAction();

    MAPI_U8 m_u8AgingMode1Step = 0;  // 0 black next, 1 white next
    MAPI_U8 m_u8AgingMode2Step = 0;  // 0..4: red, green, blue, black, white next
    MAPI_U8 m_bPatternStatus = 0;

private:
    // Both burn-in cycles start alike: the set's UI taken, the repeating timer, the
    // first raster, the cycle's step and flag, and the OSD flag from it.
    MAPI_BOOL StartAgingCycle(const char* handler, unsigned long timer,
                              MAPI_BOOL (MSrv_Factory_Cmd::*firstRaster)(), MAPI_U8 firstStep,
                              MAPI_U8& step, MAPI_U8& flag);
    // Entry of a test page that stays until its exit key.
    void OpenTestPage(const char* page);
    // Entry of a page that takes the set's UI: the state reset, the page alone on
    // screen, the host told and the web page shown.
    void OpenPage(const char* page);
    // The exit of a test page: its "-Show" 0, its mode flag cleared, the OSD flag off.
    MAPI_BOOL CloseTestPage(const char* showCmd, MAPI_U8& mode);
    // The exit of an editor page: its mode flag cleared, the OSD flag off, its "-Show" 0,
    // and the set's UI given back to the host.
    MAPI_BOOL CloseEditorPage(const char* showCmd, MAPI_U8& mode);
    // The sensor value page's reading, as a number, or "NG" when the sensor is silent.
    void ShowAutoBrightnessSensorValue();
    // The panel's backlight and the sound's balance as they were before the checks.
    MAPI_U8 m_u8SavedBacklight = 0;
    MAPI_U8 m_u8BacklightStep = 0;
    MAPI_U8 m_u8SavedBalance = 0;
    MAPI_U8 m_u8BalanceStep = 0;

public:
    // ---- Direct tuning test ----------------------------------------------------------
    MAPI_BOOL OnEvent_DirectTune(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_DirectTune(void* p1, void* p2, void* p3);
    MAPI_U8 m_u8DirectTuneSubCode = 0;
    // Set by a tuning request: the next scan stop is counted (channel scan monitor).
    MAPI_U8 m_bDVBCScanWatch = 0;

private:
    // Selects the first TV program of the channel manager; 0 when there is none.
    MAPI_BOOL PlayFirstProgram(const char* line);

public:
    // ---- Factory configuration -------------------------------------------------------
    MAPI_BOOL OnEvent_FactoryConfiguration(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_FactoryConfiguration(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_FactoryConfigurationFinished(void* p1, void* p2, void* p3);
    MAPI_U8 m_u8FactoryConfigSubCode = 0;

private:
    void RunFactorySetup(MAPI_BOOL uartUi);

public:
    // ---- ATV tuning search -----------------------------------------------------------
    MAPI_BOOL OnEvent_AtvScanInfo(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_OnATVTuningSearch(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_OnATVTuningSearch(void* p1, void* p2, void* p3);
    void ATVTuningSearchInit();
    void ATVTuningSearchUp();
    void ATVTuningSearchDown();
    void LoadSoundSystemForFactory();
    unsigned char CheckChannelValid(unsigned char table, unsigned short channel);
    unsigned char ZYT_SaveProgram(unsigned short program);

    MAPI_U16 m_u16PreviousChannelNum = 0;
    MAPI_U32 u32FrequencyKHz = 0;
    MAPI_U8 m_u8SoundSystem = 0;
    MAPI_U8 m_u8ColorSystem = 0;
    MAPI_U8 m_u8ChannelTable = 0;
    MAPI_U8 m_u8VideoSystem = 0;
    MAPI_U8 m_s8AftOffset = 0;
    MAPI_U32 m_nServiceNum = 0;
    MAPI_U8 m_bManualTuning = 0;
    MAPI_U8 m_bATVSearchReady = 0;
    MAPI_U8 m_bATVSearchDown = 0;

private:
    // The up and down runs differ only in these.
    struct AtvSearchWay;
    void ATVTuningSearchRun(const AtvSearchWay& way);
    // The page keys of the direction of the last scan-info event.
    const char* AtvSaveCmd() const;

public:
    // ---- Satellite tests -------------------------------------------------------------
    MAPI_BOOL OnEvent_FactoryDVBSManualTuningToggle(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_SatInfo(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_LNBPowerSwitch(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_FactoryDVBSManualTuningToggle(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_22KHzTone(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_DiSEqCSwitching(void* p1, void* p2, void* p3);
    MAPI_BOOL DVBsLNBModeOnOff();
    MAPI_BOOL On22kHzTone();
    MAPI_BOOL OnDVBsSwitchDiSEqC_LNB1_LNB2();

    MAPI_U8 m_bLNBPower = 0;
    MAPI_U8 m_bDiSEqCPortB = 0;

private:
    // The satellite pages' hide timers are one family.
    MAPI_BOOL HideSatellitePage(unsigned long timerId);

public:
    // ---- Channel scan monitor --------------------------------------------------------
    MAPI_BOOL OnScanRecepient(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_DLTVSignalSetting(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_CloneCopy(void* p1, void* p2, void* p3);
    MAPI_BOOL OnEvent_CITestStatus(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_CITestStatus(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_DLTVSignalSetting(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_FactoryScanFinishe(void* p1, void* p2, void* p3);
    MAPI_BOOL StartCloneCopy(EN_CLONE_COPY mode);
    MAPI_BOOL CloneCopyResult(unsigned char result);

    MAPI_U32 m_u32ScanEmptyTimes = 0;  // finished scans in a row that found nothing
    MAPI_U8 m_bCHPresetDone = 0;
    MAPI_U8 m_bCloneCopyOK = 0;
    EN_CLONE_COPY m_eCloneCopy = E_CLONE_COPY_NONE;

    // ---- Program information overlay -------------------------------------------------
    MAPI_BOOL OnEvent_DirectCH(void* p1, void* p2, void* p3);
    MAPI_BOOL OnTimer_ProgramInfoIdle(void* p1, void* p2, void* p3);
    void Updatechannelname();
    unsigned char GenreType_Color_Setup(unsigned char genre);

private:
    // Whether the current digital route is a satellite one.
    bool IsSatelliteRoute();

public:
    // ---- PEQ editor ------------------------------------------------------------------
    MAPI_BOOL OnEvent_PEQ(void* p1, void* p2, void* p3);
    MAPI_BOOL UpdatePEQHighlight();
    void ShowPEQBand();
    void ShowPEQFilterMode();
    void ShowPEQF0();
    void ShowF0Div100();
    void ShowPEQQx10();
    void ShowPEQGainX10();
    MAPI_BOOL UpdateBandIndex(unsigned long key);
    MAPI_BOOL UpdateFilterModeIndex(unsigned long key);
    MAPI_BOOL UpdateF0Index(unsigned long key);
    MAPI_BOOL UpdateF0Div100Index(unsigned long key);
    MAPI_BOOL UpdateQx10Index(unsigned long key);
    MAPI_BOOL UpdateGainX10Index(unsigned long key);
    // Loads the band now selected and shows it; nothing is written.
    MAPI_BOOL UpdateBandSetting();
    // Each writes its field of the current band and applies the band.
    MAPI_BOOL UpdateFilterModeSetting();
    MAPI_BOOL UpdateF0Setting();
    MAPI_BOOL UpdateF0Div100Setting();
    MAPI_BOOL UpdateQX10Setting();
    MAPI_BOOL UpdateGainX10Setting();
    // Re-reads the area into the buffer and applies the current band if its layout lets it.
    MAPI_BOOL UpdatePEQSetting(void* buffer);
    MAPI_BOOL SetPEQParam(unsigned char f0Index, unsigned char f0Div100, unsigned char gain,
                          unsigned short q);
    MAPI_BOOL ExitPEQ();

    MAPI_U8 m_bAudysseyPEQ = 0;  // the 28-band layout
    MAPI_U8 m_u8PEQLowHigh = 0;  // 1 LOW, 2 HIGH variant of band 7
    MAPI_U8 m_u8PEQBand = 0;
    MAPI_U8 m_u8PEQFilterMode = 0;
    MAPI_U32 m_u32PEQF0Index = 0;
    MAPI_U8 m_u8PEQF0Div100 = 0;
    MAPI_U32 m_u32PEQQIndex = 0;  // the stored word minus 50
    MAPI_U32 m_u32PEQGainIndex = 0;
    MAPI_U8 m_u8PEQHighlight = 0;  // 0 band .. 5 gain

private:
    // Loads the current band's record from a copy of the area into the members.
    void LoadPEQBand(const unsigned char* area);
    // The field change shared by the five setting operations (a record offset).
    MAPI_BOOL WritePEQField(unsigned offset);

public:
    // ---- 3D glasses timing editor ----------------------------------------------------
    MAPI_BOOL OnEvent_3DTimingAdjust(void* p1, void* p2, void* p3);
    MAPI_BOOL Factory3DTimingAdjustInit();
    MAPI_BOOL Factory3DTimingKeyRight();
    MAPI_BOOL Factory3DTimingKeyLeft();
    MAPI_BOOL Factory3DTimingKeyUp();
    MAPI_BOOL Factory3DTimingKeyDown();
    MAPI_BOOL Factory3DTimingSelect();
    MAPI_BOOL Factory3DTimingDefaultSetting();
    MAPI_BOOL Factory3DTimingSwitchMode(unsigned char item);
    MAPI_BOOL Factory3DTimingLLRR(unsigned char item);
    MAPI_BOOL Factory3DTimingTuneValueByLeftKey(unsigned char item);
    MAPI_BOOL Factory3DTimingTuneValueByRightKey(unsigned char item);
    MAPI_BOOL Factory3DTimingTuneLRValue(unsigned char item);
    MAPI_BOOL Factory3DTimingRGYBKey(unsigned char item, short delta);
    MAPI_BOOL Exit3DTimingMode();

    MAPI_U8 m_u8Timing3DItem = 0;  // 0 default, 1-4 modes, 5-10 values
    MAPI_U32 m_u32LOpen = 0;
    MAPI_U32 m_u32LClose = 0;
    MAPI_U32 m_u32ROpen = 0;
    MAPI_U32 m_u32RClose = 0;
    MAPI_U32 m_u32Duty = 0;
    MAPI_U32 m_u32Shift = 0;

private:
    struct Timing3DValue;
    static const Timing3DValue* Timing3DValueOf(unsigned char item);
    // Moves the highlight along an arrow; 0 when the arrow goes nowhere from here.
    MAPI_BOOL Timing3DMove(int arrow);
    // Sends a value under its cmd as four hex digits.
    void ShowTiming3DValue(const Timing3DValue& value);
    void ApplyTiming3DValue(const Timing3DValue& value);
    // Reads the four shutter lengths and shows them; at init with defaults and logs.
    void ReadTiming3DLengths(bool init);

public:
    // ---- Audio ADV editor ------------------------------------------------------------
    MAPI_BOOL OnEvent_AudioAudysseyADV(void* p1, void* p2, void* p3);
    MAPI_BOOL FactoryProcessAudioParam(unsigned long digitKey);
    MAPI_BOOL FactorySetAudioADV();
    MAPI_BOOL ExitAudioADVMode();

    MAPI_U8 m_u8ADVParam1 = 0;  // command number
    MAPI_U8 m_u8ADVParam2 = 0;
    MAPI_U8 m_u8ADVParam3 = 0;
    MAPI_U8 m_u8ADVDigits1 = 0;  // digits typed into each field since the page opened
    MAPI_U8 m_u8ADVDigits2 = 0;
    MAPI_U8 m_u8ADVDigits3 = 0;
    MAPI_U8 m_u8ADVItem = 0;  // 0-2 the fields, 3 OK

    // ---- Media player test -----------------------------------------------------------
    MAPI_BOOL OnEvent_MediaPlayer(void* p1, void* p2, void* p3);
    MAPI_BOOL MediaPlay();
    MAPI_BOOL MediaStop();

private:
    static const MSGMAP_ENTRY s_messageEntries[];
    static const MSGMAP s_messageMap;
};
