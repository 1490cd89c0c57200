// The test client itself: the server tests lean on it to tell "nothing yet" from
// "closed", so it is checked against a scripted peer on a socket pair.
#include <gtest/gtest.h>

#include <sys/socket.h>
#include <unistd.h>

#include <string>

#include "WsTestClient.h"

namespace {

class WsTestClientTest : public ::testing::Test {
protected:
    void SetUp() override {
        int fds[2];
        ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, fds), 0);
        client.Adopt(fds[0]);
        peer = fds[1];
    }
    void TearDown() override {
        if (peer >= 0) close(peer);
    }
    // An unmasked server frame.
    void Serve(int opcode, const std::string& payload) {
        std::string frame(1, static_cast<char>(0x80 | opcode));
        if (payload.size() < 126) {
            frame += static_cast<char>(payload.size());
        } else if (payload.size() < 65536) {
            frame += static_cast<char>(126);
            frame += static_cast<char>(payload.size() >> 8);
            frame += static_cast<char>(payload.size() & 0xFF);
        } else {
            frame += static_cast<char>(127);
            for (int i = 7; i >= 0; --i) {
                frame += static_cast<char>((static_cast<uint64_t>(payload.size()) >> (8 * i)));
            }
        }
        frame += payload;
        ASSERT_EQ(write(peer, frame.data(), frame.size()), static_cast<ssize_t>(frame.size()));
    }
    wstest::Client client;
    int peer = -1;
};

TEST_F(WsTestClientTest, NothingThenSomething) {
    EXPECT_EQ(client.Receive(50), std::nullopt);
    EXPECT_FALSE(client.Closed()) << "a timeout is not a close";
    Serve(0x1, "late");
    EXPECT_EQ(client.Receive(500), std::optional<std::string>("late"));
}

TEST_F(WsTestClientTest, ZeroTimeoutStillTakesWhatHasArrived) {
    Serve(0x1, "ready");
    EXPECT_EQ(client.Receive(0), std::optional<std::string>("ready"));
    EXPECT_EQ(client.Receive(0), std::nullopt);
    EXPECT_FALSE(client.Closed());
}

TEST_F(WsTestClientTest, ControlFramesAreSkippedAndLongLengthsRead) {
    const std::string mid(300, 'm');
    const std::string big(70000, 'b');
    Serve(0xA, "");
    Serve(0x1, mid);
    Serve(0x9, "p");
    Serve(0x1, big);
    EXPECT_EQ(client.Receive(), mid);
    EXPECT_EQ(client.Receive(), big);
}

TEST_F(WsTestClientTest, CloseFrameAndEndOfStreamBothClose) {
    Serve(0x1, "last");
    Serve(0x8, "");
    EXPECT_EQ(client.Receive(), std::optional<std::string>("last"));
    EXPECT_EQ(client.Receive(), std::nullopt);
    EXPECT_TRUE(client.Closed());

    wstest::Client other;
    int fds[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, fds), 0);
    other.Adopt(fds[0]);
    close(fds[1]);
    EXPECT_TRUE(other.WaitClosed(500));
}

TEST_F(WsTestClientTest, SentFramesAreMaskedWithTheirLength) {
    ASSERT_TRUE(client.SendFrame(0x2, std::string(200, 'x'), false));
    std::string got;
    while (got.size() < 208 && wstest::ReadSome(peer, got, 500)) {
    }
    ASSERT_EQ(got.size(), 208u);  // 2 + 2 length + 4 mask + 200
    EXPECT_EQ(static_cast<uint8_t>(got[0]), 0x02) << "binary, not final";
    EXPECT_EQ(static_cast<uint8_t>(got[1]), 0x80 | 126);
    EXPECT_EQ((static_cast<uint8_t>(got[2]) << 8) | static_cast<uint8_t>(got[3]), 200);
    EXPECT_EQ(static_cast<char>(got[8] ^ got[4]), 'x');
}

}  // namespace
