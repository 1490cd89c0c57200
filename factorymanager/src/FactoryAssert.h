// The library's assertion for a set built wrong: one console line in the form the
// service staff's logs look for, then abort. The file names are those the lines carry
// on the set.
#pragma once

namespace FactoryAssert {
constexpr const char* kManagerFile = "./factorymanager/src/FactoryManager.cpp";
// Some lines carry the name without its extension.
constexpr const char* kManagerStem = "./factorymanager/src/FactoryManager";

[[noreturn]] void Fail(const char* file, const char* function, int line);
}  // namespace FactoryAssert
