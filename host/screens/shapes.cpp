#include "screens/shapes.h"

#include <strings.h>

#include <algorithm>
#include <array>

#include "io/bytes.h"
#include "io/nearest.h"
#include "io/refusal.h"
#include "screens/data_folder.h"

namespace fs = std::filesystem;

namespace riders::screens {
namespace {

// As source/ktSpot.cpp has them.
constexpr std::size_t kHeaderBytes = 96;
constexpr std::string_view kMagic = "%!KT1_Spot";
// At which the dot shape in a riders file ends, see resources/ps/spot_begin.ps.
constexpr std::string_view kMark = "%end-of-dot-shape%";

// Where the menu of the plug-in has other names than the installed files. Its Round is the simple dot; what
// PostScript calls round is its Euclidean.
struct MenuName {
    const char *menu;
    const char *file;
};
constexpr std::array<MenuName, 2> kMenuNames = {{{"Round", "SimpleDot"}, {"Euclidean", "Round"}}};

bool alike(const std::string &one, const std::string &other)
{
    return strcasecmp(one.c_str(), other.c_str()) == 0;
}

std::string nameInMenu(const std::string &file)
{
    for (const MenuName &name : kMenuNames)
        if (file == name.file)
            return name.menu;
    return {};
}

bool meansOtherDots(const std::string &name)
{
    return std::any_of(kMenuNames.begin(), kMenuNames.end(),
                       [&](const MenuName &known) { return alike(name, known.menu); });
}

std::vector<fs::path> installedFiles()
{
    const fs::path folder = dataFolder("shapes");
    std::error_code ignored;
    if (fs::status(folder, ignored).type() == fs::file_type::not_found)
        return {};
    std::vector<fs::path> files;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder))
        if (!entry.path().filename().string().starts_with('.'))
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

[[noreturn]] void refuse(const fs::path &file, const std::string &why)
{
    throw io::Refusal(file.string() + " is no spot function file: " + why);
}

std::string bodyIn(const fs::path &file, const std::string &bytes)
{
    const std::string start = bytes.substr(0, kHeaderBytes);
    if (bytes.empty())
        refuse(file, "it is empty");
    if (start.find(kMagic) == start.npos)
        refuse(file, "its first line does not hold " + std::string(kMagic));
    const std::size_t end = start.find('\r');
    if (end == start.npos)
        refuse(
            file,
            start.find('\n') == start.npos
                ? "no carriage return ends its first line within 96 bytes"
                : "its first line ends in a line feed; it must end in a carriage return: riders shapes FILE --fix "
                  "makes a copy in which it does");
    return bytes.substr(end + 1);
}

}  // namespace

Shape shapeFrom(const fs::path &file, const std::string &bytes)
{
    Shape shape{file.filename().string(), bodyIn(file, bytes), file};
    if (shape.body.find_first_not_of(" \t\r\n\f") == shape.body.npos)
        refuse(file, "nothing follows its first line");
    if (shape.body.size() > kLongestShape)
        refuse(file, "it is longer than " + std::to_string(kLongestShape) + " bytes");
    if (shape.body.find(kMark) != shape.body.npos)
        refuse(file, "it holds " + std::string(kMark) + ", at which a riders file would take it to end");
    return shape;
}

Shape shapeIn(const fs::path &file)
{
    const io::OpenFile in = io::openOrdinaryFile(file);
    std::string bytes(kHeaderBytes + kLongestShape + 1, '\0');
    bytes.resize(io::readFully(in, bytes.data(), bytes.size()));
    return shapeFrom(file, bytes);
}

std::vector<Shape> installedShapes()
{
    std::vector<Shape> shapes;
    for (const fs::path &file : installedFiles())
        shapes.push_back(shapeIn(file));
    return shapes;
}

std::vector<std::string> namesOf(const Shape &installed)
{
    std::vector<std::string> names;
    if (!meansOtherDots(installed.name))
        names.push_back(installed.name);
    if (std::string menu = nameInMenu(installed.name); !menu.empty())
        names.push_back(std::move(menu));
    return names;
}

std::optional<Shape> installedShape(const std::string &name)
{
    if (name.empty() || name.find('/') != name.npos)
        return std::nullopt;
    for (const fs::path &file : installedFiles())
        for (const std::string &usual : namesOf({file.filename().string(), {}, {}}))
            if (alike(usual, name)) {
                Shape shape = shapeIn(file);
                shape.name = usual;
                return shape;
            }
    return std::nullopt;
}

std::optional<Shape> shapeNamed(const std::string &nameOrFile)
{
    if (std::optional<Shape> shape = installedShape(nameOrFile))
        return shape;
    std::error_code ignored;
    if (nameOrFile.empty() || !fs::exists(nameOrFile, ignored))
        return std::nullopt;
    return shapeIn(nameOrFile);
}

std::string shapeMeant(const std::string &typed)
{
    std::vector<std::string> names;
    for (const fs::path &file : installedFiles())
        for (std::string &name : namesOf({file.filename().string(), {}, {}}))
            names.push_back(std::move(name));
    return io::didYouMean(typed, names);
}

std::string aboutShape(const Shape &shape)
{
    const std::size_t start = shape.body.find_first_not_of(" \t\r\n");
    if (start == shape.body.npos || shape.body[start] != '%')
        return {};
    const std::size_t end = std::min(shape.body.find_first_of("\r\n", start), shape.body.size());
    const std::size_t words = shape.body.find_first_not_of("% \t", start);
    return words < end ? shape.body.substr(words, end - words) : "";
}

}  // namespace riders::screens
