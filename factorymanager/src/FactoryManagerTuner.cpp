#include "FactoryLog.h"
#include "FactoryManager.h"

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnTimer_TunerInfo(void*, void*, void*) {
    return NotBuiltYet("OnTimer_TunerInfo");
}

// The version record asks for this reading; until the tuner pages are in, it is empty.
const char* FactoryManager::GetTunerFrequency() {
    NotBuiltYet("GetTunerFrequency");
    return "";
}
