// The platform's common-interface (CI slot) service.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

class MSrv_CIMMI : public MSrv {
public:
    // Runs the factory's CI slot test: 1 passed.
    MAPI_BOOL ZYTTestStart();
};
