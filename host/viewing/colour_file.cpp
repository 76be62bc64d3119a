#include "viewing/colour_file.h"

#include <array>
#include <vector>

#include "io/refusal.h"
#include "plates/files/plate.h"

namespace riders::viewing {
namespace {

char byteOf(const io::OpenFile &in)
{
    char byte = 0;
    if (io::readFully(in, &byte, 1) != 1)
        throw io::Refusal(in.name() + ": is cut off");
    return byte;
}

bool isBlank(char byte)
{
    return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r';
}

using Sums = std::vector<std::array<std::uint32_t, 4>>;  // red, green, blue, and how many

void add(const std::vector<char> &row, int columns, Sums &sums)
{
    const auto wide = static_cast<std::size_t>(columns);
    for (std::size_t column = 0; column < wide; ++column) {
        auto &sum = sums[column * sums.size() / wide];
        for (std::size_t part = 0; part < 3; ++part)
            sum[part] += static_cast<unsigned char>(row[3 * column + part]);
        ++sum[3];
    }
}

void append(const Sums &sums, std::vector<std::uint32_t> &pixels)
{
    for (const auto &[red, green, blue, count] : sums)
        pixels.push_back(count == 0 ? 0xFFFFFF : red / count << 16 | green / count << 8 | blue / count);
}

}  // namespace

// The interpreter's own comment follows the first line.
int ColourFile::number()
{
    char byte = byteOf(in_);
    while (isBlank(byte) || byte == '#') {
        if (byte == '#')
            while (byte != '\n')
                byte = byteOf(in_);
        byte = byteOf(in_);
    }
    int value = 0;
    for (; byte >= '0' && byte <= '9' && value <= plates::kLongestPlateSide; byte = byteOf(in_))
        value = 10 * value + (byte - '0');
    if (!isBlank(byte) || value < 1 || value > plates::kLongestPlateSide)
        throw io::Refusal(in_.name() + ": is not what the interpreter writes");
    return value;
}

ColourFile::ColourFile(const std::filesystem::path &file) : in_(io::openOrdinaryFile(file))
{
    if (byteOf(in_) != 'P' || byteOf(in_) != '6')
        throw io::Refusal(in_.name() + ": is not what the interpreter writes");
    columns_ = number();
    rows_ = number();
    number();
}

toolbox::Picture ColourFile::picture(int columns, int rows)
{
    toolbox::Picture picture{columns, rows, {}};
    std::vector<char> row(static_cast<std::size_t>(columns_) * 3);
    Sums sums(static_cast<std::size_t>(columns));
    int to = 0;
    for (int from = 0; from < rows_; ++from) {
        if (const int place = static_cast<int>(std::int64_t{from} * rows / rows_); place != to) {
            append(sums, picture.pixels);
            sums.assign(sums.size(), {});
            to = place;
        }
        if (io::readFully(in_, row.data(), row.size()) != row.size())
            throw io::Refusal(in_.name() + ": is cut off");
        add(row, columns_, sums);
    }
    append(sums, picture.pixels);
    return picture;
}

}  // namespace riders::viewing
