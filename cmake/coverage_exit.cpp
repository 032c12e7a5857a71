// Replaces the C library's _Exit in coverage builds, with the linker option --wrap, and writes the
// coverage counters before the process ends.

extern "C" void __gcov_dump();
extern "C" [[noreturn]] void __real__Exit(int status);

extern "C" [[noreturn]] void __wrap__Exit(int status)
{
    __gcov_dump();
    __real__Exit(status);
}
