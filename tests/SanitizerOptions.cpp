// DirectFB's own libraries are not built for ThreadSanitizer and trip it while they
// load; their calls are left out of the report, our code stays watched. The dummy
// system is loaded as a module (and unloaded when probed), so it is named by report
// kind; DirectFB's own threads live until exit.
extern "C" const char* __tsan_default_suppressions() {
    return "called_from_lib:libdirect-1.7.so.7\n"
           "called_from_lib:libdirectfb-1.7.so.7\n"
           "called_from_lib:libfusion-1.7.so.7\n"
           "race:libdirectfb_dummy.so\n"
           "mutex:libdirectfb_dummy.so\n"
           "thread:libdirect-1.7.so.7\n";
}
