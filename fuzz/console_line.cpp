// factory-sim's command language over any line: the console, scripts and the page's
// control endpoint all go through Commands::Execute, on a set in virtual time.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>

#include "Commands.h"
#include "FuzzSet.h"
#include "SetFields.h"
#include "SimWebApp.h"

namespace {

std::unique_ptr<factorysim::SetFields> g_fields;
std::unique_ptr<factorysim::Commands> g_commands;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // No built-in page: its connection would be waited for in real time.
    fuzz::Tv().Get<sim::WebAppState>().pageConnects = false;
    g_fields = std::make_unique<factorysim::SetFields>();
    g_commands = std::make_unique<factorysim::Commands>(*g_fields, &fuzz::Fm());
    g_commands->SetExpectTimeout(10);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string line(reinterpret_cast<const char*>(data), size);
    // One line, as the console reads it. 'wait' is left out: up to a week of timer
    // ticks per line would only burn the run.
    std::istringstream words(line);
    std::string first;
    words >> first;
    if (line.find('\n') != std::string::npos || first == "wait") {
        return 0;
    }
    g_commands->Execute(line);
    fuzz::EndRun();
    return 0;
}
