// The message map: which handler each factory event and timer tick reaches.
#include "FactoryEventIds.h"
#include "FactoryManager.h"

#define FM_EVENT_ENTRY(name, id, handler) \
    {(id), 0, 0, 0, 0, FactoryManager::MapHandler(&FactoryManager::handler)},
#define FM_TIMER_ENTRY(name, id, handler) \
    {MEvtHandle::kTimerMessage,           \
     0,                                   \
     (id),                                \
     (id),                                \
     0,                                   \
     FactoryManager::MapHandler(&FactoryManager::handler)},

// Searched before the base map; the all-zero entry ends it.
const MSGMAP_ENTRY FactoryManager::s_messageEntries[] = {
    FACTORY_EVENT_LIST(FM_EVENT_ENTRY) FACTORY_TIMER_LIST(FM_TIMER_ENTRY){0, 0, 0, 0, 0, nullptr},
};

const MSGMAP FactoryManager::s_messageMap = {&MEvtHandle::GetThisMessageMap,
                                             &FactoryManager::s_messageEntries[0]};

const MSGMAP* FactoryManager::GetThisMessageMap() { return &s_messageMap; }

const MSGMAP* FactoryManager::GetMessageMap() const { return GetThisMessageMap(); }
