#include "film/forms/read_file.h"

#include <unistd.h>

#include <cerrno>
#include <vector>

#include "io/bytes.h"
#include "io/refusal.h"

namespace riders::film {

void readFrom(const std::filesystem::path &file, std::uint64_t offset,
              const std::function<void(std::string_view)> &take)
{
    const io::OpenFile in = io::openOrdinaryFile(file);
    if (lseek(in.descriptor(), static_cast<off_t>(offset), SEEK_SET) < 0)
        io::refuseErrno(in.name(), errno);
    std::vector<char> buffer(std::size_t(1) << 18);
    while (const std::size_t size = io::readFully(in, buffer.data(), buffer.size()))
        take({buffer.data(), size});
}

}  // namespace riders::film
