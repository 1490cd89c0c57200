// The time line of the program banner.
#pragma once

#include <cstdint>
#include <string>

namespace BannerTime {

// "hh:mm-hh:mm", or "00:00-00:00" when a time is out of range.
std::string Span(unsigned startHour, unsigned startMinute, unsigned endHour, unsigned endMinute);
// Whole minutes left, counting a started minute: 0 once the event is over.
unsigned MinutesLeft(int64_t startSeconds, int64_t durationSeconds, int64_t nowSeconds);
// The banner's "%d min left" with the minutes put in.
std::string MinutesLeftText(unsigned minutes);

}  // namespace BannerTime
