// Linked into the fetching program where it is built with sanitizers.

extern "C" const char* __asan_default_options(); // the sanitizer's name for it
extern "C" const char* __asan_default_options() {
    return "detect_leaks=0";
}
