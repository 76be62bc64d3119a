#include "plugin/plugin.h"

#include <dlfcn.h>

#include <new>

#include "plugin/dialog_filter.h"
#include "toolbox/host/text.h"
#include "toolbox/host/trace.h"
#include "toolbox/menus.h"
#include "toolbox/resources.h"

namespace riders::plugin {
namespace {

// Static, so that they lie below 4 GiB in a program linked at a fixed address.
MessageBlock block;
HostProcs procs;
std::vector<MenuCommand> registered;

int32_t addMenuItem(ConstStr255Param group, ConstStr255Param text, int32_t number)
{
    registered.push_back({toolbox::utf8FromPascal(group), toolbox::utf8FromPascal(text), number});
    toolbox::trace::line("menu command %d %s %s", static_cast<int>(number), toolbox::trace::quoted(group).c_str(),
                         toolbox::trace::quoted(text).c_str());
    return 0;
}

}  // namespace

Plugin::Plugin(const std::filesystem::path &sharedObject)
    : library_(dlopen(sharedObject.c_str(), RTLD_NOW | RTLD_LOCAL))
{
    if (!library_)
        throw PluginError(std::string("the plug-in cannot be loaded: ") + dlerror());
    entry_ = reinterpret_cast<MainEntryProc>(dlsym(library_, "main_entry"));
    if (!entry_)
        throw PluginError(sharedObject.string() + " is not a riders plug-in: it has no main_entry");
    fork_.emplace(sharedObject);
    registered.clear();
    procs.addMenuItem.set(&addMenuItem);
    procs.dialogFilter.set(&standardDialogFilter);
    block.hostProcs.set(&procs);
    std::int32_t interface = call(kSelectIdentify);
    if (interface != kRidersInterface)
        throw PluginError(sharedObject.string() + " speaks another version of the interface");
}

// The library stays loaded: a session that ended by an exception may still
// hold addresses of its procedures until the Toolbox is stopped.
Plugin::~Plugin() = default;

void Plugin::startUp()
{
    if (call(kSelectStartUp) != 0)
        throw PluginError("the plug-in could not register its menu commands");
}

const std::vector<MenuCommand> &Plugin::commands() const
{
    return registered;
}

std::string Plugin::settingsFileName() const
{
    enum { settingsTexts = 16131, fileName = 1 };
    Str255 name;
    UseResFile(fork_->number());
    GetIndString(name, settingsTexts, fileName);
    // Under an empty name the user's choices would go nowhere.
    if (ResError() == memFullErr)
        throw std::bad_alloc();
    return toolbox::utf8FromPascal(name);
}

std::vector<std::string> Plugin::menuItems(std::int16_t menu) const
{
    std::vector<std::string> items;
    UseResFile(fork_->number());
    const MenuHandle handle = GetMenu(menu);
    for (std::int16_t i = 1; handle && i <= CountMItems(handle); ++i) {
        Str255 text;
        GetItem(handle, i, text);
        items.push_back(toolbox::utf8FromPascal(text));
    }
    if (handle)
        ReleaseResource(reinterpret_cast<Handle>(handle));
    return items;
}

std::int32_t Plugin::call(int selector, int command)
{
    UseResFile(fork_->number());
    block.selector = static_cast<std::int16_t>(selector);
    block.command = static_cast<std::int16_t>(command);
    std::int32_t result = entry_(&block);
    toolbox::trace::line("entry %d/%d -> %d", selector, command, static_cast<int>(result));
    return result;
}

std::filesystem::path programFile()
{
    return std::filesystem::read_symlink("/proc/self/exe");
}

std::filesystem::path pluginBesideProgram()
{
    return programFile().parent_path() / "riders.so";
}

}  // namespace riders::plugin
