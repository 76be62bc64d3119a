#include "toolbox/host/trace.h"

#include <cstdarg>
#include <cstdio>
#include <utility>

#include "toolbox/host/text.h"

namespace toolbox::trace {
namespace {

Sink sessionSink;
Sink drawingSink;

std::string formatted(const char *format, va_list arguments)
{
    va_list again;
    va_copy(again, arguments);
    int length = vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (length < 0)
        return format;
    std::string text(static_cast<std::size_t>(length), '\0');
    vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

std::string escaped(char c)
{
    switch (c) {
    case '\r':
        return "\\r";
    case '\n':
        return "\\n";
    case '"':
        return "\\\"";
    case '\\':
        return "\\\\";
    }
    auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20)
        return std::string(1, c);
    char hex[5];
    snprintf(hex, sizeof hex, "\\x%02X", byte);
    return hex;
}

}  // namespace

void setSink(Sink sink)
{
    sessionSink = std::move(sink);
}

void setDrawingSink(Sink sink)
{
    drawingSink = std::move(sink);
}

bool drawingWanted()
{
    return static_cast<bool>(drawingSink);
}

void line(const char *format, ...)
{
    if (!sessionSink)
        return;
    va_list arguments;
    va_start(arguments, format);
    std::string text = formatted(format, arguments);
    va_end(arguments);
    sessionSink(text);
}

void drawing(const char *format, ...)
{
    if (!drawingSink)
        return;
    va_list arguments;
    va_start(arguments, format);
    std::string text = formatted(format, arguments);
    va_end(arguments);
    drawingSink(text);
}

std::string quoted(const unsigned char *pascalString)
{
    return quoted(utf8FromPascal(pascalString));
}

std::string quoted(const std::string &utf8)
{
    std::string text = "\"";
    for (char c : utf8)
        text += escaped(c);
    return text + '"';
}

Sink into(std::vector<std::string> &lines)
{
    return [&lines](const std::string &line) { lines.push_back(line); };
}

}  // namespace toolbox::trace
