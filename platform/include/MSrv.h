// Base of the platform's middleware services.
#pragma once

#include "MTypes.h"

class MEvtHandle;

class MSrv {
public:
    virtual ~MSrv() = default;
    // From now on the service's events reach the recipient's message map.
    MAPI_BOOL AddEventRecipient(MEvtHandle* recipient);

    // The recipient receives none of the service's events any more.
    // From now on the recipient receives none of the service's events.
    MAPI_BOOL RemoveEventRecipient(MEvtHandle* recipient);
};
