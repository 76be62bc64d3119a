#include "toolbox/host/faults.h"

#include <array>
#include <vector>

namespace toolbox::faults {
namespace {

// Counts down to the call that is to fail.
struct Plan {
    std::optional<FileCall> kind;   // nothing: any
    int left;
    bool onward;
    OSErr error;
    bool halfway = false;

    bool strikes()
    {
        if (left > 0)
            return --left == 0;
        return onward;
    }
};

constexpr std::array<const char *, fileCallKinds> names = {
    "create", "open", "close", "read", "write", "getEOF", "setEOF", "getFPos", "setFPos", "remove", "rename",
    "getFInfo", "setFInfo", "flushVol", "openResFile", "createResFile", "findFolder"};

std::vector<Plan> filePlans;
std::vector<Plan> allocationPlans;
std::array<int, fileCallKinds> counts{};
int allocations = 0;
bool anyMet = false;
bool halfway = false;  // the fault that struck last

// Every plan sees every call, even when an earlier one has struck already.
OSErr strike(std::vector<Plan> &plans, std::optional<FileCall> kind)
{
    OSErr error = noErr;
    for (Plan &plan : plans) {
        bool concerned = !plan.kind || plan.kind == kind;
        if (concerned && plan.strikes() && error == noErr) {
            error = plan.error;
            halfway = plan.halfway;
        }
    }
    anyMet = anyMet || error != noErr;
    return error;
}

}  // namespace

void failFileCall(FileCall kind, int nth, OSErr error, bool onward)
{
    filePlans.push_back({kind, nth, onward, error});
}

void stopHalfway(FileCall kind, int nth, OSErr error, bool onward)
{
    filePlans.push_back({kind, nth, onward, error, true});
}

void failAnyFileCall(int nth, OSErr error, bool onward)
{
    filePlans.push_back({std::nullopt, nth, onward, error});
}

void failAllocation(int nth, bool onward)
{
    allocationPlans.push_back({std::nullopt, nth, onward, memFullErr});
}

void clear()
{
    filePlans.clear();
    allocationPlans.clear();
    counts = {};
    allocations = 0;
    anyMet = halfway = false;
}

bool met()
{
    return anyMet;
}

int count(FileCall kind)
{
    return counts[static_cast<std::size_t>(kind)];
}

int allocationCount()
{
    return allocations;
}

const char *name(FileCall kind)
{
    return names[static_cast<std::size_t>(kind)];
}

std::optional<FileCall> kindNamed(const std::string &name)
{
    for (std::size_t i = 0; i < names.size(); ++i)
        if (name == names[i])
            return static_cast<FileCall>(i);
    return std::nullopt;
}

OSErr check(FileCall kind)
{
    ++counts[static_cast<std::size_t>(kind)];
    halfway = false;
    return strike(filePlans, kind);
}

bool stopsHalfway()
{
    return halfway;
}

bool allocationFails()
{
    ++allocations;
    return strike(allocationPlans, std::nullopt) != noErr;
}

}  // namespace toolbox::faults
