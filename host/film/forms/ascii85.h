// Bytes as text, in ASCII base 85.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace riders::film {

// Lines of at most 76 characters, none of which looks like a comment.
class Ascii85 {
public:
    explicit Ascii85(std::function<void(std::string_view)> write) : write_(std::move(write)) {}

    void add(std::string_view bytes);
    // Writes what is left, and the end mark on a line of its own.
    void end();

private:
    void addGroup(std::uint32_t group, int digits);
    void put(char digit);
    void flush();

    std::function<void(std::string_view)> write_;
    std::uint32_t group_ = 0;
    int bytes_ = 0;  // in the group so far
    std::string text_;
    std::size_t column_ = 0;
};

}  // namespace riders::film
