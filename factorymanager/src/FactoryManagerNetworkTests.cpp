#include "FactoryLog.h"
#include "FactoryManager.h"

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnEvent_DLNATest(void*, void*, void*) {
    return NotBuiltYet("OnEvent_DLNATest");
}
MAPI_BOOL FactoryManager::OnEvent_MACaddressCheck(void*, void*, void*) {
    return NotBuiltYet("OnEvent_MACaddressCheck");
}
MAPI_BOOL FactoryManager::OnEvent_FactoryWakeOnWLAN(void*, void*, void*) {
    return NotBuiltYet("OnEvent_FactoryWakeOnWLAN");
}
MAPI_BOOL FactoryManager::OnEvent_FactoryWLANTest(void*, void*, void*) {
    return NotBuiltYet("OnEvent_FactoryWLANTest");
}
MAPI_BOOL FactoryManager::OnTimer_DLNATest(void*, void*, void*) {
    return NotBuiltYet("OnTimer_DLNATest");
}
MAPI_BOOL FactoryManager::OnTimer_DLNAAlive(void*, void*, void*) {
    return NotBuiltYet("OnTimer_DLNAAlive");
}
MAPI_BOOL FactoryManager::OnTimer_MACaddressCheck(void*, void*, void*) {
    return NotBuiltYet("OnTimer_MACaddressCheck");
}
MAPI_BOOL FactoryManager::OnTimer_FactoryWLANTest(void*, void*, void*) {
    return NotBuiltYet("OnTimer_FactoryWLANTest");
}
MAPI_BOOL FactoryManager::OnTimer_FactoryWakeOnWLAN(void*, void*, void*) {
    return NotBuiltYet("OnTimer_FactoryWakeOnWLAN");
}
MAPI_BOOL FactoryManager::OnTimer_FactoryWakeOnWLANTesting(void*, void*, void*) {
    return NotBuiltYet("OnTimer_FactoryWakeOnWLANTesting");
}
MAPI_BOOL FactoryManager::OnEvent_WLANAPScan(void*, void*, void*) {
    return NotBuiltYet("OnEvent_WLANAPScan");
}
