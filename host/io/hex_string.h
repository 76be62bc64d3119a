// Any bytes as a string of PostScript.
#pragma once

#include <string>
#include <string_view>

namespace riders::io {

// "<43 79 ...>" without spaces: whatever the bytes are, the interpreter reads those and nothing else.
std::string hexString(std::string_view bytes);

}  // namespace riders::io
