// The system calls by which the host puts files in place, as they were made. The test program defines these calls
// itself and passes them on.
#pragma once

#include <string>
#include <vector>

namespace calls {

// From now on, calls are noted: "fsync out.ps", with names shortened to their last part, and ".riders-..." to "~".
void note();
// Notes no more; the calls, in their order.
std::vector<std::string> noted();
// The next so many calls of that name return this error and are not made.
void fail(const std::string &name, int error, int times = 1);

}  // namespace calls
