// The platform's event-handler framework: message maps, dispatch and timers.
#pragma once

#include "MTypes.h"

class MObject {
public:
    virtual ~MObject() = default;
};

class MCmdTarget : public MObject {};

class MEvtHandle;

// A handler receives the three message parameters as delivered.
typedef MAPI_BOOL (MEvtHandle::*PMSG_HANDLER)(void*, void*, void*);

struct MSGMAP_ENTRY {
    unsigned int nMessage;
    unsigned int nCode;
    unsigned int nID;
    unsigned int nLastID;
    unsigned int nSig;
    PMSG_HANDLER pfn;
};

struct MSGMAP {
    const MSGMAP* (*pfnGetBaseMap)();
    const MSGMAP_ENTRY* lpEntries;
};

enum EN_TIMER_MODE {
    E_TIMER_REPEAT = 0,
    E_TIMER_ONESHOT = 1,
};

class MEvtHandle : public MCmdTarget {
public:
    // Timer ticks arrive as this message with the timer id in the second parameter.
    static constexpr unsigned int kTimerMessage = 24;

    MEvtHandle();
    ~MEvtHandle() override;
    MEvtHandle(const MEvtHandle&) = delete;
    MEvtHandle& operator=(const MEvtHandle&) = delete;

    virtual const MSGMAP* GetMessageMap() const;
    static const MSGMAP* GetThisMessageMap();

    // Finds the handler in this class's map, then the base maps; DefEventProc otherwise.
    MAPI_BOOL OnEvent(unsigned int message, void* p1, void* p2, void* p3);
    virtual MAPI_BOOL DefEventProc(unsigned int message, void* p1, void* p2, void* p3);

    MAPI_BOOL SetTimer(unsigned long periodMs, unsigned long timerId, EN_TIMER_MODE mode);
    MAPI_BOOL KillTimer(unsigned long timerId);
};
