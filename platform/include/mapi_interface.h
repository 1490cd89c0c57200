// The hardware layer's entry point.
#pragma once

class mapi_vd;

class mapi_interface {
public:
    static mapi_vd* Get_mapi_vd();
};
