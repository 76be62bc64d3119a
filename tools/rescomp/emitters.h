// One procedure for each kind of statement: reads what follows the number and
// the options, and returns the resource's bytes.
#pragma once

#include <cstdint>
#include <string>

#include "cursor.h"

namespace rescomp {

std::string stringBytes(Cursor &source);                     // 'STR '
std::string stringListBytes(Cursor &source);                 // 'STR#'
std::string menuBytes(Cursor &source, std::int16_t id);      // 'MENU'
std::string dialogBytes(Cursor &source, std::int16_t id);    // 'DLOG'
std::string alertBytes(Cursor &source, std::int16_t id);     // 'ALRT'
std::string itemListBytes(Cursor &source);                   // 'DITL'
std::string versionBytes(Cursor &source);                    // 'vers'
std::string colorTableBytes(Cursor &source);                 // 'dctb', 'cctb', 'wctb', 'actb'
std::string wholeFile(Cursor &source);                       // the file's bytes unchanged
std::string hexBytes(Cursor &source);
std::string pictureBytes(Cursor &source);                    // 'PICT' from a PNG file
std::string soundBytes(Cursor &source);                      // 'snd ' from a WAV file

// A rectangle from left, top, width and height, as eight bytes; the words follow
// each other in the source.
struct Area {
    std::int64_t left = 0, top = 0, width = 0, height = 0;
};
void readCorner(Cursor &source, Area &area);
void readSize(Cursor &source, Area &area, std::int64_t least);
// Throws where the far corner is beyond 32767.
std::string rectBytes(const Cursor &source, const Area &area);

}  // namespace rescomp
