#include "FactoryLog.h"
#include "FactoryManager.h"

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnEvent_FactoryADCAdjustment(void*, void*, void*) {
    return NotBuiltYet("OnEvent_FactoryADCAdjustment");
}
MAPI_BOOL FactoryManager::OnEvent_FactoryWriteVGA_EDID_EEPRPOM(void*, void*, void*) {
    return NotBuiltYet("OnEvent_FactoryWriteVGA_EDID_EEPRPOM");
}
MAPI_BOOL FactoryManager::OnTimer_FactoryADCAdjustment(void*, void*, void*) {
    return NotBuiltYet("OnTimer_FactoryADCAdjustment");
}
MAPI_BOOL FactoryManager::OnTimer_FactoryWriteVGA_EDID_EEPRPOM(void*, void*, void*) {
    return NotBuiltYet("OnTimer_FactoryWriteVGA_EDID_EEPRPOM");
}
