// M-mode: the production line's factory mode. The platform keeps the status; we
// mark the screen, prepare the set for the line and put it back afterwards.
#include <cstdio>
#include <cstdlib>

#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Factory_Mode.h"
#include "MSrv_System_Database.h"
#include "mapi_system.h"

namespace {

constexpr ST_WIDGET_POSITION kMModeIconPos = {1200, 10, 50, 50};
constexpr unsigned long kMModeIconColour = 0xFFFF0000;
constexpr unsigned short kMModeIconSize = 36;

// Prepared on every start: the marker tells later boots the set came off the line.
constexpr const char* kLinePreparation[] = {
    "touch /Customer/factory/shipout.code",
    "chmod 777 -R /Customer/factory/shipout.code",
    "sync",
};

// A set whose system database is not the DVB variant is built wrong: stop here,
// as the service staff's logs expect.
[[noreturn]] void AssertFail(const char* function) {
    printf("ASSERT FAIL: %s %s %d\n", "./factorymanager/src/FactoryManager.cpp", function, 1592);
    fflush(stdout);
    abort();
}

}  // namespace

MAPI_BOOL FactoryManager::ShowMModeIcon(MAPI_BOOL on) {
    FACTORY_TRACE();
    if (!on) {
        ClearFactoryUiNative();
        m_pFactoryCmd->EnableWiFiDongle(0);
        return 1;
    }
    MSrv_Control::GetInstance()->GetMSrvFactoryMode()->SetWDT_ONOFF(0);
    for (const char* line : kLinePreparation) {
        mapi_system::SystemCmd(line);
    }
    DrawText(kMModeIconPos, reinterpret_cast<const unsigned char*>("M"), kMModeIconColour,
             kMModeIconSize);
    auto* database = dynamic_cast<MSrv_System_Database_DVB*>(
        MSrv_Control::GetInstance()->GetMSrvSystemDatabase());
    if (database == nullptr) {
        AssertFail(__PRETTY_FUNCTION__);
    }
    database->RestoreDefaultDataTransfer();
    if (m_pFactoryCmd->IsSettingMModeFisished()) {
        m_pFactoryCmd->SettingMModeFisishedStatus(0);
    } else {
        m_pFactoryCmd->EnableWiFiDongle(1);
    }
    return 1;
}

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnEvent_FactoryMModeStart(void*, void*, void*) {
    return NotBuiltYet("OnEvent_FactoryMModeStart");
}
MAPI_BOOL FactoryManager::OnEvent_FactoryVolumeAdj(void*, void*, void*) {
    return NotBuiltYet("OnEvent_FactoryVolumeAdj");
}
MAPI_BOOL FactoryManager::OnEvent_ExitFactoryMode(void*, void*, void*) {
    return NotBuiltYet("OnEvent_ExitFactoryMode");
}
MAPI_BOOL FactoryManager::OnTimer_FactoryVolumeAdj(void*, void*, void*) {
    return NotBuiltYet("OnTimer_FactoryVolumeAdj");
}
