// The desk scrap, kept in one relocatable block: for each entry its type, its
// length and the data padded to an even length, the numbers big-endian.
#include "toolbox/scrap.h"

#include <string.h>

#include <algorithm>
#include <new>
#include <optional>
#include <string>

#include "session/managers.h"
#include "toolbox/bigendian.h"
#include "toolbox/host/session.h"
#include "toolbox/host/text.h"
#include "toolbox/memory.h"

namespace toolbox {
namespace {

struct EntryHeader {
    BigUInt32 type;
    BigInt32 length;
};
static_assert(sizeof(EntryHeader) == 8);

constexpr std::int32_t headerSize = sizeof(EntryHeader);

std::int32_t padded(std::int32_t length)
{
    return length + (length & 1);
}

struct Scrap {
    ScrapStuff stuff{};
    Str255 name{};
    std::optional<std::uint32_t> seenSerial;   // of the machine's clipboard
};

Scrap scrap;

void empty()
{
    SetHandleSize(scrap.stuff.scrapHandle, 0);
    scrap.stuff.scrapSize = 0;
    scrap.stuff.scrapCount = static_cast<std::int16_t>(static_cast<std::uint16_t>(scrap.stuff.scrapCount) + 1);
}

OSErr append(OSType type, const char *data, std::int32_t length)
{
    std::int32_t at = scrap.stuff.scrapSize;
    std::int32_t size = headerSize + padded(length);
    SetHandleSize(scrap.stuff.scrapHandle, at + size);
    if (MemError() != noErr)
        return MemError();
    EntryHeader header{type, length};
    char *entry = *scrap.stuff.scrapHandle + at;
    memcpy(entry, &header, headerSize);
    if (length > 0)
        memcpy(entry + headerSize, data, static_cast<std::size_t>(length));
    if (length & 1)
        entry[headerSize + length] = 0;
    scrap.stuff.scrapSize = at + size;
    return noErr;
}

std::string macText(const std::string &clipboard)
{
    std::string text = romanFromUtf8Lossy(clipboard);
    std::string lines;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            continue;
        lines += text[i] == '\n' ? '\r' : text[i];
    }
    return lines;
}

std::string clipboardText(const char *data, std::int32_t length)
{
    std::string text = utf8FromRoman({data, static_cast<std::size_t>(length)});
    std::replace(text.begin(), text.end(), '\r', '\n');
    return text;
}

// Copies what another program put on the clipboard into the scrap.
void bringIn()
{
    std::uint32_t serial = machine().clipboardSerial();
    if (scrap.seenSerial == serial)
        return;
    scrap.seenSerial = serial;
    std::string text = macText(machine().clipboardText());
    empty();
    if (!text.empty() && append('TEXT', text.data(), static_cast<std::int32_t>(text.size())) != noErr)
        scrap.seenSerial.reset();  // there may be room for it the next time
}

struct Entry {
    std::int32_t offset;   // of its data
    std::int32_t length;
};

std::optional<Entry> find(OSType type)
{
    for (std::int32_t at = 0; at < scrap.stuff.scrapSize;) {
        EntryHeader header;
        memcpy(&header, *scrap.stuff.scrapHandle + at, headerSize);
        if (header.type == type)
            return Entry{at + headerSize, header.length};
        at += headerSize + padded(header.length);
    }
    return std::nullopt;
}

}  // namespace

void managers::startScrap(const Configuration &)
{
    scrap = Scrap{};
    scrap.stuff.scrapHandle = NewHandle(0);
    if (!scrap.stuff.scrapHandle)
        throw std::bad_alloc();
    scrap.stuff.scrapState = 1;
    setPascal(scrap.name, "Clipboard");
    scrap.stuff.scrapName = scrap.name;
}

void managers::stopScrap()
{
    if (scrap.stuff.scrapHandle)
        DisposeHandle(scrap.stuff.scrapHandle);
    scrap.stuff.scrapHandle = nullptr;
}

}  // namespace toolbox

using namespace toolbox;

extern "C" {

PScrapStuff InfoScrap(void)
{
    bringIn();
    return &scrap.stuff;
}

int32_t ZeroScrap(void)
{
    scrap.seenSerial = machine().clipboardSerial();
    empty();
    machine().setClipboardText("");
    return noErr;
}

int32_t PutScrap(int32_t length, ResType type, const void *source)
{
    if (length < 0 || (length > 0 && !source))
        return paramErr;
    if (length > configuration().heapBytes)
        return memFullErr;
    bringIn();
    bool shadowed = find(type).has_value();
    const char *data = static_cast<const char *>(source);
    OSErr error = append(type, data, length);
    if (error == noErr && type == 'TEXT' && !shadowed)
        machine().setClipboardText(clipboardText(data, length));
    return error;
}

int32_t GetScrap(Handle destination, ResType type, int32_t *offset)
{
    bringIn();
    std::optional<Entry> entry = find(type);
    if (!entry)
        return noTypeErr;
    if (offset)
        *offset = entry->offset;
    if (!destination)
        return entry->length;
    SetHandleSize(destination, entry->length);
    if (MemError() != noErr)
        return MemError();
    memcpy(*destination, *scrap.stuff.scrapHandle + entry->offset, static_cast<std::size_t>(entry->length));
    return entry->length;
}

}  // extern "C"
