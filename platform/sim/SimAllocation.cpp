#include "SimAllocation.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace sim {
namespace {
std::atomic<bool> g_failAll{false};
std::atomic<std::size_t> g_failBytes{0};
std::atomic<bool> g_probe{false};
}  // namespace

void FailAllocations(bool on) { g_failAll = on; }
void FailNextAllocation(std::size_t bytes) { g_failBytes = bytes; }

bool AllocationsCanFail() {
    g_probe = true;
    char* p = new (std::nothrow) char[1];
    const bool refused = p == nullptr;
    delete[] p;
    g_probe = false;
    return refused;
}

}  // namespace sim

// The array forms of the whole process map to malloc and free, so that a refusal
// costs nothing else and a sanitizer still sees matching pairs.
void* operator new[](std::size_t size) {
    void* p = std::malloc(size ? size : 1);
    if (p == nullptr) {
        throw std::bad_alloc();
    }
    return p;
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    std::size_t armed = size;
    if (sim::g_failAll || sim::g_probe ||
        (size != 0 && sim::g_failBytes.compare_exchange_strong(armed, 0))) {
        return nullptr;
    }
    return std::malloc(size ? size : 1);
}
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { std::free(p); }
