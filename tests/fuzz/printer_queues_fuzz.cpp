// Queues of the printer as text and as TOML, and records of its jobs: whatever the bytes, they are refused or read.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "io/refusal.h"
#include "printer/jobs/job_record.h"
#include "printer/queues/queue.h"

using namespace riders::printer;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    try {
        queueFromText(text).choices.arguments();
    } catch (const riders::io::Refusal &) {
    }
    try {
        queuesFromToml(text, "queues.toml");
    } catch (const riders::io::Refusal &) {
    }
    try {
        const std::string written = textOf(recordFromText(text));
        if (textOf(recordFromText(written)) != written)
            abort();
    } catch (const riders::io::Refusal &) {
    }
    for (const ChoiceKind &kind : choiceKinds())
        try {
            Choices choices;
            choices.set(kind.name, text, ChosenBy::job);
            choices.over(Choices()).arguments();
        } catch (const riders::io::Refusal &) {
        }
    return 0;
}
