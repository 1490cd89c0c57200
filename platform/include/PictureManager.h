// The platform's picture manager (TVManager).
#pragma once

#include "MTypes.h"

class PictureManager {
public:
    int getBacklight();
    int getBrightness();
    MAPI_BOOL setPictureMode(int mode);
    MAPI_BOOL setBacklight(int value);
    MAPI_BOOL setBrightness(int value);
};
