// The simulated set's file system: the shell lines the library runs are carried
// out inside the root, and nothing reaches outside it, through ".." or links.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/types.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
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
    Root().WriteFile("/Customer/factory/.keep", "");
    Root().WriteFile("/Customer/factory/.hidden/c.txt", "c");
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
    // As a POSIX shell expands it: `*` leaves the dot-entries.
    EXPECT_TRUE(Root().Exists("/Customer/factory/.keep"));
    EXPECT_TRUE(Root().Exists("/Customer/factory/.hidden/c.txt"));
    EXPECT_TRUE(Root().RunCommand("rm -rf /Customer/factory/.hidden/*"));
    EXPECT_TRUE(Root().RunCommand("rm -rf /Customer/nothing/*"))
        << "an unmatched pattern is no error for rm -f";
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

// A root of the user's own may hold links. Each resolves as inside a chroot: an
// absolute target is a TV path, ".." stops at the root; nothing is ever written
// outside, and nothing lands in a place the link does not name.
struct LinkCase {
    const char* name;
    std::string (*target)(const fs::path& base);
    const char* resolvesTo;  // TV path the link's file is written to
};

class SimRootLinkTest : public SimRootTest, public ::testing::WithParamInterface<LinkCase> {};

TEST_P(SimRootLinkTest, WritesThroughALinkLandWhereItPointsInsideTheRoot) {
    const LinkCase& c = GetParam();
    Root().WriteFile("/Customer/keep.txt", "k");
    fs::create_symlink(c.target(m_base), Root().Folder() / "OAD" / "ATCmdVersionCheck.txt");
    ASSERT_TRUE(Root().WriteFile("/OAD/ATCmdVersionCheck.txt", "record"));
    EXPECT_FALSE(OutsideTouched());
    EXPECT_EQ(Root().ReadFile(c.resolvesTo), "record");
    EXPECT_EQ(Root().Map("/OAD/ATCmdVersionCheck.txt"), Root().Map(c.resolvesTo));
    EXPECT_TRUE(Root().RunCommand("cp /Customer/keep.txt /OAD/ATCmdVersionCheck.txt"));
    EXPECT_EQ(Root().ReadFile(c.resolvesTo), "k");
    EXPECT_FALSE(OutsideTouched());
}

INSTANTIATE_TEST_SUITE_P(
    Links, SimRootLinkTest,
    ::testing::Values(LinkCase{"AbsoluteClimbing",
                               [](const fs::path&) { return std::string("/../../Customer/d"); },
                               "/Customer/d"},
                      LinkCase{"RelativeClimbing",
                               [](const fs::path&) { return std::string("../../../x"); }, "/x"},
                      LinkCase{"AbsoluteTvPath",
                               [](const fs::path&) { return std::string("/Customer/r"); },
                               "/Customer/r"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(SimRootTest, AHostLookingLinkTargetIsATvPathInsideTheRoot) {
    fs::create_symlink(m_base / "outside" / "x", Root().Folder() / "OAD" / "stale");
    std::string error;
    EXPECT_FALSE(Root().WriteFile("/OAD/stale", "record", &error)) << "no such folder in the root";
    EXPECT_EQ(Root().Map("/OAD/stale"), Root().Folder().string() + m_base.string() + "/outside/x");
    fs::create_directory_symlink(m_base / "outside", Root().Folder() / "ciplus2");
    fs::create_directories(Root().Folder() / fs::path(m_base.string().substr(1)) / "outside");
    ASSERT_TRUE(Root().WriteFile("/ciplus2/key.bin", "v"));
    EXPECT_FALSE(OutsideTouched());
    EXPECT_EQ(Root().ReadFile(m_base.string() + "/outside/key.bin"), "v");
}

TEST_F(SimRootTest, RmOfALinkRemovesTheLinkNotItsTarget) {
    Root().WriteFile("/Customer/target.txt", "t");
    fs::create_symlink("/Customer/target.txt", Root().Folder() / "OAD" / "l1");
    fs::create_symlink("/Customer", Root().Folder() / "OAD" / "l2");
    EXPECT_TRUE(Root().RunCommand("rm /OAD/l1"));
    EXPECT_TRUE(Root().RunCommand("rm -rf /OAD/l2"));
    EXPECT_FALSE(fs::exists(fs::symlink_status(Root().Folder() / "OAD" / "l1")));
    EXPECT_FALSE(fs::exists(fs::symlink_status(Root().Folder() / "OAD" / "l2")));
    EXPECT_EQ(Root().ReadFile("/Customer/target.txt"), "t");
    EXPECT_FALSE(Root().RunCommand("rm /OAD/l1")) << "plain rm of a missing file fails";
    EXPECT_FALSE(Root().RunCommand("rm /Customer")) << "plain rm refuses a folder";
}

TEST_F(SimRootTest, ChmodThroughALinkChangesTheTargetInsideTheRoot) {
    Root().WriteFile("/Customer/t.txt", "t");
    fs::create_symlink("../Customer/t.txt", Root().Folder() / "OAD" / "l");
    EXPECT_TRUE(Root().RunCommand("chmod 640 /OAD/l"));
    EXPECT_EQ(fs::status(Root().Folder() / "Customer" / "t.txt").permissions() & fs::perms::all,
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    EXPECT_FALSE(Root().RunCommand("chmod 640 /OAD/missing"));
}

// A FIFO or a device where a file should be is a missing file, and never blocks.
TEST_F(SimRootTest, AFifoIsAMissingFileThatNeverBlocks) {
    ASSERT_EQ(mkfifo((Root().Folder() / "ciplus" / "fifo.bin").c_str(), 0644), 0);
    EXPECT_EQ(Root().MapForOpen("/ciplus/fifo.bin"), "");
    EXPECT_EQ(Root().ReadFile("/ciplus/fifo.bin"), "");
    std::string error;
    EXPECT_FALSE(Root().WriteFile("/ciplus/fifo.bin", "x", &error));
    EXPECT_NE(error.find("/ciplus/fifo.bin"), std::string::npos) << error;
    EXPECT_FALSE(Root().RunCommand("cp /ciplus/fifo.bin /OAD/copy"));
    EXPECT_FALSE(Root().RunCommand("cp /ciplus/ci_plus.bin /ciplus/fifo.bin"));
    EXPECT_NE(Root().MapForOpen("/ciplus/ci_plus.bin"), "");
    EXPECT_NE(Root().MapForOpen("/ciplus"), "");
}

TEST_F(SimRootTest, AWriteThatCannotBeDoneSaysWhy) {
    Root().WriteFile("/OAD/dir/x", "x");
    std::string error;
    EXPECT_FALSE(Root().WriteFile("/OAD/dir", "y", &error));
    EXPECT_NE(error.find("Is a directory"), std::string::npos) << error;
    Root().WriteFile("/OAD/file", "f");
    EXPECT_FALSE(Root().WriteFile("/OAD/file/below", "y", &error));
    EXPECT_NE(error.find("/OAD/file"), std::string::npos) << error;
}

}  // namespace
