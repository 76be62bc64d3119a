// What every file call passes through: faults strike here, and the trace is
// written here.
#pragma once

#include <string>

#include "toolbox/host/faults.h"
#include "toolbox/host/trace.h"
#include "toolbox/types.h"

namespace toolbox::files {

// name is in quotes already, as trace::quoted returns it; a call that moves
// bytes adds a blank and how many.
void traceCall(FileCall kind, const std::string &name, OSErr error);

template <typename Work> OSErr fileCall(FileCall kind, const std::string &name, Work work)
{
    OSErr error = faults::check(kind);
    if (error == noErr)
        error = work();
    traceCall(kind, name, error);
    return error;
}

// The same for calls that move bytes: count becomes how many were moved.
template <typename Work> OSErr transferCall(FileCall kind, const std::string &name, std::int32_t &count, Work work)
{
    OSErr error = faults::check(kind);
    if (error == noErr)
        error = work();
    else
        count = 0;
    traceCall(kind, name + ' ' + std::to_string(count) + " bytes", error);
    return error;
}

}  // namespace toolbox::files
