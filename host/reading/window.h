// An input seen through a window that moves on over it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "io/bytes.h"

namespace riders::reading {

class Window {
public:
    // `start` is what was read of the input before.
    Window(const io::OpenFile &in, std::string_view start) : in_(in), bytes_(start) {}

    // The next bytes: so many, or more, or all that are left. Good until the next call. Throws Refusal.
    std::string_view see(std::size_t count)
    {
        if (bytes_.size() - at_ < count && !ended_)
            fill(count);
        return std::string_view(bytes_).substr(at_);
    }
    // Bytes that have been seen.
    void pass(std::size_t count)
    {
        at_ += count;
        offset_ += count;
    }
    std::uint64_t offset() const { return offset_; }

private:
    void fill(std::size_t count)
    {
        constexpr std::size_t atOnce = 256 << 10;
        bytes_.erase(0, at_);
        at_ = 0;
        const std::size_t before = bytes_.size(), wanted = std::max(atOnce, count - before);
        bytes_.resize(before + wanted);
        const std::size_t got = io::readFully(in_, bytes_.data() + before, wanted);
        bytes_.resize(before + got);
        ended_ = got < wanted;
    }

    const io::OpenFile &in_;
    std::string bytes_;
    std::size_t at_ = 0;
    std::uint64_t offset_ = 0;
    bool ended_ = false;
};

}  // namespace riders::reading
