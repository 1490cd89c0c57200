// DirectFB lives for the whole process and keeps its own allocations until exit; its
// support libraries are not built for ThreadSanitizer. Only our code is reported.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libdirectfb\nleak:libfusion\nleak:libdirect-\n";
}
extern "C" const char* __tsan_default_suppressions() {
    return "called_from_lib:libdirect-1.7.so.7\n"
           "called_from_lib:libdirectfb-1.7.so.7\n"
           "called_from_lib:libfusion-1.7.so.7\n";
}
