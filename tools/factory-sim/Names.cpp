#include "Names.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <sstream>

#include "FactoryEventIds.h"
#include "FactoryKeyCodes.h"
#include "FactoryListenerCodes.h"

namespace factorysim {

std::optional<unsigned long long> ParseNumber(const std::string& word) {
    if (word.empty() || word[0] == '-' || word[0] == '+') {
        return std::nullopt;
    }
    const bool hex = word.size() > 2 && word[0] == '0' && (word[1] == 'x' || word[1] == 'X');
    char* end = nullptr;
    errno = 0;
    const unsigned long long value = std::strtoull(word.c_str(), &end, hex ? 16 : 10);
    if (errno != 0 || end == word.c_str() || *end != '\0') {
        return std::nullopt;
    }
    return value;
}

const std::vector<EventName>& Events() {
#define FACTORY_SIM_EVENT(name, id, handler) {#name, #handler, id},
    static const std::vector<EventName> events = {FACTORY_EVENT_LIST(FACTORY_SIM_EVENT)};
#undef FACTORY_SIM_EVENT
    return events;
}

std::optional<unsigned int> FindEvent(const std::string& word) {
    for (const auto& e : Events()) {
        if (word == e.shortName || word == e.handler) {
            return e.id;
        }
    }
    // Any number is passed on: the set's factory-command service may send ids this
    // library has no handler for, and the framework's default answer is worth seeing.
    const auto number = ParseNumber(word);
    if (number && *number <= 0xFFFFFFFFULL) {
        return static_cast<unsigned int>(*number);
    }
    return std::nullopt;
}

std::string EventLabel(unsigned int id) {
    for (const auto& e : Events()) {
        if (e.id == id) {
            return std::to_string(id) + " " + e.shortName;
        }
    }
    return std::to_string(id) + " (no handler)";
}

std::string TimerLabel(unsigned long id) {
#define FACTORY_SIM_TIMER(name, timerId, handler) {timerId, #handler},
    static const std::vector<std::pair<unsigned long, const char*>> timers = {
        FACTORY_TIMER_LIST(FACTORY_SIM_TIMER)};
#undef FACTORY_SIM_TIMER
    std::string handler = "(no handler)";
    for (const auto& t : timers) {
        if (t.first == id) {
            handler = t.second;
            break;  // 39 and 58 share a handler; the first listed is the map's
        }
    }
    return "timer " + std::to_string(id) + " " + handler;
}

const std::vector<KeyName>& Keys() {
    // Digits are not among the codes the factory pages act on; the set's remote
    // sends them as their ASCII codes, as it sends select as 13.
    static const std::vector<KeyName> keys = {
        {"exit", FactoryKey::Exit},
        {"panel-exit", FactoryKey::PanelExit},
        {"menu", FactoryKey::Menu},
        {"panel-menu", FactoryKey::PanelMenu},
        {"power", FactoryKey::Power},
        {"panel-power", FactoryKey::PanelPower},
        {"panel-down", FactoryKey::PanelDown},
        {"panel-up", FactoryKey::PanelUp},
        {"panel-function", FactoryKey::PanelFunction},
        {"up", FactoryKey::Up},
        {"down", FactoryKey::Down},
        {"ok", FactoryKey::Select},
        {"store", FactoryKey::AtvStore},
        // The editors' arrows and coloured keys.
        {"left", 0xF000},
        {"right", 0xF001},
        {"red", 0xF042},
        {"green", 0xF043},
        {"yellow", 0xF044},
        {"blue", 0xF045},
        {"0", '0'},
        {"1", '1'},
        {"2", '2'},
        {"3", '3'},
        {"4", '4'},
        {"5", '5'},
        {"6", '6'},
        {"7", '7'},
        {"8", '8'},
        {"9", '9'},
    };
    return keys;
}

std::optional<unsigned long> FindKey(const std::string& word) {
    for (const auto& k : Keys()) {
        if (word == k.name) {
            return k.code;
        }
    }
    const auto number = ParseNumber(word);
    if (number && *number <= 0xFFFFFFFFULL) {
        return static_cast<unsigned long>(*number);
    }
    return std::nullopt;
}

const std::vector<AtRequest>& AtRequests() {
    static const std::vector<AtRequest> requests = {
        {"version", FactoryEvent::GetATCmd, 0, "version check record"},
        {"release", FactoryEvent::ReleaseAT_Cmd, 0, "release the AT channel"},
        {"tjp", FactoryEvent::TJP, 0, "TJP request"},
        {"teletext-on", FactoryEvent::TeletextOnOffForUARTCmd, 1, "teletext on"},
        {"teletext-off", FactoryEvent::TeletextOnOffForUARTCmd, 0, "teletext off"},
        {"wol", FactoryEvent::GetWoLWakeupEvent, 0, "wake-on-LAN wake-up"},
    };
    return requests;
}

const AtRequest* FindAt(const std::string& word) {
    for (const auto& r : AtRequests()) {
        if (word == r.name) {
            return &r;
        }
    }
    return nullptr;
}

std::string ListenerMeaning(unsigned long code) {
    struct Meaning {
        unsigned long code;
        const char* text;
    };
    static const Meaning meanings[] = {
        {FactoryListener::UiSocketClosed, "factory UI socket closed"},
        {FactoryListener::GetHostUi, "bring the host UI back"},
        {FactoryListener::KillHostUi, "kill the host UI"},
        {FactoryListener::IrBlasterTest, "IR blaster test"},
        {FactoryListener::OsdLanguageToEnglish, "change the OSD language to English"},
        {FactoryListener::ShipoutDone, "shipout done"},
        {FactoryListener::LocalDimmingOn, "local dimming on"},
        {FactoryListener::LocalDimmingOff, "local dimming off"},
    };
    for (const auto& m : meanings) {
        if (m.code == code) {
            return m.text;
        }
    }
    return "unknown code";
}

std::vector<std::string> SplitWords(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> words;
    for (std::string w; in >> w;) {
        words.push_back(w);
    }
    return words;
}

std::string Trim(const std::string& text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string::npos) {
        return "";
    }
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

}  // namespace factorysim
