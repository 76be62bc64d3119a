// The About box's sound.
#pragma once

#include <string>

namespace art {

// Two notes of a small bell, the second a fifth above the first, as the bytes
// of a WAV file: 8 bits, one channel.
std::string chime();

}  // namespace art
