// The message map against the table the platform's factory-command service and
// timer users rely on, written out here independently of the library's list.
#include <gtest/gtest.h>

#include "FactoryManager.h"
#include "SetFixture.h"

namespace {

struct Route {
    unsigned int message;
    unsigned int id;
    PMSG_HANDLER handler;
    Route(unsigned int m, unsigned int i, MAPI_BOOL (FactoryManager::*h)(void*, void*, void*))
        : message(m), id(i), handler(FactoryManager::MapHandler(h)) {}
    Route(unsigned int m, unsigned int i, PMSG_HANDLER h) : message(m), id(i), handler(h) {}
};

const Route kRoutes[] = {
    {43, 0, &FactoryManager::OnEvent_AtvScanInfo},
    {45, 0, &FactoryManager::OnScanRecepient},
    {188, 0, &FactoryManager::OnEvent_FactoryVersion},
    {191, 0, &FactoryManager::OnEvent_FactoryMModeStart},
    {192, 0, &FactoryManager::OnEvent_DLTVSignalSetting},
    {194, 0, &FactoryManager::OnEvent_AutoBrightnessSensorValue},
    {195, 0, &FactoryManager::OnEvent_BackLightCheck},
    {196, 0, &FactoryManager::OnEvent_OverCurrentUSB},
    {197, 0, &FactoryManager::OnEvent_DigitalAudioOut},
    {198, 0, &FactoryManager::OnEvent_AudioBalanceCheck},
    {200, 0, &FactoryManager::OnEvent_FactoryVideoCheck},
    {203, 0, &FactoryManager::OnEvent_FactoryVolumeAdj},
    {207, 0, &FactoryManager::OnEvent_DirectCH},
    {211, 0, &FactoryManager::OnEvent_InternalPatternOff},
    {213, 0, &FactoryManager::OnEvent_Shipout},
    {214, 0, &FactoryManager::OnEvent_ShipoutSetting},
    {215, 0, &FactoryManager::OnEvent_SelectSpeakerTypeToSNC},
    {216, 0, &FactoryManager::OnEvent_SelectSpeakerTypeToIEC},
    {217, 0, &FactoryManager::OnEvent_SelectSpeakerTypeToGW},
    {218, 0, &FactoryManager::OnEvent_SelectSpeakerTypeToEstec},
    {220, 0, &FactoryManager::OnEvent_FullPowerMode},
    {221, 0, &FactoryManager::OnEvent_ClearPowerOnTime},
    {222, 0, &FactoryManager::OnEvent_SetStoreToNone},
    {223, 0, &FactoryManager::OnEvent_SetStoreToBestBuy},
    {224, 0, &FactoryManager::OnEvent_SetStoreToCostco},
    {225, 0, &FactoryManager::OnEvent_SetStoreToWalmart},
    {226, 0, &FactoryManager::OnEvent_CloneCopy},
    {227, 0, &FactoryManager::OnEvent_FactoryDVBSManualTuningToggle},
    {228, 0, &FactoryManager::OnEvent_DLNATest},
    {230, 0, &FactoryManager::OnEvent_SatInfo},
    {231, 0, FactoryManager::MapHandler(&FactoryManager::OnEvent_ReleaseAT_Cmd)},
    {232, 0, &FactoryManager::OnEvent_FactoryADCAdjustment},
    {233, 0, &FactoryManager::OnEvent_FactoryWriteVGA_EDID_EEPRPOM},
    {234, 0, &FactoryManager::OnEvent_TempIOCheck},
    {235, 0, &FactoryManager::OnEvent_DefaultIPAddress},
    {236, 0, &FactoryManager::OnEvent_SwitchInputSource},
    {237, 0, &FactoryManager::OnEvent_ExitFactoryMode},
    {238, 0, &FactoryManager::OnEvent_TJP},
    {239, 0, &FactoryManager::OnEvent_CITestStatus},
    {240, 0, &FactoryManager::OnEvent_DirectTune},
    {241, 0, &FactoryManager::OnEvent_MediaPlayer},
    {242, 0, &FactoryManager::OnEvent_NetworkDefaultMAC},
    {243, 0, &FactoryManager::OnEvent_OnATVTuningSearch},
    {244, 0, &FactoryManager::OnEvent_PrepareOpenWhiteWindow},
    {246, 0, &FactoryManager::OnEvent_WhiteWindowCodeInformation},
    {247, 0, &FactoryManager::OnEvent_FactoryConfiguration},
    {248, 0, &FactoryManager::OnEvent_MACaddressCheck},
    {250, 0, &FactoryManager::OnEvent_FactoryWakeOnWLAN},
    {251, 0, &FactoryManager::OnEvent_FactoryWLANTest},
    {252, 0, &FactoryManager::OnEvent_PictureModeDynamic},
    {253, 0, &FactoryManager::OnEvent_PatternStatus},
    {254, 0, &FactoryManager::OnEvent_OnAgingMode1},
    {255, 0, &FactoryManager::OnEvent_OnAgingMode2},
    {256, 0, &FactoryManager::OnEvent_LocalDimming},
    {257, 0, &FactoryManager::OnEvent_9PointPattern},
    {258, 0, &FactoryManager::OnEvent_HDMIARCOutput},
    {261, 0, &FactoryManager::OnEvent_WriteProtect},
    {265, 0, &FactoryManager::OnEvent_GetATCmd},
    {266, 0, &FactoryManager::OnEvent_GetWoLWakeupEvent},
    {267, 0, &FactoryManager::OnEvent_PEQ},
    {268, 0, &FactoryManager::OnEvent_3DTimingAdjust},
    {269, 0, &FactoryManager::OnEvent_AudioAudysseyADV},
    {271, 0, &FactoryManager::OnEvent_StarIRBlasterTest},
    {362, 0, &FactoryManager::OnEvent_WLANAPScan},
    {363, 0, &FactoryManager::OnEvent_TeletextOnOffForUARTCmd},
    {24, 1, &FactoryManager::OnTimer_PictureDynamic},
    {24, 2, &FactoryManager::OnTimer_LNBPowerSwitch},
    {24, 3, &FactoryManager::OnTimer_AutoBrightnessSensorValue},
    {24, 4, &FactoryManager::OnTimer_DLNATest},
    {24, 5, &FactoryManager::OnTimer_DLNAAlive},
    {24, 6, &FactoryManager::OnTimer_HDMIARCOutput},
    {24, 7, &FactoryManager::OnTimer_DefaultMAC},
    {24, 8, &FactoryManager::OnTimer_MACFinished},
    {24, 9, &FactoryManager::OnTimer_WriteProtect},
    {24, 10, &FactoryManager::OnTimer_DefaultIPAddress},
    {24, 11, &FactoryManager::OnTimer_ProgramInfoIdle},
    {24, 13, &FactoryManager::OnTimer_SwitchInputSource},
    {24, 14, &FactoryManager::OnTimer_TempIOCheck},
    {24, 15, &FactoryManager::OnTimer_OnAgingMode1},
    {24, 16, &FactoryManager::OnTimer_OnAgingMode2},
    {24, 17, &FactoryManager::OnTimer_Shipout},
    {24, 18, &FactoryManager::OnTimer_ShipoutFinishedTimer},
    {24, 19, &FactoryManager::OnTimer_SelectSpeakerTypeToSNC},
    {24, 20, &FactoryManager::OnTimer_SelectSpeakerTypeToSNCFinished},
    {24, 21, &FactoryManager::OnTimer_SelectSpeakerTypeToIEC},
    {24, 22, &FactoryManager::OnTimer_SelectSpeakerTypeToIECFinished},
    {24, 23, &FactoryManager::OnTimer_SelectSpeakerTypeToGW},
    {24, 24, &FactoryManager::OnTimer_SelectSpeakerTypeToGWFinished},
    {24, 25, &FactoryManager::OnTimer_SelectSpeakerTypeToEstec},
    {24, 26, &FactoryManager::OnTimer_SelectSpeakerTypeToEstecFinished},
    {24, 27, &FactoryManager::OnTimer_SetStoreToNone},
    {24, 28, &FactoryManager::OnTimer_SetStoreToNoneFinished},
    {24, 29, &FactoryManager::OnTimer_SetStoreToBestBuy},
    {24, 30, &FactoryManager::OnTimer_SetStoreToBestBuyFinished},
    {24, 31, &FactoryManager::OnTimer_SetStoreToCostco},
    {24, 32, &FactoryManager::OnTimer_SetStoreToCostcoFinished},
    {24, 33, &FactoryManager::OnTimer_SetStoreToWalmart},
    {24, 34, &FactoryManager::OnTimer_SetStoreToWalmartFinished},
    {24, 35, &FactoryManager::OnTimer_ShipoutSetting},
    {24, 36, &FactoryManager::OnTimer_CCompanyChannelPreset},
    {24, 37, &FactoryManager::OnTimer_FullPowerMode},
    {24, 38, &FactoryManager::OnTimer_ClearPowerOnTime},
    {24, 39, &FactoryManager::OnTimer_DirectTune},
    {24, 40, &FactoryManager::OnTimer_SerialLog},
    {24, 41, &FactoryManager::OnTimer_FactoryConfiguration},
    {24, 42, &FactoryManager::OnTimer_FactoryConfigurationFinished},
    {24, 43, &FactoryManager::OnTimer_FactoryDVBSManualTuningToggle},
    {24, 44, &FactoryManager::OnTimer_WhiteWindowCodeInformation},
    {24, 45, &FactoryManager::OnTimer_PrepareOpenWhiteWindow},
    {24, 46, &FactoryManager::OnTimer_22KHzTone},
    {24, 47, &FactoryManager::OnTimer_DiSEqCSwitching},
    {24, 48, &FactoryManager::OnTimer_CITestStatus},
    {24, 49, &FactoryManager::OnTimer_DLTVSignalSetting},
    {24, 51, &FactoryManager::OnTimer_OnATVTuningSearch},
    {24, 52, &FactoryManager::OnTimer_MACaddressCheck},
    {24, 53, &FactoryManager::OnTimer_FactoryWLANTest},
    {24, 54, &FactoryManager::OnTimer_FactoryADCAdjustment},
    {24, 55, &FactoryManager::OnTimer_FactoryWriteVGA_EDID_EEPRPOM},
    {24, 56, &FactoryManager::OnTimer_FactoryKeyWaitMWBFinish},
    {24, 57, &FactoryManager::OnTimer_TunerInfo},
    {24, 58, &FactoryManager::OnTimer_DirectTune},
    {24, 59, &FactoryManager::OnTimer_SwitchInputSourceFinished},
    {24, 60, &FactoryManager::OnTimer_FactoryScanFinishe},
    {24, 61, &FactoryManager::OnTimer_OverCurrentUSB},
    {24, 62, &FactoryManager::OnTimer_ReleaseAT_Cmd},
    {24, 63, &FactoryManager::OnTimer_FactoryWakeOnWLAN},
    {24, 64, &FactoryManager::OnTimer_LocalDimming},
    {24, 65, &FactoryManager::OnTimer_9PointPattern},
    {24, 66, &FactoryManager::OnTimer_FactoryVolumeAdj},
    {24, 67, &FactoryManager::OnTimer_FactoryWakeOnWLANTesting},
    {24, 68, &FactoryManager::OnTimer_FactoryWifiDongleStatus},
};

TEST(MessageMap, HoldsExactlyTheTabledRoutesInOrderAndEndsWithAZeroEntry) {
    const MSGMAP* map = FactoryManager::GetThisMessageMap();
    ASSERT_EQ(map->pfnGetBaseMap, &MEvtHandle::GetThisMessageMap);
    const MSGMAP_ENTRY* e = map->lpEntries;
    size_t n = 0;
    for (; e->nMessage != 0 || e->pfn != nullptr; ++e, ++n) {
        ASSERT_LT(n, std::size(kRoutes)) << "more entries than tabled";
        const Route& want = kRoutes[n];
        EXPECT_EQ(e->nMessage, want.message) << "entry " << n;
        EXPECT_EQ(e->nID, want.id) << "entry " << n;
        EXPECT_EQ(e->nLastID, want.id) << "no ranges, entry " << n;
        EXPECT_EQ(e->nCode, 0u);
        EXPECT_EQ(e->nSig, 0u);
        EXPECT_TRUE(e->pfn == want.handler)
            << "entry " << n << " message " << want.message << " id " << want.id;
    }
    EXPECT_EQ(n, 131u);
    EXPECT_EQ(e->nID, 0u);
    EXPECT_EQ(e->nCode, 0u);
}

TEST(MessageMap, VirtualAccessorReturnsTheClassMap) {
    sim::Set::Instance().Reset();
    FactoryManager* fm = TVManager::GetInstance()->getFactoryManager();
    const MEvtHandle* base = fm;
    EXPECT_EQ(base->GetMessageMap(), FactoryManager::GetThisMessageMap());
    sim::Set::Instance().Shutdown();
}

class DispatchTest : public SetTest {};

// Events the map does not know, and the two timer ids that have no entry, fall
// through to the base map and end in the framework's default procedure.
TEST_F(DispatchTest, UnknownEventsAndUnmappedTimersReachTheDefaultProcedure) {
    Post(43 + 1000);
    Fm().OnEvent(MEvtHandle::kTimerMessage, nullptr, reinterpret_cast<void*>(12), nullptr);
    Fm().OnEvent(MEvtHandle::kTimerMessage, nullptr, reinterpret_cast<void*>(50), nullptr);
    const auto calls = Journal().Calls("MEvtHandle::DefEventProc");
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls[0].args, "[1043, 0, 0, 0]");
    EXPECT_EQ(calls[1].args, "[24, 0, 12, 0]");
    EXPECT_EQ(calls[2].args, "[24, 0, 50, 0]");
}

TEST_F(DispatchTest, SdTestIsADirectCallOnly) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(Fm().OnEvent_FactorySDTest(nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "\n~~ [OnEvent_FactorySDTest] is for 4k2k project. ");
}

}  // namespace
