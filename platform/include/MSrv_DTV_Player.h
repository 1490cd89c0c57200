// The platform's digital TV player.
#pragma once

#include "MSrv_Player.h"
#include "MTypes.h"

class MSrv_DTV_Player : public MSrv_Player {
public:
    MAPI_BOOL ManualScanFreq(unsigned long frequencyKHz);
    MAPI_BOOL ChangeManualScanFreq(unsigned long frequencyKHz);
    MAPI_BOOL StopScan();
};
