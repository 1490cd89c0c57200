// Simulated state of the key manager, the web-application manager's receive
// callback and the display.
#pragma once

#include "KeyManager.h"
#include "SimSet.h"
#include "WebAppMgr.h"

struct _IDirectFB;
typedef struct _IDirectFB IDirectFB;

namespace sim {

struct KeyState : Area {
    bool present = true;  // a set without a key manager makes key listening a no-op
    KeyManager manager;
    OnKeyEventListener listener = nullptr;
    WebAppMgr_OnReceiveEvent webAppReceive = nullptr;
};

// The set's display. The native text layer draws on it through DirectFB.
struct DisplayState : Area {
    IDirectFB* Dfb();
};

}  // namespace sim
