// Any text as options of the user's: refused with the place, or names and values of which none is longer than the
// text.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "commands/preset_lines.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    try {
        for (const riders::commands::Preset &preset : riders::commands::presetsInText(text, "conf"))
            if (!preset.from.starts_with("conf:") || !preset.option.starts_with('-') ||
                preset.value.value_or("").size() > size)
                abort();
    } catch (const riders::commands::WrongPreset &wrong) {
        if (!wrong.message.starts_with("conf:"))
            abort();
    }
    try {
        std::size_t letters = 0;
        for (const std::string &word : riders::commands::quotedWords(text, "words"))
            letters += word.size();
        if (letters > size)
            abort();
    } catch (const riders::commands::WrongPreset &) {
    }
    return 0;
}
