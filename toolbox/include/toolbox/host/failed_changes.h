// Changes to files that failed, for hosts: a plug-in may not say so.
#pragma once

#include "toolbox/types.h"

namespace toolbox {

// The result code of the first call since the start of the session that should have made, written, cut or flushed
// a file, found the folder for it, opened one made in this session or added a resource, and did not; noErr where
// all did.
OSErr firstFailedChange();

}  // namespace toolbox
