// Part of a file, read piece by piece.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>

namespace riders::film {

// Hands `count` bytes from `offset` on to `take`. Throws Refusal where the file cannot be read or
// ends before, and what `take` throws.
void readRange(const std::filesystem::path &file, std::uint64_t offset, std::uint64_t count,
               const std::function<void(std::string_view)> &take);

}  // namespace riders::film
