// How the host says no: one clear line for the user.
#pragma once

#include <exception>
#include <string>

namespace riders::io {

struct Refusal : std::exception {
    explicit Refusal(std::string text) : message(std::move(text)) {}
    const char *what() const noexcept override { return message.c_str(); }

    std::string message;  // without a line end and without the program's name
};

// "name: message of errno", for a call that has just failed.
[[noreturn]] void refuseErrno(const std::string &name, int error);

}  // namespace riders::io
