// Linked into the fetching program where it is built with sanitizers: it is started without the
// environment that says how they are to work.

extern "C" const char* __asan_default_options(); // the sanitizers' names
extern "C" const char* __asan_default_options() {
    return "detect_leaks=0"; // it takes ptrace(), which a confined process must not call
}

extern "C" const char* __tsan_default_options();
extern "C" const char* __tsan_default_options() {
    return "halt_on_error=1:suppressions=" TSAN_SUPPRESSIONS;
}
