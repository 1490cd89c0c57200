// The library's side of the serial fixture's AT command channel: the version-check
// record, the release of the serial port, debug mode, teletext and wake-on-LAN.
#include <cstdint>
#include <cstdio>

#include "FactoryEventIds.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Mode.h"
#include "TVManager.h"
#include "TVPlayer.h"
#include "TvHost.h"

namespace {

constexpr unsigned long kReleaseATCmdTimer = 62;
constexpr unsigned long kReleaseATCmdDelayMs = 3000;
constexpr unsigned long long kTJPDebugMask = 0x00000E30C8000004ULL;

}  // namespace

MAPI_BOOL FactoryManager::OnEvent_GetATCmd(void*, void*, void*) {
    return NotBuiltYet("OnEvent_GetATCmd");
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
