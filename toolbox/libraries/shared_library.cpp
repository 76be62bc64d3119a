#include "toolbox/host/shared_library.h"

#include <dlfcn.h>

#include <stdexcept>

namespace toolbox {

namespace {

std::string whatIsWrong()
{
    const char *message = dlerror();
    return message ? message : "cannot be loaded";
}

}  // namespace

SharedLibrary::SharedLibrary(const char *file, const char *package) : library_(dlopen(file, RTLD_NOW)), file_(file)
{
    if (!library_)
        throw std::runtime_error("a library is missing: install the Debian package " + std::string(package) +
                                 " (" + whatIsWrong() + ")");
}

SharedLibrary::Symbol SharedLibrary::operator()(const char *name) const
{
    void *address = dlsym(library_, name);
    if (!address)
        throw std::runtime_error(std::string(file_) + ": " + whatIsWrong());
    return {address};
}

}  // namespace toolbox
