// Any words after a step's verb: taken one by one as what steps take, or refused.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "play/arguments.h"
#include "play/script.h"
#include "toolbox/host/user.h"

namespace {

// Takes what there is, in an order that the first word's length decides.
void take(const riders::play::ScriptLine &line)
{
    riders::play::Arguments words(line);
    for (size_t kind = line.words[0].size(); words.more(); ++kind)
        switch (kind % 5) {
        case 0:
            if (const int number = words.number("a number", -5, 70000); number < -5 || number > 70000)
                abort();
            break;
        case 1:
            if (words.pointFollows())
                words.point();
            else
                words.word("a word");
            break;
        case 2:
            if (words.numberFollows() && words.ordinal("an ordinal") < 1)
                abort();
            break;
        case 3:
            words.modifiers();
            break;
        default:
            if (!words.take("at"))
                words.word("a word");
        }
    words.end();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    try {
        for (const riders::play::ScriptLine &line :
             riders::play::splitScript(std::string(reinterpret_cast<const char *>(data), size))) {
            try {
                take(line);
            } catch (const toolbox::ScriptError &error) {
                if (error.line != line.number || error.message.empty())
                    abort();
            }
        }
    } catch (const toolbox::ScriptError &) {
    }
    return 0;
}
