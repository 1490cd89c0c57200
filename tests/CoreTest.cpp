// The FactoryManager object: construction, destruction, host callback, mode flag,
// key listener and the clock readers, as the platform process sees them.
#include <gtest/gtest.h>

#include <cstring>

#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimKeys.h"

namespace {

unsigned char ListenerA(unsigned long, void*, void*) { return 0; }
unsigned char ListenerB(unsigned long, void*, void*) { return 0; }

class CoreTest : public SetTest {};

TEST_F(CoreTest, ConstructionRegistersForWebEventsThenForFactoryEvents) {
    std::memset(&stATCMD_Version, 0xAB, sizeof(stATCMD_Version));
    Fm();
    std::vector<std::string> order;
    for (const auto& e : Journal().Entries()) {
        if (e.kind == "call") {
            order.push_back(e.fn);
        }
    }
    ASSERT_GE(order.size(), 2u);
    EXPECT_EQ(order[0], "WebAppMgr_RegisterOnReceiveEvent");
    EXPECT_EQ(order[1], "MSrv::AddEventRecipient");
    const char zero[sizeof(stATCMD_Version)] = {};
    EXPECT_EQ(std::memcmp(&stATCMD_Version, zero, sizeof(zero)), 0) << "the record is zero-filled";
    EXPECT_TRUE(Tv().Loop().Timers().empty()) << "no timer is armed at construction";
}

TEST_F(CoreTest, DestroyingAnUnstartedManagerOnlyLogs) {
    Fm();
    Tv().Shutdown();
    EXPECT_TRUE(Journal().HasLog("FactoryManager destroyed"));
}

TEST_F(CoreTest, ListenerIsReplacedAndMayBeCleared) {
    Fm().setFactoryEventListener(ListenerA);
    EXPECT_EQ(g_pFactoryListener.load(), &ListenerA);
    Fm().setFactoryEventListener(ListenerB);
    EXPECT_EQ(g_pFactoryListener.load(), &ListenerB);
    Fm().setFactoryEventListener(nullptr);
    EXPECT_EQ(g_pFactoryListener.load(), nullptr);
    EXPECT_TRUE(Journal().HasLog("void FactoryManager::setFactoryEventListener(EventListener)["));
}

TEST_F(CoreTest, FactoryModeIsOffUntilSwitchedOnAndEachCallIsTraced) {
    EXPECT_EQ(FactoryManager::GetFactoryModeState(), 0);
    FactoryManager::SetFactoryModeState(1);
    EXPECT_EQ(FactoryManager::GetFactoryModeState(), 1);
    FactoryManager::SetFactoryModeState(0);
    EXPECT_EQ(FactoryManager::GetFactoryModeState(), 0);
    EXPECT_TRUE(Journal().HasLog("static void FactoryManager::SetFactoryModeState(MAPI_BOOL)["));
    EXPECT_TRUE(Journal().HasLog("static MAPI_BOOL FactoryManager::GetFactoryModeState()["));
}

TEST_F(CoreTest, KeyListenerIsInstalledAndOnlyLogsKeys) {
    Fm().InitKeyEventListener();
    OnKeyEventListener listener = Tv().Get<sim::KeyState>().listener;
    ASSERT_NE(listener, nullptr);
    EXPECT_EQ(listener(0xF062, 2, 3), 1);
    EXPECT_TRUE(Journal().HasLog(">>> FactoryKeyEventListener: Key Code f062 ID 2 Sym 3"));
}

TEST_F(CoreTest, NoKeyManagerMakesKeyListeningANoOp) {
    Tv().Get<sim::KeyState>().present = false;
    Fm().InitKeyEventListener();
    EXPECT_EQ(Journal().CountCalls("KeyManager::setOnKeyEventListener"), 0u);
}

TEST_F(CoreTest, WebReceiveCallbackOnlyLogs) {
    Fm();
    ASSERT_NE(Tv().Get<sim::KeyState>().webAppReceive, nullptr);
    EXPECT_EQ(Tv().Get<sim::KeyState>().webAppReceive(3, 1), 0);
    EXPECT_TRUE(Journal().HasLog(">> onReceiveEvent: evtType=3, index=1"));
}

TEST_F(CoreTest, PreviousKeyCodeStatusKeepsTheLowByteAndSaysSo) {
    testing::internal::CaptureStdout();
    Fm().SetPreviousKeyCodeStatus(0x1FF & 0xFF);
    EXPECT_EQ(Fm().GetPreviousKeyCodeStatus(), 0xFF);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "~~ FactoryManager::SetPreviousKeyCodeStatus = 255\n~~ "
              "FactoryManager::GetPreviousKeyCodeStatus\n");
}

TEST_F(CoreTest, StateAccessorsStartCleared) {
    EXPECT_EQ(Fm().GetKeywritingStatus(), 0);
    EXPECT_EQ(Fm().isShipoutExecuing(), 0);
    Fm().SetKeywritingStatus(2);
    EXPECT_EQ(Fm().GetKeywritingStatus(), 2);
}

TEST_F(CoreTest, ClockReadersAtTwoAndAHalfSecondsAfterBoot) {
    Advance(2500);
    const unsigned long long t = Fm().getSystemTime();
    EXPECT_EQ(t & 0xFFFFFFFFULL, 2500u);
    EXPECT_EQ(t >> 32, 2000u);
    EXPECT_EQ(Fm().GetSystemTime(), 2500u);
}

TEST_F(CoreTest, MillisecondReaderWrapsAfterFortyNineDays) {
    Advance((1ULL << 32) + 5);
    EXPECT_EQ(Fm().GetSystemTime(), 5u);
    EXPECT_EQ(Fm().getSystemTime() & 0xFFFFFFFFULL, 5u);
}

}  // namespace
