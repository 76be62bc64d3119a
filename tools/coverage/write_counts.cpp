// Linked into the coverage build's programs. The counters are written when a
// process returns from main; here, also before it leaves in other ways.

#include <sys/types.h>

extern "C" {

void __gcov_dump();
void __real__exit(int);
int __real_raise(int);
int __real_execvpe(const char *, char *const[], char *const[]);

[[noreturn]] void __wrap__exit(int status)
{
    __gcov_dump();
    __real__exit(status);
    __builtin_unreachable();
}

int __wrap_raise(int signal)
{
    __gcov_dump();
    return __real_raise(signal);
}

int __wrap_execvpe(const char *program, char *const arguments[], char *const environment[])
{
    __gcov_dump();
    return __real_execvpe(program, arguments, environment);
}

}
