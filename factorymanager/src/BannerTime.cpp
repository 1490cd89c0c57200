#include "BannerTime.h"

#include <cstdio>

namespace BannerTime {

std::string Span(unsigned startHour, unsigned startMinute, unsigned endHour, unsigned endMinute) {
    if (startHour > 23 || startMinute >= 60 || endHour >= 24 || endMinute >= 60) {
        return "00:00-00:00";
    }
    char text[12];
    std::snprintf(text, sizeof(text), "%02u:%02u-%02u:%02u", startHour, startMinute, endHour,
                  endMinute);
    return text;
}

unsigned MinutesLeft(int64_t startSeconds, int64_t durationSeconds, int64_t nowSeconds) {
    const int64_t remaining = startSeconds + durationSeconds - nowSeconds;
    return remaining >= 1 ? static_cast<unsigned>(remaining / 60 + 1) : 0;
}

std::string MinutesLeftText(unsigned minutes) {
    std::string text = "%d min left";
    const std::string value = std::to_string(minutes);
    // The translated texts may hold the number twice.
    for (int i = 0; i < 2; ++i) {
        const size_t at = text.find("%d");
        if (at == std::string::npos) {
            break;
        }
        text.replace(at, 2, value);
    }
    return text;
}

}  // namespace BannerTime
