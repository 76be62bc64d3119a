// Big-endian numbers in strings of bytes, for code that reads and writes whole
// files: read at an offset, append at the end. Records of a fixed layout use field
// types instead (toolbox/bigendian.h).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace toolbox {

// The unsigned number of count bytes (1 to 4) at the offset. The caller has checked
// that they lie within the bytes, here and in the two below.
inline std::uint32_t bytesAt(std::string_view bytes, std::uint64_t offset, int count)
{
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes[offset + static_cast<unsigned>(i)]);
    return value;
}

inline std::uint16_t wordAt(std::string_view bytes, std::uint64_t offset)
{
    return static_cast<std::uint16_t>(bytesAt(bytes, offset, 2));
}

inline std::uint32_t longAt(std::string_view bytes, std::uint64_t offset)
{
    return bytesAt(bytes, offset, 4);
}

// Append the lowest 8, 16 or 32 bits of the value.
inline void appendByte(std::string &bytes, std::uint32_t value)
{
    bytes += static_cast<char>(value & 0xFF);
}

inline void appendWord(std::string &bytes, std::uint32_t value)
{
    appendByte(bytes, value >> 8);
    appendByte(bytes, value);
}

inline void appendLong(std::string &bytes, std::uint32_t value)
{
    appendWord(bytes, value >> 16);
    appendWord(bytes, value);
}

// The length in a byte, then the text, cut at 255 bytes.
inline void appendPascal(std::string &bytes, std::string_view text)
{
    text = text.substr(0, 255);
    appendByte(bytes, static_cast<std::uint32_t>(text.size()));
    bytes += text;
}

}  // namespace toolbox
