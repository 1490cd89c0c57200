// C interface of the platform's web-application manager.
#pragma once

typedef int (*WebAppMgr_OnReceiveEvent)(int evtType, int index);

extern "C" {
int WebAppMgr_RegisterOnReceiveEvent(WebAppMgr_OnReceiveEvent callback);
// Pages are addressed by an index; loading at an index replaces the page there.
int WebAppMgr_LoadPage(const char* url, int index);
int WebAppMgr_UnloadPage(int index);
int WebAppMgr_ShowPage(int index);
int WebAppMgr_HidePage(int index);
int WebAppMgr_SendCommand(int command, const char* argument);
}
