#include <algorithm>

#include "files/calls.h"
#include "memory/heap.h"
#include "resources/resourcefile.h"
#include "session/managers.h"
#include "toolbox/host/faults.h"
#include "toolbox/host/resource_fork.h"
#include "toolbox/host/text.h"
#include "toolbox/host/trace.h"
#include "toolbox/resources.h"

namespace toolbox::resources {
namespace {

// Above all the numbers that the File Manager assigns.
constexpr std::int16_t firstRefNum = 0x4000;
constexpr std::int16_t noFile = -1;

struct Open {
    std::vector<std::unique_ptr<ResourceFile>> files;
    ResourceFile *current = nullptr;
    std::int16_t nextRefNum = firstRefNum;
    OSErr lastResult = noErr;
};

Open open;

std::int16_t newRefNum()
{
    std::int16_t refNum;
    do {
        refNum = open.nextRefNum;
        open.nextRefNum = static_cast<std::int16_t>(refNum == INT16_MAX ? firstRefNum : refNum + 1);
    } while (fileNumbered(refNum));
    return refNum;
}

ResourceFile *alreadyOpen(const files::ForkAddress &address)
{
    for (const auto &file : open.files)
        if (!file->readOnly && file->fork.isAt(address))
            return file.get();
    return nullptr;
}

std::unique_ptr<Resource> resourceFrom(const ForkEntry &entry, ResourceFile &file)
{
    auto resource = std::make_unique<Resource>();
    resource->file = &file;
    resource->type = entry.type;
    resource->id = entry.id;
    resource->attributes = static_cast<std::uint8_t>(entry.attributes & ~resChanged);
    resource->name = entry.name;
    resource->stored = entry.data;
    return resource;
}

OSErr read(ResourceFile &file)
{
    if (OSErr error = files::readFork(file.fork.address(), file.bytes))
        return error;
    std::vector<ForkEntry> entries;
    if (OSErr error = parseFork(file.bytes, entries))
        return error;
    for (const ForkEntry &entry : entries)
        insert(file, resourceFrom(entry, file));
    return noErr;
}

void preload(ResourceFile &file)
{
    // One for which there is no room is loaded when it is asked for.
    for (const auto &resource : file.resources)
        if (resource->attributes & resPreload)
            load(*resource);
}

OSErr openFile(const files::ForkAddress &address, bool readOnly, std::int16_t &refNum)
{
    if (OSErr error = faults::check(FileCall::openResFile))
        return error;
    ResourceFile *file = readOnly ? nullptr : alreadyOpen(address);
    if (!file) {
        auto made = std::make_unique<ResourceFile>(address);
        made->readOnly = readOnly;
        if (OSErr error = read(*made))
            return error;
        made->refNum = newRefNum();
        file = open.files.emplace_back(std::move(made)).get();
        preload(*file);
    }
    open.current = file;
    refNum = file->refNum;
    return noErr;
}

OSErr createFork(const files::ForkAddress &address)
{
    if (OSErr error = faults::check(FileCall::createResFile))
        return error;
    std::string bytes;
    OSErr error = files::readFork(address, bytes);
    if (error == noErr && !bytes.empty())
        return dupFNErr;
    if (error != noErr && error != fnfErr)
        return error;
    return files::writeFork(address, *forkBytes({}));
}

OSErr closeFile(ResourceFile &file)
{
    OSErr error = update(file);
    for (const auto &resource : file.resources)
        if (resource->handle)
            heap::free(detach(*resource));
    auto place = std::find_if(open.files.begin(), open.files.end(),
                              [&](const auto &each) { return each.get() == &file; });
    if (open.current == &file) {
        bool isFirst = place == open.files.begin();
        ResourceFile *last = open.files.back().get();
        open.current = !isFirst ? std::prev(place)->get() : last == &file ? nullptr : last;
    }
    open.files.erase(place);
    return error;
}

files::ForkAddress addressOf(std::int16_t vRefNum, std::int32_t dirID, ConstStr255Param name)
{
    return {vRefNum, dirID, std::string(name ? pascalView(name) : std::string_view())};
}

void traceCall(FileCall call, const files::ForkAddress &address, OSErr error)
{
    files::traceCall(call, trace::quoted(utf8FromRoman(address.name)), error);
}

// A changed block is the only copy of the change.
bool mayBePurged(Handle handle)
{
    const Resource *resource = resourceOf(handle);
    return !resource || !(resource->attributes & resChanged);
}

}  // namespace

std::vector<std::unique_ptr<ResourceFile>> &openFiles()
{
    return open.files;
}

ResourceFile *currentFile()
{
    return open.current;
}

ResourceFile *fileNumbered(std::int16_t refNum)
{
    for (const auto &file : open.files)
        if (file->refNum == refNum)
            return file.get();
    return nullptr;
}

OSErr result(OSErr error)
{
    open.lastResult = error;
    return error;
}

}  // namespace toolbox::resources

using namespace toolbox::resources;

int16_t HOpenResFile(int16_t vRefNum, int32_t dirID, ConstStr255Param name, int8_t permission)
{
    toolbox::files::ForkAddress address = addressOf(vRefNum, dirID, name);
    int16_t refNum = noFile;
    result(openFile(address, permission == 1, refNum));
    traceCall(toolbox::FileCall::openResFile, address, ResError());
    return refNum;
}

void HCreateResFile(int16_t vRefNum, int32_t dirID, ConstStr255Param name)
{
    toolbox::files::ForkAddress address = addressOf(vRefNum, dirID, name);
    result(createFork(address));
    traceCall(toolbox::FileCall::createResFile, address, ResError());
}

void CloseResFile(int16_t refNum)
{
    ResourceFile *file = fileNumbered(refNum);
    result(file ? closeFile(*file) : static_cast<OSErr>(resFNotFound));
}

void UpdateResFile(int16_t refNum)
{
    ResourceFile *file = fileNumbered(refNum);
    result(file ? update(*file) : static_cast<OSErr>(resFNotFound));
}

int16_t CurResFile(void)
{
    result(noErr);
    return currentFile() ? currentFile()->refNum : noFile;
}

void UseResFile(int16_t refNum)
{
    ResourceFile *file = fileNumbered(refNum);
    if (file)
        open.current = file;
    result(file ? noErr : resFNotFound);
}

OSErr ResError(void)
{
    return open.lastResult;
}

namespace toolbox::managers {

void startResources(const Configuration &)
{
    stopResources();
    heap::setPurgeQuestion(mayBePurged);
}

void stopResources()
{
    while (!openFiles().empty())
        closeFile(*openFiles().back());
    open = {};
}

int openResourceFileCount()
{
    return static_cast<int>(openFiles().size());
}

int loadedResourceCount()
{
    int count = 0;
    for (const auto &file : openFiles())
        for (const auto &resource : file->resources)
            if (resource->handle && *resource->handle && !heap::isPurgeable(resource->handle))
                ++count;
    return count;
}

}  // namespace toolbox::managers
