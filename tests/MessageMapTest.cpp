// The message map: its shape, and the routes that the platform's factory-command service
// and timer users rely on but that no page suite takes, written out independently.
#include <gtest/gtest.h>

#include "FactoryManager.h"
#include "SetFixture.h"

namespace {

struct Route {
    unsigned int message;
    unsigned int id;
    PMSG_HANDLER handler;
    Route(unsigned int m, unsigned int i, MAPI_BOOL (FactoryManager::*h)(void*, void*, void*))
        : message(m), id(i), handler(FactoryManager::MapHandler(h)) {}
    Route(unsigned int m, unsigned int i, PMSG_HANDLER h) : message(m), id(i), handler(h) {}
};

// Only the routes no page suite reaches: every other route is taken by a page's own
// tests, which fail when it leads anywhere else.
const Route kUnvisitedRoutes[] = {
    {238, 0, &FactoryManager::OnEvent_TJP},
    {266, 0, &FactoryManager::OnEvent_GetWoLWakeupEvent},
    {363, 0, &FactoryManager::OnEvent_TeletextOnOffForUARTCmd},
    {24, 4, &FactoryManager::OnTimer_DLNATest},
    {24, 17, &FactoryManager::OnTimer_Shipout},
    {24, 61, &FactoryManager::OnTimer_OverCurrentUSB},
    {24, 64, &FactoryManager::OnTimer_LocalDimming},
    {24, 65, &FactoryManager::OnTimer_9PointPattern},
};

TEST(MessageMap, RoutesEveryUnvisitedMessageToItsHandlerAndEndsWithAZeroEntry) {
    const MSGMAP* map = FactoryManager::GetThisMessageMap();
    ASSERT_EQ(map->pfnGetBaseMap, &MEvtHandle::GetThisMessageMap);
    const MSGMAP_ENTRY* e = map->lpEntries;
    size_t n = 0;
    size_t found = 0;
    for (; e->nMessage != 0 || e->pfn != nullptr; ++e, ++n) {
        EXPECT_EQ(e->nLastID, e->nID) << "no ranges, entry " << n;
        EXPECT_EQ(e->nCode, 0u);
        EXPECT_EQ(e->nSig, 0u);
        for (const Route& want : kUnvisitedRoutes) {
            if (e->nMessage == want.message && e->nID == want.id) {
                EXPECT_TRUE(e->pfn == want.handler)
                    << "message " << want.message << " id " << want.id;
                ++found;
            }
        }
    }
    EXPECT_EQ(found, std::size(kUnvisitedRoutes));
    EXPECT_EQ(n, 131u);
    EXPECT_EQ(e->nID, 0u);
    EXPECT_EQ(e->nCode, 0u);
}

TEST(MessageMap, VirtualAccessorReturnsTheClassMap) {
    sim::Set::Instance().Reset();
    FactoryManager* fm = TVManager::GetInstance()->getFactoryManager();
    const MEvtHandle* base = fm;
    EXPECT_EQ(base->GetMessageMap(), FactoryManager::GetThisMessageMap());
    sim::Set::Instance().Shutdown();
}

class DispatchTest : public SetTest {};

// Events the map does not know, and the two timer ids that have no entry, fall
// through to the base map and end in the framework's default procedure.
TEST_F(DispatchTest, UnknownEventsAndUnmappedTimersReachTheDefaultProcedure) {
    Post(43 + 1000);
    Fm().OnEvent(MEvtHandle::kTimerMessage, nullptr, reinterpret_cast<void*>(12), nullptr);
    Fm().OnEvent(MEvtHandle::kTimerMessage, nullptr, reinterpret_cast<void*>(50), nullptr);
    const auto calls = Journal().Calls("MEvtHandle::DefEventProc");
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls[0].args, "[1043, 0, 0, 0]");
    EXPECT_EQ(calls[1].args, "[24, 0, 12, 0]");
    EXPECT_EQ(calls[2].args, "[24, 0, 50, 0]");
}

TEST_F(DispatchTest, SdTestIsADirectCallOnly) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(Fm().OnEvent_FactorySDTest(nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "\n~~ [OnEvent_FactorySDTest] is for 4k2k project. ");
}

}  // namespace
