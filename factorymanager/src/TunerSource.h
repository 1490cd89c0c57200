// The source numbers the tuner pages branch on (GetTVSource) and the satellite player
// both tuner files read.
#pragma once

#include "MSrv_Control.h"
#include "MSrv_DTV_Player_DVBS.h"
#include "MTypes.h"

namespace TunerSource {
constexpr MAPI_U32 kCable = 3;
constexpr MAPI_U32 kAnalogue = 6;

inline bool Terrestrial(MAPI_U32 source) { return source >= 1 && source <= 3; }
inline bool Satellite(MAPI_U32 source) { return source == 4 || source == 5; }

inline MSrv_DTV_Player_DVBS* SatellitePlayer() {
    return dynamic_cast<MSrv_DTV_Player_DVBS*>(MSrv_Control::GetInstance()->GetMSrvDtv());
}
}  // namespace TunerSource
