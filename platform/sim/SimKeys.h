// Simulated state of the key manager and the web-application manager's receive
// callback.
#pragma once

#include "KeyManager.h"
#include "SimSet.h"
#include "WebAppMgr.h"

namespace sim {

struct KeyState : Area {
    bool present = true;  // a set without a key manager makes key listening a no-op
    KeyManager manager;
    OnKeyEventListener listener = nullptr;
    WebAppMgr_OnReceiveEvent webAppReceive = nullptr;
};

}  // namespace sim
