#include "film/forms/ascii85.h"

namespace riders::film {

namespace {

constexpr std::size_t kLine = 76, kMuchText = std::size_t(1) << 16;

}  // namespace

void Ascii85::add(std::string_view bytes)
{
    for (const char byte : bytes) {
        group_ = group_ << 8 | static_cast<std::uint8_t>(byte);
        if (++bytes_ < 4)
            continue;
        if (group_ == 0)
            put('z');
        else
            addGroup(group_, 5);
        group_ = 0;
        bytes_ = 0;
    }
    if (text_.size() >= kMuchText)
        flush();
}

void Ascii85::end()
{
    if (bytes_ > 0)
        addGroup(group_ << (8 * (4 - bytes_)), bytes_ + 1);
    bytes_ = 0;
    group_ = 0;
    text_ += "\n~>\n";
    flush();
}

void Ascii85::addGroup(std::uint32_t group, int digits)
{
    std::array<char, 5> text{};
    for (std::size_t place = text.size(); place-- > 0; group /= 85)
        text[place] = static_cast<char>('!' + group % 85);
    for (int digit = 0; digit < digits; ++digit)
        put(text[static_cast<std::size_t>(digit)]);
}

void Ascii85::put(char digit)
{
    if (column_ == kLine) {
        text_ += '\n';
        column_ = 0;
    }
    if (column_ == 0 && digit == '%') {
        text_ += ' ';
        ++column_;
    }
    text_ += digit;
    ++column_;
}

void Ascii85::flush()
{
    write_(text_);
    text_.clear();
}

}  // namespace riders::film
