#include "looking/file_names.h"

#include "looking/look_folder.h"
#include "plates/files/plate_names.h"

namespace riders::looking {
namespace {

constexpr const char *kAll = "all";

std::string patternName(std::size_t number)
{
    return "pattern-" + std::to_string(number);
}

}  // namespace

std::string nameOf(const PageFacts &page)
{
    return "page-" + std::to_string(page.number);
}

std::string pictureCalled(const std::string &name)
{
    return std::string(kPicturesName) + "/" + name + ".png";
}

std::string patternPictureOf(const PageFacts &page, std::size_t number)
{
    return pictureCalled(nameOf(page) + "-" + patternName(number));
}

std::string rosetteOf(const PageFacts &page)
{
    return pictureCalled(nameOf(page) + "-" + kAll);
}

std::string nameOf(const PageFacts &page, const std::string &plate, std::set<std::string> &taken)
{
    return nameOf(page) + "-" + plates::fileNameFor(plate, taken);
}

std::set<std::string> namesOfOthers()
{
    std::set<std::string> taken = {kAll};
    for (std::size_t number = 1; number <= kMostPatternPictures; ++number)
        taken.insert(patternName(number));
    return taken;
}

}  // namespace riders::looking
