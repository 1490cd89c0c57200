#include "FactoryLog.h"
#include "FactoryManager.h"

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnTimer_FactoryKeyWaitMWBFinish(void*, void*, void*) {
    return NotBuiltYet("OnTimer_FactoryKeyWaitMWBFinish");
}

MAPI_BOOL FactoryManager::FactoryDoKeyAction(unsigned long) {
    return NotBuiltYet("FactoryDoKeyAction");
}
