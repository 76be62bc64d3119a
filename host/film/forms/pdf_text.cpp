#include "film/forms/pdf_text.h"

#include <array>
#include <cstdio>

#include "toolbox/host/utf8.h"

namespace riders::film {

namespace {

std::string hex(unsigned value, int digits)
{
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%0*X", digits, value);
    return text.data();
}

bool isPlain(unsigned char byte)
{
    constexpr std::string_view delimiters = "()<>[]{}/%#";
    return byte > ' ' && byte < 0x7f && delimiters.find(static_cast<char>(byte)) == std::string_view::npos;
}

}  // namespace

std::string pdfText(std::string_view text)
{
    std::string units = "<FEFF";
    while (!text.empty()) {
        char32_t code = toolbox::takeCodePoint(text);
        if (code == toolbox::noCodePoint)
            code = 0xfffd;
        if (code < 0x10000)
            units += hex(code, 4);
        else
            units += hex(0xd800 + ((code - 0x10000) >> 10), 4) + hex(0xdc00 + (code & 0x3ff), 4);
    }
    return units + ">";
}

std::string pdfName(std::string_view text)
{
    std::string name = "/";
    for (const char letter : text) {
        const auto byte = static_cast<unsigned char>(letter);
        name += isPlain(byte) ? std::string(1, letter) : "#" + hex(byte, 2);
    }
    return name;
}

}  // namespace riders::film
