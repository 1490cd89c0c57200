#include "DemodFormat.h"

#include <cstdarg>
#include <cstdio>

namespace DemodFormat {

std::string Printf(const char* format, ...) {
    char text[64];
    va_list args;
    va_start(args, format);
    std::vsnprintf(text, sizeof(text), format, args);
    va_end(args);
    return text;
}

std::string FrequencyMHz(unsigned long kHz) {
    return Printf("%d.%d", static_cast<int>(kHz / 1000), static_cast<int>((kHz % 1000) / 10));
}

std::string SatelliteFrequency(long intermediateMHz) {
    return Printf("%ld", intermediateMHz + 9750);
}

float SatelliteBandwidth(unsigned long symbolRate, unsigned long rollOff) {
    const double factor = rollOff == 0 ? 1.35 : rollOff == 1 ? 1.25 : 1.2;
    return static_cast<float>(symbolRate / 1000.0 * factor);
}

std::string Float(double value) { return Printf("%f", value); }
std::string OneDecimal(double value) { return Printf("%.1f", value); }
std::string Scientific(double value) { return Printf("%1.1E", value); }
std::string Integer(long value) { return Printf("%ld", value); }

std::string FutureExtensionFrames(bool present, unsigned long length) {
    return present ? Printf("%lu", length) : "NONE";
}

std::string PilotPattern(int pattern) { return Printf("PP%d", pattern); }

}  // namespace DemodFormat
