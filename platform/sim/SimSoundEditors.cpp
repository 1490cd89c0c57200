// The simulated set behind the factory store's burst access, the sound processor's
// equaliser, the advanced-sound option and the advanced-sound processor.
#include "SimSoundEditors.h"

#include "MSrv_Factory_Default.h"
#include "MSrv_SSSound.h"
#include "SimFactoryStore.h"
#include "SystemInfo.h"
#include "mapi_audio.h"
#include "mapi_interface_common.h"

using sim::ArgList;

namespace {

sim::SoundEditorState& State() { return sim::Set::Instance().Get<sim::SoundEditorState>(); }

MAPI_U32 ReadOrZero(const std::map<int, MAPI_U32>& values, int index) {
    auto it = values.find(index);
    return it == values.end() ? 0 : it->second;
}

}  // namespace

MAPI_BOOL MSrv_Factory_Default::msAPI_rmBurstReadBytes(MAPI_U16 address, MAPI_U8* buffer,
                                                       MAPI_U16 size) {
    sim::Set& set = sim::Set::Instance();
    set.RecordCall("MSrv_Factory_Default::msAPI_rmBurstReadBytes", ArgList(address, size));
    if (buffer == nullptr || address + size > 0x10000) {
        return 0;
    }
    const auto& store = set.Get<sim::FactoryStoreState>();
    for (MAPI_U16 i = 0; i < size; ++i) {
        buffer[i] = store.Get(static_cast<MAPI_U16>(address + i));
    }
    return 1;
}

MAPI_BOOL MSrv_Factory_Default::msAPI_rmBurstWriteBytes(MAPI_U16 address, MAPI_U8* buffer,
                                                        MAPI_U16 size) {
    sim::Set& set = sim::Set::Instance();
    if (buffer == nullptr || address + size > 0x10000) {
        set.RecordCall("MSrv_Factory_Default::msAPI_rmBurstWriteBytes", ArgList(address, size));
        return 0;
    }
    // One byte, the editors' case, is journalled with its value.
    if (size == 1) {
        set.RecordCall("MSrv_Factory_Default::msAPI_rmBurstWriteBytes",
                       ArgList(address, buffer[0], size));
    } else {
        set.RecordCall("MSrv_Factory_Default::msAPI_rmBurstWriteBytes", ArgList(address, size));
    }
    auto& store = set.Get<sim::FactoryStoreState>();
    for (MAPI_U16 i = 0; i < size; ++i) {
        store.Set(static_cast<MAPI_U16>(address + i), buffer[i]);
    }
    return 1;
}

MAPI_BOOL SystemInfo::IsAudysseyEnable() {
    sim::Set::Instance().RecordCall("SystemInfo::IsAudysseyEnable", ArgList());
    return State().audyssey ? 1 : 0;
}

MAPI_BOOL MSrv_SSSound::SetPEQParam(MAPI_U8 band, MAPI_U8 gain, MAPI_U8 f0Index, MAPI_U8 f0Div100,
                                    MAPI_U8 q) {
    sim::Set::Instance().RecordCall("MSrv_SSSound::SetPEQParam",
                                    ArgList(band, gain, f0Index, f0Div100, q));
    State().peq[band] = {gain, f0Index, f0Div100, q};
    return 1;
}

MAPI_BOOL MSrv_SSSound::SND_SetHLPFParm(MAPI_U8 band, MAPI_U8 type, MAPI_U8 f0Index,
                                        MAPI_U8 f0Div100) {
    sim::Set::Instance().RecordCall("MSrv_SSSound::SND_SetHLPFParm",
                                    ArgList(band, type, f0Index, f0Div100));
    State().hlpf[band] = {type, f0Index, f0Div100};
    return 1;
}

mapi_audio* mapi_interface_common::Get_mapi_audio() {
    static mapi_audio audio;
    return &audio;
}

MAPI_BOOL mapi_audio::ADVSND_SetParam(MAPI_U8 param, MAPI_U8 value, MAPI_U8 flag) {
    sim::Set::Instance().RecordCall("mapi_audio::ADVSND_SetParam", ArgList(param, value, flag));
    State().advSetParam[param] = value;
    return 1;
}

MAPI_BOOL mapi_audio::ADVSND_SetAudyParam(MAPI_U8 param, MAPI_U8 value) {
    sim::Set::Instance().RecordCall("mapi_audio::ADVSND_SetAudyParam", ArgList(param, value));
    State().audySetParam[param] = value;
    return 1;
}

MAPI_U32 mapi_audio::ADVSND_GetAudyCLevel(MAPI_U8 channel) {
    sim::Set::Instance().RecordCall("mapi_audio::ADVSND_GetAudyCLevel", ArgList(channel));
    return ReadOrZero(State().audyCLevel, channel);
}

MAPI_U32 mapi_audio::ADVSND_GetAudyParam(MAPI_U8 param) {
    sim::Set::Instance().RecordCall("mapi_audio::ADVSND_GetAudyParam", ArgList(param));
    return ReadOrZero(State().audyParam, param);
}
