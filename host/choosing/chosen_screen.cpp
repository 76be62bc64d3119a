#include "choosing/chosen_screen.h"

#include <algorithm>

#include "screens/number_text.h"
#include "tables/formulas.h"

namespace riders::choosing {
namespace {

// "22.5°", "85,5 lpi": the number before the unit; nothing where there is none.
std::optional<double> numberIn(const std::string &text)
{
    return screens::numberFromText(text.substr(0, text.find_first_not_of("0123456789.,")));
}

// A popup cuts what is too long for it.
bool isName(const std::string &shown, const std::string &name)
{
    constexpr std::string_view ellipsis = "…";
    if (!shown.ends_with(ellipsis))
        return shown == name;
    return name.starts_with(shown.substr(0, shown.size() - ellipsis.size()));
}

}  // namespace

ChosenScreen screenOf(const ShownChoice &shown, const std::string &ownShape, const std::vector<KnownFile> &files)
{
    using Kind = ChosenScreen::Shape;
    ChosenScreen screen{numberIn(shown.frequency), numberIn(shown.angle), Kind::printers, shown.shape, {}};
    if (!shown.imported && shown.shape == ownShape)
        return screen;
    if (!shown.imported) {
        screen.kind = tables::builtInShape(shown.shape) ? Kind::builtIn : Kind::unknown;
        return screen;
    }
    const auto found = std::find_if(files.rbegin(), files.rend(),
                                    [&](const KnownFile &file) { return isName(shown.shape, file.name); });
    screen.kind = found == files.rend() ? Kind::unknown : Kind::file;
    if (found != files.rend())
        screen.file = found->path;
    return screen;
}

}  // namespace riders::choosing
