// The AT command channel as the serial fixture sees it: the serial port handed
// back after a command, debug mode, teletext and wake-on-LAN.
#include <gtest/gtest.h>

#include <string>

#include "FactoryManager.h"
#include "SetFixture.h"
#include "SimATCmd.h"

namespace {

class ATCmdTest : public SetTest {
protected:
    sim::ATCmdState& Port() { return Tv().Get<sim::ATCmdState>(); }
};

TEST_F(ATCmdTest, SecondReleaseRestartsTheWaitAndThePortComesBackOnce) {
    Port().uartOn = false;
    testing::internal::CaptureStdout();
    Post(231);
    Advance(1000);
    Post(231);
    Advance(2999);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Mode::GetUart_ONOFF"), 0u);
    Advance(1);
    const auto asked = Journal().Calls("MSrv_Factory_Mode::GetUart_ONOFF");
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].tMs, 4000u) << "3 s after the second release";
    const auto set = Journal().Calls("MSrv_Factory_Mode::SetUart_ONOFF");
    ASSERT_EQ(set.size(), 1u);
    EXPECT_EQ(set[0].args, "[1]");
    EXPECT_EQ(set[0].tMs, 6000u) << "after a 2 s settle";
    EXPECT_TRUE(Port().uartOn);
    Advance(20000);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Mode::GetUart_ONOFF"), 1u) << "fires once";
    EXPECT_TRUE(Tv().Loop().Timers().empty());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "\n~~~ set Uart to ON\n");
}

TEST_F(ATCmdTest, PortAlreadyOnIsLeftAlone) {
    testing::internal::CaptureStdout();
    Post(231);
    Advance(3000);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Mode::GetUart_ONOFF"), 1u);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Mode::SetUart_ONOFF"), 0u);
    EXPECT_EQ(Journal().CountCalls("sleep"), 0u);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(ATCmdTest, TJPEnablesThePlatformDebugMask) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(Fm().OnEvent_TJP(nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "~~ [FactoryManager::OnEvent_TJP]");
    EXPECT_EQ(Port().debugMask, 0x00000E30C8000004ULL);
}

struct TeletextCase {
    const char* name;
    uintptr_t p2;
    MAPI_BOOL openResult;
    MAPI_BOOL expected;
    const char* call;
};

void PrintTo(const TeletextCase& c, std::ostream* os) { *os << c.name; }

class TeletextTest : public ATCmdTest, public testing::WithParamInterface<TeletextCase> {};

TEST_P(TeletextTest, SecondParameterChoosesOnOrOff) {
    Port().openTeletextResult = GetParam().openResult;
    void* p2 = reinterpret_cast<void*>(GetParam().p2);
    EXPECT_EQ(Fm().OnEvent_TeletextOnOffForUARTCmd(nullptr, p2, nullptr), GetParam().expected);
    EXPECT_EQ(Journal().CountCalls(GetParam().call), 1u);
    EXPECT_EQ(Journal().CountCalls("TVPlayer::openTeletext") +
                  Journal().CountCalls("TVPlayer::closeTeletext"),
              1u);
}

INSTANTIATE_TEST_SUITE_P(
    UartCmd, TeletextTest,
    testing::Values(TeletextCase{"Off", 0, 1, 1, "TVPlayer::closeTeletext"},
                    TeletextCase{"OffEvenWhenOpenWouldFail", 0, 0, 1, "TVPlayer::closeTeletext"},
                    TeletextCase{"On", 1, 1, 1, "TVPlayer::openTeletext"},
                    TeletextCase{"OnRefused", 7, 0, 0, "TVPlayer::openTeletext"}),
    [](const testing::TestParamInfo<TeletextCase>& info) { return std::string(info.param.name); });

TEST_F(ATCmdTest, WakeOnLanEventPowersOffAndReportsThePlatformResult) {
    EXPECT_EQ(Fm().OnEvent_GetWoLWakeupEvent(nullptr, nullptr, nullptr), 1);
    Port().powerOffResult = 0;
    EXPECT_EQ(Fm().OnEvent_GetWoLWakeupEvent(nullptr, nullptr, nullptr), 0);
    const auto calls = Journal().Calls("TVManager::powerOff");
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].args, "[0]");
}

}  // namespace
