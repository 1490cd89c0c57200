#include "FactoryLog.h"
#include "FactoryManager.h"

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnEvent_OverCurrentUSB(void*, void*, void*) {
    return NotBuiltYet("OnEvent_OverCurrentUSB");
}
MAPI_BOOL FactoryManager::OnEvent_DigitalAudioOut(void*, void*, void*) {
    return NotBuiltYet("OnEvent_DigitalAudioOut");
}
MAPI_BOOL FactoryManager::OnEvent_ShipoutSetting(void*, void*, void*) {
    return NotBuiltYet("OnEvent_ShipoutSetting");
}
MAPI_BOOL FactoryManager::OnEvent_SelectSpeakerTypeToSNC(void*, void*, void*) {
    return NotBuiltYet("OnEvent_SelectSpeakerTypeToSNC");
}
MAPI_BOOL FactoryManager::OnEvent_SelectSpeakerTypeToIEC(void*, void*, void*) {
    return NotBuiltYet("OnEvent_SelectSpeakerTypeToIEC");
}
MAPI_BOOL FactoryManager::OnEvent_SelectSpeakerTypeToGW(void*, void*, void*) {
    return NotBuiltYet("OnEvent_SelectSpeakerTypeToGW");
}
MAPI_BOOL FactoryManager::OnEvent_SelectSpeakerTypeToEstec(void*, void*, void*) {
    return NotBuiltYet("OnEvent_SelectSpeakerTypeToEstec");
}
MAPI_BOOL FactoryManager::OnEvent_FullPowerMode(void*, void*, void*) {
    return NotBuiltYet("OnEvent_FullPowerMode");
}
MAPI_BOOL FactoryManager::OnEvent_ClearPowerOnTime(void*, void*, void*) {
    return NotBuiltYet("OnEvent_ClearPowerOnTime");
}
MAPI_BOOL FactoryManager::OnEvent_SetStoreToNone(void*, void*, void*) {
    return NotBuiltYet("OnEvent_SetStoreToNone");
}
MAPI_BOOL FactoryManager::OnEvent_SetStoreToBestBuy(void*, void*, void*) {
    return NotBuiltYet("OnEvent_SetStoreToBestBuy");
}
MAPI_BOOL FactoryManager::OnEvent_SetStoreToCostco(void*, void*, void*) {
    return NotBuiltYet("OnEvent_SetStoreToCostco");
}
MAPI_BOOL FactoryManager::OnEvent_SetStoreToWalmart(void*, void*, void*) {
    return NotBuiltYet("OnEvent_SetStoreToWalmart");
}
MAPI_BOOL FactoryManager::OnEvent_TempIOCheck(void*, void*, void*) {
    return NotBuiltYet("OnEvent_TempIOCheck");
}
MAPI_BOOL FactoryManager::OnEvent_DefaultIPAddress(void*, void*, void*) {
    return NotBuiltYet("OnEvent_DefaultIPAddress");
}
MAPI_BOOL FactoryManager::OnEvent_NetworkDefaultMAC(void*, void*, void*) {
    return NotBuiltYet("OnEvent_NetworkDefaultMAC");
}
MAPI_BOOL FactoryManager::OnEvent_PrepareOpenWhiteWindow(void*, void*, void*) {
    return NotBuiltYet("OnEvent_PrepareOpenWhiteWindow");
}
MAPI_BOOL FactoryManager::OnEvent_WhiteWindowCodeInformation(void*, void*, void*) {
    return NotBuiltYet("OnEvent_WhiteWindowCodeInformation");
}
MAPI_BOOL FactoryManager::OnEvent_HDMIARCOutput(void*, void*, void*) {
    return NotBuiltYet("OnEvent_HDMIARCOutput");
}
MAPI_BOOL FactoryManager::OnEvent_WriteProtect(void*, void*, void*) {
    return NotBuiltYet("OnEvent_WriteProtect");
}
MAPI_BOOL FactoryManager::OnEvent_StarIRBlasterTest(void*, void*, void*) {
    return NotBuiltYet("OnEvent_StarIRBlasterTest");
}
MAPI_BOOL FactoryManager::OnTimer_HDMIARCOutput(void*, void*, void*) {
    return NotBuiltYet("OnTimer_HDMIARCOutput");
}
MAPI_BOOL FactoryManager::OnTimer_DefaultMAC(void*, void*, void*) {
    return NotBuiltYet("OnTimer_DefaultMAC");
}
MAPI_BOOL FactoryManager::OnTimer_MACFinished(void*, void*, void*) {
    return NotBuiltYet("OnTimer_MACFinished");
}
MAPI_BOOL FactoryManager::OnTimer_WriteProtect(void*, void*, void*) {
    return NotBuiltYet("OnTimer_WriteProtect");
}
MAPI_BOOL FactoryManager::OnTimer_DefaultIPAddress(void*, void*, void*) {
    return NotBuiltYet("OnTimer_DefaultIPAddress");
}
MAPI_BOOL FactoryManager::OnTimer_TempIOCheck(void*, void*, void*) {
    return NotBuiltYet("OnTimer_TempIOCheck");
}
MAPI_BOOL FactoryManager::OnTimer_SelectSpeakerTypeToSNC(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SelectSpeakerTypeToSNC");
}
MAPI_BOOL FactoryManager::OnTimer_SelectSpeakerTypeToSNCFinished(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SelectSpeakerTypeToSNCFinished");
}
MAPI_BOOL FactoryManager::OnTimer_SelectSpeakerTypeToIEC(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SelectSpeakerTypeToIEC");
}
MAPI_BOOL FactoryManager::OnTimer_SelectSpeakerTypeToIECFinished(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SelectSpeakerTypeToIECFinished");
}
MAPI_BOOL FactoryManager::OnTimer_SelectSpeakerTypeToGW(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SelectSpeakerTypeToGW");
}
MAPI_BOOL FactoryManager::OnTimer_SelectSpeakerTypeToGWFinished(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SelectSpeakerTypeToGWFinished");
}
MAPI_BOOL FactoryManager::OnTimer_SelectSpeakerTypeToEstec(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SelectSpeakerTypeToEstec");
}
MAPI_BOOL FactoryManager::OnTimer_SelectSpeakerTypeToEstecFinished(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SelectSpeakerTypeToEstecFinished");
}
MAPI_BOOL FactoryManager::OnTimer_SetStoreToNone(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SetStoreToNone");
}
MAPI_BOOL FactoryManager::OnTimer_SetStoreToNoneFinished(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SetStoreToNoneFinished");
}
MAPI_BOOL FactoryManager::OnTimer_SetStoreToBestBuy(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SetStoreToBestBuy");
}
MAPI_BOOL FactoryManager::OnTimer_SetStoreToBestBuyFinished(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SetStoreToBestBuyFinished");
}
MAPI_BOOL FactoryManager::OnTimer_SetStoreToCostco(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SetStoreToCostco");
}
MAPI_BOOL FactoryManager::OnTimer_SetStoreToCostcoFinished(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SetStoreToCostcoFinished");
}
MAPI_BOOL FactoryManager::OnTimer_SetStoreToWalmart(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SetStoreToWalmart");
}
MAPI_BOOL FactoryManager::OnTimer_SetStoreToWalmartFinished(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SetStoreToWalmartFinished");
}
MAPI_BOOL FactoryManager::OnTimer_ShipoutSetting(void*, void*, void*) {
    return NotBuiltYet("OnTimer_ShipoutSetting");
}
MAPI_BOOL FactoryManager::OnTimer_CCompanyChannelPreset(void*, void*, void*) {
    return NotBuiltYet("OnTimer_CCompanyChannelPreset");
}
MAPI_BOOL FactoryManager::OnTimer_FullPowerMode(void*, void*, void*) {
    return NotBuiltYet("OnTimer_FullPowerMode");
}
MAPI_BOOL FactoryManager::OnTimer_ClearPowerOnTime(void*, void*, void*) {
    return NotBuiltYet("OnTimer_ClearPowerOnTime");
}
MAPI_BOOL FactoryManager::OnTimer_WhiteWindowCodeInformation(void*, void*, void*) {
    return NotBuiltYet("OnTimer_WhiteWindowCodeInformation");
}
MAPI_BOOL FactoryManager::OnTimer_PrepareOpenWhiteWindow(void*, void*, void*) {
    return NotBuiltYet("OnTimer_PrepareOpenWhiteWindow");
}
MAPI_BOOL FactoryManager::OnTimer_OverCurrentUSB(void*, void*, void*) {
    return NotBuiltYet("OnTimer_OverCurrentUSB");
}
