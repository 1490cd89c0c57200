#include "FactoryLog.h"
#include "FactoryManager.h"

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnEvent_ReleaseAT_Cmd() { return NotBuiltYet("OnEvent_ReleaseAT_Cmd"); }
MAPI_BOOL FactoryManager::OnEvent_TJP(void*, void*, void*) { return NotBuiltYet("OnEvent_TJP"); }
MAPI_BOOL FactoryManager::OnEvent_GetATCmd(void*, void*, void*) {
    return NotBuiltYet("OnEvent_GetATCmd");
}
MAPI_BOOL FactoryManager::OnEvent_GetWoLWakeupEvent(void*, void*, void*) {
    return NotBuiltYet("OnEvent_GetWoLWakeupEvent");
}
MAPI_BOOL FactoryManager::OnEvent_TeletextOnOffForUARTCmd(void*, void*, void*) {
    return NotBuiltYet("OnEvent_TeletextOnOffForUARTCmd");
}
MAPI_BOOL FactoryManager::OnTimer_ReleaseAT_Cmd(void*, void*, void*) {
    return NotBuiltYet("OnTimer_ReleaseAT_Cmd");
}
