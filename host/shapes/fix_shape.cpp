#include "shapes/fix_shape.h"

#include "io/bytes.h"
#include "io/output.h"
#include "io/refusal.h"
#include "screens/shapes.h"

namespace fs = std::filesystem;

namespace riders::shapes {
namespace {

constexpr std::size_t kFirstLine = 96;  // bytes in which its end must be
constexpr std::size_t kLongestFile = 1 << 20;

std::string bytesOf(const fs::path &file, std::size_t most)
{
    const io::OpenFile in = io::openOrdinaryFile(file);
    std::string bytes(most, '\0');
    bytes.resize(io::readFully(in, bytes.data(), bytes.size()));
    return bytes;
}

// True where the first line's end was another.
bool endFirstLine(std::string &bytes)
{
    const std::size_t end = bytes.find_first_of("\r\n");
    if (end == bytes.npos || end >= kFirstLine || bytes[end] == '\r')
        return false;
    bytes[end] = '\r';
    return true;
}

void refuseForeignCopy(const fs::path &copy)
{
    std::error_code ignored;
    if (!fs::is_regular_file(copy, ignored))
        return;
    const std::string start = bytesOf(copy, kFirstLine);
    if (!start.empty() && start.find("%!KT1_Spot") == start.npos)
        throw io::Refusal(copy.string() +
                          ": exists and is no spot function file; name another file, or replace it with --force");
}

}  // namespace

Fixed fixShape(const FixRequest &request)
{
    std::string bytes = bytesOf(request.file, kLongestFile);
    Fixed fixed{request.copy, endFirstLine(bytes)};
    screens::shapeFrom(request.file, bytes);
    if (fixed.copy.empty())
        fixed.copy = request.file.stem().string() + "-fixed" + request.file.extension().string();
    if (!request.force)
        refuseForeignCopy(fixed.copy);
    io::writeFile(fixed.copy, bytes);
    return fixed;
}

}  // namespace riders::shapes
