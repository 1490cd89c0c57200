#include "FactoryLog.h"
#include "FactoryManager.h"

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnEvent_FactoryConfiguration(void*, void*, void*) {
    return NotBuiltYet("OnEvent_FactoryConfiguration");
}
MAPI_BOOL FactoryManager::OnTimer_FactoryConfiguration(void*, void*, void*) {
    return NotBuiltYet("OnTimer_FactoryConfiguration");
}
MAPI_BOOL FactoryManager::OnTimer_FactoryConfigurationFinished(void*, void*, void*) {
    return NotBuiltYet("OnTimer_FactoryConfigurationFinished");
}
