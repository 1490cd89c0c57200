// The platform's system singleton; it owns the DirectFB main interface.
#pragma once

struct _IDirectFB;
typedef struct _IDirectFB IDirectFB;

class MSystem {
public:
    static MSystem* GetInstance();
    IDirectFB* GetDirectFB();
};
