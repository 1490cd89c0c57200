// The rows of the timed one-shot setting commands and the few platform calls and
// parameter rules in which the members differ.
#include "AudioManager.h"
#include "FactoryEventIds.h"
#include "FactoryLog.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Cmd.h"
#include "PictureManager.h"
#include "TVManager.h"
#include "TimedCommand.h"
#include "TimerManager.h"

namespace {

using namespace FactoryTimer;

template <int Type>
void SelectSpeakerType() {
    TVManager::GetInstance()->getAudioManager()->selectAudysseySpeakerType(Type);
}

// An all-zero on-time with period 0 is the platform's "no on-timer".
void ClearOnTimer() {
    const ST_TIME time{};
    const ST_ON_TIME_TV_DES des{};
    TVManager::GetInstance()->getTimerManager()->setOnTime(&time, 0, &des, 1);
}

void ResetForShipping() {
    TVManager::GetInstance()->resetToFactoryDefault();
    ClearOnTimer();
}

// Saves what the user had, so that the platform can restore it, then drives the
// panel and the speakers to their maximum for the line's power measurement.
void EnterFullPower() {
    TVManager* tv = TVManager::GetInstance();
    PictureManager* picture = tv->getPictureManager();
    AudioManager* audio = tv->getAudioManager();
    const int backlight = picture->getBacklight();
    const int brightness = picture->getBrightness();
    const int volume = audio->getVolume();
    MSrv_Control::GetInstance()->GetMSrvFactoryCmd()->SetFullPowerModeInformation(
        backlight, brightness, volume);
    picture->setPictureMode(1);
    picture->setBacklight(100);
    picture->setBrightness(50);
    audio->setVolume(100);
}

bool WriteDefaultMacIp() {
    return MSrv_Control::GetInstance()->GetMSrvFactoryCmd()->SetFactoryDefaultMacIp() != 0;
}

// An unknown parameter still closes after the delay, with nothing written on the page.
bool ChooseHdmiArc(MAPI_U8 param, const char*&, const char*& text) {
    if (param == 0x99) {
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ [OnEvent_HDMIARCOutput] /0x99/");
        text = "HDMI ARC : Enabled";
    } else if (param == 0xD3) {
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ [OnEvent_HDMIARCOutput]  /0xD3/");
        text = "HDMI ARC : Disabled";
    }
    return true;
}

bool ChooseWriteProtect(MAPI_U8 param, const char*& key, const char*& text) {
    if (param == 0) {
        key = "WP-Complete";
        text = "WP COMPLETE";
        return true;
    }
    if (param == 1) {
        key = "WP-Error";
        text = "WP ERROR";
        return true;
    }
    return false;
}

}  // namespace

namespace timed {

const TimedCommand SpeakerSNC = {"SelectSpeakerTypeToSNC",
                                 "SpeakerSNC",
                                 "Set-Speaker-SNC",
                                 "Set SKP to CMSNC : Writing",
                                 "Set SPK to CMSNC : Finished",
                                 "Set-Speaker-SNC-Show",
                                 true,
                                 &SelectSpeakerType<0>,
                                 nullptr,
                                 nullptr,
                                 {SelectSpeakerTypeToSNC, 2000},
                                 {SelectSpeakerTypeToSNCFinished, 2000},
                                 false};
const TimedCommand SpeakerIEC = {"SelectSpeakerTypeToIEC",
                                 "SpeakerIEC",
                                 "Set-Speaker-IEC",
                                 "Set SKP to IEC : Writing",
                                 "Set SPK to IEC : Finished",
                                 "Set-Speaker-IEC-Show",
                                 true,
                                 &SelectSpeakerType<1>,
                                 nullptr,
                                 nullptr,
                                 {SelectSpeakerTypeToIEC, 2000},
                                 {SelectSpeakerTypeToIECFinished, 2000},
                                 false};
const TimedCommand SpeakerGW = {"SelectSpeakerTypeToGW",
                                "SpeakerGW",
                                "Set-Speaker-GW",
                                "Set SKP to GW : Writing",
                                "Set SPK to GW : Finished",
                                "Set-Speaker-GW-Show",
                                true,
                                &SelectSpeakerType<2>,
                                nullptr,
                                nullptr,
                                {SelectSpeakerTypeToGW, 2000},
                                {SelectSpeakerTypeToGWFinished, 2000},
                                false};
const TimedCommand SpeakerEstec = {"SelectSpeakerTypeToEstec",
                                   "SpeakerEstec",
                                   "Set-Speaker-Estec",
                                   "Set SKP to Estec : Writing",
                                   "Set SPK to Estec : Finished",
                                   "Set-Speaker-Estec-Show",
                                   true,
                                   &SelectSpeakerType<3>,
                                   nullptr,
                                   nullptr,
                                   {SelectSpeakerTypeToEstec, 2000},
                                   {SelectSpeakerTypeToEstecFinished, 2000},
                                   false};

// Where the store profile is kept is the host's business: no platform call.
const TimedCommand StoreNone = {"SetStoreToNone",
                                "SetStoreNone",
                                "Set-Store-None",
                                "Set Store to None : Writing",
                                "Set Store to None : Finished",
                                "Set-Store-None-Show",
                                true,
                                nullptr,
                                nullptr,
                                nullptr,
                                {SetStoreToNone, 2000},
                                {SetStoreToNoneFinished, 2000},
                                false};
const TimedCommand StoreBestBuy = {"SetStoreToBestBuy",
                                   "SetStoreBestBuy",
                                   "Set-Store-Best-Buy",
                                   "Set Store to BestBuy : Writing",
                                   "Set Store to BestBuy : Finished",
                                   "Set-Store-Best-Buy-Show",
                                   true,
                                   nullptr,
                                   nullptr,
                                   nullptr,
                                   {SetStoreToBestBuy, 2000},
                                   {SetStoreToBestBuyFinished, 2000},
                                   false};
const TimedCommand StoreCostco = {"SetStoreToCostco",
                                  "SetStoreCostco",
                                  "Set-Store-Costco",
                                  "Set Store to Costco : Writing",
                                  "Set Store to Costco : Finished",
                                  "Set-Store-Costco-Show",
                                  true,
                                  nullptr,
                                  nullptr,
                                  nullptr,
                                  {SetStoreToCostco, 2000},
                                  {SetStoreToCostcoFinished, 2000},
                                  false};
const TimedCommand StoreWalmart = {"SetStoreToWalmart",
                                   "SetStoreWalmart",
                                   "Set-Store-Walmart",
                                   "Set Store to Walmart : Writing",
                                   "Set Store to Walmart : Finished",
                                   "Set-Store-Walmart-Show",
                                   true,
                                   nullptr,
                                   nullptr,
                                   nullptr,
                                   {SetStoreToWalmart, 2000},
                                   {SetStoreToWalmartFinished, 2000},
                                   false};

const TimedCommand ShipoutSetting = {"ShipoutSetting",
                                     "ShipoutSetting",
                                     "Shipout-Setting",
                                     "NA Shipout",
                                     nullptr,
                                     "Shipout-Setting-Show",
                                     true,
                                     &ResetForShipping,
                                     nullptr,
                                     nullptr,
                                     {FactoryTimer::ShipoutSetting, 2000},
                                     {0, 0},
                                     false};
// Armed elsewhere; its timer only closes the page.
const TimedCommand CCompanyChannelPreset = {"CCompanyChannelPreset",
                                            nullptr,
                                            nullptr,
                                            nullptr,
                                            nullptr,
                                            "C_company-Channel-Preset-Show",
                                            false,
                                            nullptr,
                                            nullptr,
                                            nullptr,
                                            {FactoryTimer::CCompanyChannelPreset, 0},
                                            {0, 0},
                                            false};
const TimedCommand FullPowerMode = {"FullPowerMode",
                                    "FullPowerMode",
                                    "Full-Power-Mode",
                                    "Full Power mode",
                                    nullptr,
                                    "Full-Power-Mode-Show",
                                    true,
                                    &EnterFullPower,
                                    nullptr,
                                    nullptr,
                                    {FactoryTimer::FullPowerMode, 2000},
                                    {0, 0},
                                    false};
// The only member that leaves the previous page as it is.
const TimedCommand ClearPowerOnTime = {"ClearPowerOnTime",
                                       "ClearPowerOnTime",
                                       "Clear-Power-On-Time",
                                       "Clear Power On Time",
                                       nullptr,
                                       "Clear-Power-On-Time-Show",
                                       false,
                                       &ClearOnTimer,
                                       nullptr,
                                       nullptr,
                                       {FactoryTimer::ClearPowerOnTime, 2000},
                                       {0, 0},
                                       false};
const TimedCommand HDMIARCOutput = {"HDMIARCOutput",
                                    "HDMIArcOutput",
                                    "HDMI-ARC-Output",
                                    nullptr,
                                    nullptr,
                                    "HDMI-ARC-Output-Show",
                                    true,
                                    nullptr,
                                    &ChooseHdmiArc,
                                    nullptr,
                                    {FactoryTimer::HDMIARCOutput, 2000},
                                    {0, 0},
                                    true};
// The address is written at the first timer; a refusal leaves "writing" up for good.
const TimedCommand NetworkDefaultMAC = {"NetworkDefaultMAC",
                                        "NetworkDefaultMAC",
                                        "Network-Default-MAC",
                                        "Default MAC/IP address writing",
                                        "Default MAC/IP address Finished",
                                        "Network-Default-MAC-Show",
                                        true,
                                        nullptr,
                                        nullptr,
                                        &WriteDefaultMacIp,
                                        {DefaultMAC, 500},
                                        {MACFinished, 1000},
                                        false};
const TimedCommand WriteProtect = {"WriteProtect",
                                   "WriteProtect",
                                   nullptr,
                                   nullptr,
                                   nullptr,
                                   "WP-Show",
                                   true,
                                   nullptr,
                                   &ChooseWriteProtect,
                                   nullptr,
                                   {FactoryTimer::WriteProtect, 2000},
                                   {0, 0},
                                   false};
const TimedCommand DefaultIPAddress = {"DefaultIPAddress",
                                       "DefaultIPAddress",
                                       "Default-IP-Address",
                                       "Default IP address writing",
                                       nullptr,
                                       "Default-IP-Address-Show",
                                       true,
                                       nullptr,
                                       nullptr,
                                       nullptr,
                                       {FactoryTimer::DefaultIPAddress, 2000},
                                       {0, 0},
                                       false};
// Armed as a repeating check by its own event handler; the row gives its texts and close.
const TimedCommand TempIOCheck = {"TempIOCheck",
                                  "TempIOCheck",
                                  "Temp-IO-Check",
                                  "TEMP I/O CHECK",
                                  nullptr,
                                  "Temp-IO-Check-Show",
                                  true,
                                  nullptr,
                                  nullptr,
                                  nullptr,
                                  {FactoryTimer::TempIOCheck, 1000},
                                  {0, 0},
                                  true};
// The text is the code, which the event handler formats itself.
const TimedCommand WhiteWindowCodeInformation = {"WhiteWindowCodeInformation",
                                                 "WhiteWindowON",
                                                 "White-Window-ON",
                                                 nullptr,
                                                 nullptr,
                                                 "White-Window-ON-Show",
                                                 true,
                                                 nullptr,
                                                 nullptr,
                                                 nullptr,
                                                 {FactoryTimer::WhiteWindowCodeInformation, 5000},
                                                 {0, 0},
                                                 false};

}  // namespace timed
