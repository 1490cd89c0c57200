// Simulated state behind M-mode, the factory remote controller and key routing:
// the factory-command service's own flags, the watchdog, the system database,
// the channel on screen, the live sound and standby.
#pragma once

#include <cstdint>

#include "MSrv_ChannelManager.h"
#include "MSrv_System_Database.h"
#include "SimSet.h"

namespace sim {

struct MModeState : Area {
    // Factory-command service.
    bool mMode = false;
    bool mModeSettingFinished = false;
    bool wifiDongle = false;
    bool serialDebugPort = true;
    bool energySaving = false;
    uint8_t factoryVolume = 40;
    bool volumeRequest = true;
    bool factoryOsd = false;
    bool watchdog = true;
    // System database; a set whose database is not the DVB variant trips the assertion.
    bool dvbDatabase = true;
    ST_USER_SYSTEM_SETTING user{0, 0, 0, 0, 1, 0};  // the demo set's LNB supply is on
    ST_AUDIO_SETTING audio{20, 50};
    bool blueScreen = false;
    // Channel manager: the channel on screen, when there is one.
    bool channelKnown = true;
    ST_CHANNEL_INFO channel{1, 0x04};
    // Sound: what is heard now.
    uint8_t liveVolume = 20;
    bool muted = true;
    bool asleep = false;
};

struct FactoryRemoteState : Area {
    unsigned short code = 0;  // last code of the factory remote controller
    bool atCmdFinished = true;
    int keyRouting = 0;  // 0 until the library routes keys
};

}  // namespace sim
