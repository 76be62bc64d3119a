// A separate host for the plug-in, as small as one can be: it starts the
// Toolbox on the machine that needs no display, loads the plug-in, registers
// its menu commands and runs one, with a script in place of the person.
//
//     example_host RIDERS.SO NEW-FILE
//
// docs/another-host.md explains it.
#include <dlfcn.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "riders/plugin.h"
#include "toolbox/files.h"
#include "toolbox/host/folders.h"
#include "toolbox/host/headless.h"
#include "toolbox/host/session.h"
#include "toolbox/host/text.h"
#include "toolbox/host/user.h"
#include "toolbox/resources.h"

namespace {

namespace fs = std::filesystem;

// Static, and so below 4 GiB in a program linked at a fixed address.
MessageBlock block;
HostProcs procs;

int32_t addMenuItem(ConstStr255Param group, ConstStr255Param text, int32_t number)
{
    std::printf("command %d: %s, %s\n", static_cast<int>(number), toolbox::utf8FromPascal(group).c_str(),
                toolbox::utf8FromPascal(text).c_str());
    return 0;
}

// Nothing is common to all dialogs of this host, so it handles no event here.
Boolean standardFilter(DialogPtr, EventRecord *, int16_t *)
{
    return false;
}

// The plug-in's one exported name. The Toolbox calls that it leaves open are
// found in this program, which exports them.
MainEntryProc loadPlugin(const fs::path &sharedObject)
{
    void *library = dlopen(sharedObject.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library)
        throw std::runtime_error(dlerror());
    auto entry = reinterpret_cast<MainEntryProc>(dlsym(library, "main_entry"));
    if (!entry)
        throw std::runtime_error(sharedObject.string() + " has no main_entry");
    return entry;
}

// The File Manager knows the fork, ._riders.so on the disk, by the name of the
// file that it belongs to.
int16_t openResourceFork(const fs::path &sharedObject)
{
    auto folder = toolbox::folders::workingDirectory(sharedObject.parent_path());
    Str255 name;
    toolbox::setPascal(name,
                       toolbox::folders::macName(sharedObject.parent_path(), sharedObject.filename().string()));
    int16_t fork = folder ? HOpenResFile(*folder, 0, name, fsRdPerm) : -1;
    if (fork == -1)
        throw std::runtime_error("the resource fork of " + sharedObject.string() + " cannot be opened");
    return fork;
}

int32_t call(MainEntryProc entry, int16_t fork, int selector, int command = 0)
{
    UseResFile(fork);
    block.hostProcs.set(&procs);
    block.selector = static_cast<int16_t>(selector);
    block.command = static_cast<int16_t>(command);
    return entry(&block);
}

// What the person does in the settings dialog and in the save dialog after it.
// Dialogs and their items are numbered in resources/dialogs.res.
void prepareUser(toolbox::ScriptedUser &user, const fs::path &newFile)
{
    enum { settingsDialog = 16300, saveDialog = 16399 };
    enum { make = 1, frequency = 4, angle = 5, spotFunction = 6 };
    user.in(settingsDialog);
    user.choose(frequency, "60 lpi");
    user.choose(angle, "22.5°");
    user.choose(spotFunction, "Round");
    user.press(make);
    user.in(saveDialog);
    user.answerSave(newFile);
}

void runSession(const fs::path &sharedObject, const fs::path &newFile, toolbox::HeadlessMachine &machine)
{
    MainEntryProc entry = loadPlugin(sharedObject);
    int16_t fork = openResourceFork(sharedObject);
    procs.addMenuItem.set(&addMenuItem);
    procs.dialogFilter.set(&standardFilter);
    if (call(entry, fork, kSelectIdentify) != kRidersInterface)
        throw std::runtime_error(sharedObject.string() + " has another interface");
    if (call(entry, fork, kSelectStartUp) != 0)
        throw std::runtime_error("the plug-in could not register its commands");
    toolbox::ScriptedUser user(machine);
    prepareUser(user, newFile);
    call(entry, fork, kSelectCommand, kCommandSettings);
    std::printf("made %s, %ju bytes\n", newFile.filename().c_str(),
                static_cast<uintmax_t>(fs::file_size(newFile)));
    CloseResFile(fork);
    std::printf("left behind: %s\n", toolbox::leftBehind().text().c_str());
}

}  // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "example_host RIDERS.SO NEW-FILE\n");
        return 2;
    }
    const fs::path sharedObject = fs::absolute(argv[1]), newFile = fs::absolute(argv[2]);
    toolbox::Configuration configuration;
    configuration.preferencesFolder = newFile.parent_path() / "settings";
    toolbox::HeadlessMachine machine;
    int status = 1;
    try {
        toolbox::start(configuration, machine);
        runSession(sharedObject, newFile, machine);
        status = 0;
    } catch (const toolbox::ProcessEnded &) {
        std::fprintf(stderr, "the plug-in ended the process\n");
    } catch (const toolbox::ScriptError &error) {
        std::fprintf(stderr, "the script failed: %s\n", error.message.c_str());
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    toolbox::stop();
    return status;
}
