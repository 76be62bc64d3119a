// The open resource files and their resources. Bookkeeping lives in C++
// memory; only the data of loaded resources is in the heap. Only for this
// folder.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/openforks.h"
#include "toolbox/types.h"

namespace toolbox::resources {

struct ResourceFile;

struct Resource {
    ResourceFile *file = nullptr;
    ResType type = 0;
    std::int16_t id = 0;
    std::uint8_t attributes = 0;         // resChanged among them
    std::optional<std::string> name;
    std::optional<std::string_view> stored;   // in file->bytes; nothing for one added since
    Handle handle = nullptr;             // nil while not loaded; its block may be purged
};

struct ResourceFile {
    explicit ResourceFile(const files::ForkAddress &address) : fork(address) {}

    std::int16_t refNum = 0;
    files::OpenFork fork;
    bool readOnly = false;
    bool removed = false;                // the fork holds a resource that was removed here
    std::string bytes;                   // the fork as it is on the disk
    std::vector<std::unique_ptr<Resource>> resources;   // in the order of the map
};

// In the order of opening.
std::vector<std::unique_ptr<ResourceFile>> &openFiles();
ResourceFile *currentFile();
ResourceFile *fileNumbered(std::int16_t refNum);

// Remembers what ResError returns.
OSErr result(OSErr error);

// The resource a handle belongs to, or nil.
Resource *resourceOf(Handle handle);
// Attaches the handle to the resource and marks it in the heap.
void attach(Resource &resource, Handle handle);
// Releases the handle, which is then an ordinary one that belongs to the caller.
Handle detach(Resource &resource);
// Takes the resource out of its file; an attached handle must be gone.
void remove(Resource &resource);
// Puts a new resource after the others of its type.
Resource &insert(ResourceFile &file, std::unique_ptr<Resource> resource);

// Fills the resource's block from the file unless it is loaded.
OSErr load(Resource &resource);
void release(Resource &resource);

// Writes the fork: the stored data of all resources, except those in `changed`,
// of which it writes what their handles hold now.
OSErr write(ResourceFile &file, const std::vector<Resource *> &changed);
// Writes everything that has changed, if anything has.
OSErr update(ResourceFile &file);

}  // namespace toolbox::resources
