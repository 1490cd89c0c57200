// The platform's picture service: its colour-temperature selector.
#pragma once

class MSrv_Picture {
public:
    enum EN_MS_COLOR_TEMP {
        MS_COLOR_TEMP_COOL = 0,
        MS_COLOR_TEMP_MEDIUM = 1,
        MS_COLOR_TEMP_WARM = 2,
    };
};
