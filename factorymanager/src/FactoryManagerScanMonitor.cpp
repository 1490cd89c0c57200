#include "FactoryLog.h"
#include "FactoryManager.h"

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnScanRecepient(void*, void*, void*) {
    return NotBuiltYet("OnScanRecepient");
}
MAPI_BOOL FactoryManager::OnEvent_DLTVSignalSetting(void*, void*, void*) {
    return NotBuiltYet("OnEvent_DLTVSignalSetting");
}
MAPI_BOOL FactoryManager::OnEvent_CloneCopy(void*, void*, void*) {
    return NotBuiltYet("OnEvent_CloneCopy");
}
MAPI_BOOL FactoryManager::OnEvent_CITestStatus(void*, void*, void*) {
    return NotBuiltYet("OnEvent_CITestStatus");
}
MAPI_BOOL FactoryManager::OnTimer_CITestStatus(void*, void*, void*) {
    return NotBuiltYet("OnTimer_CITestStatus");
}
MAPI_BOOL FactoryManager::OnTimer_DLTVSignalSetting(void*, void*, void*) {
    return NotBuiltYet("OnTimer_DLTVSignalSetting");
}
MAPI_BOOL FactoryManager::OnTimer_FactoryScanFinishe(void*, void*, void*) {
    return NotBuiltYet("OnTimer_FactoryScanFinishe");
}
