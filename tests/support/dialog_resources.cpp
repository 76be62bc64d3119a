#include "support/dialog_resources.h"

#include <cstring>
#include <stdexcept>

#include "support/toolbox_test.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"

ResourceBytes &ResourceBytes::byte(int value)
{
    bytes_ += static_cast<char>(value);
    return *this;
}

ResourceBytes &ResourceBytes::word(int value)
{
    return byte(value >> 8).byte(value);
}

ResourceBytes &ResourceBytes::longWord(long value)
{
    return word(static_cast<int>(value >> 16)).word(static_cast<int>(value));
}

ResourceBytes &ResourceBytes::rect(int left, int top, int width, int height)
{
    return word(top).word(left).word(top + height).word(left + width);
}

ResourceBytes &ResourceBytes::pascal(const std::string &text)
{
    byte(static_cast<int>(text.size()));
    bytes_ += text;
    return *this;
}

ResourceBytes &ResourceBytes::evenly()
{
    if (bytes_.size() % 2)
        byte(0);
    return *this;
}

void ResourceBytes::add(ResType type, int id) const
{
    Handle data = nullptr;
    if (PtrToHand(bytes_.data(), &data, static_cast<Size>(bytes_.size())) != noErr)
        throw std::runtime_error("no room for a resource");
    AddResource(data, type, static_cast<int16_t>(id), P(""));
    WriteResource(data);
    SetResAttrs(data, resPurgeable);
    HPurge(data);
}

ItemList &ItemList::item(int type, int left, int top, int width, int height, const std::string &data)
{
    items_.longWord(0).rect(left, top, width, height).byte(type).pascal(data).evenly();
    ++count_;
    return *this;
}

void ItemList::add(int id) const
{
    ResourceBytes all;
    all.word(count_ - 1);
    for (char byte : items_.bytes())
        all.byte(byte);
    all.add('DITL', id);
}

void addDialog(int id, int left, int top, int width, int height, bool visible, int procID)
{
    ResourceBytes all;
    all.rect(left, top, width, height).word(procID).byte(visible).byte(0).byte(0).byte(0);
    all.longWord(0).word(id).pascal("Untitled").evenly().add('DLOG', id);
}

void addAlert(int id, int left, int top, int width, int height, int stages)
{
    ResourceBytes().rect(left, top, width, height).word(id).word(stages).add('ALRT', id);
}

int16_t openNewResourceFile(const std::string &folder)
{
    auto number = toolbox::folders::workingDirectory(folder);
    if (!number)
        throw std::runtime_error("no such folder: " + folder);
    HCreateResFile(*number, 0, P("resources"));
    return HOpenResFile(*number, 0, P("resources"), 3);
}

void runUntil(DialogPtr dialog, int item)
{
    int16_t hit = 0;
    while (hit != item)
        ModalDialog(nullptr, &hit);
    DisposDialog(dialog);
}
