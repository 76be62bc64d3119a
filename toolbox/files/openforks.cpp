#include "files/openforks.h"

#include <sys/stat.h>

#include <algorithm>
#include <utility>

namespace fs = std::filesystem;

namespace toolbox::files {
namespace {

std::vector<OpenFork *> openForks;

// A companion may exist without its file: then the paths decide.
bool sameFile(const fs::path &one, const fs::path &other)
{
    struct stat a, b;
    if (stat(one.c_str(), &a) != 0 || stat(other.c_str(), &b) != 0)
        return one == other;
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace

OpenFork::OpenFork(ForkAddress address) : address_(std::move(address))
{
    openForks.push_back(this);
}

OpenFork::~OpenFork()
{
    std::erase(openForks, this);
}

bool OpenFork::isAt(const ForkAddress &other) const
{
    fs::path file;
    return locateFork(other, file) == noErr && isOf(file);
}

bool OpenFork::isOf(const fs::path &file) const
{
    fs::path own;
    return locateFork(address_, own) == noErr && sameFile(own, file);
}

std::vector<OpenFork *> openForksOf(const fs::path &file)
{
    std::vector<OpenFork *> found;
    std::copy_if(openForks.begin(), openForks.end(), std::back_inserter(found),
                 [&](const OpenFork *fork) { return fork->isOf(file); });
    return found;
}

}  // namespace toolbox::files
