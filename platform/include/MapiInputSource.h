// Input sources of the platform.
#pragma once

enum MAPI_INPUT_SOURCE_TYPE : int {
    MAPI_INPUT_SOURCE_ATV = 1,   // the analogue TV source
    MAPI_INPUT_SOURCE_DTV = 28,  // the digital TV source
};
