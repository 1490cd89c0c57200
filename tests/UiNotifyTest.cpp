// Notifications and page control as the factory UI page and the host see them,
// with the simulated set's built-in page on the other end, in virtual time.
#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimWebApp.h"
#include "UiNotes.h"

namespace {

std::vector<unsigned long> g_listenerCodes;

unsigned char RecordingListener(unsigned long code, void*, void*) {
    g_listenerCodes.push_back(code);
    return 0;
}

class UiNotifyTest : public SetTest {
protected:
    void SetUp() override {
        SetTest::SetUp();
        g_listenerCodes.clear();
        FactoryManager::SetFactoryModeState(1);
    }
    sim::WebAppState& WebApp() { return Tv().Get<sim::WebAppState>(); }
    std::vector<std::string> LoadedPages() {
        std::vector<std::string> pages;
        for (const auto& call : Journal().Calls("WebAppMgr_LoadPage")) {
            pages.push_back(call.args);
        }
        return pages;
    }
};

TEST_F(UiNotifyTest, FirstNotificationLoadsThePageAndEveryOneArrivesInOrder) {
    Fm().NotifyUI(0, "Version", 5);
    Fm().NotifyUI(0, "HideAllUIExcept", "SpeakerSNC");
    Fm().NotifyUI(0, "Negative", -12L);
    Fm().NotifyUI(0, "Zero", "0");
    EXPECT_EQ(UiNotes(),
              Notes(R"-(Version=5 HideAllUIExcept="SpeakerSNC" Negative=-12 Zero="0")-"));
    EXPECT_EQ(WebApp().Notes().at(1).text,
              "{ \"cmd\": \"HideAllUIExcept\", \"data\": \"SpeakerSNC\" }");
    EXPECT_EQ(LoadedPages(),
              std::vector<std::string>{"[\"file:///applications/factory/factory-ui.html\", 0]"});
    EXPECT_EQ(Journal().CountCalls("sleep"), 0u) << "the page was there at once";
    EXPECT_TRUE(Journal().HasLog("Factory UI already loaded"));
    EXPECT_TRUE(Journal().HasLog("Factory UI loaded successfully"));
}

TEST_F(UiNotifyTest, ClearedNotesStartAfresh) {
    Fm().NotifyUI(0, "Before", 1);
    ClearUiNotes();
    Fm().NotifyUI(0, "After", 2);
    EXPECT_EQ(UiNotes(), NoteList{Num("After", 2)});
}

// A browser closes the socket on the first byte that is not UTF-8, so such bytes
// become U+FFFD, one per broken sequence, and the message says so at level 2.
struct Utf8Case {
    const char* name;
    const char* data;
    const char* shown;
};

void PrintTo(const Utf8Case& c, std::ostream* out) { *out << c.name; }

class Utf8Test : public UiNotifyTest, public ::testing::WithParamInterface<Utf8Case> {};

TEST_P(Utf8Test, PageGetsValidText) {
    Fm().NotifyUI(0, "SerialNum", GetParam().data);
    EXPECT_EQ(UiNotes(), NoteList{Str("SerialNum", GetParam().shown)});
    const bool mended = std::string(GetParam().data) != GetParam().shown;
    bool logged = false;
    for (const auto& e : Journal().Entries()) {
        logged |= e.kind == "log" && (e.mask & 0xFF) == 2 &&
                  e.args.find("SerialNum") != std::string::npos;
    }
    EXPECT_EQ(logged, mended);
}

#define FFFD "\xEF\xBF\xBD"
INSTANTIATE_TEST_SUITE_P(
    UiNotify, Utf8Test,
    ::testing::Values(Utf8Case{"Erased", "\xFF\xFF\xFF", FFFD FFFD FFFD},
                      Utf8Case{"Valid", "Gr\xC3\xBC\xC3\x9F \xE2\x82\xAC \xF0\x9F\x93\xBA",
                               "Gr\xC3\xBC\xC3\x9F \xE2\x82\xAC \xF0\x9F\x93\xBA"},
                      Utf8Case{"CutSequence", "A\xE2\x82", "A" FFFD},
                      Utf8Case{"CutBeforeAscii", "\xE2\x82Z", FFFD "Z"},
                      Utf8Case{"Overlong", "\xC0\xAF", FFFD FFFD},
                      Utf8Case{"Surrogate", "\xED\xA0\x80", FFFD FFFD FFFD},
                      Utf8Case{"PastTheLastCodePoint", "\xF4\x90\x80\x80", FFFD FFFD FFFD FFFD},
                      Utf8Case{"LoneContinuation",
                               "a\x80"
                               "b",
                               "a" FFFD "b"},
                      Utf8Case{"HighestCodePoint", "\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"}),
    [](const ::testing::TestParamInfo<Utf8Case>& info) { return info.param.name; });

TEST_F(UiNotifyTest, WithoutAPageEachNotificationWaitsTenSecondsAndLoadsAgain) {
    WebApp().pageConnects = false;
    Fm().NotifyUI(0, "Version", 5);
    EXPECT_EQ(Tv().NowMs(), 10000u);
    EXPECT_EQ(Journal().CountCalls("sleep"), 5u);
    EXPECT_TRUE(Journal().HasLog("Waiting for websocket connection from Factory UI... (4)"));
    EXPECT_FALSE(Journal().HasLog("Waiting for websocket connection from Factory UI... (5)"));
    EXPECT_TRUE(Journal().HasLog("Factory UI cannot be loaded"));
    Fm().NotifyUI(0, "Version", 6);
    EXPECT_EQ(Tv().NowMs(), 20000u);
    EXPECT_EQ(LoadedPages().size(), 2u);
}

TEST_F(UiNotifyTest, PageFoundLaterIsNotReloaded) {
    WebApp().pageConnects = false;
    Fm().NotifyUI(0, "Lost", 1);
    WebApp().pageConnects = true;
    Fm().NotifyUI(0, "Found", 2);
    Fm().NotifyUI(0, "Again", 3);
    EXPECT_EQ(LoadedPages().size(), 2u);
    EXPECT_EQ(UiNotes(), (NoteList{Num("Found", 2), Num("Again", 3)}))
        << "the first one went to nobody";
}

TEST_F(UiNotifyTest, PagesFromTheEnvironmentIncludeEmptyNames) {
    setenv("DEFAULT_HTML_PATH", "first.html  second.html", 1);
    Fm().LoadPageFromEnv();
    unsetenv("DEFAULT_HTML_PATH");
    EXPECT_EQ(LoadedPages(), (std::vector<std::string>{"[\"first.html\", 0]", "[\"\", 1]",
                                                       "[\"second.html\", 2]"}));
    EXPECT_TRUE(
        Journal().HasLog(">> Environment DEFAULT_HTML_PATH:first.html  second.html \033[0m "));
    Fm().LoadPageFromEnv();
    EXPECT_EQ(LoadedPages().size(), 3u) << "unset loads nothing";
}

TEST_F(UiNotifyTest, HostUiIsKilledAndBroughtBackThroughTheListener) {
    testing::internal::CaptureStdout();
    Fm().InfoZYTAppMgrForVersion(1);  // no listener yet: nothing at all
    Fm().setFactoryEventListener(RecordingListener);
    Fm().InfoZYTAppMgrForVersion(7);
    Fm().InfoZYTAppMgrForVersion(0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "~~ Kill ZYT UI [FactoryManager::InfoZYTAppMgrForVersion]\n"
              "~~ Get ZYT UI [FactoryManager::InfoZYTAppMgrForVersion]\n");
    EXPECT_EQ(g_listenerCodes, (std::vector<unsigned long>{73731, 73730}));
}

struct StatusPage {
    MAPI_U16 status;
    const char* page;  // null: nothing is loaded
    std::vector<unsigned long> codes;
};

void PrintTo(const StatusPage& page, std::ostream* out) { *out << "status " << page.status; }

class KeyWritingPageTest : public UiNotifyTest, public ::testing::WithParamInterface<StatusPage> {};

TEST_P(KeyWritingPageTest, LoadsItsPageAndTellsTheHost) {
    Fm().setFactoryEventListener(RecordingListener);
    Fm().ShowKeyWriting(GetParam().status);
    const char* page = GetParam().page;
    EXPECT_EQ(WebApp().PageAt(0), page ? std::string(page) : std::string());
    EXPECT_EQ(g_listenerCodes, GetParam().codes);
    EXPECT_TRUE(Journal().HasLog("void FactoryManager::ShowKeyWriting(MAPI_U16)["));
}

INSTANTIATE_TEST_SUITE_P(
    UiNotify, KeyWritingPageTest,
    // clang-format off
    ::testing::Values(
        StatusPage{0, "file:///applications/factory/" "factory-ui-static.html?cmd=key-writing-start", {73731}},
        StatusPage{1, "file:///applications/factory/" "factory-ui-static.html?cmd=key-writing-success", {}},
        StatusPage{2, "file:///applications/factory/factory-ui-static.html?cmd=key-writing-fail", {}},
        StatusPage{3, "file:///applications/factory/factory-ui-static.html?cmd=key-writing-off", {73730}},
        StatusPage{4, nullptr, {}}));
// clang-format on

TEST_F(UiNotifyTest, SerialNumberPagesByStatus) {
    const char* expected[] = {"start", "success", "fail"};
    for (MAPI_U16 status = 0; status < 3; ++status) {
        Fm().ShowSerialNoWriting(status);
        EXPECT_EQ(WebApp().PageAt(0),
                  std::string("file:///applications/factory/"
                              "factory-ui-serialno.html?cmd=key-serial-no-writing-") +
                      expected[status]);
    }
    Fm().ShowSerialNoWriting(3);
    EXPECT_EQ(LoadedPages().size(), 3u);
}

TEST_F(UiNotifyTest, AnotherPageAtIndexZeroClosesTheUiSocket) {
    Fm().setFactoryEventListener(RecordingListener);
    Fm().NotifyUI(0, "Version", 5);
    ASSERT_TRUE(WebApp().PageConnected());
    EXPECT_EQ(Fm().ClearFactoryUiWeb(), 1);
    EXPECT_FALSE(WebApp().PageConnected());
    EXPECT_EQ(Journal().Calls("WebAppMgr_UnloadPage").at(0).args, "[0]");
}

TEST_F(UiNotifyTest, HideAndShowPagesByIndex) {
    testing::internal::CaptureStdout();
    Fm().InfoWebAppMgrHideShowPage(1, 1);
    EXPECT_TRUE(WebApp().IsHidden(1));
    Fm().InfoWebAppMgrHideShowPage(0, 1);
    EXPECT_FALSE(WebApp().IsHidden(1));
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "~~ [InfoWebAppMgrHideShowPage] idx= 1 -- [Hide] ZYT Page TRUE\n"
              "~~ [InfoWebAppMgrHideShowPage] idx= 1 -- [Show] ZYT Page FALSE\n");
}

TEST_F(UiNotifyTest, WebAppServiceIsLookedUpByName) {
    EXPECT_EQ(Fm().isWebAppMgrServiceInitialized(), 1);
    EXPECT_TRUE(Journal().HasLog("[BOOL FactoryManager::isWebAppMgrServiceInitialized()] TRUE"));
    WebApp().serviceRegistered = false;
    EXPECT_EQ(Fm().isWebAppMgrServiceInitialized(), 0);
    EXPECT_TRUE(Journal().HasLog("[BOOL FactoryManager::isWebAppMgrServiceInitialized()] FALSE"));
    EXPECT_EQ(Journal().Calls("IServiceManager::checkService").at(0).args, "[\"soc.webappmgr\"]");
}

}  // namespace
