#include "io/shared_library.h"

#include <stdexcept>

#include "io/refusal.h"

namespace riders::io {

namespace {

template <class Load>
auto orRefuse(Load load)
{
    try {
        return load();
    } catch (const std::runtime_error &error) {
        throw Refusal(error.what());
    }
}

}  // namespace

SharedLibrary::SharedLibrary(const char *file, const char *package)
    : library_(orRefuse([&] { return toolbox::SharedLibrary(file, package); }))
{
}

SharedLibrary::Symbol SharedLibrary::operator()(const char *name) const
{
    return orRefuse([&] { return library_(name); });
}

}  // namespace riders::io
