// Pure formatting of demodulator and tuner readings into the tuner pages' texts.
#pragma once

#include <string>

namespace DemodFormat {

// "%d.%d" of MHz and the hundreds of kHz: no zero padding (474050 kHz reads 474.5).
std::string FrequencyMHz(unsigned long kHz);
// The satellite row shows the low-band frequency: intermediate frequency + 9750 MHz.
std::string SatelliteFrequency(long intermediateMHz);
// Occupied bandwidth of a satellite signal, MHz: symbol rate (kS/s) / 1000 times the
// roll-off factor (0: 1.35, 1: 1.25, other: 1.2), in single precision.
float SatelliteBandwidth(unsigned long symbolRate, unsigned long rollOff);

std::string Printf(const char* format, ...) __attribute__((format(printf, 1, 2)));
std::string Float(double value);       // "%f"
std::string OneDecimal(double value);  // "%.1f"
std::string Scientific(double value);  // "%1.1E"
std::string Integer(long value);       // "%ld"
// "NONE" without future-extension frames, else their length.
std::string FutureExtensionFrames(bool present, unsigned long length);
std::string PilotPattern(int pattern);  // "PP%d"

}  // namespace DemodFormat
