#include "FactoryLog.h"
#include "FactoryManager.h"

// Routines of pages that are not in this build yet, which the key dispatcher already
// calls; each says so in the log. A page's own file takes its routines over.

MAPI_BOOL FactoryManager::DisplayVideoAfterPolarizatonChanged() {
    return NotBuiltYet("DisplayVideoAfterPolarizatonChanged");
}
MAPI_BOOL FactoryManager::ExitATVTuningSearch() { return NotBuiltYet("ExitATVTuningSearch"); }
MAPI_BOOL FactoryManager::ATVTuningSearchSelect() { return NotBuiltYet("ATVTuningSearchSelect"); }
