// The platform's top-level manager.
#pragma once

class FactoryManager;
class KeyManager;

class TVManager {
public:
    static TVManager* GetInstance();
    FactoryManager* getFactoryManager();
    KeyManager* getKeyManager();
    static void printMsg(unsigned long long mask, const char* format, ...)
        __attribute__((format(printf, 2, 3)));
};
