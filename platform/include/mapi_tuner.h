// The tuner driver's readings of the channel being received.
#pragma once

#include "MTypes.h"

// 0 unknown, 1 1.7 MHz, 2 5 MHz, 3 6 MHz, 4 7 MHz, 5 8 MHz, 6 10 MHz, 7 reserved.
MAPI_U8 TUNDRV_GetDTVBandwidth();
// Received signal strength, dBm.
double TUNDRV_GetRSSI();
