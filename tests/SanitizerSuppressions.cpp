// DirectFB lives for the whole process and keeps its own allocations (and the
// native window's interface, which the library never releases) until exit.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libdirectfb\nleak:libfusion\nleak:libdirect-\n";
}
