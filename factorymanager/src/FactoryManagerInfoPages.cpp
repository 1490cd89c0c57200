// The information pages: the page switch (event 188, paging keys, exit), the
// version self-check page with its Wi-Fi dongle wait, the receiver information page
// and the serial console's copy of each page. The picture pages (colour temperature
// and PQ) are in FactoryManagerPictureInfo.cpp.
#include <cstdio>
#include <cstring>
#include <iostream>
#include <string>

#include "FactoryEventIds.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_Control_common.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Network.h"
#include "MSrv_System_Database.h"
#include "MapiInputSource.h"
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
