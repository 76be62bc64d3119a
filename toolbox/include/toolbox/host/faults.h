// Making file and memory calls fail on purpose.
//
// Every File Manager call first checks one table. A fault planned here
// makes the chosen call return an error instead of doing its work (FSClose
// does close, and then returns the error; FSWrite and FSRead move nothing,
// *count 0; FSOpen gives refNum 0). The pairs of calls that differ only in how
// a place is given (FSOpen and HOpen, ...) are one kind. Writing a resource fork
// counts as a write too; when it fails, the old fork is kept.
//
// Plans outlive sessions and are kept until clear(). Each counts the calls made
// after it was planned; if several strike the same call, it returns the error of
// the one planned first.
#pragma once

#include <optional>
#include <string>

#include "toolbox/types.h"

namespace toolbox {

enum class FileCall {
    create, open, close, read, write, getEOF, setEOF, getFPos, setFPos, remove, rename,
    getFInfo, setFInfo, flushVol, openResFile, createResFile, findFolder
};
inline constexpr int fileCallKinds = 17;

namespace faults {

// The nth call (from 1) of the kind from now on returns error; with onward set
// every later one as well. error is not noErr.
void failFileCall(FileCall kind, int nth, OSErr error, bool onward = false);
// The same for reads and writes, which stop halfway: half of the bytes, rounded
// down, are moved before the error is returned. A resource fork is written whole
// or not at all.
void stopHalfway(FileCall kind, int nth, OSErr error, bool onward = false);
// The nth call (from 1) of any kind from now on returns error.
void failAnyFileCall(int nth, OSErr error, bool onward = false);
// The nth allocation (from 1) from now on has no room.
void failAllocation(int nth, bool onward = false);
// Forgets all plans and counts from here.
void clear();

// Whether a planned fault has happened since clear().
bool met();
// Calls of the kind, and allocations, since clear().
int count(FileCall kind);
int allocationCount();

// As the enumerator is spelled: "rename".
const char *name(FileCall kind);
std::optional<FileCall> kindNamed(const std::string &name);

// For the managers, once per call: noErr, or the error this call is to return.
OSErr check(FileCall kind);
// Whether the call that was checked last is to stop halfway.
bool stopsHalfway();
bool allocationFails();

}  // namespace faults
}  // namespace toolbox
