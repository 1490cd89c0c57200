// The notifications the factory UI page receives, as seen by the simulated set's
// web-application manager: echoed live, and queued for the script's expect lines,
// which consume them in order.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
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
    using Match = std::function<bool(const Note&)>;

    // onNote is called on whatever thread the page client runs; every note is also
    // queued for TakeFirst, at most `window` of them (the oldest go first).
    static void Watch(std::function<void(const Note&)> onNote, size_t window = 20000);
    // The first queued note that matches: it and every note before it leave the
    // queue. None: the queue is left as it is.
    static std::optional<Note> TakeFirst(const Match& match);
    // What is queued, oldest first.
    static std::vector<Note> Pending();
    // Returns when a note arrives or at the deadline.
    static void WaitForNew(std::chrono::steady_clock::time_point deadline);
    // How many notes the window dropped unread so far.
    static size_t Dropped();

    // The current screen: the notes of channel 0 since the last "HideAllUIExcept",
    // that one first, so that a page opened late draws what the set shows. At most
    // kScreenLimit (the newest) are kept; a screen is never near that.
    static std::vector<Note> Screen();
    // The screen as a JSON array of {"cmd":..., "data":...}, numbers as numbers.
    static std::string ScreenJson();
    static constexpr size_t kScreenLimit = 4096;
};

}  // namespace factorysim
