#include "files/calls.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

#include "toolbox/host/failed_changes.h"

namespace toolbox {
namespace {

// By name as in the trace: in quotes, and with how many bytes were moved.
std::vector<std::pair<std::string, OSErr>> failedChanges;
std::set<std::string> made;  // names of files, quoted

// A new file that cannot be opened stays empty, and where there is no folder there is no file.
bool isForAChange(FileCall kind, const std::string &name)
{
    switch (kind) {
    case FileCall::create:
    case FileCall::createResFile:
    case FileCall::write:
    case FileCall::setEOF:
    case FileCall::flushVol:
    case FileCall::close:
    case FileCall::findFolder:
        return true;
    case FileCall::open:
    case FileCall::openResFile:
        return made.contains(name);
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
    const auto found = std::find_if(failedChanges.begin(), failedChanges.end(),
                                    [quoted = trace::quoted(name)](const auto &failed) {
                                        return failed.first.empty() || failed.first.starts_with(quoted);
                                    });
    return found == failedChanges.end() ? OSErr{noErr} : found->second;
}

void forgetFailedChanges()
{
    failedChanges.clear();
    made.clear();
}

void files::noteFailedChange(const std::string &name, OSErr error)
{
    if (error != noErr)
        failedChanges.emplace_back(name, error);
}

void files::traceCall(FileCall kind, const std::string &name, OSErr error)
{
    if (isForAChange(kind, name))
        noteFailedChange(kind == FileCall::findFolder ? std::string() : name, error);
    if (kind == FileCall::create && error == noErr)
        made.insert(name);
    trace::line("file %s %s -> %d", faults::name(kind), name.c_str(), error);
}

}  // namespace toolbox
