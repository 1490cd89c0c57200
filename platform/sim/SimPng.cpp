// A small PNG encoder for the display's pictures. Stored (uncompressed) deflate
// blocks keep it free of zlib; the files are large but any viewer opens them.
#include <array>
#include <cstdint>
#include <string>

#include "SimDisplay.h"

namespace sim {

namespace {

const std::array<uint32_t, 256>& CrcTable() {
    static const std::array<uint32_t, 256> table = [] {
        std::array<uint32_t, 256> t{};
        for (uint32_t n = 0; n < 256; ++n) {
            uint32_t c = n;
            for (int k = 0; k < 8; ++k) {
                c = (c & 1) ? 0xEDB88320U ^ (c >> 1) : c >> 1;
            }
            t[n] = c;
        }
        return t;
    }();
    return table;
}

uint32_t Crc(const std::string& bytes, size_t from) {
    uint32_t c = 0xFFFFFFFFU;
    for (size_t i = from; i < bytes.size(); ++i) {
        c = CrcTable()[(c ^ static_cast<uint8_t>(bytes[i])) & 0xFF] ^ (c >> 8);
    }
    return c ^ 0xFFFFFFFFU;
}

void PutBe32(std::string& out, uint32_t v) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        out += static_cast<char>((v >> shift) & 0xFF);
    }
}

void Chunk(std::string& out, const char* type, const std::string& data) {
    PutBe32(out, static_cast<uint32_t>(data.size()));
    std::string body = type;
    body += data;
    out += body;
    PutBe32(out, Crc(body, 0));
}

std::string Zlib(const std::string& raw) {
    std::string out = "\x78\x01";
    uint32_t a = 1;
    uint32_t b = 0;
    for (char ch : raw) {
        a = (a + static_cast<uint8_t>(ch)) % 65521;
        b = (b + a) % 65521;
    }
    size_t pos = 0;
    do {
        const size_t len = std::min<size_t>(65535, raw.size() - pos);
        const bool last = pos + len == raw.size();
        out += static_cast<char>(last ? 1 : 0);
        out += static_cast<char>(len & 0xFF);
        out += static_cast<char>(len >> 8);
        out += static_cast<char>(~len & 0xFF);
        out += static_cast<char>((~len >> 8) & 0xFF);
        out.append(raw, pos, len);
        pos += len;
    } while (pos < raw.size());
    PutBe32(out, (b << 16) | a);
    return out;
}

}  // namespace

std::string EncodePng(const Frame& frame) {
    std::string header;
    PutBe32(header, static_cast<uint32_t>(frame.width));
    PutBe32(header, static_cast<uint32_t>(frame.height));
    header += std::string("\x08\x06\x00\x00\x00", 5);  // 8-bit RGBA, no interlace

    std::string raw;
    raw.reserve(static_cast<size_t>(frame.height) * (1 + static_cast<size_t>(frame.width) * 4));
    for (int y = 0; y < frame.height; ++y) {
        raw += '\0';  // filter: none
        for (int x = 0; x < frame.width; ++x) {
            const uint32_t px = frame.At(x, y);
            raw += static_cast<char>(px >> 16);
            raw += static_cast<char>(px >> 8);
            raw += static_cast<char>(px);
            raw += static_cast<char>(px >> 24);
        }
    }

    std::string png = "\x89PNG\r\n\x1a\n";
    Chunk(png, "IHDR", header);
    Chunk(png, "IDAT", Zlib(raw));
    Chunk(png, "IEND", "");
    return png;
}

}  // namespace sim
