// What may be replaced: a file that somebody has only once is not written over by mistake.
#pragma once

#include <filesystem>

namespace riders::apply {

// Each throws Refusal where an ordinary file is there that is not of that kind, naming it and --force. An empty
// file may be replaced whatever its name, for it holds nothing; pipes and devices are not looked at.
//
// For what is to be a riders file; one that was cut off counts as one.
void refuseUnlessRiders(const std::filesystem::path &out);
// For what is to be a PostScript job; a riders file is none.
void refuseUnlessJob(const std::filesystem::path &out);

}  // namespace riders::apply
