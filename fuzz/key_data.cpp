// The key-data readers over any bytes in any of their files under the root: the
// first byte chooses the file, the rest is its content; the gate files exist.
#include <cstddef>
#include <cstdint>
#include <string>

#include "FuzzSet.h"
#include "SimRoot.h"

namespace {

const char* const kFiles[] = {
    "/ciplus/ci_plus.bin", "/ciplus/hdcp2.bin",  "/ciplus/widevine.bin",  "/ciplus/nfxkey.bin",
    "/ciplus/dipkey.bin",  "/ciplus/pvrkey.bin", "/ciplus/hdcp2_key.bin",
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) {
        return 0;
    }
    sim::Root& root = fuzz::Tv().GetRoot();
    root.RunCommand("rm -rf /ciplus/*");
    root.WriteFile("/ciplus/widevine_key.bin", "k");
    root.WriteFile("/ciplus/nfxkey_key.bin", "k");
    const char* file = kFiles[data[0] % (sizeof kFiles / sizeof kFiles[0])];
    root.WriteFile(file, std::string(reinterpret_cast<const char*>(data) + 1, size - 1));
    FactoryManager& fm = fuzz::Fm();
    // In virtual time the caller is the event thread.
    {
        fm.FactoryGetCIPlusSerialNumber();
        fm.FactoryGetCIPlusHostID();
        fm.FactoryGetHDCP20();
        fm.FactoryGetHDCP20_ReceiveID();
        fm.FactoryGetWidevineDeviceID();
        fm.FactoryGetNetflixESN();
        fm.FactoryGetDevID_DTCPIP();
        fm.FactoryGetPVR();
        fm.FactoryGetVudu();
        std::string license;
        fm.FactoryGetCIPlusURILicense(license);
    }
    fuzz::EndRun();
    return 0;
}
