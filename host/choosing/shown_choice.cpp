#include "choosing/shown_choice.h"

#include "toolbox/host/drawn_text.h"
#include "toolbox/host/text.h"
#include "toolbox/menus.h"

namespace riders::choosing {
namespace {

// In the settings dialog, and the menus of its popups.
enum : int16_t { kFirstPopup = 4, kShapeMenu = 16138, kNoMark = 0 };

}  // namespace

std::string printersOwnShape()
{
    MenuHandle menu = GetMHandle(kShapeMenu);
    if (!menu)
        return {};
    Str255 text;
    GetItem(menu, 1, text);
    std::string words = toolbox::utf8FromPascal(text);
    return words.substr(0, words.find_last_not_of(' ') + 1);
}

ChoiceReader::ChoiceReader(DialogPtr dialog) : dialog_(dialog), boxes_()
{
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
        int16_t type = 0;
        Handle item = nullptr;
        GetDItem(dialog, static_cast<int16_t>(kFirstPopup + i), &type, &item, &boxes_[i]);
    }
    toolbox::setDrawnTextProc([this](GrafPtr port, Point pen, const std::string &text) { read(port, pen, text); });
}

ChoiceReader::~ChoiceReader()
{
    toolbox::setDrawnTextProc({});
}

ShownChoice ChoiceReader::shown() const
{
    ShownChoice shown = shown_;
    if (MenuHandle menu = GetMHandle(kShapeMenu)) {
        int16_t mark = 0;
        GetItemMark(menu, CountMItems(menu), &mark);
        shown.imported = mark != kNoMark;
    }
    return shown;
}

void ChoiceReader::read(GrafPtr port, Point pen, const std::string &text)
{
    if (port != dialog_ || text.empty())
        return;
    const std::array<std::string *, 3> texts = {&shown_.frequency, &shown_.angle, &shown_.shape};
    for (std::size_t i = 0; i < boxes_.size(); ++i)
        if (const Rect &box = boxes_[i];
            pen.h >= box.left && pen.h < box.right && pen.v >= box.top && pen.v < box.bottom)
            *texts[i] = toolbox::utf8FromRoman(text);
}

}  // namespace riders::choosing
