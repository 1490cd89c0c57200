#include "FactoryLog.h"
#include "FactoryManager.h"

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnEvent_FactoryVideoCheck(void*, void*, void*) {
    return NotBuiltYet("OnEvent_FactoryVideoCheck");
}
