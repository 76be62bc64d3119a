// A riders file in which nothing is chosen for all plates. The plug-in makes none: it is asked for a flatness,
// which is then taken out of its file.
#pragma once

#include <string>

#include "make/request.h"

namespace riders::make {

bool choosesForAll(const MakeRequest &request);
// The same request with a flatness.
MakeRequest withStandIn(MakeRequest request);
// The file without it. The plug-in's resource fork must be open. Throws io::Refusal where the flatness is not
// there.
std::string withoutStandIn(std::string riders);

}  // namespace riders::make
