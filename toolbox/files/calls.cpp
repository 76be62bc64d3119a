#include "files/calls.h"

#include "toolbox/host/failed_changes.h"

namespace toolbox {
namespace {

OSErr firstFailed = noErr;

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
    return firstFailed;
}

void files::forgetFailedChanges()
{
    firstFailed = noErr;
}

void files::traceCall(FileCall kind, const std::string &name, OSErr error)
{
    if (firstFailed == noErr && changesContents(kind))
        firstFailed = error;
    trace::line("file %s %s -> %d", faults::name(kind), name.c_str(), error);
}

}  // namespace toolbox
