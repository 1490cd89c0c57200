// The simulated set behind the sound-system service.
#include "SimSSSound.h"

#include "MSrv_Control.h"
#include "MSrv_SSSound.h"

MSrv_SSSound* MSrv_Control::GetMSrvSSSound() {
    static MSrv_SSSound service;
    return &service;
}

MAPI_U32 MSrv_SSSound::ASF_GetParam(int param) {
    sim::Set& set = sim::Set::Instance();
    set.RecordCall("MSrv_SSSound::ASF_GetParam", sim::ArgList(param));
    const auto& params = set.Get<sim::SSSoundState>().asfParams;
    auto it = params.find(param);
    return it == params.end() ? 0 : it->second;
}
