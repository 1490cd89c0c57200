// Text bound for the factory UI: browsers close a WebSocket on the first byte that is
// not UTF-8, so every text the library sends passes through here.
#pragma once

#include <string>

namespace factory_text {

// The text with every ill-formed part (a stray byte, a cut, overlong or surrogate
// sequence, anything past U+10FFFF) replaced by U+FFFD, one per maximal ill-formed
// subpart as browsers decode it. Valid text comes back byte for byte. `changed`, if
// given, says whether anything was replaced.
std::string ValidUtf8(const std::string& text, bool* changed = nullptr);

}  // namespace factory_text
