// The platform's top-level manager.
#pragma once

#include "MTypes.h"

class FactoryManager;
class KeyManager;
class DatabaseManager;
class TVPlayer;
class AudioManager;
class PictureManager;
class TimerManager;

// Sources the host's own source switch knows.
enum EN_ZYT_INPUT_SOURCE_TYPE : int {
    E_ZYT_INPUT_SOURCE_DTV = 28,
    E_ZYT_INPUT_SOURCE_STORAGE = 34,  // the media player
};
class PictureManager;

class TVManager {
public:
    static TVManager* GetInstance();
    FactoryManager* getFactoryManager();
    KeyManager* getKeyManager();
    static void printMsg(unsigned long long mask, const char* format, ...)
        __attribute__((format(printf, 2, 3)));

    DatabaseManager* getDatabaseManager();
    // Each writes at most 20 characters and a terminator.
    void getFRCVersion(char* version);
    // Each writes at most 29 characters and a terminator.
    void GetSoCRealSWVersion(char* version);
    void GetSoCFWVersion(char* version);

    // The platform answers the fixture's version check from the AT record.
    void SetATCmdInfo();
    void setDebugMode(unsigned long long mask);
    // Returns whether the set accepted the request.
    MAPI_BOOL powerOff(int mode);
    TVPlayer* getTVPlayer();
    MAPI_BOOL setInputSource(EN_ZYT_INPUT_SOURCE_TYPE source, unsigned char flag);
    // Production tests: the audio, picture and timer managers, and the two resets.
    AudioManager* getAudioManager();
    PictureManager* getPictureManager();
    TimerManager* getTimerManager();
    MAPI_BOOL resetToFactoryDefault();
    MAPI_BOOL ResetShipoutTV();
    // Null while the picture manager is not up.
};
