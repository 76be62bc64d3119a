#include "files/calls.h"

namespace toolbox::files {

void traceCall(FileCall kind, const std::string &name, OSErr error)
{
    trace::line("file %s %s -> %d", faults::name(kind), name.c_str(), error);
}

}  // namespace toolbox::files
