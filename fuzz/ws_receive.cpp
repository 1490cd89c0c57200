// A message a page sends, through the server's own callback: over a real loopback
// connection to the library's server, each input one text frame, followed by
// "connect" whose echo says the server has dealt with it. A connection the server
// closes (a message over the bound) is made again.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "FuzzSet.h"
#include "SimWebApp.h"
#include "WsTestClient.h"

namespace {

std::unique_ptr<wstest::Client> g_page;

void Connect() {
    g_page = std::make_unique<wstest::Client>();
    if (!g_page->Connect(fuzz::Tv().Config().port, "factorymode-0")) {
        __builtin_trap();  // the server must keep accepting pages
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzz::Tv().Get<sim::WebAppState>().pageConnects = false;
    FactoryManager::SetFactoryModeState(1);
    fuzz::Fm().CheckFactoryUiIsReady();  // starts the server
    Connect();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (g_page->Closed()) {
        Connect();
    }
    g_page->SendText(std::string(reinterpret_cast<const char*>(data), size));
    g_page->SendText("{\"cmd\":\"connect\"}");
    for (;;) {
        const auto text = g_page->Receive(10000);
        if (!text) {
            if (!g_page->Closed()) {
                __builtin_trap();  // the server stopped answering
            }
            break;
        }
        if (*text == "connect") {
            break;
        }
    }
    fuzz::EndRun();
    return 0;
}
