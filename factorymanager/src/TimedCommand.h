// The timed one-shot setting commands as data: each row says what its event shows
// and does, and which timers show the result and close the page. One routine of
// FactoryManager walks a row (RunTimedCommand, TimedCommandTimer, TimedCommandClose).
#pragma once

#include "MTypes.h"

struct TimedStep {
    unsigned long timer;     // 0: no such step
    unsigned long periodMs;  // one-shot
};

struct TimedCommand {
    const char* name;      // the member, for the log
    const char* page;      // data of "HideAllUIExcept"
    const char* key;       // command key of the texts
    const char* writing;   // sent at the event; null: none
    const char* finished;  // sent at the first timer; null: the first timer closes
    const char* showKey;   // the close sends this key with the number 0
    bool resetState;       // close whatever page was up first
    // The platform call made at the event, after the texts; null: none.
    void (*action)();
    // Members driven by the event's parameter byte choose the key and text from it
    // (a null text sends none); false leaves the page up with no timer.
    bool (*choose)(MAPI_U8 param, const char*& key, const char*& text);
    // Runs at the first timer before the result text; false stops the sequence there.
    bool (*beforeFinished)();
    TimedStep first;
    TimedStep second;
    bool killOnClose;  // the closing handler also kills its own timer
};

// The rows of the family, one per member.
namespace timed {
extern const TimedCommand SpeakerSNC;
extern const TimedCommand SpeakerIEC;
extern const TimedCommand SpeakerGW;
extern const TimedCommand SpeakerEstec;
extern const TimedCommand StoreNone;
extern const TimedCommand StoreBestBuy;
extern const TimedCommand StoreCostco;
extern const TimedCommand StoreWalmart;
extern const TimedCommand ShipoutSetting;
extern const TimedCommand CCompanyChannelPreset;
extern const TimedCommand FullPowerMode;
extern const TimedCommand ClearPowerOnTime;
extern const TimedCommand HDMIARCOutput;
extern const TimedCommand NetworkDefaultMAC;
extern const TimedCommand WriteProtect;
extern const TimedCommand DefaultIPAddress;
extern const TimedCommand TempIOCheck;
extern const TimedCommand WhiteWindowCodeInformation;
}  // namespace timed
