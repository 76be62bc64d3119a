#include "io/refusal.h"

#include <string.h>

namespace riders::io {

void refuseErrno(const std::string &name, int error)
{
    throw Refusal(name + ": " + strerror(error));
}

}  // namespace riders::io
