// The platform's sound-system service.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

class MSrv_SSSound : public MSrv {
public:
    // Parameter 0 is the sound processor's version, one byte per field.
    MAPI_U32 ASF_GetParam(int param);
};
