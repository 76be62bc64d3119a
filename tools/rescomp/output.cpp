#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include "compiler.h"
#include "toolbox/host/appledouble.h"
#include "toolbox/host/write_all.h"

namespace rescomp {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void failed(const fs::path &path)
{
    throw std::runtime_error(path.string() + ": " + std::strerror(errno));
}

bool writeNew(const std::string &path, std::string_view bytes)
{
    int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0)
        return false;
    std::size_t written;
    errno = toolbox::writeAll(file, bytes, 0, written);
    bool done = errno == 0 && ::fsync(file) == 0;
    return ::close(file) == 0 && done;
}

}  // namespace

void writeWhole(const fs::path &path, const std::string &bytes)
{
    // Renaming over a device or a folder would destroy it.
    if (fs::exists(path) && !fs::is_regular_file(path))
        throw std::runtime_error(path.string() + ": is not an ordinary file");
    std::string temporary = path.string() + ".new" + std::to_string(::getpid());
    if (writeNew(temporary, bytes) && ::rename(temporary.c_str(), path.c_str()) == 0)
        return;
    int error = errno;
    ::unlink(temporary.c_str());
    errno = error;
    failed(path);
}

std::string appleDoubleAround(const std::string &fork)
{
    toolbox::files::AppleDouble file = toolbox::files::newAppleDouble();
    file.set(toolbox::files::resourceForkEntry, fork);
    return toolbox::files::composeAppleDouble(file);
}

}  // namespace rescomp
