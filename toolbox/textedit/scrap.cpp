#include "textedit/scrap.h"

#include <new>
#include <optional>

#include "memory/locked.h"
#include "textedit/record.h"
#include "toolbox/memory.h"
#include "toolbox/scrap.h"
#include "toolbox/system.h"
#include "toolbox/textedit.h"

namespace toolbox::textedit {
namespace {

Handle scrap;
std::optional<int16_t> deskCountSeen;

// False when memory is short; the scrap is then as it was.
bool copySelection(TEHandle text)
{
    int start = (**text).selStart;
    std::string selected = charactersOf(text).substr(start, (**text).selEnd - start);
    SetHandleSize(scrap, static_cast<Size>(selected.size()));
    if (MemError() != noErr)
        return false;
    BlockMove(selected.data(), *scrap, static_cast<Size>(selected.size()));
    deskCountSeen = InfoScrap()->scrapCount;
    return true;
}

}  // namespace

void startScrap()
{
    scrap = NewHandle(0);
    if (!scrap)
        throw std::bad_alloc();
    deskCountSeen.reset();
}

void stopScrap()
{
    scrap = nullptr;
}

void bringInNewerDeskScrap()
{
    if (deskCountSeen != InfoScrap()->scrapCount)
        TEFromScrap();
}

}  // namespace toolbox::textedit

using namespace toolbox;
using namespace toolbox::textedit;

void TECopy(TEHandle text)
{
    copySelection(text);
}

void TECut(TEHandle text)
{
    if (copySelection(text))
        TEDelete(text);
}

void TEPaste(TEHandle text)
{
    std::string pasted(*scrap, static_cast<size_t>(GetHandleSize(scrap)));
    if (replace(text, (**text).selStart, (**text).selEnd, pasted))
        select(text, (**text).selStart, (**text).selEnd);
    else
        SysBeep(1);
}

OSErr TEToScrap(void)
{
    int32_t result;
    {
        Locked held(scrap);
        result = PutScrap(GetHandleSize(scrap), 'TEXT', *scrap);
    }
    deskCountSeen = InfoScrap()->scrapCount;
    return static_cast<OSErr>(result);
}

OSErr TEFromScrap(void)
{
    int32_t offset = 0;
    deskCountSeen = InfoScrap()->scrapCount;
    int32_t length = GetScrap(nullptr, 'TEXT', &offset);
    if (length < 0)
        return static_cast<OSErr>(length);
    length = GetScrap(scrap, 'TEXT', &offset);
    if (length >= 0)
        return noErr;
    // No room. What was copied here before must not be pasted in its place.
    SetHandleSize(scrap, 0);
    deskCountSeen.reset();
    SysBeep(1);
    return static_cast<OSErr>(length);
}

Handle TEScrapHandle(void)
{
    return scrap;
}

int32_t TEGetScrapLength(void)
{
    return GetHandleSize(scrap);
}
