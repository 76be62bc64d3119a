#include "dialogs/undo.h"

#include <utility>

#include "dialogs/edit_field.h"
#include "toolbox/memory.h"

namespace toolbox::dialogs {
namespace {

// Without the lock of a handle: nothing moves while the characters are copied.
EarlierText currentText(const Dialog &dialog)
{
    const TERec &text = **dialog.record->textH;
    const Handle characters = text.hText;
    return {dialog.record->editField + 1,
            std::string(*characters, static_cast<std::size_t>(GetHandleSize(characters))), text.selStart,
            text.selEnd};
}

}  // namespace

void keepForUndo(Dialog &dialog, Change change)
{
    const bool goesOn = change == Change::typing && dialog.typing && dialog.earlier &&
                        dialog.earlier->item == dialog.record->editField + 1;
    if (!goesOn)
        dialog.earlier = currentText(dialog);
    dialog.typing = change == Change::typing;
}

void endTyping(Dialog &dialog)
{
    dialog.typing = false;
}

void undo(Dialog &dialog)
{
    if (!dialog.earlier || dialog.earlier->item != dialog.record->editField + 1)
        return;
    const EarlierText earlier = std::exchange(*dialog.earlier, currentText(dialog));
    dialog.typing = false;
    TEHandle text = dialog.record->textH;
    TESetText(earlier.characters.data(), static_cast<std::int32_t>(earlier.characters.size()), text);
    TESetSelect(earlier.start, earlier.end, text);
    drawEditItem(dialog, earlier.item);
}

}  // namespace toolbox::dialogs
