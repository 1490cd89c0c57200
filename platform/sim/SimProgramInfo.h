// Simulated state behind the program banner: the digital program on screen, its
// present event, the system country, the real-time clock and the analogue sound mode.
#pragma once

#include <cstdint>
#include <string>

#include "MTypes.h"
#include "SimSet.h"

namespace sim {

struct ProgramInfoState : Area {
    // The digital program on screen (the analogue one comes from the ATV database).
    bool programKnown = true;
    MAPI_U16 number = 1;
    std::string name = "Das Erste HD";
    // Present event; start and duration in seconds on the real-time clock.
    bool eitPresent = true;
    MAPI_U8 startHour = 20, startMinute = 15, endHour = 21, endMinute = 45;
    int64_t eitStart = 1700000000 - 600;
    uint32_t eitDuration = 5400;
    MAPI_U8 genre = 1;
    MAPI_U8 country = 0;
    // The clock reads rtcAtBoot plus the seconds since the set booted.
    int64_t rtcAtBoot = 1700000000;
    MAPI_U8 sifSoundMode = 3;

    int64_t RtcNow() const {
        return rtcAtBoot + static_cast<int64_t>(Set::Instance().NowMs() / 1000);
    }
};

}  // namespace sim
