// For the leak report of the sanitizers, which asks every program for these.

extern "C" const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_options();

// Fontconfig keeps its configuration to the end, and much of it is found only by distances in memory, not by
// pointers.
const char *__lsan_default_suppressions()
{
    return "leak:libfontconfig\n";
}

const char *__lsan_default_options()
{
    return "print_suppressions=0";
}
