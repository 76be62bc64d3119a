// Any bytes as a riders file that is shown: what is read of it, written again, is read as the same; and as a job:
// the riders files that are found lie in it one after the other.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "fuzz/memory_file.h"
#include "reading/choices_in.h"
#include "reading/riders_in_job.h"
#include "reading/written_in.h"

namespace {

namespace reading = riders::reading;

void readAsRiders(std::string_view bytes)
{
    const reading::Choices choices = reading::choicesIn(bytes);
    const std::string again = ridersOf(reading::writtenIn(bytes));
    if (choices.exact && again != ridersOf(reading::writtenIn(again)))
        abort();
}

void readAsJob(const std::string &file, std::size_t size)
{
    const riders::io::OpenFile job = riders::io::openInput(file);
    std::uint64_t end = 0, line = 0;
    for (const reading::RidersInJob &found : reading::ridersInJob(job, {})) {
        if (found.offset < end || found.line < line || found.offset + found.riders.size() > size)
            abort();
        end = found.offset + found.riders.size();
        line = found.line;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    readAsRiders({reinterpret_cast<const char *>(data), size});
    readAsJob(memoryFile(data, size), size);
    return 0;
}
