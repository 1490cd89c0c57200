// Notifications and page control as the factory UI page and the host see them,
// with the simulated set's built-in page on the other end, in virtual time.
#include <gtest/gtest.h>

#include <cstdlib>

#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimWebApp.h"

namespace {

class UiNotifyTest : public SetTest {
protected:
    void SetUp() override {
        SetTest::SetUp();
        FactoryManager::SetFactoryModeState(1);
    }
    sim::WebAppState& WebApp() { return Tv().Get<sim::WebAppState>(); }
};

TEST_F(UiNotifyTest, FirstNotificationLoadsThePageAndArrivesInOrder) {
    Fm().NotifyUI(0, "Version", 5);
    Fm().NotifyUI(0, "HideAllUIExcept", "SpeakerSNC");
    const auto notes = WebApp().Notes();
    ASSERT_EQ(notes.size(), 2u);
    EXPECT_EQ(notes[0].cmd, "Version");
    EXPECT_EQ(notes[0].data, "5");
    EXPECT_TRUE(notes[0].numeric);
    EXPECT_EQ(notes[1].text, "{ \"cmd\": \"HideAllUIExcept\", \"data\": \"SpeakerSNC\" }");
    EXPECT_FALSE(notes[1].numeric);
    EXPECT_EQ(Journal().CountCalls("WebAppMgr_LoadPage"), 1u);
    EXPECT_EQ(Journal().CountCalls("sleep"), 0u) << "the page was there at once";
    EXPECT_EQ(FactoryManager::m_isFactoryUiLoaded.load(), 1);
}

}  // namespace
