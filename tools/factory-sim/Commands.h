// The operator's command language: one interpreter for the console, --script files
// and the page's control endpoint. Every command that touches the manager or the
// simulated set runs on the set's event thread.
#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "SetFields.h"

class FactoryManager;

namespace factorysim {

struct Outcome {
    bool ok = true;
    std::string output;  // what the command prints; the reason when !ok
    bool quit = false;
};

class Commands {
public:
    Commands(const SetFields& fields, FactoryManager* manager);

    // One line; blank lines and # comments do nothing.
    Outcome Execute(const std::string& line);

    // Runs work on the event thread and returns when it is done.
    static void OnEventThread(const std::function<void()>& work);

    // In real time an expect waits this long for its notification.
    void SetExpectTimeout(unsigned long ms) { m_expectTimeoutMs = ms; }
    // Ends real-time waits at once (the run is being stopped).
    static void Interrupt();

private:
    using Words = std::vector<std::string>;
    struct Command {
        const char* name;
        const char* usage;
        const char* help;
        std::string (Commands::*run)(const Words& words, const std::string& rest, std::string& out);
    };
    static const std::vector<Command>& Table();

    std::string Help(const Words& w, const std::string& rest, std::string& out);
    std::string Event(const Words& w, const std::string& rest, std::string& out);
    std::string EventList(const Words& w, const std::string& rest, std::string& out);
    std::string Key(const Words& w, const std::string& rest, std::string& out);
    std::string At(const Words& w, const std::string& rest, std::string& out);
    std::string SetField(const Words& w, const std::string& rest, std::string& out);
    std::string GetField(const Words& w, const std::string& rest, std::string& out);
    std::string Wait(const Words& w, const std::string& rest, std::string& out);
    std::string Journal(const Words& w, const std::string& rest, std::string& out);
    std::string Expect(const Words& w, const std::string& rest, std::string& out);
    std::string ExpectNone(const Words& w, const std::string& rest, std::string& out);
    std::string Quit(const Words& w, const std::string& rest, std::string& out);
    // In ServiceCommand.cpp.
    std::string Service(const Words& w, const std::string& rest, std::string& out);

    std::string EventHelpText(const std::string& word, std::string& out);
    void Post(unsigned int id, uintptr_t p1, uintptr_t p2, uintptr_t p3);

    const SetFields& m_fields;
    FactoryManager* m_manager;
    std::mutex m_mutex;  // one command at a time, whoever sends it
    unsigned long m_expectTimeoutMs = 5000;
};

}  // namespace factorysim
