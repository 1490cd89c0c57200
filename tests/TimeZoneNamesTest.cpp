// The time-zone name tables against the system's time-zone database: every name is
// a zone there, and each converts a known instant to its local time.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>

#include "../factorymanager/src/TimeZoneNames.h"

namespace {

struct Zone {
    bool americas;
    int number;
    const char* name;
    int offsetMinutes;  // at 2021-01-15 12:00 UTC
};

// Written from the regions' own clocks, not from the tables.
const Zone kZones[] = {
    {false, 0, "Atlantic/Canary", 0},
    {false, 1, "Europe/Lisbon", 0},
    {false, 2, "Europe/London", 0},
    {false, 3, "Europe/Dublin", 0},
    {false, 4, "Europe/Amsterdam", 60},
    {false, 5, "Europe/Berlin", 60},
    {false, 6, "Europe/Brussels", 60},
    {false, 7, "Europe/Paris", 60},
    {false, 8, "Europe/Madrid", 60},
    {false, 9, "Europe/Rome", 60},
    {false, 10, "Europe/Vienna", 60},
    {false, 11, "Europe/Zurich", 60},
    {false, 12, "Europe/Prague", 60},
    {false, 13, "Europe/Warsaw", 60},
    {false, 14, "Europe/Budapest", 60},
    {false, 15, "Europe/Stockholm", 60},
    {false, 16, "Europe/Oslo", 60},
    {false, 17, "Europe/Copenhagen", 60},
    {false, 18, "Europe/Helsinki", 120},
    {false, 19, "Europe/Athens", 120},
    {false, 20, "Europe/Bucharest", 120},
    {false, 21, "Europe/Sofia", 120},
    {false, 22, "Europe/Istanbul", 180},
    {false, 23, "Europe/Moscow", 180},
    {false, 24, "Asia/Dubai", 240},
    {false, 25, "Asia/Kolkata", 330},
    {false, 26, "Asia/Bangkok", 420},
    {false, 27, "Asia/Singapore", 480},
    {false, 28, "Asia/Shanghai", 480},
    {false, 29, "Australia/Perth", 480},
    {false, 30, "Australia/Adelaide", 630},
    {false, 31, "Australia/Sydney", 660},
    {false, 32, "Pacific/Auckland", 780},
    {false, 33, "UTC", 0},
    {true, 0, "UTC", 0},
    {true, 1, "America/St_Johns", -210},
    {true, 2, "America/Halifax", -240},
    {true, 3, "America/New_York", -300},
    {true, 4, "America/Chicago", -360},
    {true, 5, "America/Denver", -420},
    {true, 6, "America/Phoenix", -420},
    {true, 7, "America/Los_Angeles", -480},
    {true, 8, "America/Anchorage", -540},
    {true, 9, "Pacific/Honolulu", -600},
    {true, 10, "America/Mexico_City", -360},
    {true, 11, "America/Bogota", -300},
    {true, 12, "America/Lima", -300},
    {true, 13, "America/Caracas", -240},
    {true, 14, "America/Santiago", -180},
    {true, 15, "America/Argentina/Buenos_Aires", -180},
    {true, 16, "America/Sao_Paulo", -180},
    {true, 17, "America/Montevideo", -180},
    {true, 18, "America/Asuncion", -180},
    {true, 19, "America/La_Paz", -240},
    {true, 20, "America/Guayaquil", -300},
    {true, 21, "America/Panama", -300},
    {true, 22, "America/Puerto_Rico", -240},
};

class TimeZoneNamesTest : public testing::TestWithParam<Zone> {};

TEST_P(TimeZoneNamesTest, NamesAZoneOfTheDatabaseThatKeepsItsClock) {
    const Zone& z = GetParam();
    const char* name =
        z.americas ? tz::AmericasZoneName(z.number) : tz::BroadcastZoneName(z.number);
    ASSERT_NE(name, nullptr);
    EXPECT_STREQ(name, z.name);

    // A name the database lacks would silently read as UTC: look for the file first.
    std::ifstream file(std::string("/usr/share/zoneinfo/") + name, std::ios::binary);
    char magic[4] = {};
    file.read(magic, 4);
    ASSERT_EQ(std::string(magic, 4), "TZif") << name;

    setenv("TZ", name, 1);
    tzset();
    const time_t instant = 1610712000;  // 2021-01-15 12:00:00 UTC
    tm local{};
    ASSERT_NE(localtime_r(&instant, &local), nullptr);
    EXPECT_EQ(local.tm_gmtoff, z.offsetMinutes * 60L) << name;
    EXPECT_EQ(local.tm_mday, z.offsetMinutes >= 720 ? 16 : 15) << name;
}

INSTANTIATE_TEST_SUITE_P(BothTables, TimeZoneNamesTest, testing::ValuesIn(kZones),
                         [](const auto& info) {
                             return std::string(info.param.americas ? "Americas" : "Broadcast") +
                                    std::to_string(info.param.number);
                         });

TEST(TimeZoneNamesLookupTest, EveryEntryIsCheckedAndUnknownNumbersHaveNoName) {
    size_t broadcast = 0;
    size_t americas = 0;
    tz::BroadcastZones(broadcast);
    tz::AmericasZones(americas);
    EXPECT_EQ(broadcast + americas, sizeof(kZones) / sizeof(kZones[0]));
    for (int number : {-1, static_cast<int>(broadcast), 1000}) {
        EXPECT_EQ(tz::BroadcastZoneName(number), nullptr) << number;
    }
    for (int number : {-1, static_cast<int>(americas)}) {
        EXPECT_EQ(tz::AmericasZoneName(number), nullptr) << number;
    }
}

}  // namespace
