// Platform calls in the order the set received them, for suites that assert order:
// each call as "Class::Method[args]", optionally only those of the named functions
// or of every function whose name starts with a prefix ending in "::". The library's
// own hooks that the lifecycle test notes ("FactoryManager::...") come only when asked.
#pragma once

#include <string>
#include <vector>

#include "SimJournal.h"
#include "SimSet.h"

inline std::vector<std::string> CallOrder(const std::vector<std::string>& only = {}) {
    std::vector<std::string> out;
    for (const auto& e : sim::Set::Instance().GetJournal().Entries()) {
        if (e.kind != "call") {
            continue;
        }
        bool wanted = only.empty() && e.fn.compare(0, 16, "FactoryManager::") != 0;
        for (const std::string& name : only) {
            const bool prefix = name.size() > 2 && name.compare(name.size() - 2, 2, "::") == 0;
            wanted |= prefix ? e.fn.compare(0, name.size(), name) == 0 : e.fn == name;
        }
        if (wanted) {
            out.push_back(e.fn + e.args);
        }
    }
    return out;
}
