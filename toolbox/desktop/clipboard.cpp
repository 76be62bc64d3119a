#include "desktop/clipboard.h"

#include <SDL.h>

namespace toolbox::desktop {
namespace {

constexpr std::size_t mostBytes = 1 << 20;

std::string desktopText()
{
    char *text = SDL_GetClipboardText();
    std::string copy = text ? text : "";
    SDL_free(text);
    return copy;
}

}  // namespace

std::string tidied(std::string text)
{
    if (text.size() > mostBytes) {
        std::size_t end = mostBytes;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
            --end;
        text.resize(end);
    }
    std::string lines;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r')
            lines += text[i];
        else if (i + 1 == text.size() || text[i + 1] != '\n')
            lines += '\n';
    }
    return lines;
}

std::string Clipboard::text() const
{
    return tidied(desktopText());
}

void Clipboard::setText(const std::string &text)
{
    ours_ = text;
    SDL_SetClipboardText(text.c_str());
}

// The news comes for our own texts too, and later than we may have put another.
bool Clipboard::changed()
{
    if (ours_ && desktopText() == *ours_)
        return false;
    ours_.reset();
    ++serial_;
    return true;
}

}  // namespace toolbox::desktop
