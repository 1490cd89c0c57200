// The platform's picture manager: the picture settings of the current source.
#pragma once

#include "MTypes.h"

class PictureManager {
public:
    MAPI_BOOL setPictureMode(int mode);
    MAPI_BOOL setBacklight(int value);
    MAPI_BOOL setBrightness(int value);
    MAPI_U8 getContrast();
    MAPI_U8 getBacklight();
    MAPI_U8 getDynamicLight();
    MAPI_U8 getBrightness();
    MAPI_U8 getColour();
    MAPI_S8 getIint();  // the tint
    MAPI_U8 getSharpness();
    MAPI_U8 getBlackWhiteLevel();
    MAPI_U8 getCinemaMode();
    MAPI_BOOL getDynamicNR(MAPI_U8& level);
    MAPI_U8 getMpegNR();
    // 1 when the aspect ratio was read.
    MAPI_BOOL getAspectRatio(MAPI_U8& ratio);
};
