// How large files may become that this process writes.
#pragma once

namespace riders::io {

// From now on a write beyond that fails (EFBIG), and the process goes on. Programs that it starts may raise the
// limit again.
void limitFilesTo(int megabytes);

}  // namespace riders::io
