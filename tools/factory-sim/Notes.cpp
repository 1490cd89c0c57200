#include "Notes.h"

#if __has_include("SimWebApp.h")
#include "SimWebApp.h"
#define FACTORY_SIM_HAS_WEB_APP 1
#endif

namespace factorysim {

#ifdef FACTORY_SIM_HAS_WEB_APP

bool Notes::Available() { return true; }

void Notes::Watch(std::function<void(const Note&)> onNote) {
    sim::Set::Instance().Get<sim::WebAppState>().SetOnNote([onNote](const sim::UiNote& n) {
        onNote(Note{n.channel, n.cmd, n.data, n.numeric});
    });
}

std::vector<Note> Notes::TakeSinceLast() {
    auto& web = sim::Set::Instance().Get<sim::WebAppState>();
    std::vector<Note> out;
    for (const auto& n : web.Notes()) {
        out.push_back(Note{n.channel, n.cmd, n.data, n.numeric});
    }
    web.ClearNotes();
    return out;
}

#else

// This set has no web-application manager yet: the page and its notes are absent.
bool Notes::Available() { return false; }
void Notes::Watch(std::function<void(const Note&)>) {}
std::vector<Note> Notes::TakeSinceLast() { return {}; }

#endif

}  // namespace factorysim
