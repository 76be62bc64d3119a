#include "desktop/clipboard.h"

#include <SDL.h>

#include "toolbox/host/utf8.h"

namespace toolbox::desktop {
namespace {

constexpr std::size_t mostBytes = 1 << 20;

std::size_t hashOf(const std::string &text)
{
    return std::hash<std::string>()(text);
}

}  // namespace

std::string tidied(std::string text)
{
    if (text.size() > mostBytes)
        text.resize(beginningOfCharacter(text, mostBytes));
    std::string lines;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r')
            lines += text[i];
        else if (i + 1 == text.size() || text[i + 1] != '\n')
            lines += '\n';
    }
    return lines;
}

std::string Clipboard::look()
{
    char *there = SDL_GetClipboardText();
    std::string text = there ? there : "";
    SDL_free(there);
    if (const std::size_t hash = hashOf(text); hash != seen_) {
        seen_ = hash;
        ++serial_;
    }
    return text;
}

std::string Clipboard::text()
{
    return tidied(look());
}

void Clipboard::setText(const std::string &text)
{
    SDL_SetClipboardText(text.c_str());
    seen_ = hashOf(text);
}

std::uint32_t Clipboard::serial()
{
    look();
    return serial_;
}

}  // namespace toolbox::desktop
