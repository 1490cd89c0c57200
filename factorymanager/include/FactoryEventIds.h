// Factory event ids and timer ids, each with the handler the message map routes
// it to. One list serves the map, the id constants and the tools that name events.
#pragma once

// X(name, id, handler)
#define FACTORY_EVENT_LIST(X)                                                    \
    X(AtvScanInfo, 43, OnEvent_AtvScanInfo)                                      \
    X(ScanRecepient, 45, OnScanRecepient)                                        \
    X(FactoryVersion, 188, OnEvent_FactoryVersion)                               \
    X(FactoryMModeStart, 191, OnEvent_FactoryMModeStart)                         \
    X(DLTVSignalSetting, 192, OnEvent_DLTVSignalSetting)                         \
    X(AutoBrightnessSensorValue, 194, OnEvent_AutoBrightnessSensorValue)         \
    X(BackLightCheck, 195, OnEvent_BackLightCheck)                               \
    X(OverCurrentUSB, 196, OnEvent_OverCurrentUSB)                               \
    X(DigitalAudioOut, 197, OnEvent_DigitalAudioOut)                             \
    X(AudioBalanceCheck, 198, OnEvent_AudioBalanceCheck)                         \
    X(FactoryVideoCheck, 200, OnEvent_FactoryVideoCheck)                         \
    X(FactoryVolumeAdj, 203, OnEvent_FactoryVolumeAdj)                           \
    X(DirectCH, 207, OnEvent_DirectCH)                                           \
    X(InternalPatternOff, 211, OnEvent_InternalPatternOff)                       \
    X(Shipout, 213, OnEvent_Shipout)                                             \
    X(ShipoutSetting, 214, OnEvent_ShipoutSetting)                               \
    X(SelectSpeakerTypeToSNC, 215, OnEvent_SelectSpeakerTypeToSNC)               \
    X(SelectSpeakerTypeToIEC, 216, OnEvent_SelectSpeakerTypeToIEC)               \
    X(SelectSpeakerTypeToGW, 217, OnEvent_SelectSpeakerTypeToGW)                 \
    X(SelectSpeakerTypeToEstec, 218, OnEvent_SelectSpeakerTypeToEstec)           \
    X(FullPowerMode, 220, OnEvent_FullPowerMode)                                 \
    X(ClearPowerOnTime, 221, OnEvent_ClearPowerOnTime)                           \
    X(SetStoreToNone, 222, OnEvent_SetStoreToNone)                               \
    X(SetStoreToBestBuy, 223, OnEvent_SetStoreToBestBuy)                         \
    X(SetStoreToCostco, 224, OnEvent_SetStoreToCostco)                           \
    X(SetStoreToWalmart, 225, OnEvent_SetStoreToWalmart)                         \
    X(CloneCopy, 226, OnEvent_CloneCopy)                                         \
    X(FactoryDVBSManualTuningToggle, 227, OnEvent_FactoryDVBSManualTuningToggle) \
    X(DLNATest, 228, OnEvent_DLNATest)                                           \
    X(SatInfo, 230, OnEvent_SatInfo)                                             \
    X(ReleaseAT_Cmd, 231, OnEvent_ReleaseAT_Cmd)                                 \
    X(FactoryADCAdjustment, 232, OnEvent_FactoryADCAdjustment)                   \
    X(FactoryWriteVGA_EDID_EEPRPOM, 233, OnEvent_FactoryWriteVGA_EDID_EEPRPOM)   \
    X(TempIOCheck, 234, OnEvent_TempIOCheck)                                     \
    X(DefaultIPAddress, 235, OnEvent_DefaultIPAddress)                           \
    X(SwitchInputSource, 236, OnEvent_SwitchInputSource)                         \
    X(ExitFactoryMode, 237, OnEvent_ExitFactoryMode)                             \
    X(TJP, 238, OnEvent_TJP)                                                     \
    X(CITestStatus, 239, OnEvent_CITestStatus)                                   \
    X(DirectTune, 240, OnEvent_DirectTune)                                       \
    X(MediaPlayer, 241, OnEvent_MediaPlayer)                                     \
    X(NetworkDefaultMAC, 242, OnEvent_NetworkDefaultMAC)                         \
    X(OnATVTuningSearch, 243, OnEvent_OnATVTuningSearch)                         \
    X(PrepareOpenWhiteWindow, 244, OnEvent_PrepareOpenWhiteWindow)               \
    X(WhiteWindowCodeInformation, 246, OnEvent_WhiteWindowCodeInformation)       \
    X(FactoryConfiguration, 247, OnEvent_FactoryConfiguration)                   \
    X(MACaddressCheck, 248, OnEvent_MACaddressCheck)                             \
    X(FactoryWakeOnWLAN, 250, OnEvent_FactoryWakeOnWLAN)                         \
    X(FactoryWLANTest, 251, OnEvent_FactoryWLANTest)                             \
    X(PictureModeDynamic, 252, OnEvent_PictureModeDynamic)                       \
    X(PatternStatus, 253, OnEvent_PatternStatus)                                 \
    X(OnAgingMode1, 254, OnEvent_OnAgingMode1)                                   \
    X(OnAgingMode2, 255, OnEvent_OnAgingMode2)                                   \
    X(LocalDimming, 256, OnEvent_LocalDimming)                                   \
    X(NinePointPattern, 257, OnEvent_9PointPattern)                              \
    X(HDMIARCOutput, 258, OnEvent_HDMIARCOutput)                                 \
    X(WriteProtect, 261, OnEvent_WriteProtect)                                   \
    X(GetATCmd, 265, OnEvent_GetATCmd)                                           \
    X(GetWoLWakeupEvent, 266, OnEvent_GetWoLWakeupEvent)                         \
    X(PEQ, 267, OnEvent_PEQ)                                                     \
    X(ThreeDTimingAdjust, 268, OnEvent_3DTimingAdjust)                           \
    X(AudioAudysseyADV, 269, OnEvent_AudioAudysseyADV)                           \
    X(StarIRBlasterTest, 271, OnEvent_StarIRBlasterTest)                         \
    X(WLANAPScan, 362, OnEvent_WLANAPScan)                                       \
    X(TeletextOnOffForUARTCmd, 363, OnEvent_TeletextOnOffForUARTCmd)

// X(name, id, handler). Ticks arrive as message 24 with the id in the second
// parameter. There are no timers 12 and 50; 39 and 58 share one handler.
#define FACTORY_TIMER_LIST(X)                                                         \
    X(PictureDynamic, 1, OnTimer_PictureDynamic)                                      \
    X(LNBPowerSwitch, 2, OnTimer_LNBPowerSwitch)                                      \
    X(AutoBrightnessSensorValue, 3, OnTimer_AutoBrightnessSensorValue)                \
    X(DLNATest, 4, OnTimer_DLNATest)                                                  \
    X(DLNAAlive, 5, OnTimer_DLNAAlive)                                                \
    X(HDMIARCOutput, 6, OnTimer_HDMIARCOutput)                                        \
    X(DefaultMAC, 7, OnTimer_DefaultMAC)                                              \
    X(MACFinished, 8, OnTimer_MACFinished)                                            \
    X(WriteProtect, 9, OnTimer_WriteProtect)                                          \
    X(DefaultIPAddress, 10, OnTimer_DefaultIPAddress)                                 \
    X(ProgramInfoIdle, 11, OnTimer_ProgramInfoIdle)                                   \
    X(SwitchInputSource, 13, OnTimer_SwitchInputSource)                               \
    X(TempIOCheck, 14, OnTimer_TempIOCheck)                                           \
    X(OnAgingMode1, 15, OnTimer_OnAgingMode1)                                         \
    X(OnAgingMode2, 16, OnTimer_OnAgingMode2)                                         \
    X(Shipout, 17, OnTimer_Shipout)                                                   \
    X(ShipoutFinishedTimer, 18, OnTimer_ShipoutFinishedTimer)                         \
    X(SelectSpeakerTypeToSNC, 19, OnTimer_SelectSpeakerTypeToSNC)                     \
    X(SelectSpeakerTypeToSNCFinished, 20, OnTimer_SelectSpeakerTypeToSNCFinished)     \
    X(SelectSpeakerTypeToIEC, 21, OnTimer_SelectSpeakerTypeToIEC)                     \
    X(SelectSpeakerTypeToIECFinished, 22, OnTimer_SelectSpeakerTypeToIECFinished)     \
    X(SelectSpeakerTypeToGW, 23, OnTimer_SelectSpeakerTypeToGW)                       \
    X(SelectSpeakerTypeToGWFinished, 24, OnTimer_SelectSpeakerTypeToGWFinished)       \
    X(SelectSpeakerTypeToEstec, 25, OnTimer_SelectSpeakerTypeToEstec)                 \
    X(SelectSpeakerTypeToEstecFinished, 26, OnTimer_SelectSpeakerTypeToEstecFinished) \
    X(SetStoreToNone, 27, OnTimer_SetStoreToNone)                                     \
    X(SetStoreToNoneFinished, 28, OnTimer_SetStoreToNoneFinished)                     \
    X(SetStoreToBestBuy, 29, OnTimer_SetStoreToBestBuy)                               \
    X(SetStoreToBestBuyFinished, 30, OnTimer_SetStoreToBestBuyFinished)               \
    X(SetStoreToCostco, 31, OnTimer_SetStoreToCostco)                                 \
    X(SetStoreToCostcoFinished, 32, OnTimer_SetStoreToCostcoFinished)                 \
    X(SetStoreToWalmart, 33, OnTimer_SetStoreToWalmart)                               \
    X(SetStoreToWalmartFinished, 34, OnTimer_SetStoreToWalmartFinished)               \
    X(ShipoutSetting, 35, OnTimer_ShipoutSetting)                                     \
    X(CCompanyChannelPreset, 36, OnTimer_CCompanyChannelPreset)                       \
    X(FullPowerMode, 37, OnTimer_FullPowerMode)                                       \
    X(ClearPowerOnTime, 38, OnTimer_ClearPowerOnTime)                                 \
    X(DirectTune, 39, OnTimer_DirectTune)                                             \
    X(SerialLog, 40, OnTimer_SerialLog)                                               \
    X(FactoryConfiguration, 41, OnTimer_FactoryConfiguration)                         \
    X(FactoryConfigurationFinished, 42, OnTimer_FactoryConfigurationFinished)         \
    X(FactoryDVBSManualTuningToggle, 43, OnTimer_FactoryDVBSManualTuningToggle)       \
    X(WhiteWindowCodeInformation, 44, OnTimer_WhiteWindowCodeInformation)             \
    X(PrepareOpenWhiteWindow, 45, OnTimer_PrepareOpenWhiteWindow)                     \
    X(TwentyTwoKHzTone, 46, OnTimer_22KHzTone)                                        \
    X(DiSEqCSwitching, 47, OnTimer_DiSEqCSwitching)                                   \
    X(CITestStatus, 48, OnTimer_CITestStatus)                                         \
    X(DLTVSignalSetting, 49, OnTimer_DLTVSignalSetting)                               \
    X(OnATVTuningSearch, 51, OnTimer_OnATVTuningSearch)                               \
    X(MACaddressCheck, 52, OnTimer_MACaddressCheck)                                   \
    X(FactoryWLANTest, 53, OnTimer_FactoryWLANTest)                                   \
    X(FactoryADCAdjustment, 54, OnTimer_FactoryADCAdjustment)                         \
    X(FactoryWriteVGA_EDID_EEPRPOM, 55, OnTimer_FactoryWriteVGA_EDID_EEPRPOM)         \
    X(FactoryKeyWaitMWBFinish, 56, OnTimer_FactoryKeyWaitMWBFinish)                   \
    X(TunerInfo, 57, OnTimer_TunerInfo)                                               \
    X(DirectTuneLong, 58, OnTimer_DirectTune)                                         \
    X(SwitchInputSourceFinished, 59, OnTimer_SwitchInputSourceFinished)               \
    X(FactoryScanFinishe, 60, OnTimer_FactoryScanFinishe)                             \
    X(OverCurrentUSB, 61, OnTimer_OverCurrentUSB)                                     \
    X(ReleaseAT_Cmd, 62, OnTimer_ReleaseAT_Cmd)                                       \
    X(FactoryWakeOnWLAN, 63, OnTimer_FactoryWakeOnWLAN)                               \
    X(LocalDimming, 64, OnTimer_LocalDimming)                                         \
    X(NinePointPattern, 65, OnTimer_9PointPattern)                                    \
    X(FactoryVolumeAdj, 66, OnTimer_FactoryVolumeAdj)                                 \
    X(FactoryWakeOnWLANTesting, 67, OnTimer_FactoryWakeOnWLANTesting)                 \
    X(FactoryWifiDongleStatus, 68, OnTimer_FactoryWifiDongleStatus)

#define FACTORY_ID_CONSTANT(name, id, handler) constexpr unsigned long name = id;
namespace FactoryEvent {
FACTORY_EVENT_LIST(FACTORY_ID_CONSTANT)
}  // namespace FactoryEvent
namespace FactoryTimer {
FACTORY_TIMER_LIST(FACTORY_ID_CONSTANT)
}  // namespace FactoryTimer
#undef FACTORY_ID_CONSTANT
