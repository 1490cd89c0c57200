// Genre classes of the present event, as the program banner shows them. Terrestrial
// sets of two countries use their own national genre schemes.
#pragma once

#include <cstdint>

namespace GenreTables {

constexpr uint8_t kCountryA = 25;
constexpr uint8_t kCountryB = 22;

struct Reception {
    bool satellite;
    uint8_t country;
};

// The genre class the banner works with (by route and country).
uint8_t Normalise(uint8_t genre, Reception r);
// The label of a normalised class; "" when there is none.
const char* Label(uint8_t genre, Reception r);

}  // namespace GenreTables
