// The platform's factory store and factory defaults.
#pragma once

#include "MSrv.h"

class MSrv_Factory_Default : public MSrv {
public:
};
