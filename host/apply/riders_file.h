// What a riders file is recognised by; docs/riders-file.md describes it for other programs.
#pragma once

#include <cstddef>
#include <string_view>

namespace riders::apply {

inline constexpr std::string_view kRidersMagic = "%!Zu3_Riders";
// It ends within so many bytes, which every riders file has.
inline constexpr size_t kMagicWithin = 15;
inline constexpr std::string_view kRidersLastLine = "%Zu3_RidersEnd";
// No riders file is longer, in bytes.
inline constexpr size_t kLongestRiders = size_t(1) << 20;

bool isRidersFile(std::string_view bytes);
// Whether the end of a riders file is there: it was not cut off.
bool isWholeRiders(std::string_view riders);
// Whether the bytes are a riders file and nothing else, whole or cut off: a job may have one before its own first
// line.
bool isRidersAlone(std::string_view bytes);

}  // namespace riders::apply
