// Open data forks: reading, writing, the mark and the end, by reference number.
#pragma once

#include <cstdint>

#include "toolbox/types.h"

namespace toolbox::files {

OSErr openFork(std::int16_t vRefNum, std::int32_t dirID, ConstStr255Param name, std::int8_t permission,
               std::int16_t &refNum);
OSErr closeFork(std::int16_t refNum);
OSErr readBytes(std::int16_t refNum, std::int32_t &count, void *buffer);
OSErr writeBytes(std::int16_t refNum, std::int32_t &count, const void *buffer);
OSErr getEnd(std::int16_t refNum, std::int32_t *logicalEnd);
OSErr setEnd(std::int16_t refNum, std::int32_t logicalEnd);
OSErr getPosition(std::int16_t refNum, std::int32_t *position);
OSErr setPosition(std::int16_t refNum, std::int16_t mode, std::int32_t offset);
// Waits until what was written to open files of the volume is on the disk.
OSErr flush(std::int16_t vRefNum);

}  // namespace toolbox::files
