#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>

#include "SimSet.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace {
// The set outlives every test; it is taken down before the process's statics go.
class SetEnvironment : public ::testing::Environment {
public:
    void TearDown() override { sim::Set::Instance().Shutdown(); }
};
}  // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::AddGlobalTestEnvironment(new SetEnvironment);
    const int result = RUN_ALL_TESTS();
    // DirectFB's exit handler sleeps 0.2 s to take its core down, which would be most
    // of a test process's time. Everything of the set is down by now, so the process
    // leaves without the exit handlers, after the leak check they would have run.
#if defined(__SANITIZE_ADDRESS__)
    if (result == 0 && __lsan_do_recoverable_leak_check() != 0) {
        std::fflush(nullptr);
        _exit(1);
    }
#endif
    std::fflush(nullptr);
    _exit(result);
}
