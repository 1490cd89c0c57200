// The few host services the library reaches through the platform layer rather than
// POSIX directly, so that the same code runs on the set and on a simulated set.
// On a set every one of them is the plain system call or the identity.
#pragma once

#include <ctime>
#include <string>

// Maps an absolute TV path (/ciplus, /OAD, /Customer, /applications ...) to where
// it lives on this host.
std::string TvHost_Path(const char* tvPath);

// Waits of the library; they follow the set's clock.
unsigned int TvHost_Sleep(unsigned int seconds);
int TvHost_Usleep(unsigned int microseconds);

// The monotonic clock of the set.
int TvHost_ClockGettime(struct timespec* ts);

// Where the factory UI server listens: null for every interface.
const char* TvHost_WebSocketInterface();
int TvHost_WebSocketPort();
