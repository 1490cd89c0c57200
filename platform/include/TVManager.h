// The platform's top-level manager.
#pragma once

#include "MTypes.h"

class FactoryManager;
class KeyManager;
class DatabaseManager;
class TVPlayer;
class ChannelManager;
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
    ChannelManager* getChannelManager();
    // Null while the picture manager is not up.
    PictureManager* getPictureManager();
};
