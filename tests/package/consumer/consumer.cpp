// A host program on the installed packages: headers, the library and the simulated
// platform must compile, link and load together. It prints the factory-mode state it
// set, so the run shows the library's code was reached.
#include <cstdio>

#include "FactoryManager.h"

int main(int argc, char**) {
    FactoryManager::SetFactoryModeState(1);
    std::printf("factory mode %d\n", static_cast<int>(FactoryManager::GetFactoryModeState()));
    if (argc > 1) {
        // Never run here: links the constructor and with it the platform it calls.
        delete new FactoryManager();
    }
    return 0;
}
