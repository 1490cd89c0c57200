// What the console says about factory events beyond their names, and the records it
// builds for the events whose p2 points to one.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "MSrv_ATV_Player.h"
#include "MSrv_DTV_Player.h"

namespace factorysim {

// What the event's parameters mean where the library reads them; "" when it reads none.
std::string ParameterHelp(unsigned int id);

// The record an event carries in p2. A handler reads it through the pointer, so the
// console builds it itself (a typed number is never a pointer) and keeps it alive
// until the event has been handled.
class EventRecord {
public:
    // Whether the event's p2 points to a record.
    static bool Carries(unsigned int id);
    // Fills the record from the set's state, then from name=value words; on the event
    // thread. Returns "" or why the words do not describe the record.
    std::string Build(unsigned int id, const std::vector<std::string>& words);
    uintptr_t Pointer() const;

private:
    unsigned int m_id = 0;
    ST_ATV_SCAN_INFO m_atv{};
    ST_DTV_SCAN_STATUS m_dtv{};
};

}  // namespace factorysim
