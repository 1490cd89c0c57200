#include "FactoryAssert.h"

#include <cstdio>
#include <cstdlib>

void FactoryAssert::Fail(const char* file, const char* function, int line) {
    std::printf("ASSERT FAIL: %s %s %d\n", file, function, line);
    std::fflush(stdout);
    std::abort();
}
