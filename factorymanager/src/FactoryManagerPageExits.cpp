#include "FactoryLog.h"
#include "FactoryManager.h"

// Routines of pages that are not in this build yet, which the key dispatcher already
// calls; each says so in the log. A page's own file takes its routines over.

MAPI_BOOL FactoryManager::FactoryDModeAction(unsigned long) {
    return NotBuiltYet("FactoryDModeAction");
}
MAPI_BOOL FactoryManager::OnEvent_MediaPlayerStop(void*, void*, void*) {
    return NotBuiltYet("OnEvent_MediaPlayerStop");
}
MAPI_BOOL FactoryManager::ExitVersionMode() { return NotBuiltYet("ExitVersionMode"); }
MAPI_BOOL FactoryManager::VersionAction(unsigned long) { return NotBuiltYet("VersionAction"); }
MAPI_BOOL FactoryManager::ExitRevicInfo() { return NotBuiltYet("ExitRevicInfo"); }
MAPI_BOOL FactoryManager::ExitAutoBrightnessSensorValueMode() {
    return NotBuiltYet("ExitAutoBrightnessSensorValueMode");
}
MAPI_BOOL FactoryManager::ExitDLNATest() { return NotBuiltYet("ExitDLNATest"); }
MAPI_BOOL FactoryManager::ExitAgingMode1() { return NotBuiltYet("ExitAgingMode1"); }
MAPI_BOOL FactoryManager::ExitAgingMode2() { return NotBuiltYet("ExitAgingMode2"); }
MAPI_BOOL FactoryManager::ExitAudioBalanceCheck() { return NotBuiltYet("ExitAudioBalanceCheck"); }
MAPI_BOOL FactoryManager::ExitBackLightLevel() { return NotBuiltYet("ExitBackLightLevel"); }
MAPI_BOOL FactoryManager::ExitAutoBrightnessSensor() {
    return NotBuiltYet("ExitAutoBrightnessSensor");
}
MAPI_BOOL FactoryManager::ExitDigitalAudioOut() { return NotBuiltYet("ExitDigitalAudioOut"); }
MAPI_BOOL FactoryManager::ExitCITestStatus() { return NotBuiltYet("ExitCITestStatus"); }
MAPI_BOOL FactoryManager::ExitCloneCopy() { return NotBuiltYet("ExitCloneCopy"); }
MAPI_BOOL FactoryManager::PEQProcessKey(unsigned long) { return NotBuiltYet("PEQProcessKey"); }
MAPI_BOOL FactoryManager::Factory3DTimingKeyAction(unsigned long) {
    return NotBuiltYet("Factory3DTimingKeyAction");
}
MAPI_BOOL FactoryManager::FactoryAudioADVKeyAction(unsigned long) {
    return NotBuiltYet("FactoryAudioADVKeyAction");
}
MAPI_BOOL FactoryManager::DisplayAPListUI(char*, char*) { return NotBuiltYet("DisplayAPListUI"); }
MAPI_BOOL FactoryManager::Display9PointPattern(MAPI_BOOL) {
    return NotBuiltYet("Display9PointPattern");
}
