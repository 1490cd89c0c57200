// Log masks of the factory module: module 0x2000 in the high word, a level bit low.
#pragma once

#include "TVManager.h"

constexpr unsigned long long kFactoryModule = 0x2000ULL << 32;
constexpr unsigned long long FACTORY_LOG_ERROR = kFactoryModule | 2;  // server thread failures
constexpr unsigned long long FACTORY_LOG_TRACE = kFactoryModule | 4;  // function entry
constexpr unsigned long long FACTORY_LOG_WS = kFactoryModule | 8;     // WebSocket traces
constexpr unsigned long long FACTORY_LOG_INFO = kFactoryModule | 32;  // ordinary information

#define FACTORY_LOG(mask, ...) TVManager::printMsg((mask), __VA_ARGS__)
// Function-entry trace: the full signature and the source line.
#define FACTORY_TRACE() \
    TVManager::printMsg(FACTORY_LOG_TRACE, "%s[%d]", __PRETTY_FUNCTION__, __LINE__)
// The same trace where service staff know the routine by the line of the set's own
// build: those lines are kept, so the logs read alike on every build.
#define FACTORY_TRACE_AT(line) \
    TVManager::printMsg(FACTORY_LOG_TRACE, "%s[%d]", __PRETTY_FUNCTION__, (line))
