#include "memory/heap.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <unordered_map>

#include "memory/heapcore.h"
#include "session/managers.h"
#include "toolbox/host/faults.h"

namespace toolbox::heap {
namespace {

// New and freed bytes are filled, so that code which reads them goes wrong in
// the same way every time.
constexpr int freshByte = 0xF3;
constexpr int staleByte = 0xDB;

// A freed master pointer is reused only after this many others have been freed,
// so that a stale handle is recognised instead of being another block's.
constexpr std::size_t mastersAtRest = 4096;

struct Heap {
    std::int64_t capacity = 0;
    std::int64_t used = 0;
    bool moveBlocks = false;
    std::deque<Ptr> masters;   // addresses of elements are handles and stay put
    std::deque<Handle> atRest;
    std::unordered_map<Handle, Block> blocks;
    std::unordered_map<Ptr, Size> pointers;
    PurgeQuestion purgeQuestion = nullptr;
};

Heap heap;

std::int64_t cost(Size byteCount)
{
    return static_cast<std::int64_t>(byteCount) + blockOverhead;
}

// Each block is one of the C library, whose bounds the sanitizers see.
// NOLINTBEGIN(cppcoreguidelines-no-malloc)
// Zeros come from the C library: it has pages that need not be filled.
Ptr freshBlock(Size byteCount, Content content = Content::wild)
{
    if (content == Content::zeros)
        return static_cast<Ptr>(std::calloc(static_cast<std::size_t>(byteCount), 1));
    auto *block = static_cast<Ptr>(std::malloc(static_cast<std::size_t>(byteCount)));
    if (block)
        std::memset(block, freshByte, static_cast<std::size_t>(byteCount));
    return block;
}

void discard(Ptr block, Size byteCount)
{
    std::memset(block, staleByte, static_cast<std::size_t>(byteCount));
    std::free(block);
}
// NOLINTEND(cppcoreguidelines-no-malloc)

void move(Handle handle, const Block &block)
{
    Ptr place = freshBlock(block.size);
    if (!place)
        return;
    std::memcpy(place, *handle, static_cast<std::size_t>(block.size));
    discard(*handle, block.size);
    *handle = place;
}

void moveEverything()
{
    for (auto &[handle, block] : heap.blocks)
        if (*handle && !block.locked)
            move(handle, block);
}

bool mayBePurged(Handle handle, const Block &block)
{
    return *handle && block.purgeable && !block.locked && (!heap.purgeQuestion || heap.purgeQuestion(handle));
}

void empty(Handle handle, Block &block)
{
    discard(*handle, block.size);
    *handle = nullptr;
    heap.used -= cost(block.size);
    block.size = 0;
}

// A block that is counted; nil when there is no room.
Ptr countedBlock(Size byteCount, Content content)
{
    if (byteCount < 0 || !makeRoom(cost(byteCount), nullptr))
        return nullptr;
    Ptr block = freshBlock(byteCount, content);
    if (block)
        heap.used += cost(byteCount);
    return block;
}

Handle newMaster()
{
    if (heap.atRest.size() > mastersAtRest) {
        Handle handle = heap.atRest.front();
        heap.atRest.pop_front();
        return handle;
    }
    return &heap.masters.emplace_back(nullptr);
}

}  // namespace

bool makeRoom(std::int64_t bytes, Handle keep)
{
    if (heap.moveBlocks)
        moveEverything();
    if (faults::allocationFails())
        return false;
    if (heap.used + bytes > heap.capacity)
        purgeAll(keep);
    return heap.used + bytes <= heap.capacity;
}

void purgeAll(Handle keep)
{
    for (auto &[handle, block] : heap.blocks)
        if (handle != keep && mayBePurged(handle, block))
            empty(handle, block);
}

Block *find(Handle handle)
{
    auto found = heap.blocks.find(handle);
    return found == heap.blocks.end() ? nullptr : &found->second;
}

Handle allocateHandle(Size byteCount, Content content)
{
    Ptr block = countedBlock(byteCount, content);
    if (!block)
        return nullptr;
    Handle handle = newMaster();
    *handle = block;
    heap.blocks[handle].size = byteCount;
    return handle;
}

void free(Handle handle)
{
    Block *block = find(handle);
    if (!block)
        return;
    if (*handle)
        empty(handle, *block);
    heap.blocks.erase(handle);
    heap.atRest.push_back(handle);
}

OSErr resize(Handle handle, Block &block, Size byteCount)
{
    Size kept = std::min(block.size, byteCount);
    if (byteCount < 0 || (byteCount > block.size && !makeRoom(byteCount - block.size, handle)))
        return memFullErr;
    // A locked block stays where it is: it gives up its end but cannot grow.
    if (block.locked && byteCount > block.size)
        return memFullErr;
    if (!block.locked) {
        Ptr place = freshBlock(byteCount);
        if (!place)
            return memFullErr;
        std::memcpy(place, *handle, static_cast<std::size_t>(kept));
        discard(*handle, block.size);
        *handle = place;
    }
    heap.used += byteCount - block.size;
    block.size = byteCount;
    return noErr;
}

OSErr refill(Handle handle, Size byteCount)
{
    Block *block = find(handle);
    if (!block)
        return memWZErr;
    if (byteCount < 0 || !makeRoom(cost(byteCount), handle))
        return memFullErr;
    if (*handle)
        empty(handle, *block);
    *handle = freshBlock(byteCount);
    if (!*handle)
        return memFullErr;
    block->size = byteCount;
    heap.used += cost(byteCount);
    return noErr;
}

Ptr allocatePointer(Size byteCount, Content content)
{
    Ptr block = countedBlock(byteCount, content);
    if (block)
        heap.pointers[block] = byteCount;
    return block;
}

bool freePointer(Ptr block)
{
    auto found = heap.pointers.find(block);
    if (found == heap.pointers.end())
        return false;
    Size size = found->second;
    heap.pointers.erase(found);
    heap.used -= cost(size);
    discard(block, size);
    return true;
}

bool isLive(Handle handle)
{
    return find(handle) != nullptr;
}

void markAsResource(Handle handle, bool isResource)
{
    if (Block *block = find(handle))
        block->resource = isResource;
}

bool isPurgeable(Handle handle)
{
    const Block *block = find(handle);
    return block && block->purgeable;
}

void setPurgeQuestion(PurgeQuestion question)
{
    heap.purgeQuestion = question;
}

std::int32_t bytesFree()
{
    return static_cast<std::int32_t>(std::max<std::int64_t>(heap.capacity - heap.used, 0));
}

}  // namespace toolbox::heap

namespace toolbox::managers {

void startMemory(const Configuration &configuration)
{
    stopMemory();
    heap::heap.capacity = configuration.heapBytes;
    heap::heap.moveBlocks = configuration.moveBlocks;
}

void stopMemory()
{
    for (auto &[handle, block] : heap::heap.blocks)
        std::free(*handle);  // NOLINT(cppcoreguidelines-no-malloc)
    for (auto &[block, size] : heap::heap.pointers)
        std::free(block);  // NOLINT(cppcoreguidelines-no-malloc)
    heap::heap = {};
}

int pointerCount()
{
    return static_cast<int>(heap::heap.pointers.size());
}

int handleCount()
{
    return static_cast<int>(std::count_if(heap::heap.blocks.begin(), heap::heap.blocks.end(),
                                          [](const auto &entry) { return !entry.second.resource; }));
}

}  // namespace toolbox::managers
