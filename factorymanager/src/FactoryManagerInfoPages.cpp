// The information pages: the page switch (event 188, paging keys, exit), the
// version self-check page with its Wi-Fi dongle wait, the colour-temperature and PQ
// pages, the receiver information page and the serial console's copy of each page.
#include <cstdio>
#include <cstring>
#include <iostream>
#include <string>

#include "DemodLabels.h"
#include "FactoryEventIds.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_Control_common.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Network.h"
#include "MSrv_System_Database.h"
#include "MapiInputSource.h"
#include "PictureManager.h"
#include "SerialLogTable.h"
#include "TVManager.h"

namespace {
constexpr unsigned long kSerialLogTimer = FactoryTimer::SerialLog;
constexpr unsigned long kDongleTimer = FactoryTimer::FactoryWifiDongleStatus;
constexpr unsigned long kTunerInfoTimer = FactoryTimer::TunerInfo;
constexpr unsigned int kDongleGiveUpTicks = 51;
constexpr MAPI_U8 kLastPage = 3;
constexpr MAPI_U8 kTunerPage = 3;
// Keys of the remote that page through the set.
constexpr unsigned long kKeyPrevious = 0xF002;
constexpr unsigned long kKeyNext = 0xF003;
// CMD_HandleEvent's way of raising the version and S-mode keys.
constexpr MAPI_U32 kHandleEventType = 64;
constexpr MAPI_U32 kHandleEventGroup = 191;
constexpr MAPI_U32 kVersionKeyCode = 171;
constexpr MAPI_U32 kSModeKeyCode = 181;
// The web pages the information pages use.
constexpr unsigned char kWebPageMain = 1;
constexpr unsigned char kWebPageInfo = 4;

const char* OkNg(MAPI_U8 status) { return status == 1 ? "OK" : "NG"; }

bool OnTvSource() {
    return MSrv_Control::GetInstance()->GetCurrentInputSource() == MAPI_INPUT_SOURCE_DTV;
}

// The VGA EDID row's text; the reader is asked again to tell "written" from "bad".
const char* VgaEdidText(MAPI_U8 first, MAPI_U8 (FactoryManager::*reader)(), FactoryManager& fm) {
    if (first == 1) {
        return "VGA EEPROM Ver.01";
    }
    return (fm.*reader)() == 2 ? "VGA EEPROM _ _ " : nullptr;
}

struct AdcRow {
    MAPI_U8 (FactoryManager::*reader)();
    const char* okMarker;
    const char* ngMarker;
    const char* key;
    const char* consoleLabel;
};
const AdcRow kAdcRows[] = {
    {&FactoryManager::FactoryGetADAdjustPALStatus, "Version-ADAjustPAL-OK", "Version-ADAjustPAL-NG",
     "Version-ADAjustPAL", "A/D Adjust PAL"},
    {&FactoryManager::FactoryGetADAdjustNTSCStatus, "Version-ADAjustNTSC-OK",
     "Version-ADAjustNTSC-NG", "Version-ADAjustNTSC", "A/D Adjust NTSC"},
    {&FactoryManager::FactoryGetADAdjustCOMPStatus, "Version-ADAjustCOMP-OK",
     "Version-ADAjustCOMP-NG", "Version-ADAjustCOMP", "A/D Adjust COMP"},
    {&FactoryManager::FactoryGetADAdjustRGBStatus, "Version-ADAjustRGB-OK", "Version-ADAjustRGB-NG",
     "Version-ADAjustRGB", "A/D Adjust RGB/PC"},
    {&FactoryManager::FactoryGetADAdjustCVBSStatus, "Version-ADAjustCVBS-OK",
     "Version-ADAjustCVBS-NG", "Version-ADAjustCVBS", "A/D Adjust CVBS"},
};

// A good HDMI EDID is reported under another key per port.
struct HdmiRow {
    MAPI_U8 (FactoryManager::*reader)();
    const char* ngMarker;
    const char* ngKey;
    const char* okKey;
};
const HdmiRow kHdmiRows[] = {
    {&FactoryManager::FactoryGetEDIDHDMI1, "Version-EDID-HDMI1-NG", "Version-EDID-HDMI1",
     "Version-CI+-Algorithm"},
    {&FactoryManager::FactoryGetEDIDHDMI2, "Version-EDID-HDMI2-NG", "Version-EDID-HDMI2",
     "Product-Key-Valid"},
    {&FactoryManager::FactoryGetEDIDHDMI3, "Version-EDID-HDMI3-NG", "Version-EDID-HDMI3",
     "Test-Key-Valid"},
};

using TextReader = const char* (FactoryManager::*)();
struct TextRow {
    const char* cmd;
    TextReader reader;
};
const TextRow kVersionRows[] = {
    {"Version-DPDD-Version", &FactoryManager::FactoryGetDPDDVersion},
    {"Version-NeuSoft-Version", &FactoryManager::FactoryGetNeuSoftVersion},
    {"Version-CESI-Version", &FactoryManager::FactoryGetCESIVersion},
    {"Version-IPRC-Version", &FactoryManager::FactoryGetIPRCVersion},
    {"Version-DIAL-Version", &FactoryManager::FactoryGetDIALVersion},
    {"Version-IR-Blaster-DB", &FactoryManager::FactoryGetIRBlasterDB},
    {"Version-PQ-Version", &FactoryManager::FactoryGetPQVersion},
    {"Version-PQ2-Version", &FactoryManager::FactoryGetPQ2Version},
    {"Version-PQ3-Version", &FactoryManager::FactoryGetPQ3Version},
    {"Version-PQ4-Version", &FactoryManager::FactoryGetPQ4Version},
    {"Version-FRC-Version", &FactoryManager::FactoryGetFRCVersion},
    {"Version-ASF-Version", &FactoryManager::FactoryGetASF_Version},
};
const TextRow kIdentityRows[] = {
    {"Version-CIPlusSerialNumber", &FactoryManager::FactoryGetCIPlusSerialNumber},
    {"Version-CIPlusHostID", &FactoryManager::FactoryGetCIPlusHostID},
    {"Version-MainFormat", &FactoryManager::FactoryGetMainFormat},
    {"Version-NetflixESN", &FactoryManager::FactoryGetNetflixESN},
    {"Version-WDVDeviceID", &FactoryManager::FactoryGetWidevineDeviceID},
    {"Version-HDCP20", &FactoryManager::FactoryGetHDCP20_ReceiveID},
    {"Version-HDCP", &FactoryManager::FactoryGetHDCP20},
    {"Version-DTCP-IP", &FactoryManager::FactoryGetDevID_DTCPIP},
    {"Version-Vudu", &FactoryManager::FactoryGetVudu},
    {"Version-PVR", &FactoryManager::FactoryGetPVR},
    {"Version-Serial-No", &FactoryManager::FactoryGetSerialNo},
    {"Version-MACAddress", &FactoryManager::FactoryGetMACAddress},
};

// The eighteen white-balance rows, in the page's order.
using ColorGetter = int (FactoryManager::*)();
struct ColorRow {
    const char* key;
    ColorGetter getter;
};
const ColorRow kColorRows[] = {
    {"Color-Warm-RGain", &FactoryManager::GetColorWarmRGain},
    {"Color-Warm-GGain", &FactoryManager::GetColorWarmGGain},
    {"Color-Warm-BGain", &FactoryManager::GetColorWarmBGain},
    {"Color-Warm-ROffset", &FactoryManager::GetColorWarmROffset},
    {"Color-Warm-GOffset", &FactoryManager::GetColorWarmGOffset},
    {"Color-Warm-BOffset", &FactoryManager::GetColorWarmBOffset},
    {"Color-Medium-RGain", &FactoryManager::GetColorMediumRGain},
    {"Color-Medium-GGain", &FactoryManager::GetColorMediumGGain},
    {"Color-Medium-BGain", &FactoryManager::GetColorMediumBGain},
    {"Color-Medium-ROffset", &FactoryManager::GetColorMediumROffset},
    {"Color-Medium-GOffset", &FactoryManager::GetColorMediumGOffset},
    {"Color-Medium-BOffset", &FactoryManager::GetColorMediumBOffset},
    {"Color-Cool-RGain", &FactoryManager::GetColorCoolRGain},
    {"Color-Cool-GGain", &FactoryManager::GetColorCoolGGain},
    {"Color-Cool-BGain", &FactoryManager::GetColorCoolBGain},
    {"Color-Cool-ROffset", &FactoryManager::GetColorCoolROffset},
    {"Color-Cool-GOffset", &FactoryManager::GetColorCoolGOffset},
    {"Color-Cool-BOffset", &FactoryManager::GetColorCoolBOffset},
};
constexpr size_t kColorFields = 6;  // per temperature
const char* const kColorFieldLabels[kColorFields] = {"R Gain",   "G Gain",   "B Gain",
                                                     "R Offset", "G Offset", "B Offset"};

// What the PQ page shows, read once for the web page and the console alike.
struct PqValues {
    int contrast, backlight, dynaLight, brightness, colour, tint, sharpness, cinema;
    long blackWhite, dynamicNR, mpegNR, aspect;
    bool aspectRead;
};

PqValues ReadPq(PictureManager& pm) {
    PqValues v{};
    v.contrast = pm.getContrast();
    v.backlight = pm.getBacklight();
    v.dynaLight = pm.getDynamicLight();
    v.brightness = pm.getBrightness();
    v.colour = pm.getColour();
    v.tint = pm.getIint();
    v.sharpness = pm.getSharpness();
    v.blackWhite = pm.getBlackWhiteLevel();
    v.cinema = pm.getCinemaMode();
    MAPI_U8 dnr = 4;  // automatic, should the read fail
    pm.getDynamicNR(dnr);
    v.dynamicNR = dnr;
    v.mpegNR = pm.getMpegNR();
    MAPI_U8 aspect = 0;
    v.aspectRead = pm.getAspectRatio(aspect) != 0;
    v.aspect = aspect;
    return v;
}
}  // namespace

// ---- Page switch ---------------------------------------------------------------------

MAPI_BOOL FactoryManager::OnEvent_FactoryVersion(void*, void*, void*) {
    FACTORY_TRACE();
    if (m_bVersionMode != 1) {
        m_bVersionMode = 1;
        m_pFactoryCmd->SetFactoryOSDStatus(1);
        InfoZYTAppMgr(1);
        InfoWebAppMgrHideShowPage(1, kWebPageMain);
        ShowVersion();
    } else {
        // As the exit keys do: the tuner page would otherwise go on redrawing itself.
        KillTimer(kTunerInfoTimer);
        ExitVersionMode();
        InfoZYTAppMgr(0);
        InfoWebAppMgrHideShowPage(0, kWebPageMain);
    }
    return 1;
}

void FactoryManager::ShowVersion() {
    if (m_u8VersionPage == 0) {
        MSrv_Network* network = MSrv_Control::GetInstance()->GetMSrvNetwork();
        // Without a network service there is no dongle to wait for.
        m_u8NetworkType = network != nullptr ? network->GetNetworkType() : 1;
        if (m_u8NetworkType == 0) {
            KillTimer(kDongleTimer);
            SetTimer(1000, kDongleTimer, E_TIMER_REPEAT);
            m_pFactoryCmd->StartWifiDongleThreadStart();
        }
    }
    InfoWebAppMgrHideShowPage(1, kWebPageMain);
    InfoWebAppMgrHideShowPage(1, kWebPageInfo);
    // The tuner page exists only on the TV source; the next key starts from page 0.
    if (!OnTvSource() && m_u8VersionPage == kTunerPage) {
        m_u8VersionPage = 0;
        return;
    }
    switch (m_u8VersionPage) {
        case 0:
            ShowVersionSelfCheck();
            break;
        case 1:
            ShowColorTemperature();
            break;
        case 2:
            ShowPQ();
            break;
        case kTunerPage:
            ShowTunerPage();
            break;
        default:
            break;
    }
}

MAPI_BOOL FactoryManager::VersionAction(unsigned long key) {
    if (key == kKeyNext) {
        m_u8VersionPage = m_u8VersionPage >= kLastPage ? 0 : m_u8VersionPage + 1;
    } else if (key == kKeyPrevious) {
        m_u8VersionPage = m_u8VersionPage == 0 ? kLastPage : m_u8VersionPage - 1;
    } else {
        return 0;
    }
    ShowVersion();
    return 1;
}

MAPI_BOOL FactoryManager::ExitVersionMode() {
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ [FactoryManager::ExitVersionMode] ");
    InfoWebAppMgrHideShowPage(0, kWebPageMain);
    InfoWebAppMgrHideShowPage(0, kWebPageInfo);
    for (const char* page : {"Version", "ColorTemperature", "PQ", "Tuner", "TunerDVBS"}) {
        NotifyUI(0, page, 0L);
    }
    if (m_u8VersionPage == 0 && m_u8NetworkType == 0 &&
        m_pFactoryCmd->GetFactoryMmodeStatus() == 0) {
        MSrv_Control_common::EnableWiFiDongle(0, 0);
    }
    m_bVersionMode = 0;
    m_pFactoryCmd->SetFactoryOSDStatus(m_bVersionMode);
    m_u8VersionPage = 0;
    OnEvent_GetATCmd(nullptr, nullptr, nullptr);
    // The host's UI is given back by the exit keys and the reset, not by a second
    // event 188: the host sees only what that close announces.
    return 1;
}

MAPI_BOOL FactoryManager::mAPI_ShowVersionSelfCheck() {
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ [FactoryManager::mAPI_ShowVersionSelfCheck] ");
    FACTORY_TRACE();
    m_u8VersionPage = 0;
    m_pFactoryCmd->SetFactoryOSDStatus(1);
    m_bVersionShownByCommand = 1;
    InfoWebAppMgrHideShowPage(1, kWebPageMain);
    InfoWebAppMgrHideShowPage(1, kWebPageInfo);
    m_pFactoryCmd->CMD_HandleEvent(kHandleEventType, kHandleEventGroup, kVersionKeyCode, 0, 1);
    return 1;
}

MAPI_BOOL FactoryManager::mAPI_ShowTuner() {
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ [FactoryManager::mAPI_ShowTuner] ");
    FACTORY_TRACE();
    m_u8VersionPage = kTunerPage;
    ShowTunerPage();
    return 1;
}

MAPI_BOOL FactoryManager::mAPI_Show_S_Mode() {
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ [FactoryManager::mAPI_Show_S_Mode] ");
    FACTORY_TRACE();
    m_bSModeShown = 1;
    m_pFactoryCmd->SetFactoryOSDStatus(1);
    InfoZYTAppMgr(1);
    InfoWebAppMgrHideShowPage(1, kWebPageMain);
    m_pFactoryCmd->CMD_HandleEvent(kHandleEventType, kHandleEventGroup, kSModeKeyCode, 0, 1);
    return 1;
}

void FactoryManager::StartSerialLog() {
    KillTimer(kSerialLogTimer);
    SetTimer(300, kSerialLogTimer, E_TIMER_ONESHOT);
}

// ---- Version self-check --------------------------------------------------------------

void FactoryManager::ShowVersionSelfCheck() {
    auto sendIfSet = [this](const char* cmd, const char* text) {
        if (text != nullptr) {
            NotifyUI(0, cmd, text);
        }
    };
    NotifyUI(0, "HideAllUIExcept", "Version");
    FactoryLoadKeyRawData();
    NotifyUI(0, "Version", 1L);
    sendIfSet("Version-TVModel", FactoryGetTVModel());
    sendIfSet("Version-TVModelID", FactoryGetTVModelId());

    std::memset(u8VersionSoC, 0, sizeof(u8VersionSoC));
    TVManager::GetInstance()->GetSoCRealSWVersion(u8VersionSoC);
    NotifyUI(0, "Version-ZYTAppVersion", u8VersionSoC);
    const char* boot = FactoryGetMbootVersion();
    sendIfSet("Version-BootCodeVersion", boot);
    // Deliberately tested on the boot code: both come from the same boot loader.
    if (boot != nullptr) {
        std::memset(u8VersionSoC, 0, sizeof(u8VersionSoC));
        TVManager::GetInstance()->GetSoCFWVersion(u8VersionSoC);
        NotifyUI(0, "Version-AppSWVersion", u8VersionSoC);
    }
    for (const TextRow& row : kVersionRows) {
        sendIfSet(row.cmd, (this->*row.reader)());
    }

    // The marker comes first so that the UI colours the row before it fills it.
    for (const AdcRow& row : kAdcRows) {
        const bool ok = (this->*row.reader)() == 1;
        NotifyUI(0, ok ? row.okMarker : row.ngMarker, 0L);
        NotifyUI(0, row.key, ok ? "OK" : "NG");
    }
    const char* vga = VgaEdidText(FactoryGetEDIDVGA(), &FactoryManager::FactoryGetEDIDVGA, *this);
    if (vga == nullptr) {
        NotifyUI(0, "Version-EDID-VGA-NG", 0L);
        vga = "VGA EEPROM NG";
    }
    NotifyUI(0, "Version-EDID-VGA", vga);
    for (const HdmiRow& row : kHdmiRows) {
        if ((this->*row.reader)() == 1) {
            NotifyUI(0, row.okKey, "OK");
        } else {
            NotifyUI(0, row.ngMarker, 0L);
            NotifyUI(0, row.ngKey, "NG");
        }
    }
    std::string uri;
    NotifyUI(0, "URI", FactoryGetCIPlusURILicense(uri) == 1 ? uri.c_str() : "NONE");
    for (const TextRow& row : kIdentityRows) {
        sendIfSet(row.cmd, (this->*row.reader)());
    }
    // The Bluetooth row deliberately repeats the WLAN address.
    const char* wlan = FactoryGetWLANMACAddress();
    sendIfSet("Version-WLAN-MAC-Address", wlan);
    sendIfSet("Version-BlueTooth", wlan);
    StartSerialLog();
}

MAPI_BOOL FactoryManager::OnTimer_FactoryWifiDongleStatus(void*, void*, void*) {
    if (m_pFactoryCmd->GetWifiDongleInitStatus() != 1) {
        fputs("~~ wifi dongle INIT not ready\n", stderr);
        ++m_u8WifiDongleWaitCount;
    } else {
        KillTimer(kDongleTimer);
        const char* mac = FactoryGetWLANMACAddress();
        if (mac != nullptr) {
            NotifyUI(0, "Version-WLAN-MAC-Address", mac);
        }
        m_pFactoryCmd->SetWifiDongleInitStatus(0);
    }
    if (m_u8WifiDongleWaitCount >= kDongleGiveUpTicks) {
        m_u8WifiDongleWaitCount = 0;
        m_pFactoryCmd->SetWifiDongleInitStatus(0);
        KillTimer(kDongleTimer);
    }
    return 1;
}

// ---- Colour temperature --------------------------------------------------------------

MAPI_BOOL FactoryManager::GetColorTemp(EN_ZYT_COLOR_TEMP ct, ST_ZYT_PQL_COLOR_TEMP_DATA* out) {
    MSrv_Control* control = MSrv_Control::GetInstance();
    MSrv_System_Database* db = control->GetMSrvSystemDatabase();
    const MAPI_INPUT_SOURCE_TYPE source = control->GetCurrentInputSource();
    if (db == nullptr || out == nullptr) {
        return 0;
    }
    ST_VIDEO video{};
    db->GetVideoSetting(&video, source);
    static_assert(
        sizeof(ST_ZYT_PQL_COLOR_TEMP_DATA) == sizeof(mapi_pql_datatype::MAPI_PQL_COLOR_TEMP_DATA),
        "the library's record is the platform's");
    return db->GetColorTempBySourceAndPictureMode(
        reinterpret_cast<mapi_pql_datatype::MAPI_PQL_COLOR_TEMP_DATA*>(out),
        static_cast<MSrv_Picture::EN_MS_COLOR_TEMP>(ct), source, video.ePicture);
}

int FactoryManager::ColorTempByte(EN_ZYT_COLOR_TEMP ct, unsigned int offset) {
    ST_ZYT_PQL_COLOR_TEMP_DATA record{};
    GetColorTemp(ct, &record);
    return record.u8Data[offset];
}

// Bytes 3-5 are the red, green and blue gains, 6-8 the offsets.
int FactoryManager::GetColorWarmRGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_WARM, 3); }
int FactoryManager::GetColorWarmGGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_WARM, 4); }
int FactoryManager::GetColorWarmBGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_WARM, 5); }
int FactoryManager::GetColorWarmROffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_WARM, 6); }
int FactoryManager::GetColorWarmGOffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_WARM, 7); }
int FactoryManager::GetColorWarmBOffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_WARM, 8); }
int FactoryManager::GetColorMediumRGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_MEDIUM, 3); }
int FactoryManager::GetColorMediumGGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_MEDIUM, 4); }
int FactoryManager::GetColorMediumBGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_MEDIUM, 5); }
int FactoryManager::GetColorMediumROffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_MEDIUM, 6); }
int FactoryManager::GetColorMediumGOffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_MEDIUM, 7); }
int FactoryManager::GetColorMediumBOffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_MEDIUM, 8); }
int FactoryManager::GetColorCoolRGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_COOL, 3); }
int FactoryManager::GetColorCoolGGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_COOL, 4); }
int FactoryManager::GetColorCoolBGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_COOL, 5); }
int FactoryManager::GetColorCoolROffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_COOL, 6); }
int FactoryManager::GetColorCoolGOffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_COOL, 7); }
int FactoryManager::GetColorCoolBOffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_COOL, 8); }

void FactoryManager::ShowColorTemperature() {
    NotifyUI(0, "HideAllUIExcept", "ColorTemperature");
    for (const ColorRow& row : kColorRows) {
        NotifyUI(0, row.key, (this->*row.getter)());
    }
    NotifyUI(0, "ColorTemperature", 1L);
    StartSerialLog();
}

// ---- PQ ------------------------------------------------------------------------------

void FactoryManager::ShowPQ() {
    PictureManager* pm = TVManager::GetInstance()->getPictureManager();
    if (pm == nullptr) {
        return;
    }
    NotifyUI(0, "HideAllUIExcept", "PQ");
    const char* pqVersion = FactoryGetPQVersion();
    if (pqVersion != nullptr) {
        NotifyUI(0, "PQ-Version", pqVersion);
    }
    const PqValues v = ReadPq(*pm);
    NotifyUI(0, "PQ-Contrast", v.contrast);
    NotifyUI(0, "PQ-Backlight", v.backlight);
    NotifyUI(0, "PQ-DynaLight", v.dynaLight);
    NotifyUI(0, "PQ-Brightness", v.brightness);
    NotifyUI(0, "PQ-Color", v.colour);
    NotifyUI(0, "PQ-Tint", v.tint);
    NotifyUI(0, "PQ-Sharpness", v.sharpness);
    if (const char* text = LabelOf(PictureLabels::DynamicContrast, v.blackWhite)) {
        NotifyUI(0, "PQ-Dynamic-Contrast", text);
    }
    NotifyUI(0, "PQ-Cinema-Mode", v.cinema);
    NotifyUI(0, "PQ-Cable-Clear", LabelOf(PictureLabels::CableClear, v.dynamicNR));
    NotifyUI(0, "PQ-MPEG-NR", LabelOf(PictureLabels::MpegNR, v.mpegNR));
    if (v.aspectRead) {
        if (const char* text = LabelOf(PictureLabels::PictureSize, v.aspect)) {
            NotifyUI(0, "PQ-Picture-Size", text);
        }
        NotifyUI(0, "PQ-Auto-Aspect-Ratio", PictureLabels::AutoAspectRatio(v.aspect));
    }
    NotifyUI(0, "PQ", 1L);
    StartSerialLog();
}

// ---- Receiver information ------------------------------------------------------------
// No event opens this page: the host opens it with mAPI_ShowReceiverInfo. It is the
// tuner page's one-shot summary (no settling wait, no refresh), for a quick look at
// reception from the host's own menus; any exit key closes it (ExitRevicInfo).

MAPI_BOOL FactoryManager::mAPI_ShowReceiverInfo() {
    FACTORY_TRACE();
    ResetState();
    m_bRevicInfoMode = 1;
    m_pFactoryCmd->SetFactoryOSDStatus(1);
    NotifyUI(0, "HideAllUIExcept", "ReceiverInfo");
    const MAPI_U32 source = GetTVSource();
    if (source == 4 || source == 5) {
        GetDVBS_DemodInfo();
    }
    const struct {
        const char* cmd;
        TextReader format;
    } rows[] = {
        {"ReceiverInfo-Modulation-System", &FactoryManager::GetTunerModulationSystem},
        {"ReceiverInfo-Frequency", &FactoryManager::GetTunerFrequency},
        {"ReceiverInfo-Lock-Status", &FactoryManager::GetLockStatus},
        {"ReceiverInfo-SNR", &FactoryManager::GetTunerSNR},
        {"ReceiverInfo-Signal-Quality-Index", &FactoryManager::GetTunerSignalQualityIndex},
        {"ReceiverInfo-Signal-Strength-Index", &FactoryManager::GetTunerSignalStrengthIndex},
        {"ReceiverInfo-Bit-Error-Rate", &FactoryManager::GetTunerGetBitErrorRate},
    };
    for (const auto& row : rows) {
        if (const char* text = (this->*row.format)()) {
            NotifyUI(0, row.cmd, text);
        }
    }
    NotifyUI(0, "ReceiverInfo", 1L);
    return 1;
}

MAPI_BOOL FactoryManager::ExitRevicInfo() {
    m_bRevicInfoMode = 0;
    m_pFactoryCmd->SetFactoryOSDStatus(0);
    NotifyUI(0, "ReceiverInfo", 0L);
    return 1;
}

// ---- Serial console ------------------------------------------------------------------

MAPI_BOOL FactoryManager::OnTimer_SerialLog(void*, void*, void*) {
    if (!OnTvSource() && m_u8VersionPage == kTunerPage) {
        m_u8VersionPage = 0;
        return 0;
    }
    switch (m_u8VersionPage) {
        case 0:
            SerialLogVersionsSelfCheck();
            break;
        case 1:
            SerialLogVersionsColorTemperature();
            break;
        case 2:
            SerialLogVersionsPQ();
            break;
        case kTunerPage:
            SerialLogVersionsTuner();
            break;
        default:
            break;
    }
    std::cout.flush();
    return 1;
}

void FactoryManager::SerialLogVersionsSelfCheck() {
    auto status = [this](size_t adc) { return OkNg((this->*kAdcRows[adc].reader)()); };
    SerialLogTable t(std::cout);
    t.Pair("TV Model", FactoryGetTVModel())
        .Pair(kAdcRows[0].consoleLabel, status(0))
        .Pair("MAIN Format", FactoryGetMainFormat())
        .EndRow();
    const char* modelId = FactoryGetTVModelId();
    t.Pair("Model Info", modelId).Pair(kAdcRows[1].consoleLabel, status(1)).Raw(modelId).EndRow();
    std::memset(u8VersionSoC, 0, sizeof(u8VersionSoC));
    TVManager::GetInstance()->GetSoCRealSWVersion(u8VersionSoC);
    t.Pair("SW Version", u8VersionSoC).Pair(kAdcRows[2].consoleLabel, status(2)).EndRow();
    t.Pair("Boot Code Version", FactoryGetMbootVersion())
        .Pair(kAdcRows[3].consoleLabel, status(3))
        .Pair("Netflix ESN", FactoryGetNetflixESN())
        .EndRow();
    std::memset(u8VersionSoC, 0, sizeof(u8VersionSoC));
    TVManager::GetInstance()->GetSoCFWVersion(u8VersionSoC);
    t.Pair("SoC Version", u8VersionSoC)
        .Pair(kAdcRows[4].consoleLabel, status(4))
        .Pair("Widevine", FactoryGetWidevineDeviceID())
        .EndRow();
    const char* vga = VgaEdidText(FactoryGetEDIDVGA(), &FactoryManager::FactoryGetEDIDVGA, *this);
    t.Pair("DPDD Version", FactoryGetDPDDVersion())
        .Pair("EDID VGA", vga != nullptr ? vga : "VGA EEPROM NG")
        .Pair("HDCP2.0", FactoryGetHDCP20())
        .EndRow();
    t.Pair("NeuSoft Version", FactoryGetNeuSoftVersion())
        .Pair(" ", " ")
        .Cell(FactoryGetHDCP20_ReceiveID())
        .EndRow();
    t.Pair("CESI Version", FactoryGetCESIVersion())
        .Pair(" ", " ")
        .Pair("DTCP-IP", FactoryGetDevID_DTCPIP())
        .EndRow();
    t.Pair("IPRC Version", FactoryGetIPRCVersion())
        .Pair(" ", " ")
        .Pair("Vudu", FactoryGetVudu())
        .EndRow();
    // The DIAL and FRC cells deliberately show the IPRC and PQ versions.
    t.Pair("DIAL Version", FactoryGetIPRCVersion())
        .Pair("CI+ Algorithm", " ")
        .Pair("PVR", FactoryGetPVR())
        .EndRow();
    t.Pair("IR Blaster DB", FactoryGetIRBlasterDB()).Pair("Product Key Valid", " ").EndRow();
    unsigned char serial[16] = {};
    m_pFactoryCmd->ReadSerialNum(serial);
    t.Pair("PQ Version", " ")
        .Pair("Test Key Valid", " ")
        .Pair("Serial No.", reinterpret_cast<const char*>(serial))
        .EndRow();
    t.Pair("FRC Version", FactoryGetPQVersion())
        .Pair("URI", " ")
        .Pair("MAC Address", FactoryGetMACAddress())
        .EndRow();
    t.Pair("ASF Version", FactoryGetASF_Version())
        .Pair("CI+ Serial Number", FactoryGetCIPlusSerialNumber())
        .Pair("WLAN MAC Address", FactoryGetWLANMACAddress())
        .EndRow();
    t.Cell(" ")
        .Cell(" ")
        .Pair("CI+ Host ID", FactoryGetCIPlusHostID())
        .Pair("Bluetooth address", "")
        .EndRow();
}

void FactoryManager::SerialLogVersionsColorTemperature() {
    int values[sizeof(kColorRows) / sizeof(kColorRows[0])] = {};
    int* value = values;
    for (const ColorRow& row : kColorRows) {
        *value++ = (this->*row.getter)();
    }
    SerialLogTable t(std::cout);
    t.Cell(" ").Cell("Warm").Cell("Medium").Cell("Cool").EndRow();
    for (size_t field = 0; field < kColorFields; ++field) {
        t.Cell(kColorFieldLabels[field]);
        for (size_t temp = 0; temp < 3; ++temp) {
            t.Cell(values[temp * kColorFields + field]);
        }
        t.EndRow();
    }
}

void FactoryManager::SerialLogVersionsPQ() {
    PictureManager* pm = TVManager::GetInstance()->getPictureManager();
    if (pm == nullptr) {
        return;
    }
    const char* pqVersion = FactoryGetPQVersion();
    const PqValues v = ReadPq(*pm);
    const char* size = v.aspectRead ? LabelOf(PictureLabels::PictureSize, v.aspect) : nullptr;
    const char* autoAspect = v.aspectRead ? PictureLabels::AutoAspectRatio(v.aspect) : nullptr;
    SerialLogTable t(std::cout);
    t.Pair("PQ Version", pqVersion)
        .Cell("Contrast")
        .Cell(v.contrast)
        .Pair("MPEG NR", LabelOf(PictureLabels::MpegNRConsole, v.mpegNR))
        .EndRow();
    t.Cell("Backlight").Cell(v.backlight).Pair("Picture Size", size).Cell("DynaLight");
    t.Cell(v.dynaLight).EndRow();
    t.Pair("Auto Aspect Ratio", autoAspect).Cell("Brightness").Cell(v.brightness).Cell("Color");
    t.Cell(v.colour).EndRow();
    t.Cell("Tint").Cell(v.tint).Cell("Sharpness").Cell(v.sharpness);
    t.Pair("Dynamic Contrast", LabelOf(PictureLabels::DynamicContrastConsole, v.blackWhite));
    t.EndRow();
    t.Cell("Cinema Mode").Cell(v.cinema);
    t.Pair("Cable Clear / DNR", LabelOf(PictureLabels::CableClearConsole, v.dynamicNR)).EndRow();
}

void FactoryManager::SerialLogVersionsTuner() {
    SerialLogTable t(std::cout);
    t.Pair("Modulation system", GetTunerModulationSystem())
        .Pair("Modulation", GetTunerModulation())
        .Pair("Frequency[MHz]", GetTunerFrequency())
        .EndRow();
    t.Pair("Frequency Offset", GetFrequencyOffset())
        .Pair("Hierarchy alpha", "0")
        .Pair("Bandwidth[MHz]", GetBandwidth())
        .EndRow();
    t.Pair("Lock Status", GetLockStatus())
        .Pair("Guard Inerval", GetTunerGuardInterval())
        .Pair("SNR[dB]", GetTunerSNR())
        .EndRow();
    t.Pair("Signal Power[dBm]", GetTunerSignalPower())
        .Pair("Signal Quality Index", GetTunerSignalQualityIndex())
        .Pair("Signal Strength Index", GetTunerSignalStrengthIndex())
        .EndRow();
    t.Pair("Bit Error Rate", GetTunerGetBitErrorRate())
        .Pair("Uncorrected Error", GetTunerGetUncorrectedError())
        .EndRow();
}
