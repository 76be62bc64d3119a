#include "screens/plain_bitmap.h"

#include <sstream>
#include <stdexcept>

#include "support/toolbox_test.h"

PlainBitmap readPlainBitmap(const std::filesystem::path &file, double dpi)
{
    std::string bytes = contentsOf(file);
    std::istringstream in(bytes.substr(0, 200));
    std::string magic, comment;
    std::getline(in, magic);
    while (in.peek() == '#')
        std::getline(in, comment);
    int width = 0, height = 0;
    in >> width >> height;
    in.get();
    const auto start = in ? static_cast<size_t>(in.tellg()) : bytes.size();
    if (magic != "P4" || width <= 0 || bytes.size() < start + static_cast<size_t>((width + 7) / 8) * height)
        throw std::runtime_error("no bitmap: " + file.string());
    return PlainBitmap(std::move(bytes), start, width, height, dpi);
}
