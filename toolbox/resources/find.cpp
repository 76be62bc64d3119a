#include <algorithm>

#include "memory/heap.h"
#include "resources/resourcefile.h"
#include "text/letters.h"
#include "toolbox/host/text.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"

namespace toolbox::resources {
namespace {

// Where a search looks, in that order.
using Files = std::vector<ResourceFile *>;

Files onlyCurrent()
{
    return currentFile() ? Files{currentFile()} : Files{};
}

// The current file and those opened before it.
Files fromCurrent()
{
    Files files;
    for (const auto &file : openFiles()) {
        files.insert(files.begin(), file.get());
        if (file.get() == currentFile())
            break;
    }
    return files;
}

Files latestFirst()
{
    Files files;
    for (const auto &file : openFiles())
        files.insert(files.begin(), file.get());
    return files;
}

template <typename Wanted>
Resource *find(const Files &files, ResType type, Wanted wanted)
{
    for (ResourceFile *file : files)
        for (const auto &resource : file->resources)
            if (resource->type == type && wanted(*resource))
                return resource.get();
    return nullptr;
}

bool typeIsKnown(ResType type)
{
    return find(latestFirst(), type, [](const Resource &) { return true; }) != nullptr;
}

Handle loaded(Resource *resource, ResType type)
{
    if (!resource) {
        result(typeIsKnown(type) ? resNotFound : noErr);
        return nullptr;
    }
    return result(load(*resource)) == noErr ? resource->handle : nullptr;
}

Handle numbered(const Files &files, ResType type, int16_t id)
{
    return loaded(find(files, type, [&](const Resource &each) { return each.id == id; }), type);
}

Handle indexed(const Files &files, ResType type, int16_t index)
{
    int left = index;
    return loaded(find(files, type, [&](const Resource &) { return --left == 0; }), type);
}

int16_t count(const Files &files, ResType type)
{
    int number = 0;
    find(files, type, [&](const Resource &) {
        ++number;
        return false;
    });
    result(noErr);
    return static_cast<int16_t>(std::min<int>(number, INT16_MAX));
}

Resource *resourceIn(Handle handle)
{
    Resource *resource = resourceOf(handle);
    result(resource ? noErr : resNotFound);
    return resource;
}

}  // namespace
}  // namespace toolbox::resources

using namespace toolbox::resources;

Handle GetResource(ResType type, int16_t id)
{
    return numbered(fromCurrent(), type, id);
}

Handle Get1Resource(ResType type, int16_t id)
{
    return numbered(onlyCurrent(), type, id);
}

Handle GetNamedResource(ResType type, ConstStr255Param name)
{
    std::string wanted = toolbox::foldedCase(toolbox::pascalView(name));
    auto isNamed = [&](const Resource &each) { return each.name && toolbox::foldedCase(*each.name) == wanted; };
    return loaded(find(fromCurrent(), type, isNamed), type);
}

int16_t CountResources(ResType type)
{
    return count(latestFirst(), type);
}

int16_t Count1Resources(ResType type)
{
    return count(onlyCurrent(), type);
}

Handle GetIndResource(ResType type, int16_t index)
{
    return indexed(latestFirst(), type, index);
}

Handle Get1IndResource(ResType type, int16_t index)
{
    return indexed(onlyCurrent(), type, index);
}

void GetResInfo(Handle handle, int16_t *id, ResType *type, Str255 name)
{
    const Resource *resource = resourceIn(handle);
    if (!resource)
        return;
    if (id)
        *id = resource->id;
    if (type)
        *type = resource->type;
    if (name)
        toolbox::setPascal(name, resource->name.value_or(""));
}

int16_t GetResAttrs(Handle handle)
{
    const Resource *resource = resourceIn(handle);
    return resource ? resource->attributes : 0;
}

Size SizeResource(Handle handle)
{
    const Resource *resource = resourceIn(handle);
    if (!resource)
        return -1;
    return resource->stored ? static_cast<Size>(resource->stored->size()) : GetHandleSize(handle);
}

void LoadResource(Handle handle)
{
    if (Resource *resource = resourceIn(handle))
        result(load(*resource));
}
