// A fresh simulated set and a fresh FactoryManager for every test, in virtual time.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

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
