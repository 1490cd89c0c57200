// The vocabulary of the operator console: factory events, keys, AT requests and
// host listener codes, each a table of names the console, scripts and the page use.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace factorysim {

struct EventName {
    const char* shortName;  // FactoryMModeStart
    const char* handler;    // OnEvent_FactoryMModeStart
    unsigned int id;
};
const std::vector<EventName>& Events();
// A decimal or 0x hex id, a handler name or a short name.
std::optional<unsigned int> FindEvent(const std::string& word);
std::string EventLabel(unsigned int id);
// "timer 66 OnTimer_FactoryVolumeAdj"; "timer 12 (no handler)" for an unknown id.
std::string TimerLabel(unsigned long id);

struct KeyName {
    const char* name;
    unsigned long code;
};
const std::vector<KeyName>& Keys();
// A key name or a decimal or 0x hex code.
std::optional<unsigned long> FindKey(const std::string& word);

// An AT request of the serial fixture: the factory event that carries it and its
// second parameter (teletext on/off only tells on from off by a null pointer).
struct AtRequest {
    const char* name;
    unsigned int event;
    uintptr_t p2;
    const char* meaning;
};
const std::vector<AtRequest>& AtRequests();
const AtRequest* FindAt(const std::string& word);

// What a host listener code means, or "unknown code".
std::string ListenerMeaning(unsigned long code);

// Parses a whole word as an unsigned number, decimal or 0x hex.
std::optional<unsigned long long> ParseNumber(const std::string& word);

// The words of a line, split at white space.
std::vector<std::string> SplitWords(const std::string& line);
// The text without the spaces, tabs and carriage returns around it.
std::string Trim(const std::string& text);

}  // namespace factorysim
