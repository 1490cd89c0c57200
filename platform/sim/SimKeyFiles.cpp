// The demo set's key files. The identifiers are invented for the simulated set;
// the rest of each file is a plain counting pattern, not key material.
#include <algorithm>
#include <cstdint>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include "SimKeyData.h"

namespace sim {

namespace {

struct DemoField {
    size_t offset;
    std::vector<uint8_t> bytes;
};

struct DemoKeyFile {
    const char* name;  // under ciplus/
    size_t size;
    std::vector<DemoField> fields;
};

std::vector<uint8_t> Text(const std::string& s) { return {s.begin(), s.end()}; }

std::vector<DemoKeyFile> DemoFiles() {
    return {
        {"ci_plus.bin",
         96,
         {{68, {0x27, 0x00, 0x10, 0x42}}, {72, {0xD0, 0xE1, 0x27, 0x00, 0x00, 0x00, 0x00, 0x01}}}},
        {"hdcp2.bin",
         128,
         {{71, {0x27, 0xDE, 0x40, 0x00, 0x01}}, {90, {0x27, 0xDE, 0x50, 0x00, 0x01}}}},
        {"hdcp2_key.bin", 64, {}},
        {"widevine_key.bin", 64, {}},
        {"widevine.bin", 128, {{76, Text("VQ27DEMOWV000001")}}},
        {"nfxkey_key.bin", 64, {}},
        {"nfxkey.bin", 128, {{76, Text("VQ27DEMO-ESN-001")}}},
        {"dipkey.bin", 80, {{60, {0x27, 0xD1, 0x90, 0x00, 0x01}}}},
        {"pvrkey.bin", 16, {}},
    };
}

}  // namespace

void InstallDemoKeyFiles(const std::filesystem::path& rootFolder) {
    const std::filesystem::path dir = rootFolder / "ciplus";
    std::error_code ec;
    std::filesystem::create_directories(dir, ec);
    for (const DemoKeyFile& file : DemoFiles()) {
        const std::filesystem::path path = dir / file.name;
        // A root of the user's own may already hold key files; never overwrite them.
        if (std::filesystem::exists(path, ec)) {
            continue;
        }
        std::vector<uint8_t> bytes(file.size);
        for (size_t i = 0; i < bytes.size(); ++i) {
            bytes[i] = static_cast<uint8_t>(i + 1);
        }
        for (const DemoField& field : file.fields) {
            std::copy(field.bytes.begin(), field.bytes.end(), bytes.begin() + field.offset);
        }
        std::ofstream out(path, std::ios::binary);
        out.write(reinterpret_cast<const char*>(bytes.data()),
                  static_cast<std::streamsize>(bytes.size()));
    }
}

}  // namespace sim
