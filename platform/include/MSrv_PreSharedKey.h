// The platform's pre-shared key service: checks of the key files written at the factory.
#pragma once

#include "MSrv.h"
#include "MTypes.h"

class MSrv_PreSharedKey : public MSrv {
public:
    // 1 when the key file at the TV path carries a valid HMAC.
    MAPI_BOOL CheckHmac(const char* path);
};
