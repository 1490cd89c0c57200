// The simulated event framework: delivery through a message map and the timer
// service, in virtual time.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "MEvtHandle.h"
#include "SimSet.h"

namespace {

// A small handler with a map of its own, to watch what the framework delivers.
class Recorder : public MEvtHandle {
public:
    const MSGMAP* GetMessageMap() const override { return &s_map; }
    MAPI_BOOL OnTick(void*, void* id, void*) {
        ticks.push_back({static_cast<unsigned long>(reinterpret_cast<uintptr_t>(id)),
                         sim::Set::Instance().NowMs()});
        return 1;
    }
    // Timer 3 posts message 100 to itself; the steps show what ran inside what.
    MAPI_BOOL OnPostingTick(void*, void*, void*) {
        steps.push_back("tick");
        sim::Set::Instance().Loop().Post(this, 100, nullptr, nullptr, nullptr);
        steps.push_back("tick done");
        return 1;
    }
    MAPI_BOOL OnMessage(void*, void*, void*) {
        steps.push_back("message");
        return 1;
    }
    std::vector<std::string> steps;
    struct Tick {
        unsigned long id;
        uint64_t atMs;
        bool operator==(const Tick& o) const { return id == o.id && atMs == o.atMs; }
    };
    std::vector<Tick> ticks;

private:
    static const MSGMAP_ENTRY s_entries[];
    static const MSGMAP s_map;
};

const MSGMAP_ENTRY Recorder::s_entries[] = {
    {24, 0, 1, 1, 0, static_cast<PMSG_HANDLER>(&Recorder::OnTick)},
    {24, 0, 2, 2, 0, static_cast<PMSG_HANDLER>(&Recorder::OnTick)},
    {24, 0, 3, 3, 0, static_cast<PMSG_HANDLER>(&Recorder::OnPostingTick)},
    {100, 0, 0, 0, 0, static_cast<PMSG_HANDLER>(&Recorder::OnMessage)},
    {0, 0, 0, 0, 0, nullptr},
};
const MSGMAP Recorder::s_map = {&MEvtHandle::GetThisMessageMap, &Recorder::s_entries[0]};

class EventLoopTest : public ::testing::Test {
protected:
    void SetUp() override { sim::Set::Instance().Reset(); }
    void TearDown() override { sim::Set::Instance().Shutdown(); }
    void Advance(uint64_t ms) { sim::Set::Instance().Advance(ms); }
    Recorder rec;
};

using Tick = Recorder::Tick;

TEST_F(EventLoopTest, OneShotFiresOnceAtItsPeriod) {
    rec.SetTimer(2000, 1, E_TIMER_ONESHOT);
    Advance(1999);
    EXPECT_TRUE(rec.ticks.empty());
    Advance(1);
    Advance(10000);
    EXPECT_EQ(rec.ticks, (std::vector<Tick>{{1, 2000}}));
}

TEST_F(EventLoopTest, RepeatingFiresEveryPeriodUntilKilled) {
    rec.SetTimer(1000, 2, E_TIMER_REPEAT);
    Advance(3500);
    rec.KillTimer(2);
    Advance(5000);
    EXPECT_EQ(rec.ticks, (std::vector<Tick>{{2, 1000}, {2, 2000}, {2, 3000}}));
}

// Two events 1 s apart each kill and re-arm: one timer, running from the second.
TEST_F(EventLoopTest, KillThenSetRestartsThePeriod) {
    rec.KillTimer(1);
    rec.SetTimer(2000, 1, E_TIMER_ONESHOT);
    Advance(1000);
    rec.KillTimer(1);
    rec.SetTimer(2000, 1, E_TIMER_ONESHOT);
    EXPECT_EQ(sim::Set::Instance().Loop().Timers().size(), 1u);
    Advance(5000);
    EXPECT_EQ(rec.ticks, (std::vector<Tick>{{1, 3000}}));
}

TEST_F(EventLoopTest, TicksOfSeveralTimersArriveInTimeOrder) {
    rec.SetTimer(300, 1, E_TIMER_REPEAT);
    rec.SetTimer(500, 2, E_TIMER_ONESHOT);
    Advance(1000);
    EXPECT_EQ(rec.ticks, (std::vector<Tick>{{1, 300}, {2, 500}, {1, 600}, {1, 900}}));
}

TEST_F(EventLoopTest, AMessagePostedByATickWaitsForTheTickToEnd) {
    rec.SetTimer(500, 3, E_TIMER_ONESHOT);
    Advance(1000);
    EXPECT_EQ(rec.steps, (std::vector<std::string>{"tick", "tick done", "message"}));
}

TEST_F(EventLoopTest, KillingATimerThatIsNotArmedIsHarmless) {
    rec.KillTimer(2);
    Advance(1000);
    EXPECT_TRUE(rec.ticks.empty());
}

TEST_F(EventLoopTest, ADestroyedHandlerGetsNoMoreTicks) {
    auto* gone = new Recorder;
    gone->SetTimer(100, 1, E_TIMER_REPEAT);
    delete gone;
    Advance(1000);
    EXPECT_TRUE(sim::Set::Instance().Loop().Timers().empty());
}

// factory-sim waits for the page after each piece of work, before the clock moves
// on: the hook must run once per message and per tick, at that work's time, inside it.
TEST_F(EventLoopTest, AfterEachPieceOfWorkTheHookRunsBeforeTheClockMovesOn) {
    sim::EventLoop& loop = sim::Set::Instance().Loop();
    std::vector<std::string> seen;
    loop.SetOnTick([&](MEvtHandle* handler, unsigned long id, const char* owner) {
        seen.push_back((handler == &rec ? "tick " : "stranger ") + std::to_string(id) +
                       (owner != nullptr ? owner : ""));
    });
    loop.SetAfterWork([&] {
        seen.push_back("after @" + std::to_string(sim::Set::Instance().NowMs()) +
                       (sim::EventLoop::InWork() ? "" : " outside"));
    });
    rec.SetTimer(300, 1, E_TIMER_REPEAT);
    rec.SetTimer(500, 3, E_TIMER_ONESHOT);
    Advance(700);
    loop.Post(&rec, 100, nullptr, nullptr, nullptr);
    EXPECT_FALSE(sim::EventLoop::InWork());
    EXPECT_EQ(seen, (std::vector<std::string>{"tick 1", "after @300", "tick 3", "after @500",
                                              "after @500", "tick 1", "after @600", "after @700"}));
    EXPECT_EQ(rec.steps, (std::vector<std::string>{"tick", "tick done", "message", "message"}));
    loop.SetAfterWork(nullptr);
    loop.SetOnTick(nullptr);
    Advance(300);
    EXPECT_EQ(seen.size(), 8u);
}

TEST_F(EventLoopTest, AWaitInsideAHandlerMovesTheClockWithoutDelivering) {
    sim::Set::Instance().GetClock().Sleep(2'000'000'000ULL);
    EXPECT_EQ(sim::Set::Instance().NowMs(), 2000u);
}

}  // namespace
