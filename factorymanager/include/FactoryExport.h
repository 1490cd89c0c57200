// What the library shows its host process: the library is built with hidden symbols
// and only these names are exported, so a set's middleware sees nothing else of it.
#pragma once

#define VQ27_FACTORY_API __attribute__((visibility("default")))
