// A library that is loaded when it is wanted; without it, a refusal says which package to install.
#pragma once

#include "toolbox/host/shared_library.h"

namespace riders::io {

class SharedLibrary {
public:
    using Symbol = toolbox::SharedLibrary::Symbol;

    // As toolbox::SharedLibrary. Both throw Refusal.
    SharedLibrary(const char *file, const char *package);
    Symbol operator()(const char *name) const;

private:
    toolbox::SharedLibrary library_;
};

}  // namespace riders::io
