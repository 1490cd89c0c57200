// The factory UI server seen from real clients over loopback: greeting, the
// "connect" exchange, per-protocol notifications, closing, and the HTTP test page.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimWebApp.h"
#include "WsTestClient.h"

namespace {

std::atomic<int> g_closedCalls{0};
std::atomic<int> g_otherCalls{0};

unsigned char CountingListener(unsigned long code, void*, void*) {
    (code == 0x12001 ? g_closedCalls : g_otherCalls)++;
    return 0;
}

// A set whose own page never connects, so that the test's clients are the only ones.
class WebSocketServerTest : public SetTest {
protected:
    void SetUp() override {
        SetTest::SetUp();
        g_closedCalls = 0;
        g_otherCalls = 0;
        FactoryManager::SetFactoryModeState(1);
        Tv().Get<sim::WebAppState>().pageConnects = false;
        Fm().setFactoryEventListener(CountingListener);
        Fm().CheckFactoryUiIsReady();  // starts the server
    }

    int Port() { return Tv().Config().port; }

    // A client on the protocol, past the greeting.
    std::unique_ptr<wstest::Client> Greeted(const std::string& protocol) {
        auto client = std::make_unique<wstest::Client>();
        EXPECT_TRUE(client->Connect(Port(), protocol));
        EXPECT_EQ(client->Receive(), std::optional<std::string>("{\"cmd\":\"established\"}"));
        return client;
    }

    // Everything the server had queued for this client before now has arrived
    // once its "connect" comes back.
    void ExpectNothingPending(wstest::Client& client) {
        ASSERT_TRUE(client.SendText("{\"cmd\":\"connect\"}"));
        EXPECT_EQ(client.Receive(), std::optional<std::string>("connect"));
    }
};

TEST_F(WebSocketServerTest, GreetsEachPageAndAnswersConnect) {
    EXPECT_EQ(FactoryManager::m_isFactoryUiLoaded.load(), 0);
    auto page = Greeted("factorymode-0");
    EXPECT_EQ(FactoryManager::m_isFactoryUiLoaded.load(), 1);
    ExpectNothingPending(*page);
    EXPECT_TRUE(Journal().HasLog("    Protocol = factorymode-0"));
    EXPECT_TRUE(Journal().HasLog("callback_factory: LWS_CALLBACK_ESTABLISHED"));
}

struct IgnoredInput {
    const char* name;
    const char* text;
    const char* logged;  // a line the server writes about it, or null for silence
};

void PrintTo(const IgnoredInput& input, std::ostream* out) { *out << input.name; }

class WebSocketIgnoredInputTest : public WebSocketServerTest,
                                  public ::testing::WithParamInterface<IgnoredInput> {};

TEST_P(WebSocketIgnoredInputTest, NoReplyAndTheConnectionStaysOpen) {
    auto page = Greeted("factorymode-0");
    ASSERT_TRUE(page->SendText(GetParam().text));
    // The next thing to come back is the answer to this connect, not to the input.
    ExpectNothingPending(*page);
    EXPECT_TRUE(page->IsOpen());
    if (GetParam().logged != nullptr) {
        // The set's logs name the callback by its signature there.
        const std::string prefix =
            "[int callback_factory(libwebsocket_context*, libwebsocket*, "
            "libwebsocket_callback_reasons, void*, void*, size_t)] ";
        EXPECT_TRUE(Journal().HasLog(prefix + GetParam().logged));
    }
}

INSTANTIATE_TEST_SUITE_P(
    WebSocketServer, WebSocketIgnoredInputTest,
    ::testing::Values(IgnoredInput{"UnknownCmd", "{\"cmd\":\"reboot\"}", "cmd: reboot, unknown."},
                      IgnoredInput{"NumericCmd", "{\"cmd\":7}", nullptr},
                      IgnoredInput{"NoCmd", "{\"data\":1}", "Invalid input data!"},
                      IgnoredInput{"NullCmd", "{\"cmd\":null}", "Invalid input data!"},
                      IgnoredInput{"Array", "[\"connect\"]", nullptr},
                      IgnoredInput{"BrokenJson", "{\"cmd\":\"conn", "Parse input json error"},
                      IgnoredInput{"Null", "null", nullptr}),
    [](const ::testing::TestParamInfo<IgnoredInput>& info) { return info.param.name; });

TEST_F(WebSocketServerTest, FactoryModeOffMeansNoGreetingAndNoAnswer) {
    FactoryManager::SetFactoryModeState(0);
    wstest::Client page;
    ASSERT_TRUE(page.Connect(Port(), "factorymode-0"));
    ASSERT_TRUE(page.SendText("{\"cmd\":\"connect\"}"));
    EXPECT_EQ(page.Receive(500), std::nullopt);
    EXPECT_EQ(FactoryManager::m_isFactoryUiLoaded.load(), 0);
}

TEST_F(WebSocketServerTest, FactoryModeOffThenOnAgainOnTheSameConnection) {
    auto page = Greeted("factorymode-0");
    FactoryManager::SetFactoryModeState(0);
    ASSERT_TRUE(page->SendText("{\"cmd\":\"connect\"}"));
    Fm().NotifyUI(0, "WhileOff", 1);
    EXPECT_EQ(page->Receive(300), std::nullopt);
    EXPECT_FALSE(page->Closed()) << "ignored, not dropped";
    FactoryManager::SetFactoryModeState(1);
    Fm().NotifyUI(0, "Back", 2);
    EXPECT_EQ(page->Receive(), std::optional<std::string>("{ \"cmd\": \"Back\", \"data\": 2 }"));
    ExpectNothingPending(*page);
}

// However the page's browser frames its request, it is one request.
struct Framing {
    const char* name;
    std::vector<std::pair<int, std::string>> frames;  // opcode, payload; last one final
};

void PrintTo(const Framing& framing, std::ostream* out) { *out << framing.name; }

class WebSocketFramingTest : public WebSocketServerTest,
                             public ::testing::WithParamInterface<Framing> {};

TEST_P(WebSocketFramingTest, ConnectIsAnsweredOnce) {
    auto page = Greeted("factorymode-0");
    const auto& frames = GetParam().frames;
    for (size_t i = 0; i < frames.size(); ++i) {
        ASSERT_TRUE(page->SendFrame(frames[i].first, frames[i].second, i + 1 == frames.size()));
    }
    EXPECT_EQ(page->Receive(), std::optional<std::string>("connect"));
    Fm().NotifyUI(0, "Next", 1);
    EXPECT_EQ(page->Receive(), std::optional<std::string>("{ \"cmd\": \"Next\", \"data\": 1 }"))
        << "one echo only";
}

INSTANTIATE_TEST_SUITE_P(
    WebSocketServer, WebSocketFramingTest,
    ::testing::Values(Framing{"Binary", {{0x2, "{\"cmd\":\"connect\"}"}}},
                      Framing{"Fragmented", {{0x1, "{\"cmd\""}, {0x0, ":\"conn"}, {0x0, "ect\"}"}}},
                      Framing{"EmptyLastFragment", {{0x1, "{\"cmd\":\"connect\"}"}, {0x0, ""}}}),
    [](const ::testing::TestParamInfo<Framing>& info) { return info.param.name; });

// A request padded to `size` bytes: {"cmd":"connect","pad":"xxx..."}.
std::string ConnectOfSize(size_t size) {
    const std::string head = "{\"cmd\":\"connect\",\"pad\":\"";
    return head + std::string(size - head.size() - 2, 'x') + "\"}";
}

struct SizeCase {
    const char* name;
    size_t size;
    size_t fragment;  // bytes per frame
    bool answered;    // else the connection is closed
};

void PrintTo(const SizeCase& c, std::ostream* out) { *out << c.name; }

class WebSocketMessageSizeTest : public WebSocketServerTest,
                                 public ::testing::WithParamInterface<SizeCase> {};

TEST_P(WebSocketMessageSizeTest, FourKibibytesAtMost) {
    const SizeCase& c = GetParam();
    auto page = Greeted("factorymode-0");
    auto other = Greeted("factorymode-0");
    const std::string text = ConnectOfSize(c.size);
    for (size_t at = 0; at < text.size() && !page->Closed(); at += c.fragment) {
        page->SendFrame(at == 0 ? 0x1 : 0x0, text.substr(at, c.fragment),
                        at + c.fragment >= text.size());
    }
    if (c.answered) {
        EXPECT_EQ(page->Receive(), std::optional<std::string>("connect"));
        EXPECT_FALSE(Journal().HasLog("connection closed"));
    } else {
        EXPECT_TRUE(page->WaitClosed());
        bool logged = false;
        for (const auto& entry : Journal().Entries()) {
            logged |= entry.kind == "log" && (entry.mask & 0xFF) == 2 &&
                      entry.args.find("connection closed") != std::string::npos;
        }
        EXPECT_TRUE(logged) << "logged at level 2";
    }
    ExpectNothingPending(*other);  // the other page is not disturbed
}

INSTANTIATE_TEST_SUITE_P(WebSocketServer, WebSocketMessageSizeTest,
                         ::testing::Values(SizeCase{"Exactly4KiB", 4096, 4096, true},
                                           SizeCase{"Exactly4KiBInFragments", 4096, 1000, true},
                                           SizeCase{"OneByteOver", 4097, 4097, false},
                                           SizeCase{"OneByteOverInFragments", 4097, 1000, false},
                                           SizeCase{"SixtyFourKiB", 65536, 65536, false}),
                         [](const ::testing::TestParamInfo<SizeCase>& info) {
                             return info.param.name;
                         });

// A client that streams fragments forever is cut off once 4 KiB have come, and the
// host hears of it like any closed page.
TEST_F(WebSocketServerTest, EndlessFragmentsAreCutOff) {
    auto page = Greeted("factorymode-0");
    const std::string piece(512, 'f');
    page->SendFrame(0x1, piece, false);
    int sent = 1;
    while (sent < 10000 && page->SendFrame(0x0, piece, false)) {
        ++sent;
        if (sent % 4 == 0 && page->Receive(1).has_value()) {
            break;
        }
        if (page->Closed()) {
            break;
        }
    }
    EXPECT_TRUE(page->WaitClosed());
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(3);
    while (g_closedCalls == 0 && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    EXPECT_EQ(g_closedCalls.load(), 1);
}

TEST_F(WebSocketServerTest, TextThatIsNotUtf8ArrivesAsValidUtf8) {
    auto page = Greeted("factorymode-0");
    Fm().NotifyUI(0, "SerialNum", "AB\xFF\xFF");
    Fm().NotifyUI(0, "Name", "Gr\xC3\xBC\xC3\x9F\xE2\x82\xAC");
    EXPECT_EQ(page->Receive(),
              std::optional<std::string>(
                  "{ \"cmd\": \"SerialNum\", \"data\": \"AB\xEF\xBF\xBD\xEF\xBF\xBD\" }"));
    EXPECT_EQ(page->Receive(),
              std::optional<std::string>(
                  "{ \"cmd\": \"Name\", \"data\": \"Gr\xC3\xBC\xC3\x9F\xE2\x82\xAC\" }"))
        << "valid text byte for byte";
}

TEST_F(WebSocketServerTest, ChannelSelectsTheProtocol) {
    auto zero = Greeted("factorymode-0");
    auto one = Greeted("factorymode-1");
    Fm().NotifyUI(0, "Version", 5);
    Fm().NotifyUI(2, "Nobody", 1);
    Fm().NotifyUI(1, "Other", "x");
    EXPECT_EQ(zero->Receive(), std::optional<std::string>("{ \"cmd\": \"Version\", \"data\": 5 }"));
    EXPECT_EQ(one->Receive(),
              std::optional<std::string>("{ \"cmd\": \"Other\", \"data\": \"x\" }"));
    ExpectNothingPending(*zero);
    ExpectNothingPending(*one);
}

TEST_F(WebSocketServerTest, EveryPageOfTheProtocolGetsEveryNotificationInOrder) {
    auto first = Greeted("factorymode-0");
    auto second = Greeted("factorymode-0");
    for (int i = 0; i < 50; ++i) {
        Fm().NotifyUI(0, "Step", i);
    }
    for (auto* page : {first.get(), second.get()}) {
        for (int i = 0; i < 50; ++i) {
            ASSERT_EQ(page->Receive(),
                      "{ \"cmd\": \"Step\", \"data\": " + std::to_string(i) + " }");
        }
    }
}

TEST_F(WebSocketServerTest, PercentAndLongTextsArriveWhole) {
    auto page = Greeted("factorymode-0");
    const std::string longText(300, 'L');
    Fm().NotifyUI(0, "Ratio%d", "100% %s %n");
    Fm().NotifyUI(0, "Long", longText.c_str());
    EXPECT_EQ(page->Receive(),
              std::optional<std::string>("{ \"cmd\": \"Ratio%d\", \"data\": \"100% %s %n\" }"));
    EXPECT_EQ(page->Receive(), "{ \"cmd\": \"Long\", \"data\": \"" + longText + "\" }");
    bool loggedAsFailure = false;
    for (const auto& entry : Journal().Entries()) {
        if (entry.kind == "log" && (entry.mask & 0xFF) == 2 &&
            entry.args.find("Long") != std::string::npos) {
            loggedAsFailure = true;
        }
    }
    EXPECT_TRUE(loggedAsFailure) << "an over-long message is logged at level 2 with its cmd";
}

TEST_F(WebSocketServerTest, HostHearsOncePerClosedPage) {
    auto first = Greeted("factorymode-0");
    auto second = Greeted("factorymode-1");
    first->Close();
    second->Close();
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (g_closedCalls < 2 && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_EQ(g_closedCalls.load(), 2);
    EXPECT_EQ(g_otherCalls.load(), 0);
    EXPECT_EQ(FactoryManager::m_isFactoryUiLoaded.load(), 1) << "a closed page stays loaded";
}

// A burst far over 1 MiB reaches a page that reads slowly but steadily whole and in
// order; a page that stops reading beside it is dropped, like a page whose socket
// failed, so the set does not hold its notifications forever.
TEST_F(WebSocketServerTest, BurstReachesASlowPageWholeWhileAStuckPageIsClosed) {
    wstest::Client stuck;
    ASSERT_TRUE(stuck.Connect(Port(), "factorymode-0", 4096));
    wstest::Client slow;
    ASSERT_TRUE(slow.Connect(Port(), "factorymode-0", 4096));
    ASSERT_EQ(slow.Receive(), std::optional<std::string>("{\"cmd\":\"established\"}"));
    const std::string fill(1000, 'x');
    constexpr int kCount = 3000;
    for (int i = 0; i < kCount; ++i) {
        Fm().NotifyUI(0, "Fill", (std::to_string(i) + fill).c_str());
    }
    for (int i = 0; i < kCount; ++i) {
        if (i % 100 == 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        ASSERT_EQ(slow.Receive(), std::optional<std::string>("{ \"cmd\": \"Fill\", \"data\": \"" +
                                                             std::to_string(i) + fill + "\" }"))
            << i;
    }
    // The stuck page's socket takes what the kernel buffers for it; the set goes on
    // sending (the slow page keeps up) until more than that waits for it.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (g_closedCalls == 0 && std::chrono::steady_clock::now() < deadline) {
        Fm().NotifyUI(0, "Fill", fill.c_str());
        ASSERT_EQ(slow.Receive(),
                  std::optional<std::string>("{ \"cmd\": \"Fill\", \"data\": \"" + fill + "\" }"));
    }
    EXPECT_EQ(g_closedCalls.load(), 1);
    EXPECT_TRUE(Journal().HasLog("ERROR writing to socket"));
    ExpectNothingPending(slow);
}

// A host may exit with the manager alive: the service thread, still serving a page,
// runs on through the exit handlers.
TEST_F(WebSocketServerTest, HostExitingWithAPageConnectedExitsCleanly) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            auto page = Greeted("factorymode-0");
            Fm().NotifyUI(0, "Version", 5);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(WebSocketServerTest, DestroyingTheManagerClosesPagesWithoutTellingTheHost) {
    auto page = Greeted("factorymode-0");
    Tv().Shutdown();
    EXPECT_EQ(page->Receive(2000), std::nullopt);
    EXPECT_EQ(g_closedCalls.load(), 0);
    EXPECT_TRUE(Journal().HasLog("FactoryManager destroyed"));
}

TEST_F(WebSocketServerTest, HttpServesTheTestPageForAnyPathButTheIcon) {
    Tv().GetRoot().WriteFile("/test.html", "<html>factory test</html>");
    Tv().GetRoot().WriteFile("/favicon.ico", "ICON");
    const std::string page = wstest::HttpGet(Port(), "/some/where.html");
    EXPECT_NE(page.find("text/html"), std::string::npos) << page;
    EXPECT_NE(page.find("<html>factory test</html>"), std::string::npos) << page;
    const std::string icon = wstest::HttpGet(Port(), "/favicon.ico");
    EXPECT_NE(icon.find("image/x-icon"), std::string::npos) << icon;
    EXPECT_NE(icon.find("ICON"), std::string::npos) << icon;
    EXPECT_TRUE(Journal().HasLog("serving HTTP URI /some/where.html"));
}

TEST_F(WebSocketServerTest, MissingTestPageIsAnErrorNotAHang) {
    const std::string page = wstest::HttpGet(Port(), "/");
    EXPECT_NE(page.find("404"), std::string::npos) << page;
    EXPECT_TRUE(Journal().HasLog("Failed to send HTTP file"));
}

}  // namespace

namespace {

// Someone else holds the port: the server cannot start, the library goes on.
class WebSocketPortTakenTest : public SetTest {};

TEST_F(WebSocketPortTakenTest, NotificationsAreDroppedAndTheManagerStillGoesCleanly) {
#if defined(__SANITIZE_ADDRESS__)
    // libwebsockets itself leaks a little when its listening socket cannot bind.
    GTEST_SKIP() << "not under LeakSanitizer";
#endif
    const int holder = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(Tv().Config().port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(bind(holder, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
    ASSERT_EQ(listen(holder, 1), 0);
    FactoryManager::SetFactoryModeState(1);
    Tv().Get<sim::WebAppState>().pageConnects = false;
    Fm().NotifyUI(0, "Version", 5);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!Journal().HasLog("libwebsocket init failed") &&
           std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    EXPECT_TRUE(Journal().HasLog("libwebsocket init failed"));
    Fm().NotifyUI(0, "Version", 6);
    EXPECT_EQ(FactoryManager::m_stContext.load(), nullptr);
    Tv().Shutdown();  // joins the idle server thread
    EXPECT_TRUE(Journal().HasLog("FactoryManager destroyed"));
    close(holder);
}

}  // namespace
