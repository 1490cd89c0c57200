// The set's allocator, which can refuse: a set short of memory fails the library's
// nothrow array allocations (its reader buffers), and a test or factory-sim asks for it.
#pragma once

#include <cstddef>

namespace sim {

// While on, every nothrow array allocation returns null.
void FailAllocations(bool on);
// The next nothrow array allocation of exactly `bytes` bytes returns null.
void FailNextAllocation(std::size_t bytes);
// Whether the set's allocator is the one in use: a sanitizer brings its own, which
// never refuses.
bool AllocationsCanFail();

}  // namespace sim
