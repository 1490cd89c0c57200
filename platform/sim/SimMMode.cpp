// The simulated platform calls of M-mode, the factory remote controller and key
// routing. Each call is journalled; state lives in MModeState / FactoryRemoteState.
#include "SimMMode.h"

#include "KeyManager.h"
#include "MSrv_ATV_Player.h"
#include "MSrv_ChannelManager.h"
#include "MSrv_Control.h"
#include "MSrv_Control_common.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Factory_Mode.h"
#include "MSrv_SSSound.h"
#include "MSrv_System_Database.h"
#include "TVManager.h"

using sim::ArgList;
using sim::Set;

namespace {
sim::MModeState& MMode() { return Set::Instance().Get<sim::MModeState>(); }
sim::FactoryRemoteState& Remote() { return Set::Instance().Get<sim::FactoryRemoteState>(); }
void Record(const char* fn, const ArgList& args) { Set::Instance().RecordCall(fn, args); }

// Most of the service's switches are journalled and kept as one flag of the set.
MAPI_BOOL RecordFlag(const char* fn, bool& flag, MAPI_BOOL on) {
    Record(fn, ArgList(on));
    flag = on != 0;
    return 1;
}
}  // namespace

// ---- Factory-command service ---------------------------------------------------------

MAPI_BOOL MSrv_Factory_Cmd::GetFactoryMmodeStatus() { return MMode().mMode ? 1 : 0; }

MAPI_BOOL MSrv_Factory_Cmd::SetFactoryMmodeStatus(MAPI_BOOL on) {
    return RecordFlag("MSrv_Factory_Cmd::SetFactoryMmodeStatus", MMode().mMode, on);
}

MAPI_BOOL MSrv_Factory_Cmd::IsSettingMModeFisished() { return MMode().mModeSettingFinished; }

MAPI_BOOL MSrv_Factory_Cmd::SettingMModeFisishedStatus(MAPI_BOOL finished) {
    return RecordFlag("MSrv_Factory_Cmd::SettingMModeFisishedStatus", MMode().mModeSettingFinished,
                      finished);
}

MAPI_BOOL MSrv_Factory_Cmd::EnableWiFiDongle(MAPI_BOOL enable) {
    return RecordFlag("MSrv_Factory_Cmd::EnableWiFiDongle", MMode().wifiDongle, enable);
}

MAPI_BOOL MSrv_Factory_Cmd::SetSerialDebugPort(MAPI_BOOL on) {
    return RecordFlag("MSrv_Factory_Cmd::SetSerialDebugPort", MMode().serialDebugPort, on);
}

MAPI_BOOL MSrv_Factory_Cmd::SetEnergySavingSetting(MAPI_BOOL on) {
    return RecordFlag("MSrv_Factory_Cmd::SetEnergySavingSetting", MMode().energySaving, on);
}

MAPI_U8 MSrv_Factory_Cmd::GetFactoryVolume() { return MMode().factoryVolume; }

MAPI_BOOL MSrv_Factory_Cmd::SetFactoryVolumeRequest(MAPI_BOOL pending) {
    return RecordFlag("MSrv_Factory_Cmd::SetFactoryVolumeRequest", MMode().volumeRequest, pending);
}

MAPI_BOOL MSrv_Factory_Cmd::SetFactoryOSDStatus(MAPI_BOOL shown) {
    return RecordFlag("MSrv_Factory_Cmd::SetFactoryOSDStatus", MMode().factoryOsd, shown);
}

MAPI_BOOL MSrv_Factory_Cmd::InternalPatternOff() {
    Record("MSrv_Factory_Cmd::InternalPatternOff", ArgList());
    return 1;
}

MAPI_BOOL MSrv_Factory_Cmd::GetFactoryCode(unsigned short* code) {
    *code = Remote().code;
    return 1;
}

MAPI_BOOL MSrv_Factory_Cmd::SetFactoryCodeEvent(unsigned short code, unsigned short event) {
    Record("MSrv_Factory_Cmd::SetFactoryCodeEvent", ArgList(code, event));
    return 1;
}

MAPI_BOOL MSrv_Factory_Cmd::_HandleFactoryEvent(unsigned int event, unsigned int p1,
                                                unsigned int p2) {
    Record("MSrv_Factory_Cmd::_HandleFactoryEvent", ArgList(event, p1, p2));
    return 1;
}

MAPI_BOOL MSrv_Factory_Cmd::GetFactoryCodeFromZYTSpecialRemoteController2Exe() {
    Record("MSrv_Factory_Cmd::GetFactoryCodeFromZYTSpecialRemoteController2Exe",
           ArgList(Remote().code));
    return 1;
}

MAPI_BOOL MSrv_Control_common::m_isWriteKeydone = 0;

MAPI_BOOL MSrv_Control_common::Is_ATCmd_Finished() { return Remote().atCmdFinished; }

// ---- Factory mode, system database, ATV player, control --------------------------------

MAPI_BOOL MSrv_Factory_Mode::SetWDT_ONOFF(MAPI_BOOL on) {
    Record("MSrv_Factory_Mode::SetWDT_ONOFF", ArgList(on));
    MMode().watchdog = on != 0;
    return 1;
}

MAPI_BOOL MSrv_System_Database::GetUserSystemSetting(ST_USER_SYSTEM_SETTING* setting) {
    Record("MSrv_System_Database::GetUserSystemSetting", ArgList());
    *setting = MMode().user;
    return 1;
}

MAPI_BOOL MSrv_System_Database::SetUserSystemSetting(ST_USER_SYSTEM_SETTING* setting) {
    Record("MSrv_System_Database::SetUserSystemSetting",
           ArgList(setting->fRunInstallationGuide, setting->bBlueScreen, setting->u8EnergySaving));
    MMode().user = *setting;
    return 1;
}

MAPI_BOOL MSrv_System_Database::GetAudioSetting(ST_AUDIO_SETTING* setting) {
    *setting = MMode().audio;
    return 1;
}

MAPI_BOOL MSrv_System_Database::SetAudioSetting(ST_AUDIO_SETTING* setting) {
    Record("MSrv_System_Database::SetAudioSetting", ArgList(setting->Volume, setting->Balance));
    MMode().audio = *setting;
    return 1;
}

MAPI_BOOL MSrv_System_Database::SetBlueScreenEnable(MAPI_BOOL enable) {
    Record("MSrv_System_Database::SetBlueScreenEnable", ArgList(enable));
    MMode().blueScreen = enable != 0;
    return 1;
}

// The control object's switch of the same blue screen.
MAPI_BOOL MSrv_Control::SetBlueScreenEnable(unsigned char enable) {
    Record("MSrv_Control::SetBlueScreenEnable", ArgList(enable));
    MMode().blueScreen = enable != 0;
    return 1;
}

MAPI_BOOL MSrv_System_Database_DVB::RestoreDefaultDataTransfer() {
    Record("MSrv_System_Database_DVB::RestoreDefaultDataTransfer", ArgList());
    return 1;
}

MAPI_BOOL MSrv_ATV_Player::ATVSaveProgram(unsigned char program) {
    Record("MSrv_ATV_Player::ATVSaveProgram", ArgList(program));
    return 1;
}

MSrv_System_Database* MSrv_Control::GetMSrvSystemDatabase() {
    static MSrv_System_Database_DVB dvb;
    static MSrv_System_Database plain;
    return MMode().dvbDatabase ? static_cast<MSrv_System_Database*>(&dvb) : &plain;
}

MSrv_ATV_Player* MSrv_Control::GetMSrvAtv() {
    static MSrv_ATV_Player player;
    return &player;
}

MAPI_BOOL MSrv_Control::EnterSleepMode(MAPI_BOOL sleep) {
    Record("MSrv_Control::EnterSleepMode", ArgList(sleep));
    MMode().asleep = sleep != 0;
    return 1;
}

// ---- Sound, channels, keys ---------------------------------------------------------------

MAPI_BOOL MSrv_SSSound::SetMuteStatus(MAPI_U8 muteType, MAPI_BOOL mute) {
    Record("MSrv_SSSound::SetMuteStatus", ArgList(muteType, mute));
    MMode().muted = mute != 0;
    return 1;
}

MAPI_BOOL MSrv_SSSound::SetVolume(MAPI_U8 volume, MAPI_BOOL apply) {
    Record("MSrv_SSSound::SetVolume", ArgList(volume, apply));
    MMode().liveVolume = volume;
    return 1;
}

MAPI_BOOL MSrv_ChannelManager::GetCurrentChannelInfo(ST_CHANNEL_INFO* info) {
    Record("MSrv_ChannelManager::GetCurrentChannelInfo", ArgList());
    if (!MMode().channelKnown) {
        return 0;
    }
    *info = MMode().channel;
    return 1;
}

void KeyManager::setKeyRouting(EN_ZYT_KEY_ROUTING routing) {
    Record("KeyManager::setKeyRouting", ArgList(routing));
    Remote().keyRouting = routing;
}
