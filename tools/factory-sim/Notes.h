// The notifications the factory UI page receives, as seen by the simulated set's
// web-application manager: echoed live, and kept for the script's expect lines.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace factorysim {

struct Note {
    int channel = 0;
    std::string cmd;
    std::string data;  // the number in decimal when numeric
    bool numeric = false;
};

class Notes {
public:
    // onNote is called on whatever thread the page client runs.
    static void Watch(std::function<void(const Note&)> onNote);
    // Every notification since the previous call, after the page has settled.
    static std::vector<Note> TakeSinceLast();
};

}  // namespace factorysim
