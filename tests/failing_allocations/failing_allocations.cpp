// A library to be preloaded into the program, for tests: allocations fail as its plan says. They count from the
// beginning of main, in the program alone, not in those that it starts.
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <unistd.h>

#include "failing_allocations/plan.h"

extern "C" {
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *old, size_t size);
void *__libc_memalign(size_t alignment, size_t size);
}

namespace {

using Main = int (*)(int, char **, char **);
using Start = int (*)(Main, int, char **, void (*)(), void (*)(), void (*)(), void *);

AllocationPlan *plan = nullptr;
Main realMain = nullptr;

bool fails()
{
    if (!plan)
        return false;
    const long count = ++plan->count;
    if (plan->nth == 0 || count < plan->nth || count - plan->nth > plan->further)
        return false;
    ++plan->failed;
    errno = ENOMEM;
    return true;
}

AllocationPlan *mapped(const char *file)
{
    const int descriptor = file ? open(file, O_RDWR | O_CLOEXEC) : -1;
    void *here = mmap(nullptr, sizeof(AllocationPlan), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    close(descriptor);
    return here == MAP_FAILED ? nullptr : static_cast<AllocationPlan *>(here);
}

int countedMain(int count, char **arguments, char **environment)
{
    if (!strcmp(program_invocation_short_name, "riders"))
        plan = mapped(getenv(AllocationPlan::kVariable));
    if (plan)
        plan->count = plan->failed = 0;
    return realMain(count, arguments, environment);
}

}  // namespace

extern "C" {

int __libc_start_main(Main main, int count, char **arguments, void (*init)(), void (*fini)(), void (*loaderFini)(),
                      void *stackEnd)
{
    realMain = main;
    const auto start = reinterpret_cast<Start>(dlsym(RTLD_NEXT, "__libc_start_main"));
    return start(countedMain, count, arguments, init, fini, loaderFini, stackEnd);
}

void *malloc(size_t size)
{
    return fails() ? nullptr : __libc_malloc(size);
}

void *calloc(size_t count, size_t size)
{
    return fails() ? nullptr : __libc_calloc(count, size);
}

void *realloc(void *old, size_t size)
{
    return fails() ? nullptr : __libc_realloc(old, size);
}

void *aligned_alloc(size_t alignment, size_t size)
{
    return fails() ? nullptr : __libc_memalign(alignment, size);
}

void *memalign(size_t alignment, size_t size)
{
    return fails() ? nullptr : __libc_memalign(alignment, size);
}

int posix_memalign(void **block, size_t alignment, size_t size)
{
    void *made = aligned_alloc(alignment, size);
    if (!made)
        return ENOMEM;
    *block = made;
    return 0;
}

}  // extern "C"
