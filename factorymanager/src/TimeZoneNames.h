// Names of the platform's time zones: two tables, one for the set's broadcast
// regions and one for the Americas, mapping the platform's time-zone number to a
// zone name of the system's time-zone database ("Europe/Berlin").
//
// Numbering: the value of the system database's time-zone setting, which counts
// the entries of the set's time-zone menu from 0 in menu order; the broadcast
// regions' menu and the Americas' menu each count from 0.
#pragma once

#include <cstddef>

namespace tz {

struct ZoneName {
    int number;
    const char* name;
};

// The zone name of a platform number, or null when the table has no such number.
const char* BroadcastZoneName(int number);
const char* AmericasZoneName(int number);

// Every entry of each table, in number order.
const ZoneName* BroadcastZones(size_t& count);
const ZoneName* AmericasZones(size_t& count);

}  // namespace tz
