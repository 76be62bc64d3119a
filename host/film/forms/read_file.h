// A file, read piece by piece.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>

namespace riders::film {

// Hands the bytes from `offset` to the end to `take`. Throws Refusal where the file cannot be read, and what
// `take` throws.
void readFrom(const std::filesystem::path &file, std::uint64_t offset,
              const std::function<void(std::string_view)> &take);

}  // namespace riders::film
