// The shipout regions the station can send: page, texts and the region the system
// database knows them by.
#pragma once

#include "MTypes.h"

struct ShipoutRegion {
    MAPI_U8 code;         // the station's region code
    const char* page;     // data of "HideAllUIExcept"
    const char* key;      // command key of the texts
    const char* writing;  // shown at the event
    const char* result;   // shown when the region is written
    int databaseRegion;   // -1: the region is not written (North America)
};

// Null for a code that is no region.
const ShipoutRegion* FindShipoutRegion(MAPI_U8 code);

// Australia's page is always shown, whatever the serial UI says.
constexpr MAPI_U8 kShipoutAustralia = 25;
