#include "toolbox_faults/fault.h"

using toolbox::FileCall;

namespace toolbox_faults {
namespace {

struct Codes {
    FileCall call;
    std::vector<OSErr> errors;
};

// Those in the plug-in's tables of messages; the last is in neither.
const std::vector<OSErr> whenChanging = {ioErr,    dskFulErr, fnfErr,    wPrErr,  fLckdErr,
                                         vLckdErr, fBsyErr,   wrPermErr, paramErr};
const std::vector<OSErr> whenReading = {ioErr, fnfErr, paramErr};

std::vector<OSErr> with(std::vector<OSErr> codes, OSErr another)
{
    codes.push_back(another);
    return codes;
}

std::vector<Codes> everyCall()
{
    return {{FileCall::create, with(whenChanging, dupFNErr)},
            {FileCall::open, with(whenChanging, tmfoErr)},
            {FileCall::close, {ioErr, dskFulErr}},
            {FileCall::read, with(whenReading, eofErr)},
            {FileCall::write, whenChanging},
            {FileCall::getEOF, whenReading},
            {FileCall::setEOF, whenChanging},
            {FileCall::getFPos, whenReading},
            {FileCall::setFPos, with(whenReading, eofErr)},
            {FileCall::remove, whenChanging},
            {FileCall::rename, with(whenChanging, dupFNErr)},
            {FileCall::getFInfo, whenReading},
            {FileCall::setFInfo, whenChanging},
            {FileCall::flushVol, whenChanging},
            {FileCall::openResFile, whenReading},
            {FileCall::createResFile, with(whenChanging, dupFNErr)},
            {FileCall::findFolder, {ioErr, fnfErr, nsvErr}}};
}

bool movesBytes(FileCall call)
{
    return call == FileCall::read || call == FileCall::write;
}

}  // namespace

std::vector<Fault> everyFault()
{
    std::vector<Fault> all;
    for (bool onward : {false, true}) {
        for (const Codes &codes : everyCall())
            for (OSErr error : codes.errors)
                for (bool halfway : {false, true})
                    if (!halfway || movesBytes(codes.call))
                        all.push_back({codes.call, error, halfway, onward});
        all.push_back({std::nullopt, memFullErr, false, onward});
    }
    return all;
}

void plan(const Fault &fault, int nth)
{
    if (!fault.call)
        toolbox::faults::failAllocation(nth, fault.onward);
    else if (fault.halfway)
        toolbox::faults::stopHalfway(*fault.call, nth, fault.error, fault.onward);
    else
        toolbox::faults::failFileCall(*fault.call, nth, fault.error, fault.onward);
}

std::vector<int> callsOfEachKind()
{
    std::vector<int> calls;
    for (int kind = 0; kind < toolbox::fileCallKinds; ++kind)
        calls.push_back(toolbox::faults::count(static_cast<FileCall>(kind)));
    calls.push_back(toolbox::faults::allocationCount());
    return calls;
}

std::size_t kindOf(const Fault &fault)
{
    return fault.call ? static_cast<std::size_t>(*fault.call) : toolbox::fileCallKinds;
}

std::string described(const Fault &fault, int nth)
{
    return (fault.call ? toolbox::faults::name(*fault.call) : std::string("allocation")) + ' ' +
           std::to_string(nth) + " -> " + std::to_string(fault.error) + (fault.halfway ? ", halfway" : "") +
           (fault.onward ? ", for good" : ", once");
}

}  // namespace toolbox_faults
