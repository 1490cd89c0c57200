// What the factory UI page received, asserted whole: cmd, data and the data's JSON
// type (the page treats the number 0 and the string "0" differently). Every suite
// compares notification streams with these.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "SimSet.h"
#include "SimWebApp.h"

struct Note {
    std::string cmd;
    std::string data;  // the number in decimal, or the string
    bool numeric;

    bool operator==(const Note& o) const {
        return cmd == o.cmd && data == o.data && numeric == o.numeric;
    }
    bool operator!=(const Note& o) const { return !(*this == o); }
};
using NoteList = std::vector<Note>;

// {"cmd":cmd,"data":"text"}
inline Note Str(const std::string& cmd, const std::string& data) { return {cmd, data, false}; }
// {"cmd":cmd,"data":n}
inline Note Num(const std::string& cmd, long long n) { return {cmd, std::to_string(n), true}; }

inline void PrintTo(const Note& n, std::ostream* os) {
    *os << n.cmd << "=" << (n.numeric ? n.data : "\"" + n.data + "\"");
}
inline std::ostream& operator<<(std::ostream& os, const Note& n) {
    PrintTo(n, &os);
    return os;
}

// Every notification the page has received so far, in order (the page has settled).
inline NoteList UiNotes() {
    NoteList out;
    for (const auto& n : sim::Set::Instance().Get<sim::WebAppState>().Notes()) {
        if (n.channel == 0) {
            out.push_back({n.cmd, n.data, n.numeric});
        }
    }
    return out;
}
// Forgets what the page received, so that a test can look at one step's output.
inline void ClearUiNotes() { sim::Set::Instance().Get<sim::WebAppState>().ClearNotes(); }
