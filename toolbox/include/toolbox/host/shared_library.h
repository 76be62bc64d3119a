// A library that is loaded when it is wanted, so that what does without it starts no slower.
#pragma once

#include <string>

namespace toolbox {

class SharedLibrary {
public:
    // The library's file, as the loader finds it, and the Debian package to which it belongs, for the message. It
    // stays loaded to the end of the process. Throws std::runtime_error where it cannot be loaded.
    SharedLibrary(const char *file, const char *package);

    // A function of the library; becomes a pointer to a function of whatever type it is assigned to.
    struct Symbol {
        void *address;

        template <class Function>
        operator Function *() const
        {
            return reinterpret_cast<Function *>(address);
        }
    };
    // Throws std::runtime_error where the library has no function of that name.
    Symbol operator()(const char *name) const;

private:
    void *library_;
    const char *file_;
};

}  // namespace toolbox
