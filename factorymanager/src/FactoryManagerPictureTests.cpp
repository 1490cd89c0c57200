#include "FactoryLog.h"
#include "FactoryManager.h"

// These pages are not in this build yet; each handler says so in the log.

MAPI_BOOL FactoryManager::OnEvent_AutoBrightnessSensorValue(void*, void*, void*) {
    return NotBuiltYet("OnEvent_AutoBrightnessSensorValue");
}
MAPI_BOOL FactoryManager::OnEvent_BackLightCheck(void*, void*, void*) {
    return NotBuiltYet("OnEvent_BackLightCheck");
}
MAPI_BOOL FactoryManager::OnEvent_AudioBalanceCheck(void*, void*, void*) {
    return NotBuiltYet("OnEvent_AudioBalanceCheck");
}
MAPI_BOOL FactoryManager::OnEvent_InternalPatternOff(void*, void*, void*) {
    return NotBuiltYet("OnEvent_InternalPatternOff");
}
MAPI_BOOL FactoryManager::OnEvent_SwitchInputSource(void*, void*, void*) {
    return NotBuiltYet("OnEvent_SwitchInputSource");
}
MAPI_BOOL FactoryManager::OnEvent_PictureModeDynamic(void*, void*, void*) {
    return NotBuiltYet("OnEvent_PictureModeDynamic");
}
MAPI_BOOL FactoryManager::OnEvent_PatternStatus(void*, void*, void*) {
    return NotBuiltYet("OnEvent_PatternStatus");
}
MAPI_BOOL FactoryManager::OnEvent_OnAgingMode1(void*, void*, void*) {
    return NotBuiltYet("OnEvent_OnAgingMode1");
}
MAPI_BOOL FactoryManager::OnEvent_OnAgingMode2(void*, void*, void*) {
    return NotBuiltYet("OnEvent_OnAgingMode2");
}
MAPI_BOOL FactoryManager::OnEvent_LocalDimming(void*, void*, void*) {
    return NotBuiltYet("OnEvent_LocalDimming");
}
MAPI_BOOL FactoryManager::OnEvent_9PointPattern(void*, void*, void*) {
    return NotBuiltYet("OnEvent_9PointPattern");
}
MAPI_BOOL FactoryManager::OnTimer_PictureDynamic(void*, void*, void*) {
    return NotBuiltYet("OnTimer_PictureDynamic");
}
MAPI_BOOL FactoryManager::OnTimer_AutoBrightnessSensorValue(void*, void*, void*) {
    return NotBuiltYet("OnTimer_AutoBrightnessSensorValue");
}
MAPI_BOOL FactoryManager::OnTimer_SwitchInputSource(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SwitchInputSource");
}
MAPI_BOOL FactoryManager::OnTimer_OnAgingMode1(void*, void*, void*) {
    return NotBuiltYet("OnTimer_OnAgingMode1");
}
MAPI_BOOL FactoryManager::OnTimer_OnAgingMode2(void*, void*, void*) {
    return NotBuiltYet("OnTimer_OnAgingMode2");
}
MAPI_BOOL FactoryManager::OnTimer_SwitchInputSourceFinished(void*, void*, void*) {
    return NotBuiltYet("OnTimer_SwitchInputSourceFinished");
}
MAPI_BOOL FactoryManager::OnTimer_LocalDimming(void*, void*, void*) {
    return NotBuiltYet("OnTimer_LocalDimming");
}
MAPI_BOOL FactoryManager::OnTimer_9PointPattern(void*, void*, void*) {
    return NotBuiltYet("OnTimer_9PointPattern");
}
