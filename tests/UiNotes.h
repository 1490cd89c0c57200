// What the factory UI page received, asserted whole: cmd, data and the data's JSON
// type (the page treats the number 0 and the string "0" differently). Every suite
// compares notification streams with these.
#pragma once

#include <cctype>
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

// A stream written compactly, as PrintTo prints it: whitespace-separated notes, each
// cmd=123 (number) or cmd="text" (string; \" and \\ inside). Whole-stream tables use it.
inline NoteList Notes(const std::string& text) {
    NoteList out;
    size_t i = 0;
    const auto skipBlanks = [&] {
        while (i < text.size() && std::isspace(static_cast<unsigned char>(text[i]))) ++i;
    };
    for (skipBlanks(); i < text.size(); skipBlanks()) {
        const size_t eq = text.find('=', i);
        Note n{text.substr(i, eq - i), "", true};
        i = eq + 1;
        if (i < text.size() && text[i] == '"') {
            n.numeric = false;
            for (++i; i < text.size() && text[i] != '"'; ++i) {
                n.data += text[i] == '\\' ? text[++i] : text[i];
            }
            ++i;
        } else {
            while (i < text.size() && !std::isspace(static_cast<unsigned char>(text[i]))) {
                n.data += text[i++];
            }
        }
        out.push_back(n);
    }
    return out;
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
