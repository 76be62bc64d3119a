#include "files/calls.h"
#include "memory/heap.h"
#include "resources/resourcefile.h"
#include "toolbox/host/text.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"

using namespace toolbox::resources;

namespace {

// What a caller cannot set: the Resource Manager keeps it.
constexpr int ownAttributes = resChanged;

Resource *known(Handle handle)
{
    Resource *resource = resourceOf(handle);
    result(resource ? noErr : resNotFound);
    return resource;
}

bool isProtected(const Resource &resource)
{
    return (resource.attributes & resProtected) != 0;
}

}  // namespace

void SetResAttrs(Handle handle, int16_t attributes)
{
    Resource *resource = known(handle);
    if (!resource)
        return;
    int kept = resource->attributes & ownAttributes;
    resource->attributes = static_cast<uint8_t>((attributes & 0xFF & ~ownAttributes) | kept);
}

void ReleaseResource(Handle handle)
{
    if (Resource *resource = known(handle))
        release(*resource);
}

void DetachResource(Handle handle)
{
    Resource *resource = known(handle);
    if (!resource)
        return;
    if (resource->attributes & resChanged) {
        result(resAttrErr);
        return;
    }
    HNoPurge(detach(*resource));
}

void AddResource(Handle data, ResType type, int16_t id, ConstStr255Param name)
{
    ResourceFile *file = currentFile();
    if (!file || !toolbox::heap::isLive(data) || resourceOf(data)) {
        toolbox::files::noteFailedChange("", result(file ? addResFailed : resFNotFound));
        return;
    }
    auto resource = std::make_unique<Resource>();
    resource->type = type;
    resource->id = id;
    resource->attributes = resChanged;
    if (name && name[0] > 0)
        resource->name = toolbox::pascalView(name);
    attach(insert(*file, std::move(resource)), data);
    result(noErr);
}

void ChangedResource(Handle handle)
{
    Resource *resource = known(handle);
    if (!resource)
        return;
    if (isProtected(*resource)) {
        result(resAttrErr);
        return;
    }
    resource->attributes |= resChanged;
}

void WriteResource(Handle handle)
{
    Resource *resource = known(handle);
    if (!resource || !(resource->attributes & resChanged) || isProtected(*resource) || !*handle)
        return;
    result(write(*resource->file, {resource}));
}

void RmveResource(Handle handle)
{
    Resource *resource = known(handle);
    if (!resource)
        return;
    if (isProtected(*resource)) {
        result(rmvResFailed);
        return;
    }
    HNoPurge(detach(*resource));
    remove(*resource);
}
