// The simulated set behind the core platform declarations: the event framework,
// the service registry, TVManager, the key manager and the host services.
#include <cstdarg>
#include <cstdio>
#include <string>

#include "FactoryManager.h"
#include "KeyManager.h"
#include "MEvtHandle.h"
#include "MSrv.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Factory_Default.h"
#include "MSystem.h"
#include "MsOS.h"
#include "SimKeys.h"
#include "SimSet.h"
#include "TVManager.h"
#include "TvHost.h"
#include "WebAppMgr.h"
#include "mapi_system.h"

using sim::ArgList;
using sim::Set;

// ---- Event framework -------------------------------------------------------------

namespace {
const MSGMAP kBaseMap = {nullptr, nullptr};
}

MEvtHandle::MEvtHandle() = default;

MEvtHandle::~MEvtHandle() { Set::Instance().Loop().Forget(this); }

const MSGMAP* MEvtHandle::GetThisMessageMap() { return &kBaseMap; }

const MSGMAP* MEvtHandle::GetMessageMap() const { return GetThisMessageMap(); }

MAPI_BOOL MEvtHandle::OnEvent(unsigned int message, void* p1, void* p2, void* p3) {
    const unsigned int id =
        message == kTimerMessage ? static_cast<unsigned int>(reinterpret_cast<uintptr_t>(p2)) : 0;
    for (const MSGMAP* map = GetMessageMap(); map != nullptr;
         map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr) {
        for (const MSGMAP_ENTRY* e = map->lpEntries; e != nullptr && e->pfn != nullptr; ++e) {
            if (e->nMessage == message && id >= e->nID && id <= e->nLastID) {
                return (this->*(e->pfn))(p1, p2, p3);
            }
        }
    }
    return DefEventProc(message, p1, p2, p3);
}

MAPI_BOOL MEvtHandle::DefEventProc(unsigned int message, void* p1, void* p2, void* p3) {
    Set::Instance().RecordCall(
        "MEvtHandle::DefEventProc",
        ArgList(message, reinterpret_cast<uintptr_t>(p1), reinterpret_cast<uintptr_t>(p2),
                reinterpret_cast<uintptr_t>(p3)));
    return 0;
}

MAPI_BOOL MEvtHandle::SetTimer(unsigned long periodMs, unsigned long timerId, EN_TIMER_MODE mode) {
    Set::Instance().RecordCall("MEvtHandle::SetTimer", ArgList(periodMs, timerId, mode));
    Set::Instance().Loop().SetTimer(this, periodMs, timerId, mode);
    return 1;
}

MAPI_BOOL MEvtHandle::KillTimer(unsigned long timerId) {
    Set::Instance().RecordCall("MEvtHandle::KillTimer", ArgList(timerId));
    Set::Instance().Loop().KillTimer(this, timerId);
    return 1;
}

// ---- Services ----------------------------------------------------------------------

MAPI_BOOL MSrv::AddEventRecipient(MEvtHandle* recipient) {
    Set::Instance().RecordCall("MSrv::AddEventRecipient", ArgList());
    Set::Instance().AddRecipient(this, recipient);
    return 1;
}

MSrv_Control* MSrv_Control::GetInstance() {
    static MSrv_Control control;
    return &control;
}

MSrv_Factory_Cmd* MSrv_Control::GetMSrvFactoryCmd() {
    static MSrv_Factory_Cmd service;
    return &service;
}

MSrv_Factory_Default* MSrv_Control::GetMSrvFactoryDefault() {
    static MSrv_Factory_Default service;
    return &service;
}

// ---- TVManager and its managers -------------------------------------------------

TVManager* TVManager::GetInstance() {
    static TVManager manager;
    return &manager;
}

FactoryManager* TVManager::getFactoryManager() { return Set::Instance().Manager(); }

KeyManager* TVManager::getKeyManager() {
    sim::KeyState& keys = Set::Instance().Get<sim::KeyState>();
    return keys.present ? &keys.manager : nullptr;
}

void TVManager::printMsg(unsigned long long mask, const char* format, ...) {
    va_list args;
    va_start(args, format);
    va_list copy;
    va_copy(copy, args);
    const int size = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    std::string text(size > 0 ? static_cast<size_t>(size) : 0, '\0');
    if (size > 0) {
        std::vsnprintf(text.data(), text.size() + 1, format, args);
    }
    va_end(args);
    Set::Instance().GetJournal().Log(Set::Instance().NowMs(), mask, text);
}

void KeyManager::setOnKeyEventListener(OnKeyEventListener listener) {
    Set::Instance().RecordCall("KeyManager::setOnKeyEventListener", ArgList(listener != nullptr));
    Set::Instance().Get<sim::KeyState>().listener = listener;
}

MSystem* MSystem::GetInstance() {
    static MSystem system;
    return &system;
}

// ---- Web-application manager ------------------------------------------------------

int WebAppMgr_RegisterOnReceiveEvent(WebAppMgr_OnReceiveEvent callback) {
    Set::Instance().RecordCall("WebAppMgr_RegisterOnReceiveEvent", ArgList(callback != nullptr));
    Set::Instance().Get<sim::KeyState>().webAppReceive = callback;
    return 0;
}

// ---- Shell and host services --------------------------------------------------------

MAPI_BOOL mapi_system::SystemCmd(const char* command) {
    const std::string line = command ? command : "";
    const bool done = Set::Instance().GetRoot().RunCommand(line);
    Set::Instance().RecordCall("mapi_system::SystemCmd", ArgList(line, done));
    return done ? 1 : 0;
}

std::string TvHost_Path(const char* tvPath) {
    // A FIFO or a device where a file should be reads as a missing file: opening it
    // could block the event thread.
    return Set::Instance().GetRoot().MapForOpen(tvPath ? tvPath : "");
}

unsigned int TvHost_Sleep(unsigned int seconds) {
    Set::Instance().RecordCall("sleep", ArgList(seconds));
    Set::Instance().GetClock().Sleep(seconds * 1000000000ULL);
    return 0;
}

int TvHost_Usleep(unsigned int microseconds) {
    Set::Instance().RecordCall("usleep", ArgList(microseconds));
    Set::Instance().GetClock().Sleep(microseconds * 1000ULL);
    return 0;
}

void MsOS_DelayTask(unsigned int ms) {
    Set::Instance().RecordCall("MsOS_DelayTask", ArgList(ms));
    Set::Instance().GetClock().Sleep(ms * 1000000ULL);
}

int TvHost_ClockGettime(struct timespec* ts) {
    const uint64_t ns = Set::Instance().GetClock().NowNs();
    ts->tv_sec = static_cast<time_t>(ns / 1000000000ULL);
    ts->tv_nsec = static_cast<long>(ns % 1000000000ULL);
    return 0;
}

const char* TvHost_WebSocketInterface() {
    const std::string& iface = Set::Instance().ServerInterface();
    return iface.empty() ? nullptr : iface.c_str();
}

int TvHost_WebSocketPort() { return Set::Instance().Config().port; }
