// The platform's factory-command service.
#pragma once

#include "MSrv.h"

class MSrv_Factory_Cmd : public MSrv {
public:
};
