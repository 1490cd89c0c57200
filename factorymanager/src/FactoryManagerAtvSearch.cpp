#include "FactoryLog.h"
#include "FactoryManager.h"

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnEvent_AtvScanInfo(void*, void*, void*) {
    return NotBuiltYet("OnEvent_AtvScanInfo");
}
MAPI_BOOL FactoryManager::OnEvent_OnATVTuningSearch(void*, void*, void*) {
    return NotBuiltYet("OnEvent_OnATVTuningSearch");
}
MAPI_BOOL FactoryManager::OnTimer_OnATVTuningSearch(void*, void*, void*) {
    return NotBuiltYet("OnTimer_OnATVTuningSearch");
}
