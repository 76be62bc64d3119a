// Any bytes as text: what is converted comes back, and what is shown holds nothing that a terminal obeys.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "io/plain_text.h"
#include "toolbox/host/text.h"
#include "toolbox/host/utf8.h"

namespace {

bool hasControls(const std::string &text)
{
    for (const char c : text)
        if (static_cast<unsigned char>(c) < 32 || c == 127)
            return true;
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char *>(data), size);
    const std::string utf8 = toolbox::utf8FromRoman(bytes);
    if (!toolbox::isUtf8(utf8) || toolbox::romanFromUtf8(utf8) != bytes)
        abort();
    if (const auto roman = toolbox::romanFromUtf8(bytes)) {
        const auto again = toolbox::romanFromUtf8(toolbox::utf8FromRoman(*roman));
        if (again != roman || toolbox::romanFromUtf8Lossy(bytes) != *roman)
            abort();
    }
    const std::string plain = riders::io::plainText(bytes);
    if (!toolbox::isUtf8(plain) || hasControls(plain) || riders::io::plainText(plain) != plain)
        abort();
    std::string lines;
    for (const char c : riders::io::plainLines(bytes))
        if (c != '\n')
            lines += c;
    if (hasControls(lines))
        abort();
    return 0;
}
