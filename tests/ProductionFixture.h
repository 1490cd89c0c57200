// A host-driven set for the production-line tests: platform calls of several
// functions in the order they were made, and the notes since the last look.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "SetFixture.h"
#include "UiNotes.h"

class ProductionTest : public HostTest {
protected:
    // "fn args" of every call of the given functions, in journal order.
    std::vector<std::string> CallsIn(const std::vector<std::string>& fns) {
        std::vector<std::string> out;
        for (const auto& e : Journal().Entries()) {
            if (e.kind == "call" && std::find(fns.begin(), fns.end(), e.fn) != fns.end()) {
                out.push_back(e.fn + " " + e.args);
            }
        }
        return out;
    }
    std::vector<std::string> TimerCalls() {
        return CallsIn({"MEvtHandle::SetTimer", "MEvtHandle::KillTimer"});
    }
    // What the page received since the previous call.
    NoteList TakeNotes() {
        NoteList notes = UiNotes();
        ClearUiNotes();
        return notes;
    }
};
