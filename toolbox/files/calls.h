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
// For what firstFailedChange returns; noErr is no failure. No name: the call is of no one file.
void noteFailedChange(const std::string &name, OSErr error);

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

// The same for calls that may move a part of the bytes. Until the work is done, count is how many are wanted.
template <typename Work>
OSErr partCall(FileCall kind, const std::string &name, std::int32_t &count, Work work)
{
    const OSErr planned = faults::check(kind);
    if (planned != noErr)
        count = faults::stopsHalfway() && count > 0 ? count / 2 : 0;
    OSErr error = planned;
    if (planned == noErr || count > 0)
        if (OSErr own = work())
            error = own;
    traceCall(kind, name + ' ' + std::to_string(count) + " bytes", error);
    return error;
}

}  // namespace toolbox::files
