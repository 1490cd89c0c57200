// The AT version record over any reader results: the input, cut at zero bytes, gives
// the version strings the readers return and the key files they read, in turn.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "FuzzSet.h"
#include "SimRoot.h"
#include "SimSystemInfo.h"

namespace {

using Info = sim::SystemInfoState;
std::string Info::*const kStrings[] = {
    &Info::mbootVersion, &Info::pqVersion,          &Info::frcVersion,     &Info::socRealSWVersion,
    &Info::socFWVersion, &Info::dpddVersion,        &Info::neuSoftVersion, &Info::cesiVersion,
    &Info::iprcVersion,  &Info::irBlasterDBVersion, &Info::dialVersion,
};
const char* const kFiles[] = {"/ciplus/ci_plus.bin", "/ciplus/hdcp2.bin",  "/ciplus/widevine.bin",
                              "/ciplus/nfxkey.bin",  "/ciplus/dipkey.bin", "/ciplus/pvrkey.bin"};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::vector<std::string> parts(1);
    for (size_t i = 0; i < size; ++i) {
        if (data[i] == 0) {
            parts.emplace_back();
        } else {
            parts.back().push_back(static_cast<char>(data[i]));
        }
    }
    Info& info = fuzz::Tv().Get<Info>();
    sim::Root& root = fuzz::Tv().GetRoot();
    root.RunCommand("rm -rf /ciplus/*");
    root.WriteFile("/ciplus/widevine_key.bin", "k");
    root.WriteFile("/ciplus/nfxkey_key.bin", "k");
    size_t next = 0;
    for (auto member : kStrings) {
        info.*member = next < parts.size() ? parts[next++] : "";
    }
    for (const char* file : kFiles) {
        if (next < parts.size()) {
            root.WriteFile(file, parts[next++]);
        }
    }
    // In virtual time the caller is the event thread.
    fuzz::Fm().OnEvent_GetATCmd(nullptr, nullptr, nullptr);
    fuzz::EndRun();
    return 0;
}
