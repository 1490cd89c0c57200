#include "FactoryLog.h"
#include "FactoryManager.h"

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnEvent_DirectTune(void*, void*, void*) {
    return NotBuiltYet("OnEvent_DirectTune");
}
MAPI_BOOL FactoryManager::OnTimer_DirectTune(void*, void*, void*) {
    return NotBuiltYet("OnTimer_DirectTune");
}
