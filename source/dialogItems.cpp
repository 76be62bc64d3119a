#include "source/dialogItems.h"

#include "source/environment.h"
#include "toolbox/keys.h"
#include "toolbox/scrap.h"
#include "toolbox/system.h"

// --- Items ------------------------------------------------------------------

struct DialogItem {
    int16_t type;
    Handle handle;
    Rect box;
};

static DialogItem ItemOf(DialogPtr dialog, int16_t number)
{
    DialogItem item = {};
    GetDItem(dialog, number, &item.type, &item.handle, &item.box);
    return item;
}

void InstallUserProc(DialogPtr dialog, int16_t number, UserItemProcPtr proc)
{
    DialogItem item = ItemOf(dialog, number);
    SetDItem(dialog, number, item.type, reinterpret_cast<Handle>(proc), &item.box);
}

Rect ItemBox(DialogPtr dialog, int16_t number)
{
    return ItemOf(dialog, number).box;
}

void GetItemText(DialogPtr dialog, int16_t number, Str255 text)
{
    GetIText(ItemOf(dialog, number).handle, text);
}

void SetItemText(DialogPtr dialog, int16_t number, ConstStr255Param text)
{
    SetIText(ItemOf(dialog, number).handle, text);
}

void SelectItemText(DialogPtr dialog, int16_t number)
{
    SelIText(dialog, number, 0, 32767);
}

int16_t LengthLessSelection(DialogPtr dialog, int16_t number)
{
    Str255 text;
    GetItemText(dialog, number, text);
    TEHandle field = reinterpret_cast<DialogPeek>(dialog)->textH;
    return text[0] - ((*field)->selEnd - (*field)->selStart);
}

// --- Keys -------------------------------------------------------------------

Boolean IsDigit(int16_t key)
{
    return key >= '0' && key <= '9';
}

Boolean IsEditingKey(int16_t key)
{
    return key == toolbox::key::backspace || (key >= toolbox::key::leftArrow && key <= toolbox::key::downArrow);
}

Boolean RefuseKey()
{
    SysBeep(1);
    return true;
}

static Boolean Fits(int32_t length, int16_t used, int16_t limit)
{
    return length < limit && used + length < limit;
}

static Boolean IsLetter(int16_t key, char lower)
{
    return key == lower || key == lower - 'a' + 'A';
}

static KeyFate PasteItself(DialogPtr dialog, int16_t used, int16_t limit)
{
    int32_t offset;
    int32_t length = GetScrap(nullptr, 'TEXT', &offset);
    if (length < 0)
        return kKeyTaken;
    if (!Fits(length, used, limit))
        return kPasteRefused;
    DlgPaste(dialog);
    return kKeyTaken;
}

static KeyFate EarlyCommandKey(DialogPtr dialog, int16_t key, int16_t used, int16_t limit)
{
    if (IsLetter(key, 'v'))
        return PasteItself(dialog, used, limit);
    if (IsLetter(key, 'x'))
        DlgCut(dialog);
    else if (IsLetter(key, 'c'))
        DlgCopy(dialog);
    else {
        RefuseKey();
        return kKeyTaken;
    }
    ZeroScrap();
    TEToScrap();
    return kKeyTaken;
}

KeyFate CommandKey(DialogPtr dialog, int16_t key, int16_t used, int16_t limit)
{
    if (gEnvirInfo->sysVersion < 0x0700)
        return EarlyCommandKey(dialog, key, used, limit);
    // The size counts type and length with the text: 8 bytes.
    if (IsLetter(key, 'v') && !Fits(ScrapInfo.scrapSize - 8, used, limit))
        return kPasteRefused;
    return kKeyPassed;
}
