#include "toolbox/host/dialog_text.h"

#include "dialogs/dialog_list.h"
#include "dialogs/parameters.h"
#include "toolbox/host/text.h"

namespace toolbox {
namespace {

std::string staticText(const dialogs::Item &item)
{
    Str255 text;
    GetIText(item.handle, text);
    return dialogs::substituted(pascalView(text));
}

// A run of blanks and line ends becomes one blank.
std::string onOneLine(const std::string &text)
{
    std::string line;
    for (char character : text) {
        bool blank = character == ' ' || character == '\r' || character == '\n';
        if (!blank)
            line += character;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

}  // namespace

std::string frontDialogText()
{
    dialogs::Dialog *dialog = dialogs::find(FrontWindow());
    if (!dialog)
        return {};
    std::string all;
    for (const dialogs::Item &item : dialog->items)
        if (item.kind() == statText)
            all += staticText(item) + " ";
    return utf8FromRoman(onOneLine(all));
}

}  // namespace toolbox
