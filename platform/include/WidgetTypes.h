// Geometry type of the platform's widget layer, shared with the native text layer.
#pragma once

#include "MTypes.h"

typedef struct {
    MAPI_S32 x;
    MAPI_S32 y;
    MAPI_S32 width;
    MAPI_S32 height;
} ST_WIDGET_POSITION;
