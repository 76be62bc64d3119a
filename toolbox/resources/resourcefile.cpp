#include "resources/resourcefile.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

#include "memory/heap.h"
#include "toolbox/host/resource_fork.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"

namespace toolbox::resources {
namespace {

std::unordered_map<Handle, Resource *> byHandle;

OSErr fill(Resource &resource)
{
    std::string_view data = resource.stored.value_or(std::string_view());
    auto size = static_cast<Size>(data.size());
    if (!resource.handle) {
        Handle handle = NewHandle(size);
        if (!handle)
            return MemError();
        attach(resource, handle);
    } else if (OSErr error = heap::refill(resource.handle, size)) {
        return error;
    }
    data.copy(*resource.handle, data.size());
    return noErr;
}

// Purgeable and locked say how the block is to be once it is loaded.
void applyAttributes(const Resource &resource)
{
    if (resource.attributes & resPurgeable)
        HPurge(resource.handle);
    if (resource.attributes & resLocked)
        HLock(resource.handle);
}

ForkEntry entryFor(const Resource &resource, bool takeHandle)
{
    ForkEntry entry{resource.type, resource.id, resource.attributes, std::nullopt, {}};
    if (resource.name)
        entry.name = *resource.name;
    if (takeHandle)
        entry.data = {*resource.handle, static_cast<std::size_t>(GetHandleSize(resource.handle))};
    else
        entry.data = *resource.stored;
    return entry;
}

// After a write: the resources' data are in new bytes.
void adopt(ResourceFile &file, std::string bytes, const std::vector<Resource *> &written)
{
    file.bytes = std::move(bytes);
    std::vector<ForkEntry> entries;
    parseFork(file.bytes, entries);
    for (std::size_t i = 0; i < written.size(); ++i)
        written[i]->stored = entries[i].data;
}

bool isChanged(const Resource &resource)
{
    return (resource.attributes & resChanged) && resource.handle && *resource.handle;
}

}  // namespace

Resource *resourceOf(Handle handle)
{
    auto found = byHandle.find(handle);
    return found == byHandle.end() ? nullptr : found->second;
}

void attach(Resource &resource, Handle handle)
{
    resource.handle = handle;
    byHandle[handle] = &resource;
    heap::markAsResource(handle, true);
}

Handle detach(Resource &resource)
{
    Handle handle = resource.handle;
    byHandle.erase(handle);
    heap::markAsResource(handle, false);
    resource.handle = nullptr;
    return handle;
}

void remove(Resource &resource)
{
    auto &resources = resource.file->resources;
    if (resource.stored)
        resource.file->removed = true;
    std::erase_if(resources, [&](const auto &each) { return each.get() == &resource; });
}

Resource &insert(ResourceFile &file, std::unique_ptr<Resource> resource)
{
    auto sameType = [&](const auto &each) { return each->type == resource->type; };
    auto &resources = file.resources;
    auto last = std::find_if(resources.rbegin(), resources.rend(), sameType);
    auto place = last == resources.rend() ? resources.end() : last.base();
    resource->file = &file;
    return **resources.insert(place, std::move(resource));
}

OSErr load(Resource &resource)
{
    if (resource.handle && *resource.handle)
        return noErr;
    OSErr error = fill(resource);
    if (error == noErr)
        applyAttributes(resource);
    return error;
}

void release(Resource &resource)
{
    if (resource.handle)
        heap::free(detach(resource));
    resource.attributes &= static_cast<std::uint8_t>(~resChanged);
    if (!resource.stored)
        remove(resource);
}

OSErr write(ResourceFile &file, const std::vector<Resource *> &changed)
{
    if (file.readOnly)
        return wrPermErr;
    std::vector<ForkEntry> entries;
    std::vector<Resource *> written;
    for (const auto &resource : file.resources) {
        bool takeHandle = std::find(changed.begin(), changed.end(), resource.get()) != changed.end();
        if (!takeHandle && !resource->stored)
            continue;
        entries.push_back(entryFor(*resource, takeHandle));
        written.push_back(resource.get());
    }
    std::optional<std::string> bytes = forkBytes(entries);
    if (!bytes)
        return addResFailed;
    if (OSErr error = files::writeFork(file.fork.address(), *bytes))
        return error;
    for (Resource *resource : changed)
        resource->attributes &= static_cast<std::uint8_t>(~resChanged);
    file.removed = false;
    adopt(file, std::move(*bytes), written);
    return noErr;
}

OSErr update(ResourceFile &file)
{
    std::vector<Resource *> changed;
    for (const auto &resource : file.resources)
        if (isChanged(*resource))
            changed.push_back(resource.get());
    return changed.empty() && !file.removed ? static_cast<OSErr>(noErr) : write(file, changed);
}

}  // namespace toolbox::resources
