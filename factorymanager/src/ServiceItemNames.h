// Names of the service-mode items, by index (item n lives at service address
// 0x800 + n). Display text only: service sheets are written against these names.
#pragma once

#include <cstddef>

namespace ServiceItems {

constexpr unsigned short kStartAddr = 0x800;  // RM_SERVICE_COMMAND_START_ADDR
constexpr unsigned int kCount = 1412;         // SERVICE_MODE_NUM
constexpr size_t kNameSize = 64;              // a name is at most 63 characters
// Old memory data: shown but never changed from the value keys.
constexpr unsigned int kFirstReadOnly = 791;
constexpr unsigned int kLastReadOnly = 813;

// Index of the item at an address; an address below the table shows item 0.
inline unsigned int IndexOf(unsigned short addr) {
    return addr > kStartAddr - 1 ? static_cast<unsigned int>(addr - kStartAddr) : 0u;
}

// The slot's name; "" for a nameless slot or an index of kCount or more. The table
// is built once when the library loads; a lookup never allocates.
const char* Name(unsigned int index);

}  // namespace ServiceItems
