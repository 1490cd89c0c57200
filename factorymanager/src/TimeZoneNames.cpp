#include "TimeZoneNames.h"

#include <unordered_map>

namespace tz {

namespace {

const ZoneName kBroadcast[] = {
    {0, "Atlantic/Canary"},     {1, "Europe/Lisbon"},
    {2, "Europe/London"},       {3, "Europe/Dublin"},
    {4, "Europe/Amsterdam"},    {5, "Europe/Berlin"},
    {6, "Europe/Brussels"},     {7, "Europe/Paris"},
    {8, "Europe/Madrid"},       {9, "Europe/Rome"},
    {10, "Europe/Vienna"},      {11, "Europe/Zurich"},
    {12, "Europe/Prague"},      {13, "Europe/Warsaw"},
    {14, "Europe/Budapest"},    {15, "Europe/Stockholm"},
    {16, "Europe/Oslo"},        {17, "Europe/Copenhagen"},
    {18, "Europe/Helsinki"},    {19, "Europe/Athens"},
    {20, "Europe/Bucharest"},   {21, "Europe/Sofia"},
    {22, "Europe/Istanbul"},    {23, "Europe/Moscow"},
    {24, "Asia/Dubai"},         {25, "Asia/Kolkata"},
    {26, "Asia/Bangkok"},       {27, "Asia/Singapore"},
    {28, "Asia/Shanghai"},      {29, "Australia/Perth"},
    {30, "Australia/Adelaide"}, {31, "Australia/Sydney"},
    {32, "Pacific/Auckland"},   {33, "UTC"},
};

const ZoneName kAmericas[] = {
    {0, "UTC"},
    {1, "America/St_Johns"},
    {2, "America/Halifax"},
    {3, "America/New_York"},
    {4, "America/Chicago"},
    {5, "America/Denver"},
    {6, "America/Phoenix"},
    {7, "America/Los_Angeles"},
    {8, "America/Anchorage"},
    {9, "Pacific/Honolulu"},
    {10, "America/Mexico_City"},
    {11, "America/Bogota"},
    {12, "America/Lima"},
    {13, "America/Caracas"},
    {14, "America/Santiago"},
    {15, "America/Argentina/Buenos_Aires"},
    {16, "America/Sao_Paulo"},
    {17, "America/Montevideo"},
    {18, "America/Asuncion"},
    {19, "America/La_Paz"},
    {20, "America/Guayaquil"},
    {21, "America/Panama"},
    {22, "America/Puerto_Rico"},
};

using Index = std::unordered_map<int, const char*>;

template <size_t N>
Index MakeIndex(const ZoneName (&table)[N]) {
    Index index;
    for (const ZoneName& z : table) {
        index.emplace(z.number, z.name);
    }
    return index;
}

// Built when the library is loaded, before the platform asks for a name.
const Index kBroadcastIndex = MakeIndex(kBroadcast);
const Index kAmericasIndex = MakeIndex(kAmericas);

const char* Find(const Index& index, int number) {
    auto it = index.find(number);
    return it == index.end() ? nullptr : it->second;
}

}  // namespace

const char* BroadcastZoneName(int number) { return Find(kBroadcastIndex, number); }
const char* AmericasZoneName(int number) { return Find(kAmericasIndex, number); }

const ZoneName* BroadcastZones(size_t& count) {
    count = sizeof(kBroadcast) / sizeof(kBroadcast[0]);
    return kBroadcast;
}

const ZoneName* AmericasZones(size_t& count) {
    count = sizeof(kAmericas) / sizeof(kAmericas[0]);
    return kAmericas;
}

}  // namespace tz
