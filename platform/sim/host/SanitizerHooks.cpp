// Compiled into every program that runs the simulated set (tests, factory-sim).
// DirectFB lives for the whole process and keeps its own allocations (and the
// native window's interface, which the library never releases) and threads until
// exit; neither its libraries nor its headless system module are built for
// ThreadSanitizer. The module is unloaded when probed and at exit, so it is matched
// by report kind rather than by called_from_lib. Only our code is reported.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libdirectfb\nleak:libfusion\nleak:libdirect-\n";
}

extern "C" const char* __tsan_default_suppressions() {
    return "called_from_lib:libdirect-1.7.so.7\n"
           "called_from_lib:libdirectfb-1.7.so.7\n"
           "called_from_lib:libfusion-1.7.so.7\n"
           "race:libdirectfb_dummy.so\n"
           "mutex:libdirectfb_dummy.so\n"
           "thread:libdirect-1.7.so.7\n"
           "thread:direct_thread_init\n";
}
