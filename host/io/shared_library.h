// A library that is loaded when it is wanted, so that commands that do without it start no slower.
#pragma once

#include <string>

namespace riders::io {

class SharedLibrary {
public:
    // The library's file, as the loader finds it, and the Debian package to which it belongs, for the message. It
    // stays loaded to the end of the process. Throws Refusal.
    SharedLibrary(const char *file, const char *package);

    // A function of the library; becomes a pointer to a function of whatever type it is assigned to. Throws Refusal.
    struct Symbol {
        void *address;

        template <class Function>
        operator Function *() const
        {
            return reinterpret_cast<Function *>(address);
        }
    };
    Symbol operator()(const char *name) const;

private:
    void *library_;
    std::string name_;
};

}  // namespace riders::io
