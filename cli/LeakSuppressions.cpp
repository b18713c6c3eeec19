// For the leak sanitizer, which asks for it by this name.
extern "C" const char* __lsan_default_suppressions();

// fontconfig keeps what it has read of the system's fonts until the process ends.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\n";
}
