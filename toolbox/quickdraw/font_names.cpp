#include "quickdraw/font_names.h"

#include <filesystem>
#include <memory>
#include <set>

#include "quickdraw/freetype.h"
#include "toolbox/host/text.h"

namespace toolbox::quickdraw {
namespace {

constexpr const char *fontFolder = "/usr/share/fonts/opentype/urw-base35";

std::string familyOf(FT_Library library, const std::filesystem::path &file)
{
    FT_Face face = nullptr;
    if (freeType().newFace(library, file.c_str(), 0, &face) != 0)
        return {};
    std::string name = face->family_name ? face->family_name : "";
    freeType().doneFace(face);
    return romanFromUtf8Lossy(name);
}

std::vector<std::string> readFamilies()
{
    FT_Library opened = nullptr;
    if (freeType().init(&opened) != 0)
        return {};
    std::unique_ptr<FT_LibraryRec_, FT_Error (*)(FT_Library)> library(opened, freeType().done);
    std::set<std::string> names;
    std::error_code error;
    for (const auto &entry : std::filesystem::directory_iterator(fontFolder, error))
        names.insert(familyOf(library.get(), entry.path()));
    names.erase("");
    return {names.begin(), names.end()};
}

}  // namespace

const std::vector<std::string> &fontFamilies()
{
    static const std::vector<std::string> families = readFamilies();
    return families;
}

}  // namespace toolbox::quickdraw
