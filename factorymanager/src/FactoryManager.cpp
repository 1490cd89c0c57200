// Core of the factory library: construction, destruction, the host callback and the
// small accessors the platform calls.
#include "FactoryManager.h"

#include <cstdio>
#include <cstring>
#include <ctime>

#include "FactoryLog.h"
#include "FactoryWebSocketServer.h"
#include "KeyManager.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Cmd.h"
#include "MSystem.h"
#include "TVManager.h"
#include "TvHost.h"
#include "WebAppMgr.h"

std::atomic<EventListener> g_pFactoryListener{nullptr};
ST_ATCMD_VERSION stATCMD_Version;
char u8VersionSoC[30];

std::atomic<MAPI_BOOL> FactoryManager::m_bIsFactoryEnabled{0};
std::atomic<MAPI_U8> FactoryManager::m_isFactoryUiLoaded{0};
std::atomic<lws_context*> FactoryManager::m_stContext{nullptr};
MAPI_U16 FactoryManager::u16Times = 0;

FactoryManager::FactoryManager() {
    WebAppMgr_RegisterOnReceiveEvent(onReceiveEvent);
    m_pFactoryCmd = MSrv_Control::GetInstance()->GetMSrvFactoryCmd();
    m_pFactoryCmd->AddEventRecipient(this);
    m_pFactoryDefault = MSrv_Control::GetInstance()->GetMSrvFactoryDefault();
    m_pDfbWindow = nullptr;
    m_pDfb = MSystem::GetInstance()->GetDirectFB();
    // Page state starts from the member initialisers of each subsystem.
    InitDigitalAudioOut();
    std::memset(&stATCMD_Version, 0, sizeof(stATCMD_Version));
}

FactoryManager::~FactoryManager() {
    // The server thread is stopped and joined before its context goes, so that an
    // instance can be destroyed safely; the pointer is cleared with it.
    StopWebSocketServer();
    if (lws_context* context = m_stContext.exchange(nullptr)) {
        factory_ws::DestroyContext(context);
    }
    FreeVersionReaderBuffers();
    FreeKeyDataBuffers();
    FACTORY_LOG(FACTORY_LOG_INFO, "FactoryManager destroyed");
}

void FactoryManager::setFactoryEventListener(EventListener listener) {
    FACTORY_TRACE();
    g_pFactoryListener = listener;
}

void FactoryManager::SetFactoryModeState(MAPI_BOOL state) {
    FACTORY_TRACE();
    m_bIsFactoryEnabled = state;
}

MAPI_BOOL FactoryManager::GetFactoryModeState() {
    FACTORY_TRACE();
    return m_bIsFactoryEnabled;
}

void FactoryManager::InitKeyEventListener() {
    FACTORY_TRACE();
    KeyManager* keys = TVManager::GetInstance()->getKeyManager();
    if (keys == nullptr) {
        return;
    }
    keys->setOnKeyEventListener(FactoryKeyEventListener);
}

unsigned char FactoryKeyEventListener(unsigned long keyCode, unsigned long id, unsigned long sym) {
    FACTORY_LOG(FACTORY_LOG_INFO, ">>> FactoryKeyEventListener: Key Code %lx ID %lx Sym %lx",
                keyCode, id, sym);
    return 1;
}

int onReceiveEvent(int evtType, int index) {
    FACTORY_LOG(FACTORY_LOG_INFO, ">> onReceiveEvent: evtType=%d, index=%d", evtType, index);
    return 0;
}

void FactoryManager::NotifyFactoryListener(unsigned long code) {
    EventListener listener = g_pFactoryListener.load();
    if (listener != nullptr) {
        listener(code, nullptr, nullptr);
    }
}

unsigned char FactoryManager::GetKeywritingStatus() { return m_u8KeywritingStatus; }

void FactoryManager::SetKeywritingStatus(unsigned char status) { m_u8KeywritingStatus = status; }

MAPI_U8 FactoryManager::GetPreviousKeyCodeStatus() {
    puts("~~ FactoryManager::GetPreviousKeyCodeStatus");
    return m_u8PreviousKeyCodeStatus;
}

void FactoryManager::SetPreviousKeyCodeStatus(unsigned char status) {
    m_u8PreviousKeyCodeStatus = status;
    printf("~~ FactoryManager::SetPreviousKeyCodeStatus = %d\n", m_u8PreviousKeyCodeStatus);
}

MAPI_BOOL FactoryManager::isShipoutExecuing() { return m_bShipoutExecuting; }

unsigned long FactoryManager::GetSystemTime() {
    struct timespec ts {};
    TvHost_ClockGettime(&ts);
    // Wraps after about 49.7 days, as the set's 32-bit callers expect. In 64 bits:
    // a 32-bit time_t (armhf) times 1000 overflows after 24.8 days.
    return static_cast<MAPI_U32>(static_cast<MAPI_U64>(ts.tv_sec) * 1000 + ts.tv_nsec / 1000000);
}

unsigned long long FactoryManager::getSystemTime() {
    struct timespec ts {};
    TvHost_ClockGettime(&ts);
    // Callers use the low word only; the high word holds the whole seconds in ms.
    const MAPI_U64 ms = static_cast<MAPI_U64>(ts.tv_sec) * 1000;
    const MAPI_U32 low = static_cast<MAPI_U32>(ms + ts.tv_nsec / 1000000);
    const MAPI_U32 high = static_cast<MAPI_U32>(ms);
    return (static_cast<unsigned long long>(high) << 32) | low;
}

MAPI_BOOL FactoryManager::OnEvent_FactorySDTest(void*, void*, void*) {
    printf("\n~~ [OnEvent_FactorySDTest] is for 4k2k project. ");
    return 1;
}
