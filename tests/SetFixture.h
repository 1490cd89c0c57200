// A fresh simulated set and a fresh FactoryManager for every test, in virtual time.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "FactoryManager.h"
#include "SimSet.h"
#include "TVManager.h"

class SetTest : public ::testing::Test {
protected:
    void SetUp() override { sim::Set::Instance().Reset(MakeOptions()); }
    void TearDown() override { sim::Set::Instance().Shutdown(); }

    // A test may ask for another kind of set (port, root) by overriding this. The
    // port is a free one, so that tests running side by side never collide.
    virtual sim::Options MakeOptions() {
        sim::Options options;
        options.port = 0;
        return options;
    }

    sim::Set& Tv() { return sim::Set::Instance(); }
    FactoryManager& Fm() { return *TVManager::GetInstance()->getFactoryManager(); }
    sim::Journal& Journal() { return Tv().GetJournal(); }

    void Post(unsigned int id, uintptr_t p1 = 0, uintptr_t p2 = 0, uintptr_t p3 = 0) {
        Fm();  // the host has created the manager before it delivers events
        Tv().PostFactoryEvent(id, p1, p2, p3);
    }
    void Advance(uint64_t ms) { Tv().Advance(ms); }
};

// A set whose host has switched factory mode on and records the listener codes
// the library calls it with.
class HostTest : public SetTest {
protected:
    void SetUp() override {
        SetTest::SetUp();
        Codes().clear();
        FactoryManager::SetFactoryModeState(1);
        Fm().setFactoryEventListener(&HostTest::Listener);
    }
    static std::vector<unsigned long>& Codes() {
        static std::vector<unsigned long> codes;
        return codes;
    }
    static unsigned char Listener(unsigned long code, void*, void*) {
        Codes().push_back(code);
        return 0;
    }
    // The arguments of each call of one platform function, in order.
    std::vector<std::string> Calls(const std::string& fn) {
        std::vector<std::string> out;
        for (const auto& c : Journal().Calls(fn)) {
            out.push_back(c.args);
        }
        return out;
    }
};
