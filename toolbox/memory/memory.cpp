#include "toolbox/memory.h"

#include <algorithm>
#include <cstring>

#include "memory/heap.h"
#include "memory/heapcore.h"

using toolbox::heap::Block;
using toolbox::heap::find;

namespace {

constexpr int lockedBit = 0x80;
constexpr int purgeableBit = 0x40;
constexpr int resourceBit = 0x20;

OSErr lastResult = noErr;

OSErr result(OSErr error)
{
    lastResult = error;
    return error;
}

// The block of a handle that must be valid; nil leaves MemError set.
Block *known(Handle handle)
{
    Block *block = handle ? find(handle) : nullptr;
    result(block ? noErr : handle ? memWZErr : nilHandleErr);
    return block;
}

// The same, and not purged.
Block *filled(Handle handle)
{
    Block *block = known(handle);
    if (block && !*handle) {
        result(nilHandleErr);
        return nullptr;
    }
    return block;
}

template <typename Place>
Place remembered(Place place)
{
    result(place ? noErr : memFullErr);
    return place;
}

Size largestBlock()
{
    return std::max(toolbox::heap::bytesFree() - toolbox::heap::blockOverhead, 0);
}

}  // namespace

Ptr NewPtr(Size byteCount)
{
    return remembered(toolbox::heap::allocatePointer(byteCount));
}

Ptr NewPtrClear(Size byteCount)
{
    return remembered(toolbox::heap::allocatePointer(byteCount, toolbox::heap::Content::zeros));
}

void DisposePtr(Ptr block)
{
    result(!block || toolbox::heap::freePointer(block) ? noErr : memWZErr);
}

Handle NewHandle(Size byteCount)
{
    return remembered(toolbox::heap::allocateHandle(byteCount));
}

Handle NewHandleClear(Size byteCount)
{
    return remembered(toolbox::heap::allocateHandle(byteCount, toolbox::heap::Content::zeros));
}

void DisposeHandle(Handle handle)
{
    const Block *block = find(handle);
    if (!block || block->resource) {
        result(memWZErr);
        return;
    }
    toolbox::heap::free(handle);
    result(noErr);
}

Size GetHandleSize(Handle handle)
{
    const Block *block = filled(handle);
    return block ? block->size : 0;
}

void SetHandleSize(Handle handle, Size byteCount)
{
    if (Block *block = filled(handle))
        result(toolbox::heap::resize(handle, *block, byteCount));
}

void HLock(Handle handle)
{
    if (Block *block = filled(handle))
        block->locked = true;
}

void HUnlock(Handle handle)
{
    if (Block *block = filled(handle))
        block->locked = false;
}

void HPurge(Handle handle)
{
    if (Block *block = known(handle))
        block->purgeable = true;
}

void HNoPurge(Handle handle)
{
    if (Block *block = known(handle))
        block->purgeable = false;
}

int8_t HGetState(Handle handle)
{
    const Block *block = known(handle);
    if (!block)
        return 0;
    int state = (block->locked ? lockedBit : 0) | (block->purgeable ? purgeableBit : 0) |
                (block->resource ? resourceBit : 0);
    return static_cast<int8_t>(state);
}

void HSetState(Handle handle, int8_t state)
{
    // The resource bit is left to the Resource Manager.
    if (Block *block = known(handle)) {
        block->locked = (state & lockedBit) != 0;
        block->purgeable = (state & purgeableBit) != 0;
    }
}

void MoveHHi(Handle handle)
{
    const Block *block = filled(handle);
    if (block && block->locked)
        result(memLockedErr);
}

Size MaxMem(Size *grow)
{
    toolbox::heap::purgeAll(nullptr);
    if (grow)
        *grow = 0;
    result(noErr);
    return largestBlock();
}

Size CompactMem(Size)
{
    result(noErr);
    return largestBlock();
}

void PurgeMem(Size needed)
{
    toolbox::heap::purgeAll(nullptr);
    result(needed <= largestBlock() ? noErr : memFullErr);
}

Size FreeMem(void)
{
    result(noErr);
    return toolbox::heap::bytesFree();
}

OSErr MemError(void)
{
    return lastResult;
}

void BlockMove(const void *source, void *destination, Size byteCount)
{
    if (byteCount > 0)
        std::memmove(destination, source, static_cast<size_t>(byteCount));
    result(noErr);
}

OSErr PtrToHand(const void *source, Handle *handle, Size byteCount)
{
    *handle = NewHandle(byteCount);
    if (*handle)
        BlockMove(source, **handle, byteCount);
    return MemError();
}

OSErr HandToHand(Handle *handle)
{
    Handle original = *handle;
    if (!filled(original))
        return MemError();
    Size size = GetHandleSize(original);
    // The original may be purgeable; it must survive until the copy is made.
    int8_t state = HGetState(original);
    HNoPurge(original);
    Handle copy = NewHandle(size);
    OSErr error = MemError();
    if (copy)
        BlockMove(*original, *copy, size);
    HSetState(original, state);
    if (copy)
        *handle = copy;
    return result(error);
}

OSErr PtrAndHand(const void *source, Handle handle, Size byteCount)
{
    const Block *block = filled(handle);
    if (!block)
        return MemError();
    Size before = block->size;
    if (byteCount < 0 || byteCount > INT32_MAX - before)
        return result(memFullErr);
    SetHandleSize(handle, before + byteCount);
    if (MemError() == noErr)
        BlockMove(source, *handle + before, byteCount);
    return MemError();
}

Ptr StripAddress(void *address)
{
    return static_cast<Ptr>(address);
}
