#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include "compiler.h"
#include "toolbox/host/appledouble.h"

namespace rescomp {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void failed(const fs::path &path)
{
    throw std::runtime_error(path.string() + ": " + std::strerror(errno));
}

bool writeAll(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool writeNew(const std::string &path, std::string_view bytes)
{
    int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0)
        return false;
    bool done = writeAll(file, bytes) && ::fsync(file) == 0;
    return ::close(file) == 0 && done;
}

}  // namespace

void writeWhole(const fs::path &path, const std::string &bytes)
{
    // Renaming over a device or a folder would do away with it.
    if (fs::exists(path) && !fs::is_regular_file(path))
        throw std::runtime_error(path.string() + ": is no ordinary file");
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
