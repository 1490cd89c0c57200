// The hardware layer's interface registry.
#pragma once

class mapi_audio;

class mapi_interface_common {
public:
    static mapi_audio* Get_mapi_audio();
};
