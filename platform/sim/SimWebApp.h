// The simulated web-application manager: the pages loaded, shown and hidden, and the
// built-in factory UI page, which connects to the library's WebSocket server as the
// set's browser does and keeps every notification it receives.
#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "SimSet.h"

namespace sim {

class PageClient;

// One notification as the page received it.
struct UiNote {
    int channel;  // 0 for factorymode-0
    std::string cmd;
    std::string data;  // the number in decimal, or the string
    bool numeric;
    std::string text;  // the exact frame text
};

struct WebAppState : Area {
    bool serviceRegistered = true;  // "soc.webappmgr" is registered
    bool pageConnects = true;       // loading the UI page brings the built-in page client
    int pageTimeoutMs = 5000;       // real-time bound on the page's connection and settling

    WebAppState();
    ~WebAppState() override;

    // Every notification the page has received, in order, after settling: every
    // NotifyUI made before this call has arrived. Greeting and "connect" echoes are
    // not notes.
    std::vector<UiNote> Notes();
    void ClearNotes();
    // factory-sim's trace and console see each note as it arrives (called on the
    // page client's thread).
    void SetOnNote(std::function<void(const UiNote&)> callback);
    // Waits until the page has received every notification sent so far (the
    // "connect" echo is the barrier). False when no page is connected or it timed out.
    bool Settle();
    // Whether a Settle is waiting for its echo (any thread may ask).
    bool SettleInFlight() const { return m_settling.load() > 0; }
    // Keeps only the newest notes, for a host that runs for days; 0 keeps them all.
    void SetNoteWindow(size_t notes);

    // The page at an index ("" when none) and whether it is hidden.
    std::string PageAt(int index) const;
    bool IsHidden(int index) const;
    // Whether the built-in page is connected and greeted by the server.
    bool PageConnected() const;

    // The web-application manager's own calls.
    void Load(const std::string& url, int index);
    void Unload(int index);
    void Show(int index);
    void Hide(int index);

private:
    void OnText(const std::string& text);
    void ClosePage();

    mutable std::mutex m_pageMutex;  // pages and the page client
    std::map<int, std::string> m_pages;
    std::set<int> m_hidden;
    std::unique_ptr<PageClient> m_client;
    std::atomic<int> m_settling{0};

    std::mutex m_noteMutex;
    std::vector<UiNote> m_notes;
    size_t m_noteWindow = 0;
    std::function<void(const UiNote&)> m_onNote;
};

// The factory UI page's address.
extern const char kFactoryUiUrl[];

}  // namespace sim
