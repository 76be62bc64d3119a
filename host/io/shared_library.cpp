#include "io/shared_library.h"

#include <dlfcn.h>

#include "io/refusal.h"

namespace riders::io {

namespace {

std::string whatIsWrong()
{
    const char *message = dlerror();
    return message ? message : "cannot be loaded";
}

}  // namespace

SharedLibrary::SharedLibrary(const char *file, const char *package) : library_(dlopen(file, RTLD_NOW)), name_(file)
{
    if (!library_)
        throw Refusal("a library is missing: install the Debian package " + std::string(package) + " (" +
                      whatIsWrong() + ")");
}

SharedLibrary::Symbol SharedLibrary::operator()(const char *name) const
{
    void *address = dlsym(library_, name);
    if (!address)
        throw Refusal(name_ + ": " + whatIsWrong());
    return {address};
}

}  // namespace riders::io
