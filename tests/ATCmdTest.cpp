// The AT command channel as the serial fixture sees it: the serial port handed
// back after a command, debug mode, teletext and wake-on-LAN.
#include <gtest/gtest.h>

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
    Advance(20001);
    const auto asked = Journal().Calls("MSrv_Factory_Mode::GetUart_ONOFF");
    ASSERT_EQ(asked.size(), 1u) << "armed repeating, fires once";
    EXPECT_EQ(asked[0].tMs, 4000u) << "3 s after the second release";
    const auto set = Journal().Calls("MSrv_Factory_Mode::SetUart_ONOFF");
    ASSERT_EQ(set.size(), 1u);
    EXPECT_EQ(set[0].tMs, 6000u) << "after a 2 s settle";
    EXPECT_TRUE(Port().uartOn);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "\n~~~ set Uart to ON\n");
}

TEST_F(ATCmdTest, PortAlreadyOnIsLeftAlone) {
    Post(231);
    Advance(3000);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Mode::GetUart_ONOFF"), 1u);
    EXPECT_EQ(Journal().CountCalls("MSrv_Factory_Mode::SetUart_ONOFF"), 0u);
    EXPECT_EQ(Journal().CountCalls("sleep"), 0u);
}

TEST_F(ATCmdTest, TJPEnablesThePlatformDebugMask) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(Fm().OnEvent_TJP(nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "~~ [FactoryManager::OnEvent_TJP]");
    EXPECT_EQ(Port().debugMask, 0x00000E30C8000004ULL);
}

TEST_F(ATCmdTest, TeletextFollowsTheSecondParameter) {
    void* const on = reinterpret_cast<void*>(7);
    EXPECT_EQ(Fm().OnEvent_TeletextOnOffForUARTCmd(nullptr, on, nullptr), 1);
    EXPECT_TRUE(Port().teletextOpen);
    EXPECT_EQ(Journal().Calls("TVPlayer::openTeletext").at(0).args, "[0]");
    Port().openTeletextResult = 0;
    EXPECT_EQ(Fm().OnEvent_TeletextOnOffForUARTCmd(nullptr, on, nullptr), 0) << "refused";
    EXPECT_EQ(Fm().OnEvent_TeletextOnOffForUARTCmd(nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(Journal().CountCalls("TVPlayer::closeTeletext"), 1u);
}

TEST_F(ATCmdTest, WakeOnLanEventPowersOffAndReportsThePlatformResult) {
    EXPECT_EQ(Fm().OnEvent_GetWoLWakeupEvent(nullptr, nullptr, nullptr), 1);
    Port().powerOffResult = 0;
    EXPECT_EQ(Fm().OnEvent_GetWoLWakeupEvent(nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(Journal().Calls("TVManager::powerOff").at(0).args, "[0]");
}

}  // namespace
