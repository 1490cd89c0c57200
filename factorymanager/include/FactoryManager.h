// FactoryManager: the factory-mode library's one object. The platform process
// creates it, gives it a host callback and delivers factory events, timer ticks and
// keys to it; every page, test and editor is a method of this class.
//
// The class stays one class, as the set's host compiles against it and the message
// map points at its members; its member list is kept by subsystem in
// FactoryManager/*.inc, the way the implementation is split over
// src/FactoryManager*.cpp. Each fragment is included inside the class body below, in
// a fixed order: the order of the data members is the object's layout.
#pragma once

#include <pthread.h>

#include <atomic>
#include <cstddef>
#include <string>
#include <type_traits>

#include "FactoryATCmdVersion.h"
#include "FactoryExport.h"
#include "MEvtHandle.h"
#include "MSrv_DTV_Player_DVBS.h"
#include "MTypes.h"
#include "WidgetTypes.h"

class MSrv_Factory_Cmd;
class MSrv_Factory_Default;
struct _IDirectFB;
typedef struct _IDirectFB IDirectFB;
struct _IDirectFBWindow;
typedef struct _IDirectFBWindow IDirectFBWindow;
struct _IDirectFBSurface;
typedef struct _IDirectFBSurface IDirectFBSurface;
struct lws_context;
struct json_object;
struct FactoryKeyIdentifier;
struct TimedCommand;

// Clone copy of the settings between sets; what a mode means is the platform's.
enum EN_CLONE_COPY : MAPI_U32 {
    E_CLONE_COPY_NONE = 0,
    E_CLONE_COPY_START = 1,
};

// Host callback: (code, 0, 0); the return value is ignored.
typedef unsigned char (*EventListener)(unsigned long code, void* p1, void* p2);

// Shared with the server thread, hence atomic; null until the host installs one.
extern VQ27_FACTORY_API std::atomic<EventListener> g_pFactoryListener;
// Version strings gathered for the serial fixture's version check.
extern VQ27_FACTORY_API ST_ATCMD_VERSION stATCMD_Version;
// Platform version string buffer shared by the version readers.
extern VQ27_FACTORY_API char u8VersionSoC[30];

VQ27_FACTORY_API unsigned char FactoryKeyEventListener(unsigned long keyCode, unsigned long id,
                                                       unsigned long sym);
VQ27_FACTORY_API int onReceiveEvent(int evtType, int index);

class VQ27_FACTORY_API FactoryManager : public MEvtHandle {
public:
    FactoryManager();
    ~FactoryManager() override;

    // ---- Core: lifecycle, host callback, dispatch -------------------------------
    const MSGMAP* GetMessageMap() const override;
    static const MSGMAP* GetThisMessageMap();
    static PMSG_HANDLER MapHandler(MAPI_BOOL (FactoryManager::*handler)(void*, void*, void*)) {
        return static_cast<PMSG_HANDLER>(handler);
    }
    // The framework's three arguments are simply not read by such a handler.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wcast-function-type"
    static PMSG_HANDLER MapHandler(MAPI_BOOL (FactoryManager::*handler)()) {
        return reinterpret_cast<PMSG_HANDLER>(handler);
    }
#pragma GCC diagnostic pop

    void setFactoryEventListener(EventListener listener);
    static void SetFactoryModeState(MAPI_BOOL state);
    static MAPI_BOOL GetFactoryModeState();
    void InitKeyEventListener();

    unsigned char GetKeywritingStatus();
    void SetKeywritingStatus(unsigned char status);
    MAPI_U8 GetPreviousKeyCodeStatus();
    void SetPreviousKeyCodeStatus(unsigned char status);
    MAPI_BOOL isShipoutExecuing();

    unsigned long GetSystemTime();
    unsigned long long getSystemTime();

    MAPI_BOOL OnEvent_FactorySDTest(void* p1, void* p2, void* p3);

    static std::atomic<MAPI_BOOL> m_bIsFactoryEnabled;
    static std::atomic<MAPI_U8> m_isFactoryUiLoaded;
    static std::atomic<lws_context*> m_stContext;
    static MAPI_U16 u16Times;

private:
    // Calls the host listener, if one is installed.
    static void NotifyFactoryListener(unsigned long code);

    MSrv_Factory_Cmd* m_pFactoryCmd = nullptr;
    MSrv_Factory_Default* m_pFactoryDefault = nullptr;
    IDirectFB* m_pDfb = nullptr;
    IDirectFBWindow* m_pDfbWindow = nullptr;

    MAPI_U8 m_u8PreviousKeyCodeStatus = 0;
    MAPI_U8 m_u8KeywritingStatus = 0;
    MAPI_U8 m_bShipoutExecuting = 0;
    MAPI_U8 m_bWebSocketThreadStarted = 0;

    // The subsystems' members, each fragment naming its own access; in this order,
    // not sorted, as it is the order of the data members.
    // clang-format off
#include "FactoryManager/Ui.inc"
#include "FactoryManager/Keys.inc"
#include "FactoryManager/Readers.inc"
#include "FactoryManager/InfoPages.inc"
#include "FactoryManager/Settings.inc"
#include "FactoryManager/ProductionTests.inc"
#include "FactoryManager/Tuning.inc"
#include "FactoryManager/Editors.inc"
    // clang-format on

private:
    static const MSGMAP_ENTRY s_messageEntries[];
    static const MSGMAP s_messageMap;
};
