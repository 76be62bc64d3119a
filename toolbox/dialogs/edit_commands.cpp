// Cut, Copy, Paste, Clear, Undo and Select All on a dialog's text, and their keys.
#include "dialogs/dialog_list.h"
#include "dialogs/undo.h"
#include "textedit/scrap.h"
#include "toolbox/scrap.h"

#include <cstdint>

using namespace toolbox;
using namespace toolbox::dialogs;

static TEHandle editedText(DialogPtr dialog)
{
    Dialog *found = find(dialog);
    return found && found->record->editField >= 0 ? found->record->textH : nullptr;
}

// The text, which is about to be changed.
static TEHandle changedText(DialogPtr dialog)
{
    TEHandle text = editedText(dialog);
    if (text)
        keepForUndo(*find(dialog), Change::other);
    return text;
}

void DlgCut(DialogPtr dialog)
{
    if (TEHandle text = changedText(dialog))
        TECut(text);
}

void DlgCopy(DialogPtr dialog)
{
    if (TEHandle text = editedText(dialog))
        TECopy(text);
}

void DlgPaste(DialogPtr dialog)
{
    TEHandle text = changedText(dialog);
    if (!text)
        return;
    textedit::bringInNewerDeskScrap();
    TEPaste(text);
}

void DlgDelete(DialogPtr dialog)
{
    if (TEHandle text = changedText(dialog))
        TEDelete(text);
}

Boolean DlgCommandKey(DialogPtr dialog, int16_t character)
{
    if (!editedText(dialog))
        return false;
    switch (character) {
    case 'x':
    case 'X':
        DlgCut(dialog);
        break;
    case 'c':
    case 'C':
        DlgCopy(dialog);
        break;
    case 'v':
    case 'V':
        DlgPaste(dialog);
        return true;
    case 'a':
    case 'A':
        TESetSelect(0, INT16_MAX, editedText(dialog));
        endTyping(*find(dialog));
        return true;
    case 'z':
    case 'Z':
        undo(*find(dialog));
        return true;
    default:
        return false;
    }
    ZeroScrap();
    TEToScrap();
    return true;
}
