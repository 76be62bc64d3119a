#include "files/calls.h"

#include <set>

#include "toolbox/host/failed_changes.h"

namespace toolbox {
namespace {

OSErr firstFailed = noErr;
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
    return firstFailed;
}

void files::forgetFailedChanges()
{
    firstFailed = noErr;
    made.clear();
}

void files::noteFailedChange(OSErr error)
{
    if (firstFailed == noErr)
        firstFailed = error;
}

void files::traceCall(FileCall kind, const std::string &name, OSErr error)
{
    if (isForAChange(kind, name))
        noteFailedChange(error);
    if (kind == FileCall::create && error == noErr)
        made.insert(name);
    trace::line("file %s %s -> %d", faults::name(kind), name.c_str(), error);
}

}  // namespace toolbox
