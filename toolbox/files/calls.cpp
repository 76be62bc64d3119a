#include "files/calls.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "toolbox/host/failed_changes.h"

namespace toolbox {
namespace {

// By name as in the trace: in quotes, and with how many bytes were moved.
std::vector<std::pair<std::string, OSErr>> failedChanges;

bool changesContents(FileCall kind)
{
    switch (kind) {
    case FileCall::create:
    case FileCall::createResFile:
    case FileCall::write:
    case FileCall::setEOF:
    case FileCall::flushVol:
    case FileCall::close:
        return true;
    default:
        return false;
    }
}

}  // namespace

OSErr firstFailedChange()
{
    return failedChanges.empty() ? OSErr{noErr} : failedChanges.front().second;
}

OSErr firstFailedChange(const std::string &name)
{
    const auto found = std::find_if(failedChanges.begin(), failedChanges.end(), [quoted = trace::quoted(name)](
                                        const auto &failed) { return failed.first.starts_with(quoted); });
    return found == failedChanges.end() ? OSErr{noErr} : found->second;
}

void forgetFailedChanges()
{
    failedChanges.clear();
}

void files::traceCall(FileCall kind, const std::string &name, OSErr error)
{
    if (error != noErr && changesContents(kind))
        failedChanges.emplace_back(name, error);
    trace::line("file %s %s -> %d", faults::name(kind), name.c_str(), error);
}

}  // namespace toolbox
