#include "FactoryLog.h"
#include "FactoryManager.h"

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
