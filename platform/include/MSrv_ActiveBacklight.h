// The platform's active-backlight service: the ambient light sensor and the panel's
// live backlight.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

class MSrv_ActiveBacklight : public MSrv {
public:
    // The light sensor's reading now; 0 when the sensor does not answer.
    MAPI_BOOL GetLightSensorValue(MAPI_U16* value);
    // The backlight the panel shows now, 0 to 100. Setting it changes the panel only,
    // not the user's picture settings, which the platform applies again on the next
    // picture change.
    MAPI_U8 GetBacklight();
    MAPI_BOOL SetBacklight(MAPI_U8 level);
};
