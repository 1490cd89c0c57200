#include "FactoryLog.h"
#include "FactoryManager.h"

// Routines of pages that are not in this build yet, which the key dispatcher already
// calls; each says so in the log. A page's own file takes its routines over.


