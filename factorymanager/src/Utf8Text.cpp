#include "Utf8Text.h"

namespace factory_text {

namespace {

constexpr char kReplacement[] = "\xEF\xBF\xBD";

// Length of the well-formed sequence at `at`, or of its longest well-formed prefix
// as a negative number (-1 for a lone bad byte): Table 3-7 of the Unicode standard.
int SequenceAt(const std::string& text, size_t at) {
    const auto byte = [&](size_t i) -> unsigned {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0x100;
    };
    const unsigned lead = byte(at);
    if (lead < 0x80) {
        return 1;
    }
    int length = 0;
    unsigned low = 0x80;
    unsigned high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        low = lead == 0xE0 ? 0xA0 : 0x80;   // no overlong forms
        high = lead == 0xED ? 0x9F : 0xBF;  // no surrogates
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        low = lead == 0xF0 ? 0x90 : 0x80;
        high = lead == 0xF4 ? 0x8F : 0xBF;  // nothing past U+10FFFF
    } else {
        return -1;
    }
    for (int i = 1; i < length; ++i) {
        const unsigned b = byte(at + static_cast<size_t>(i));
        const unsigned lo = i == 1 ? low : 0x80;
        const unsigned hi = i == 1 ? high : 0xBF;
        if (b < lo || b > hi) {
            return -i;
        }
    }
    return length;
}

}  // namespace

std::string ValidUtf8(const std::string& text, bool* changed) {
    // Nearly every text is valid: check first, copy only what needs mending.
    size_t at = 0;
    while (at < text.size()) {
        const int n = SequenceAt(text, at);
        if (n <= 0) {
            break;
        }
        at += static_cast<size_t>(n);
    }
    if (at == text.size()) {
        if (changed != nullptr) {
            *changed = false;
        }
        return text;
    }
    std::string out(text, 0, at);
    bool replaced = false;
    while (at < text.size()) {
        const int n = SequenceAt(text, at);
        if (n > 0) {
            out.append(text, at, static_cast<size_t>(n));
            at += static_cast<size_t>(n);
        } else {
            out += kReplacement;
            at += static_cast<size_t>(-n);
            replaced = true;
        }
    }
    if (changed != nullptr) {
        *changed = replaced;
    }
    return out;
}

}  // namespace factory_text
