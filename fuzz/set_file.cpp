// factory-sim's --set file over any text: "field = value" lines applied to the set,
// or refused with the line that is wrong.
#include <cstddef>
#include <cstdint>
#include <string>

#include "Commands.h"
#include "FuzzSet.h"
#include "SetFields.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const factorysim::SetFields fields;
    fuzz::Tv();
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::string error = fields.LoadText(text, "fuzz.set");
    if (!error.empty() && error.compare(0, 9, "fuzz.set:") != 0) {
        __builtin_trap();  // a refusal names the file and the line
    }
    fuzz::EndRun();
    return 0;
}
