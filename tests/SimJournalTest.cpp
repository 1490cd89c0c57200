// The journal's window: factory-sim keeps only the newest entries over a long run,
// tests keep everything unless they ask otherwise.
#include <gtest/gtest.h>

#include <string>

#include "SimJournal.h"

namespace {

TEST(SimJournalTest, AWindowKeepsTheNewestEntriesAndTheSinkSeesThemAll) {
    for (const size_t window : {size_t{0}, size_t{10}}) {
        sim::Journal journal;
        journal.SetWindow(window);
        size_t sunk = 0;
        journal.SetSink([&sunk](const sim::JournalEntry&) { ++sunk; });
        for (int i = 0; i < 1000; ++i) {
            journal.Call(i, "Fn", sim::ArgList(i));
        }
        EXPECT_EQ(sunk, 1000u);
        const auto calls = journal.Calls("Fn");
        if (window == 0) {
            ASSERT_EQ(calls.size(), 1000u);
            EXPECT_EQ(calls.front().args, "[0]");
        } else {
            ASSERT_GE(calls.size(), window);
            ASSERT_LE(calls.size(), 2 * window);
        }
        EXPECT_EQ(calls.back().args, "[999]");
        EXPECT_EQ(calls.back().tMs, 999u);
    }
}

// Long lines fill the byte window long before the entry window.
TEST(SimJournalTest, ABytesWindowBoundsLongLines) {
    sim::Journal journal;
    journal.SetWindow(20000, 64 * 1024);
    const std::string line(4000, 'x');
    for (int i = 0; i < 1000; ++i) {
        journal.Log(i, 1, std::to_string(i) + line);
    }
    const auto entries = journal.Entries();
    size_t bytes = 0;
    for (const auto& e : entries) {
        bytes += e.args.size();
    }
    EXPECT_GE(bytes, 32u * 1024);
    EXPECT_LE(bytes, 2u * 64 * 1024);
    EXPECT_EQ(entries.back().args, "999" + line);
}

}  // namespace
