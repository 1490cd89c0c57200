#include "FactoryLog.h"
#include "FactoryManager.h"

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnEvent_FactoryVersion(void*, void*, void*) {
    return NotBuiltYet("OnEvent_FactoryVersion");
}
MAPI_BOOL FactoryManager::OnTimer_FactoryWifiDongleStatus(void*, void*, void*) {
    return NotBuiltYet("OnTimer_FactoryWifiDongleStatus");
}
MAPI_BOOL FactoryManager::OnTimer_SerialLog(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SerialLog");
}
