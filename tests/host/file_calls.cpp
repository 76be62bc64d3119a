#include "host/file_calls.h"

#include <dlfcn.h>
#include <errno.h>
#include <stdio.h>
#include <unistd.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

bool noting = false;
std::vector<std::string> list;
std::string failing;
int failure = 0, failures = 0;

std::string shortened(const fs::path &path)
{
    const std::string name = path.filename() == "." ? path.parent_path().filename() : path.filename();
    return name.starts_with(".riders-") || name.starts_with("#") ? "~" : name;
}

std::string nameOf(int descriptor)
{
    std::error_code error;
    const std::string path = fs::read_symlink("/proc/self/fd/" + std::to_string(descriptor), error);
    return path.ends_with(" (deleted)") ? "~" : shortened(path);
}

// True where the call is to fail.
bool met(const std::string &name, const std::string &arguments)
{
    if (noting)
        list.push_back(name + " " + arguments);
    if (name != failing || failures == 0)
        return false;
    --failures;
    errno = failure;
    return true;
}

template <class Call>
Call real(Call, const char *name)
{
    return reinterpret_cast<Call>(dlsym(RTLD_NEXT, name));
}

}  // namespace

namespace calls {

void note()
{
    noting = true;
    list.clear();
}

std::vector<std::string> noted()
{
    noting = false;
    return list;
}

void fail(const std::string &name, int error, int times)
{
    failing = name;
    failure = error;
    failures = times;
}

}  // namespace calls

extern "C" {

int fsync(int descriptor)
{
    return met("fsync", nameOf(descriptor)) ? -1 : real(&fsync, "fsync")(descriptor);
}

int rename(const char *from, const char *to) noexcept
{
    return met("rename", shortened(from) + " " + shortened(to)) ? -1 : real(&rename, "rename")(from, to);
}

int renameat2(int fromFolder, const char *from, int toFolder, const char *to, unsigned flags) noexcept
{
    return met("renameat2", shortened(from) + " " + shortened(to))
               ? -1
               : real(&renameat2, "renameat2")(fromFolder, from, toFolder, to, flags);
}
}
