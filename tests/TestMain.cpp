#include <gtest/gtest.h>

#include "SimSet.h"

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
    return RUN_ALL_TESTS();
}
