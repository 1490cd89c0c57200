// C interface of the platform's web-application manager.
#pragma once

typedef int (*WebAppMgr_OnReceiveEvent)(int evtType, int index);

extern "C" {
int WebAppMgr_RegisterOnReceiveEvent(WebAppMgr_OnReceiveEvent callback);
}
