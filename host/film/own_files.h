// Which files a run may replace.
#pragma once

#include <filesystem>

namespace riders::film {

// Throws Refusal where something is there that is no film that this program made.
void refuseForeign(const std::filesystem::path &file);

}  // namespace riders::film
