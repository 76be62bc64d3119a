// The heap as the Memory Manager's own calls see it. Only for this folder.
#pragma once

#include <cstdint>

#include "toolbox/types.h"

namespace toolbox::heap {

struct Block {
    Size size = 0;
    bool locked = false;
    bool purgeable = false;
    bool resource = false;
};

// The block of a live handle, or nil. Valid until the handle is freed.
Block *find(Handle handle);

// What a new block holds.
enum class Content { wild, zeros };

// Nil when there is no room.
Handle allocateHandle(Size byteCount, Content content = Content::wild);
Ptr allocatePointer(Size byteCount, Content content = Content::wild);
// False if it is not a live pointer block.
bool freePointer(Ptr block);
OSErr resize(Handle handle, Block &block, Size byteCount);

// Every allocation calls this first: it moves blocks where that is wanted, fails
// where a test planned it, and purges when memory is short. keep is never
// purged.
bool makeRoom(std::int64_t bytes, Handle keep);
// Empties everything purgeable and unlocked, except keep.
void purgeAll(Handle keep);

}  // namespace toolbox::heap
