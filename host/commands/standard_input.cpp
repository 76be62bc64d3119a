#include "commands/standard_input.h"

#include <unistd.h>

#include "io/bytes.h"
#include "io/output.h"
#include "io/private_folder.h"
#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::commands {
namespace {

fs::path *standardInputIn(std::initializer_list<fs::path *> given)
{
    fs::path *found = nullptr;
    for (fs::path *path : given) {
        if (*path != kStandardFile)
            continue;
        if (found != nullptr)
            throw io::Refusal("only one file can come from standard input");
        found = path;
    }
    return found;
}

// It may be too long for memory.
io::PrivateFolder temporaryFolder()
{
    std::error_code failed;
    const fs::path folder = fs::temp_directory_path(failed);
    if (failed)
        throw io::Refusal("there is no folder for temporary files: " + failed.message());
    return {folder, ".riders-stdin-"};
}

}  // namespace

std::string withStandardInput(std::initializer_list<fs::path *> given, const std::function<std::string()> &run)
{
    fs::path *const path = standardInputIn(given);
    if (path == nullptr)
        return run();
    const io::PrivateFolder folder = temporaryFolder();
    *path = folder.path() / kStandardInputName;
    io::Output copy(*path);
    io::copyRest(io::openInput({}), copy.file());
    copy.finish();
    try {
        return run();
    } catch (const io::Refusal &refusal) {
        std::string words = refusal.message;
        for (std::size_t at; (at = words.find(path->native())) != words.npos;)
            words.replace(at, path->native().size(), "standard input");
        throw io::Refusal(words);
    }
}

fs::path standardFileOr(const fs::path &given)
{
    return given == kStandardFile ? fs::path() : given;
}

}  // namespace riders::commands
