#include "Notes.h"

#include "SimWebApp.h"

namespace factorysim {

namespace {
Note FromUi(const sim::UiNote& n) { return Note{n.channel, n.cmd, n.data, n.numeric}; }
}  // namespace

void Notes::Watch(std::function<void(const Note&)> onNote) {
    sim::Set::Instance().Get<sim::WebAppState>().SetOnNote(
        [onNote](const sim::UiNote& n) { onNote(FromUi(n)); });
}

std::vector<Note> Notes::TakeSinceLast() {
    auto& web = sim::Set::Instance().Get<sim::WebAppState>();
    std::vector<Note> out;
    for (const auto& n : web.Notes()) {
        out.push_back(FromUi(n));
    }
    web.ClearNotes();
    return out;
}

}  // namespace factorysim
