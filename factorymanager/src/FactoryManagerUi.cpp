// UI notification and page control: NotifyUI, the wait for the factory UI page, and
// the wrappers around the web-application manager.
#include <json-c/json.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "FactoryListenerCodes.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "FactoryWebSocketServer.h"
#include "IServiceManager.h"
#include "TvHost.h"
#include "Utf8Text.h"
#include "WebAppMgr.h"

namespace {

constexpr char kFactoryUiPage[] = "file:///applications/factory/factory-ui.html";
// The set's notification buffer; longer texts are still sent, but said so.
constexpr size_t kNotifyBufferSize = 112;
constexpr int kUiWaitTries = 5;
constexpr unsigned int kUiWaitSeconds = 2;

const char* const kKeyWritingPages[] = {
    "file:///applications/factory/factory-ui-static.html?cmd=key-writing-start",
    "file:///applications/factory/factory-ui-static.html?cmd=key-writing-success",
    "file:///applications/factory/factory-ui-static.html?cmd=key-writing-fail",
    "file:///applications/factory/factory-ui-static.html?cmd=key-writing-off",
};
const char* const kSerialNoPages[] = {
    "file:///applications/factory/factory-ui-serialno.html?cmd=key-serial-no-writing-start",
    "file:///applications/factory/factory-ui-serialno.html?cmd=key-serial-no-writing-success",
    "file:///applications/factory/factory-ui-serialno.html?cmd=key-serial-no-writing-fail",
};

}  // namespace

void FactoryManager::NotifyUI(int channel, const char* cmd, long data) {
    NotifyUI(channel, cmd, static_cast<long long>(data));
}

void FactoryManager::NotifyUI(int channel, const char* cmd, long long data) {
    CheckFactoryUiIsReady();
    SendNotification(channel, cmd, json_object_new_int64(data));
}

void FactoryManager::NotifyUI(int channel, const char* cmd, char* data) {
    NotifyUI(channel, cmd, static_cast<const char*>(data));
}

void FactoryManager::NotifyUI(int channel, const char* cmd, const char* data) {
    CheckFactoryUiIsReady();
    if (data == nullptr) {
        FACTORY_LOG(FACTORY_LOG_ERROR, "NotifyUI: %s without data, not sent", cmd ? cmd : "(null)");
        return;
    }
    // A browser closes the page's socket on the first byte that is not UTF-8 (a
    // store area still at 0xFF, say), and every later notification would be lost.
    bool mended = false;
    const std::string text = factory_text::ValidUtf8(data, &mended);
    if (mended && cmd != nullptr) {
        FACTORY_LOG(FACTORY_LOG_ERROR, "NotifyUI: %s data is not UTF-8; bad bytes replaced",
                    factory_text::ValidUtf8(cmd).c_str());
    }
    SendNotification(channel, cmd, json_object_new_string(text.c_str()));
}

void FactoryManager::SendNotification(int channel, const char* cmd, json_object* data) {
    if (cmd == nullptr) {
        FACTORY_LOG(FACTORY_LOG_ERROR, "NotifyUI: no cmd, not sent");
        json_object_put(data);
        return;
    }
    json_object* message = json_object_new_object();
    bool mended = false;
    const std::string name = factory_text::ValidUtf8(cmd, &mended);
    if (mended) {
        FACTORY_LOG(FACTORY_LOG_ERROR, "NotifyUI: %s is not UTF-8; bad bytes replaced",
                    name.c_str());
    }
    json_object_object_add(message, "cmd", json_object_new_string(name.c_str()));
    json_object_object_add(message, "data", data);
    // The text is sent as it stands: it is never a format, and a cut JSON text
    // would be no message at all.
    const std::string text = json_object_to_json_string(message);
    if (text.size() + 1 > kNotifyBufferSize) {
        FACTORY_LOG(FACTORY_LOG_ERROR,
                    "NotifyUI: %s is %zu bytes, over the %zu-byte buffer; sent whole", name.c_str(),
                    text.size(), kNotifyBufferSize);
    }
    if (channel == 0 || channel == 1) {
        factory_ws::Broadcast(channel + 1, text);
    }
    json_object_put(message);
}

void FactoryManager::CheckFactoryUiIsReady() {
    if (!m_bWebSocketThreadStarted) {
        factory_ws::PrepareStart();
        if (pthread_create(&m_hWebSocketThread, nullptr, threadInitFactoryWebsocketServer,
                           nullptr) == 0) {
            m_bWebSocketThreadStarted = 1;
        } else {
            FACTORY_LOG(FACTORY_LOG_ERROR, "cannot start the websocket server thread");
        }
    }
    if (m_isFactoryUiLoaded == 0) {
        FACTORY_LOG(FACTORY_LOG_INFO, "Factory UI not loaded");
        WebAppMgr_LoadPage(kFactoryUiPage, 0);
    } else {
        FACTORY_LOG(FACTORY_LOG_INFO, "Factory UI already loaded");
    }
    for (int count = 0; count < kUiWaitTries && m_isFactoryUiLoaded == 0; ++count) {
        TvHost_Sleep(kUiWaitSeconds);
        FACTORY_LOG(FACTORY_LOG_INFO, "Waiting for websocket connection from Factory UI... (%d)",
                    count);
    }
    if (m_isFactoryUiLoaded == 1) {
        FACTORY_LOG(FACTORY_LOG_INFO, "Factory UI loaded successfully");
    } else {
        FACTORY_LOG(FACTORY_LOG_INFO, "Factory UI cannot be loaded");
    }
}

BOOL FactoryManager::isWebAppMgrServiceInitialized() {
    android::sp<android::IServiceManager> services = android::defaultServiceManager();
    const bool found = services != nullptr &&
                       services->checkService(android::String16("soc.webappmgr")) != nullptr;
    FACTORY_LOG(FACTORY_LOG_INFO, "[%s] %s", __PRETTY_FUNCTION__, found ? "TRUE" : "FALSE");
    return found ? 1 : 0;
}

void FactoryManager::LoadPageFromEnv() {
    const char* value = std::getenv("DEFAULT_HTML_PATH");
    if (value == nullptr) {
        return;
    }
    FACTORY_LOG(FACTORY_LOG_INFO, ">> Environment DEFAULT_HTML_PATH:%s \033[0m ", value);
    // Every blank ends a piece, so two blanks in a row load an empty page name.
    const std::string paths = value;
    int index = 0;
    size_t start = 0;
    for (;;) {
        const size_t blank = paths.find(' ', start);
        const std::string piece = paths.substr(start, blank - start);
        WebAppMgr_LoadPage(piece.c_str(), index++);
        if (blank == std::string::npos) {
            break;
        }
        start = blank + 1;
    }
}

MAPI_BOOL FactoryManager::ClearFactoryUiWeb() {
    WebAppMgr_UnloadPage(0);
    return 1;
}

// Pages call it on entry (1) and exit (0); the host needs nothing from it.
void FactoryManager::InfoZYTAppMgr(unsigned char) {}

void FactoryManager::InfoZYTAppMgrForVersion(unsigned char kill) {
    if (g_pFactoryListener.load() == nullptr) {
        return;
    }
    if (kill) {
        puts("~~ Kill ZYT UI [FactoryManager::InfoZYTAppMgrForVersion]");
        NotifyFactoryListener(FactoryListener::KillHostUi);
    } else {
        puts("~~ Get ZYT UI [FactoryManager::InfoZYTAppMgrForVersion]");
        NotifyFactoryListener(FactoryListener::GetHostUi);
    }
}

void FactoryManager::InfoWebAppMgrHideShowPage(unsigned char hide, unsigned char index) {
    if (hide) {
        printf("~~ [InfoWebAppMgrHideShowPage] idx= %d -- [Hide] ZYT Page TRUE\n", index);
        WebAppMgr_HidePage(index);
    } else {
        printf("~~ [InfoWebAppMgrHideShowPage] idx= %d -- [Show] ZYT Page FALSE\n", index);
        WebAppMgr_ShowPage(index);
    }
}

void FactoryManager::ShowKeyWriting(MAPI_U16 status) {
    FACTORY_TRACE();
    FACTORY_LOG(FACTORY_LOG_INFO, "ShowKeyWriting");
    printf("\n~~ [FactoryManager::ShowKeyWriting] u16WritingStatus=%d\n\n", status);
    switch (status) {
        case 0:
            InfoZYTAppMgrForVersion(1);
            m_bKeyWritingResult = 0;
            break;
        case 1:
        case 2:
            m_bKeyWritingResult = 1;
            break;
        case 3:
            m_bKeyWritingResult = 0;
            break;
        default:
            return;
    }
    WebAppMgr_LoadPage(kKeyWritingPages[status], 0);
    if (status == 3) {
        InfoZYTAppMgrForVersion(0);
    }
}

void FactoryManager::ShowSerialNoWriting(MAPI_U16 status) {
    FACTORY_TRACE();
    FACTORY_LOG(FACTORY_LOG_INFO, "ShowSerialNoWriting");
    if (status < sizeof(kSerialNoPages) / sizeof(kSerialNoPages[0])) {
        WebAppMgr_LoadPage(kSerialNoPages[status], 0);
    }
}
