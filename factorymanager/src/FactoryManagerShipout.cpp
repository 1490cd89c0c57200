#include "FactoryLog.h"
#include "FactoryManager.h"

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnEvent_Shipout(void*, void*, void*) {
    return NotBuiltYet("OnEvent_Shipout");
}
MAPI_BOOL FactoryManager::OnTimer_Shipout(void*, void*, void*) {
    return NotBuiltYet("OnTimer_Shipout");
}
MAPI_BOOL FactoryManager::OnTimer_ShipoutFinishedTimer(void*, void*, void*) {
    return NotBuiltYet("OnTimer_ShipoutFinishedTimer");
}
