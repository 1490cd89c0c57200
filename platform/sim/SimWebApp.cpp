// The simulated web-application manager and the binder service manager that
// tells whether it is registered.
#include "SimWebApp.h"

#include <json-c/json.h>

#include <chrono>
#include <cstring>
#include <thread>

#include "FactoryManager.h"
#include "IServiceManager.h"
#include "SimPageClient.h"
#include "SimSet.h"
#include "WebAppMgr.h"

namespace sim {

const char kFactoryUiUrl[] = "file:///applications/factory/factory-ui.html";

namespace {
constexpr char kUiProtocol[] = "factorymode-0";

bool ParseNote(const std::string& text, UiNote& note) {
    json_object* root = json_tokener_parse(text.c_str());
    if (root == nullptr) {
        return false;
    }
    json_object* cmd = nullptr;
    json_object* data = nullptr;
    const bool ok = json_object_get_type(root) == json_type_object &&
                    json_object_object_get_ex(root, "cmd", &cmd) &&
                    json_object_object_get_ex(root, "data", &data);
    if (ok) {
        note.channel = 0;
        note.cmd = json_object_get_string(cmd);
        note.numeric = json_object_get_type(data) == json_type_int;
        note.data = note.numeric ? std::to_string(json_object_get_int64(data))
                                 : std::string(json_object_get_string(data));
        note.text = text;
    }
    json_object_put(root);
    return ok;
}
}  // namespace

WebAppState::WebAppState() = default;

WebAppState::~WebAppState() {
    std::lock_guard<std::mutex> lock(m_pageMutex);
    m_client.reset();
}

void WebAppState::OnText(const std::string& text) {
    UiNote note;
    if (!ParseNote(text, note)) {
        // Still seen: a frame the page could not read is worth a look in a test.
        note = UiNote{0, "", "", false, text};
    }
    std::function<void(const UiNote&)> callback;
    {
        std::lock_guard<std::mutex> lock(m_noteMutex);
        m_notes.push_back(note);
        // Trimmed in halves, so that a long run pays for it once per window.
        if (m_noteWindow != 0 && m_notes.size() > 2 * m_noteWindow) {
            m_notes.erase(m_notes.begin(), m_notes.end() - static_cast<long>(m_noteWindow));
        }
        callback = m_onNote;
    }
    if (callback) {
        callback(note);
    }
}

bool WebAppState::Settle() {
    std::lock_guard<std::mutex> lock(m_pageMutex);
    ++m_settling;
    const bool settled = m_client && m_client->Settle(std::chrono::milliseconds(pageTimeoutMs));
    --m_settling;
    return settled;
}

void WebAppState::SetNoteWindow(size_t notes) {
    std::lock_guard<std::mutex> lock(m_noteMutex);
    m_noteWindow = notes;
}

std::vector<UiNote> WebAppState::Notes() {
    Settle();
    std::lock_guard<std::mutex> lock(m_noteMutex);
    return m_notes;
}

void WebAppState::ClearNotes() {
    Notes();  // what is on its way belongs to the notes being cleared
    std::lock_guard<std::mutex> lock(m_noteMutex);
    m_notes.clear();
}

void WebAppState::SetOnNote(std::function<void(const UiNote&)> callback) {
    std::lock_guard<std::mutex> lock(m_noteMutex);
    m_onNote = std::move(callback);
}

std::string WebAppState::PageAt(int index) const {
    std::lock_guard<std::mutex> lock(m_pageMutex);
    auto it = m_pages.find(index);
    return it == m_pages.end() ? std::string() : it->second;
}

bool WebAppState::IsHidden(int index) const {
    std::lock_guard<std::mutex> lock(m_pageMutex);
    return m_hidden.count(index) != 0;
}

bool WebAppState::PageConnected() const {
    std::lock_guard<std::mutex> lock(m_pageMutex);
    return m_client && m_client->Greeted();
}

void WebAppState::ClosePage() {
    if (m_client) {
        m_client->Close(std::chrono::milliseconds(pageTimeoutMs));
    }
}

void WebAppState::Load(const std::string& url, int index) {
    std::lock_guard<std::mutex> lock(m_pageMutex);
    m_pages[index] = url;
    if (index != 0) {
        return;
    }
    // Index 0 holds one page at a time: another page there closes the UI page's socket.
    if (url != kFactoryUiUrl || !pageConnects) {
        ClosePage();
        return;
    }
    if (m_client && m_client->Greeted()) {
        return;
    }
    ClosePage();
    // The page belongs to this set's server: while it is not up (its port may be
    // another program's), the page does not connect at all.
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(pageTimeoutMs);
    while (FactoryManager::m_stContext.load() == nullptr) {
        if (std::chrono::steady_clock::now() >= until) {
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    if (!m_client) {
        const Options& options = Set::Instance().Config();
        m_client = std::make_unique<PageClient>(options.listenAddress, options.port, kUiProtocol,
                                                [this](const std::string& text) { OnText(text); });
    }
    // Returns once greeted, so a run in virtual time never waits on the page.
    m_client->Open(std::chrono::milliseconds(pageTimeoutMs));
}

void WebAppState::Unload(int index) {
    std::lock_guard<std::mutex> lock(m_pageMutex);
    m_pages.erase(index);
    m_hidden.erase(index);
    if (index == 0) {
        ClosePage();
    }
}

void WebAppState::Show(int index) {
    std::lock_guard<std::mutex> lock(m_pageMutex);
    m_hidden.erase(index);
}

void WebAppState::Hide(int index) {
    std::lock_guard<std::mutex> lock(m_pageMutex);
    m_hidden.insert(index);
}

}  // namespace sim

using sim::ArgList;
using sim::Set;

int WebAppMgr_LoadPage(const char* url, int index) {
    Set::Instance().RecordCall("WebAppMgr_LoadPage", ArgList(url, index));
    Set::Instance().Get<sim::WebAppState>().Load(url ? url : "", index);
    return 0;
}

int WebAppMgr_UnloadPage(int index) {
    Set::Instance().RecordCall("WebAppMgr_UnloadPage", ArgList(index));
    Set::Instance().Get<sim::WebAppState>().Unload(index);
    return 0;
}

int WebAppMgr_ShowPage(int index) {
    Set::Instance().RecordCall("WebAppMgr_ShowPage", ArgList(index));
    Set::Instance().Get<sim::WebAppState>().Show(index);
    return 0;
}

int WebAppMgr_HidePage(int index) {
    Set::Instance().RecordCall("WebAppMgr_HidePage", ArgList(index));
    Set::Instance().Get<sim::WebAppState>().Hide(index);
    return 0;
}

int WebAppMgr_SendCommand(int command, const char* argument) {
    Set::Instance().RecordCall("WebAppMgr_SendCommand", ArgList(command, argument));
    return 0;
}

// ---- Binder service manager ----------------------------------------------------------

namespace {

class SimBinder : public android::IBinder {};

class SimServiceManager : public android::IServiceManager {
public:
    android::sp<android::IBinder> checkService(const android::String16& name) const override {
        const char* text = name.string() ? name.string() : "";
        Set::Instance().RecordCall("IServiceManager::checkService", ArgList(text));
        static SimBinder webAppMgr;
        const bool registered = std::strcmp(text, "soc.webappmgr") == 0 &&
                                Set::Instance().Get<sim::WebAppState>().serviceRegistered;
        return registered ? &webAppMgr : nullptr;
    }
};

}  // namespace

android::sp<android::IServiceManager> android::defaultServiceManager() {
    static SimServiceManager services;
    return &services;
}
