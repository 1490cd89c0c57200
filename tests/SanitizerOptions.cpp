// DirectFB's own support library is not built for ThreadSanitizer and trips it while
// it loads; its calls are left out of the report, our code stays watched.
extern "C" const char* __tsan_default_suppressions() {
    return "called_from_lib:libdirect-1.7.so.7\n"
           "called_from_lib:libdirectfb-1.7.so.7\n"
           "called_from_lib:libfusion-1.7.so.7\n";
}
