// The simulated serial port, teletext, debug mask and power-off of the set.
#include "SimATCmd.h"

#include "MSrv_Control.h"
#include "MSrv_Factory_Mode.h"
#include "TVManager.h"
#include "TVPlayer.h"

using sim::ArgList;
using sim::ATCmdState;
using sim::Set;

MAPI_BOOL MSrv_Factory_Mode::GetUart_ONOFF() {
    const bool on = Set::Instance().Get<ATCmdState>().uartOn;
    Set::Instance().RecordCall("MSrv_Factory_Mode::GetUart_ONOFF", ArgList(on));
    return on ? 1 : 0;
}

MAPI_BOOL MSrv_Factory_Mode::SetUart_ONOFF(MAPI_BOOL on) {
    Set::Instance().RecordCall("MSrv_Factory_Mode::SetUart_ONOFF", ArgList(on));
    Set::Instance().Get<ATCmdState>().uartOn = on != 0;
    return 1;
}

void TVManager::SetATCmdInfo() { Set::Instance().RecordCall("TVManager::SetATCmdInfo", ArgList()); }

void TVManager::setDebugMode(unsigned long long mask) {
    Set::Instance().RecordCall("TVManager::setDebugMode", ArgList(mask));
    Set::Instance().Get<ATCmdState>().debugMask = mask;
}

MAPI_BOOL TVManager::powerOff(int mode) {
    ATCmdState& state = Set::Instance().Get<ATCmdState>();
    Set::Instance().RecordCall("TVManager::powerOff", ArgList(mode));
    state.poweredOff = state.powerOffResult != 0;
    return state.powerOffResult;
}

TVPlayer* TVManager::getTVPlayer() {
    static TVPlayer player;
    return Set::Instance().Get<ATCmdState>().tvPlayerPresent ? &player : nullptr;
}

MAPI_BOOL TVPlayer::openTeletext(EN_ZYT_TELETEXT_MODE mode) {
    ATCmdState& state = Set::Instance().Get<ATCmdState>();
    Set::Instance().RecordCall("TVPlayer::openTeletext", ArgList(mode));
    state.teletextOpen = state.openTeletextResult != 0;
    return state.openTeletextResult;
}

MAPI_BOOL TVPlayer::closeTeletext() {
    Set::Instance().RecordCall("TVPlayer::closeTeletext", ArgList());
    Set::Instance().Get<ATCmdState>().teletextOpen = false;
    return 1;
}
