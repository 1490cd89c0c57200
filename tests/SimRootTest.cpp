// The simulated set's file system: the shell lines the library runs are carried
// out inside the root, and nothing reaches outside it, through ".." or links.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "SimRoot.h"

namespace fs = std::filesystem;

namespace {

class SimRootTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string base = (fs::temp_directory_path() / "factory-root-XXXXXX").string();
        ASSERT_NE(mkdtemp(base.data()), nullptr);
        m_base = base;
        fs::create_directories(m_base / "outside");
        m_root = std::make_unique<sim::Root>((m_base / "set").string());
    }
    void TearDown() override { fs::remove_all(m_base); }
    sim::Root& Root() { return *m_root; }
    bool OutsideTouched() { return !fs::is_empty(m_base / "outside"); }

    fs::path m_base;
    std::unique_ptr<sim::Root> m_root;
};

TEST_F(SimRootTest, ShellFormsOfTheLibraryWorkInsideTheRoot) {
    Root().WriteFile("/Customer/factory/a.txt", "a");
    Root().WriteFile("/Customer/factory/sub/b.txt", "b");
    EXPECT_TRUE(Root().RunCommand("cp /Customer/factory/a.txt /OAD/a.txt"));
    EXPECT_EQ(Root().ReadFile("/OAD/a.txt"), "a");
    EXPECT_TRUE(Root().RunCommand("chmod 600 /OAD/a.txt"));
    struct stat st {};
    ASSERT_EQ(stat(Root().Map("/OAD/a.txt").c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0600u);
    EXPECT_TRUE(Root().RunCommand("rm -rf /Customer/factory/*"));
    EXPECT_TRUE(Root().Exists("/Customer/factory"));
    EXPECT_FALSE(Root().Exists("/Customer/factory/a.txt"));
    EXPECT_FALSE(Root().Exists("/Customer/factory/sub"));
    EXPECT_TRUE(Root().RunCommand("touch /Customer/factory/shipout.code"));
    EXPECT_TRUE(Root().Exists("/Customer/factory/shipout.code"));
    EXPECT_TRUE(Root().RunCommand("rm -f /Customer/factory/shipout.code /nothing/here"));
    EXPECT_FALSE(Root().Exists("/Customer/factory/shipout.code"));
    EXPECT_TRUE(Root().RunCommand("sync"));
}

TEST_F(SimRootTest, AnyOtherLineIsRefusedAndDoesNothing) {
    Root().WriteFile("/OAD/keep.txt", "k");
    for (const char* line : {"", "reboot", "rm -f /OAD/*.txt", "sh -c 'rm -f /OAD/keep.txt'",
                             "cat /OAD/keep.txt", "chmod abc /OAD/keep.txt"}) {
        EXPECT_FALSE(Root().RunCommand(line)) << line;
    }
    EXPECT_EQ(Root().ReadFile("/OAD/keep.txt"), "k");
}

TEST_F(SimRootTest, DotDotNeverClimbsAboveTheRoot) {
    EXPECT_EQ(Root().Map("/../../etc/passwd"), Root().Map("/etc/passwd"));
    EXPECT_TRUE(Root().RunCommand("touch /../../../outside/x"));
    EXPECT_FALSE(OutsideTouched());
    EXPECT_TRUE(Root().RunCommand("rm -rf /../*"));
    EXPECT_TRUE(fs::exists(m_base / "outside"));
}

// A root of the user's own may hold links; nothing is read or written through one
// that leads out of it, while links inside the root still work.
TEST_F(SimRootTest, LinksLeadingOutOfTheRootAreDeadEnds) {
    fs::create_symlink(m_base / "outside" / "x", Root().Folder() / "Customer" / "dangling");
    fs::create_directory_symlink(m_base / "outside", Root().Folder() / "OAD" / "out");
    Root().RunCommand("touch /Customer/dangling");
    Root().RunCommand("touch /OAD/out/y");
    Root().WriteFile("/Customer/a.txt", "a");
    Root().RunCommand("cp /Customer/a.txt /OAD/out/z");
    Root().WriteFile("/OAD/out/w", "w");
    EXPECT_FALSE(OutsideTouched());

    fs::create_directory_symlink(Root().Folder() / "Customer", Root().Folder() / "OAD" / "in");
    EXPECT_TRUE(Root().RunCommand("touch /OAD/in/b.txt"));
    EXPECT_TRUE(Root().Exists("/Customer/b.txt"));
}

}  // namespace
