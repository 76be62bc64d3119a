#include "film/forms/read_range.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "io/bytes.h"
#include "io/refusal.h"

namespace riders::film {

void readRange(const std::filesystem::path &file, std::uint64_t offset, std::uint64_t count,
               const std::function<void(std::string_view)> &take)
{
    const io::OpenFile in = io::openOrdinaryFile(file);
    if (lseek(in.descriptor(), static_cast<off_t>(offset), SEEK_SET) < 0)
        io::refuseErrno(in.name(), errno);
    std::vector<char> buffer(std::size_t(1) << 18);
    while (count > 0) {
        const std::size_t size = io::readFully(in, buffer.data(), std::min<std::uint64_t>(buffer.size(), count));
        if (size == 0)
            throw io::Refusal(in.name() + ": is shorter than it was");
        take({buffer.data(), size});
        count -= size;
    }
}

}  // namespace riders::film
