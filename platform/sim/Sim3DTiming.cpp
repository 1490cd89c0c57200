// The simulated set behind the 3D manager and the output frequency.
#include "Sim3DTiming.h"

#include "MSrv_3DManager.h"
#include "MSrv_Control.h"
#include "MSrv_Player.h"

using sim::ArgList;

namespace {

sim::Timing3DState& State() { return sim::Set::Instance().Get<sim::Timing3DState>(); }

MAPI_BOOL GetLength(const char* fn, MAPI_U16 value, MAPI_U8* low, MAPI_U8* high) {
    sim::Set::Instance().RecordCall(fn, ArgList());
    if (low == nullptr || high == nullptr) {
        return 0;
    }
    *low = static_cast<MAPI_U8>(value & 0xFF);
    *high = static_cast<MAPI_U8>(value >> 8);
    return 1;
}

MAPI_BOOL SetLength(const char* fn, MAPI_U16& value, MAPI_U8 low, MAPI_U8 high) {
    sim::Set::Instance().RecordCall(fn, ArgList(low, high));
    value = static_cast<MAPI_U16>(high * 256 + low);
    return 1;
}

}  // namespace

MSrv_3DManager* MSrv_Control::GetMSrv3DManager() {
    static MSrv_3DManager manager;
    return &manager;
}

MAPI_BOOL MSrv_3DManager::GetLOpenLength(MAPI_U8* low, MAPI_U8* high) {
    return GetLength("MSrv_3DManager::GetLOpenLength", State().lOpen, low, high);
}
MAPI_BOOL MSrv_3DManager::GetLCloseLength(MAPI_U8* low, MAPI_U8* high) {
    return GetLength("MSrv_3DManager::GetLCloseLength", State().lClose, low, high);
}
MAPI_BOOL MSrv_3DManager::GetROpenLength(MAPI_U8* low, MAPI_U8* high) {
    return GetLength("MSrv_3DManager::GetROpenLength", State().rOpen, low, high);
}
MAPI_BOOL MSrv_3DManager::GetRCloseLength(MAPI_U8* low, MAPI_U8* high) {
    return GetLength("MSrv_3DManager::GetRCloseLength", State().rClose, low, high);
}
MAPI_BOOL MSrv_3DManager::SetLOpenLength(MAPI_U8 low, MAPI_U8 high) {
    return SetLength("MSrv_3DManager::SetLOpenLength", State().lOpen, low, high);
}
MAPI_BOOL MSrv_3DManager::SetLCloseLength(MAPI_U8 low, MAPI_U8 high) {
    return SetLength("MSrv_3DManager::SetLCloseLength", State().lClose, low, high);
}
MAPI_BOOL MSrv_3DManager::SetROpenLength(MAPI_U8 low, MAPI_U8 high) {
    return SetLength("MSrv_3DManager::SetROpenLength", State().rOpen, low, high);
}
MAPI_BOOL MSrv_3DManager::SetRCloseLength(MAPI_U8 low, MAPI_U8 high) {
    return SetLength("MSrv_3DManager::SetRCloseLength", State().rClose, low, high);
}

MAPI_BOOL MSrv_3DManager::GetPwmDutyPhase(MAPI_U8 channel, MAPI_U16* duty, MAPI_U16* phase) {
    sim::Set::Instance().RecordCall("MSrv_3DManager::GetPwmDutyPhase", ArgList(channel));
    if (duty == nullptr || phase == nullptr) {
        return 0;
    }
    *duty = State().duty;
    *phase = State().phase;
    return 1;
}

MAPI_BOOL MSrv_3DManager::SetPwmDutyPhase(MAPI_U8 channel, MAPI_U16 duty, MAPI_U16 phase) {
    sim::Set::Instance().RecordCall("MSrv_3DManager::SetPwmDutyPhase",
                                    ArgList(channel, duty, phase));
    State().duty = duty;
    State().phase = phase;
    return 1;
}

MAPI_BOOL MSrv_3DManager::Set3DTimingMode(MAPI_U8 mode) {
    sim::Set::Instance().RecordCall("MSrv_3DManager::Set3DTimingMode", ArgList(mode));
    State().mode = mode;
    return 1;
}

MAPI_BOOL MSrv_3DManager::Reset3DTiming() {
    sim::Set::Instance().RecordCall("MSrv_3DManager::Reset3DTiming", ArgList());
    sim::Timing3DState& s = State();
    s.lOpen = s.rOpen = sim::Timing3DState::kDefaultOpen;
    s.lClose = s.rClose = sim::Timing3DState::kDefaultClose;
    return 1;
}

MAPI_U16 MSrv_Player::GetOutputVFreq() {
    sim::Set::Instance().RecordCall("MSrv_Player::GetOutputVFreq", ArgList());
    return State().outputVFreq;
}
