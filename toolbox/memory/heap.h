// What the other managers may ask of the heap. Private to the Toolbox.
#pragma once

#include <cstdint>

#include "toolbox/types.h"

namespace toolbox::heap {

// Bytes counted for each block beyond those asked for.
inline constexpr std::int32_t blockOverhead = 16;

// Whether it is a handle that was allocated and not freed yet. Any address may be
// passed; nothing is read through it.
bool isLive(Handle handle);

// A marked handle belongs to the Resource Manager: DisposeHandle refuses it, and
// it is not counted.
void markAsResource(Handle handle, bool isResource);

bool isPurgeable(Handle handle);
// Gives a purged handle a block again, contents undefined.
OSErr refill(Handle handle, Size byteCount);
// Frees a handle whatever it is marked as.
void free(Handle handle);

// Called whenever the Memory Manager is about to empty a purgeable block; a
// manager that returns false keeps it this time. Nil: no manager is asked.
using PurgeQuestion = bool (*)(Handle handle);
void setPurgeQuestion(PurgeQuestion question);

std::int32_t bytesFree();

}  // namespace toolbox::heap
