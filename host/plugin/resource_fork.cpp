#include "plugin/resource_fork.h"

#include "toolbox/host/folders.h"
#include "toolbox/host/text.h"
#include "toolbox/resources.h"

namespace riders::plugin {
namespace {

std::int16_t openForkOf(const std::filesystem::path &file)
{
    auto folder = toolbox::folders::workingDirectory(file.parent_path());
    if (!folder)
        throw PluginError("there is no folder " + file.parent_path().string());
    Str255 name;
    toolbox::setPascal(name, toolbox::folders::macName(file.parent_path(), file.filename().string()), 63);
    std::int16_t fork = HOpenResFile(*folder, 0, name, 1);
    if (fork == -1)
        throw PluginError("the resources of " + file.string() + " cannot be opened (error " +
                          std::to_string(ResError()) + "); they belong in ._" + file.filename().string() +
                          " beside it");
    return fork;
}

}  // namespace

ResourceFork::ResourceFork(const std::filesystem::path &file)
    : number_(openForkOf(std::filesystem::absolute(file)))
{
}

ResourceFork::~ResourceFork()
{
    CloseResFile(number_);
}

}  // namespace riders::plugin
