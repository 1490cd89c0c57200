// The library's side of the serial fixture's AT command channel: the version-check
// record, the release of the serial port, debug mode, teletext and wake-on-LAN.
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "FactoryEventIds.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Mode.h"
#include "TVManager.h"
#include "TVPlayer.h"
#include "TvHost.h"
#include "mapi_system.h"

namespace {

constexpr unsigned long kReleaseATCmdTimer = FactoryTimer::ReleaseAT_Cmd;
constexpr unsigned long kReleaseATCmdDelayMs = 3000;
constexpr unsigned long long kTJPDebugMask = 0x00000E30C8000004ULL;
const char kATCmdVersionFile[] = "/OAD/ATCmdVersionCheck.txt";

}  // namespace

using FM = FactoryManager;

// clang-format off
const FactoryATCmdRow FactoryManager::s_atCmdRows[] = {
    {0,    20, "TV Model:%s,",          &FM::FactoryGetTVModel,           nullptr},
    {20,   30, "Model Info:%s,",        &FM::FactoryGetTVModelId,         nullptr},
    {50,   30, "SW Version:%s,",        &FM::ATCmdFetchSoCVersion,        nullptr},
    {80,   50, "Boot Code Version:%s,", &FM::FactoryGetMbootVersion,      nullptr},
    {130,  50, "SoC Version:%s,",       &FM::ATCmdSoCVersion,             nullptr},
    {180,  50, "DPDD Version:%s,",      &FM::FactoryGetDPDDVersion,       nullptr},
    {230,  40, "NewSoft Version:%s,",   &FM::FactoryGetNeuSoftVersion,    nullptr},
    {270,  30, "CESI Version:%s,",      &FM::FactoryGetCESIVersion,       nullptr},
    {300,  30, "IPRC Version:%s,",      &FM::FactoryGetIPRCVersion,       nullptr},
    {330,  30, "IR Blaster DB:%s,",     &FM::FactoryGetIRBlasterDB,       nullptr},
    {360,  30, "PQ Version:%s,",        &FM::FactoryGetPQVersion,         nullptr},
    {390,  30, "FRC Version:%s,",       &FM::FactoryGetFRCVersion,        nullptr},
    {420,  30, "A/D Adjust PAL: %s,",   nullptr, &FM::FactoryGetADAdjustPALStatus},
    {450,  30, "A/D Adjust NTSC: %s,",  nullptr, &FM::FactoryGetADAdjustNTSCStatus},
    {480,  30, "A/D Adjust COMP: %s,",  nullptr, &FM::FactoryGetADAdjustCOMPStatus},
    {510,  30, "A/D Adjust RGB: %s,",   nullptr, &FM::FactoryGetADAdjustRGBStatus},
    {540,  30, "A/D Adjust CVBS: %s,",  nullptr, &FM::FactoryGetADAdjustCVBSStatus},
    {570,  30, "EDID VGA: %s,",         &FM::ATCmdEDIDVGA,                nullptr},
    {600,  30, "MAIN Format:%s,",       &FM::FactoryGetMainFormat,        nullptr},
    {630,  30, "MAIN Tuner Freq:%s,",   &FM::GetTunerFrequency,           nullptr},
    {660,  50, "Netflix ESN:%s,",       &FM::FactoryGetNetflixESN,        nullptr},
    {710,  50, "Widevine:%s,",          &FM::FactoryGetWidevineDeviceID,  nullptr},
    {760,  40, "HDCP2.2:%s,",           &FM::FactoryGetHDCP20_ReceiveID,  nullptr},
    {800,  40, "%s,",                   &FM::FactoryGetHDCP20,            nullptr},
    {840,  30, "DTCP-IP:%s,",           &FM::FactoryGetDevID_DTCPIP,      nullptr},
    {870,  30, "Vudu:%s,",              &FM::FactoryGetVudu,              nullptr},
    {900,  30, "PVR:%s,",               &FM::FactoryGetPVR,               nullptr},
    {930,  50, "CI+ Serial Number:%s,", &FM::FactoryGetCIPlusSerialNumber, nullptr},
    {980,  50, "CI+ Host ID:%s,",       &FM::FactoryGetCIPlusHostID,      nullptr},
    {1030, 50, "Serial Number:%s,",     &FM::FactoryGetSerialNo,          nullptr},
    {1080, 50, "MAC Address:%s,",       &FM::FactoryGetMACAddress,        nullptr},
    {1130, 50, "WLAN MAC Address:%s,",  &FM::FactoryGetWLANMACAddress,    nullptr},
    // The fixture expects the WLAN MAC in the Bluetooth row too.
    {1180, 50, "Bluetooth Address:%s,", &FM::FactoryGetWLANMACAddress,    nullptr},
};
// clang-format on

const char* FactoryManager::ATCmdFetchSoCVersion() {
    std::memset(u8VersionSoC, 0, sizeof(u8VersionSoC));
    TVManager::GetInstance()->GetSoCRealSWVersion(u8VersionSoC);
    // The platform writes at most 29 characters; keep the text terminated regardless.
    u8VersionSoC[sizeof(u8VersionSoC) - 1] = '\0';
    return u8VersionSoC;
}

const char* FactoryManager::ATCmdSoCVersion() { return u8VersionSoC; }

// Null for a state the fixture has no text for: that row stays zero.
const char* FactoryManager::ATCmdEDIDVGA() {
    switch (FactoryGetEDIDVGA()) {
        case 0:
            return "VGA EEPROM _ _ ";
        case 1:
            return "VGA EEPROM Ver.01";
        case 2:
            return "VGA EEPROM NG";
        default:
            return nullptr;
    }
}

MAPI_BOOL FactoryManager::OnEvent_GetATCmd(void*, void*, void*) {
    static_assert(sizeof(s_atCmdRows) / sizeof(s_atCmdRows[0]) == 33, "one row per field");
    std::memset(&stATCMD_Version, 0, sizeof(stATCMD_Version));
    for (const FactoryATCmdRow& row : s_atCmdRows) {
        const char* value = row.status != nullptr ? ((this->*row.status)() != 0 ? "OK" : "NG")
                                                  : (this->*row.text)();
        if (value == nullptr) {
            // An EDID state the fixture has no text for leaves its row zero; a reader
            // without memory still gives its label, so a fixture that parses by label
            // finds every row.
            if (row.text == &FM::ATCmdEDIDVGA) {
                continue;
            }
            value = "";
        }
        char scratch[100] = {};
        std::snprintf(scratch, sizeof(scratch), row.format, value);
        // Cut at the field's width: a full field has no terminator.
        std::memcpy(stATCMD_Version.raw + row.offset, scratch, row.width);
    }

    for (const char* line : {"rm /OAD/ATCmdVersionCheck.txt", "touch /OAD/ATCmdVersionCheck.txt",
                             "chmod 777 -Rf /OAD/ATCmdVersionCheck.txt", "sync"}) {
        mapi_system::SystemCmd(line);
    }
    const std::string path = TvHost_Path(kATCmdVersionFile);
    std::FILE* file = std::fopen(path.c_str(), "w");
    if (file != nullptr) {
        printf("~~ File open successed !!  ");
    } else {
        file = std::fopen(path.c_str(), "w");
        if (file == nullptr) {
            printf("\n~~ OPT File open failed !!  ");
            return 0;
        }
    }
    std::fwrite(&stATCMD_Version, 1, sizeof(stATCMD_Version), file);
    std::fflush(file);
    std::fclose(file);
    mapi_system::SystemCmd("sync");
    TVManager::GetInstance()->SetATCmdInfo();
    return 1;
}

// The fixture is done with the port; give it back to the console a little later.
// A second release before the tick starts the wait over.
MAPI_BOOL FactoryManager::OnEvent_ReleaseAT_Cmd() {
    KillTimer(kReleaseATCmdTimer);
    SetTimer(kReleaseATCmdDelayMs, kReleaseATCmdTimer, E_TIMER_REPEAT);
    return 1;
}

// Armed repeating, but the first tick kills it: the port is released once.
MAPI_BOOL FactoryManager::OnTimer_ReleaseAT_Cmd(void*, void* p2, void*) {
    if (reinterpret_cast<uintptr_t>(p2) != kReleaseATCmdTimer) {
        return 1;
    }
    KillTimer(kReleaseATCmdTimer);
    MSrv_Factory_Mode* mode = MSrv_Control::GetInstance()->GetMSrvFactoryMode();
    if (mode != nullptr && mode->GetUart_ONOFF() == 0) {
        printf("\n~~~ set Uart to ON\n");
        TvHost_Sleep(2);
        mode->SetUart_ONOFF(1);
    }
    return 1;
}

MAPI_BOOL FactoryManager::OnEvent_TJP(void*, void*, void*) {
    printf("~~ [FactoryManager::OnEvent_TJP]");
    TVManager::GetInstance()->setDebugMode(kTJPDebugMask);
    return 1;
}

// A null second parameter asks for teletext off, anything else for on.
MAPI_BOOL FactoryManager::OnEvent_TeletextOnOffForUARTCmd(void*, void* p2, void*) {
    TVPlayer* player = TVManager::GetInstance()->getTVPlayer();
    if (player == nullptr) {
        FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_TeletextOnOffForUARTCmd: no TV player");
        return 0;
    }
    if (p2 == nullptr) {
        player->closeTeletext();
        return 1;
    }
    return player->openTeletext(E_ZYT_TELETEXT_MODE_NORMAL) != 0 ? 1 : 0;
}

MAPI_BOOL FactoryManager::OnEvent_GetWoLWakeupEvent(void*, void*, void*) {
    return TVManager::GetInstance()->powerOff(0);
}
