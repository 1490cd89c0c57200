#include "FactoryLog.h"
#include "FactoryManager.h"

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnEvent_FactoryDVBSManualTuningToggle(void*, void*, void*) {
    return NotBuiltYet("OnEvent_FactoryDVBSManualTuningToggle");
}
MAPI_BOOL FactoryManager::OnEvent_SatInfo(void*, void*, void*) {
    return NotBuiltYet("OnEvent_SatInfo");
}
MAPI_BOOL FactoryManager::OnTimer_LNBPowerSwitch(void*, void*, void*) {
    return NotBuiltYet("OnTimer_LNBPowerSwitch");
}
MAPI_BOOL FactoryManager::OnTimer_FactoryDVBSManualTuningToggle(void*, void*, void*) {
    return NotBuiltYet("OnTimer_FactoryDVBSManualTuningToggle");
}
MAPI_BOOL FactoryManager::OnTimer_22KHzTone(void*, void*, void*) {
    return NotBuiltYet("OnTimer_22KHzTone");
}
MAPI_BOOL FactoryManager::OnTimer_DiSEqCSwitching(void*, void*, void*) {
    return NotBuiltYet("OnTimer_DiSEqCSwitching");
}
