#include "FactoryLog.h"
#include "FactoryManager.h"

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnEvent_DirectCH(void*, void*, void*) {
    return NotBuiltYet("OnEvent_DirectCH");
}
MAPI_BOOL FactoryManager::OnTimer_ProgramInfoIdle(void*, void*, void*) {
    return NotBuiltYet("OnTimer_ProgramInfoIdle");
}
