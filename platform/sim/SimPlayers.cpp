// The simulated set behind the input source, the players and their video timing.
#include "SimPlayers.h"

#include "SimFrontEnd.h"

#include "MSrv_Control.h"
#include "MSrv_DTV_Player_DVBT.h"

using sim::ArgList;

namespace {

sim::PlayerState& State() { return sim::Set::Instance().Get<sim::PlayerState>(); }

// One player object serves the analogue and external sources: the set shows one
// source at a time, so its timing is always that of the current source.
MSrv_Player* SourcePlayer() {
    static MSrv_Player player;
    return &player;
}

// A satellite route is served by the satellite player (SimFrontEnd.cpp).
MSrv_DTV_Player_DVB* DvbPlayer() { return sim::CurrentDtvPlayer(); }

}  // namespace

MAPI_INPUT_SOURCE_TYPE MSrv_Control::GetCurrentInputSource() {
    sim::Set::Instance().RecordCall("MSrv_Control::GetCurrentInputSource", ArgList());
    return static_cast<MAPI_INPUT_SOURCE_TYPE>(State().currentSource);
}

MSrv_Player* MSrv_Control::GetMSrvPlayer(MAPI_INPUT_SOURCE_TYPE source) {
    sim::Set::Instance().RecordCall("MSrv_Control::GetMSrvPlayer", ArgList(source));
    const sim::PlayerState& s = State();
    if (s.sourcesWithoutPlayer.count(source) != 0) {
        return nullptr;
    }
    if (source == MAPI_INPUT_SOURCE_DTV) {
        return s.dtvPresent ? DvbPlayer() : nullptr;
    }
    return SourcePlayer();
}

MSrv_DTV_Player_DVB* MSrv_Control::GetMSrvDtv() {
    return State().dtvPresent ? DvbPlayer() : nullptr;
}

MAPI_BOOL MSrv_Player::GetVideoInfo(ST_VIDEO_INFO* info) {
    sim::Set::Instance().RecordCall("MSrv_Player::GetVideoInfo", ArgList());
    if (info == nullptr) {
        return 0;
    }
    const sim::PlayerState& s = State();
    auto it = s.timing.find(s.currentSource);
    *info = it == s.timing.end() ? ST_VIDEO_INFO{} : it->second;
    return 1;
}

MAPI_U32 MSrv_DTV_Player_DVB::OADGetTVversion() {
    sim::Set::Instance().RecordCall("MSrv_DTV_Player_DVB::OADGetTVversion", ArgList());
    return State().oadVersion;
}
