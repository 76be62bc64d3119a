// Changes to files that failed, for hosts: a plug-in may not say so.
#pragma once

#include <string>

#include "toolbox/types.h"

namespace toolbox {

// The result code of the first call since the start of the session that should have made, written, cut or flushed
// a file, found the folder for it, opened one made in this session or added a resource, and did not; noErr where
// all did.
OSErr firstFailedChange();
// The same for files of that name, UTF-8, in whatever folder, and for calls that are of no one file.
OSErr firstFailedChange(const std::string &name);
// As at the start of the session.
void forgetFailedChanges();

}  // namespace toolbox
