// Input that comes from another program, when that program pleases.
#pragma once

#include <string>

#include "io/bytes.h"

namespace riders::io {

// A pipe or a device that is read as bytes come. The process can be interrupted meanwhile (see Interruption).
class Stream {
public:
    // Does not wait for the other end. `seconds` is how long nothing may come. Throws Refusal.
    Stream(const std::string &path, int seconds);

    // Waits for bytes; returns how many there are, 0 at the end. Throws Refusal, also when none come in time,
    // and Interrupted.
    size_t read(char *buffer, size_t size);

private:
    void waitForBytes() const;

    OpenFile in_;
    int seconds_;
};

}  // namespace riders::io
