// DirectFB's C headers trip C++17 warnings ("register"); include them through here.
#pragma once

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wregister"
#include <directfb.h>
#pragma GCC diagnostic pop
