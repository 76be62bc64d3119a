// Every command of the program, with every system call that it makes failing in turn: the first of its kind, the
// second, and so on, with each error, once and for good.
#include <climits>

#include "fault/call_kinds.h"
#include "fault/trial.h"
#include "fault/which_faults.h"

namespace {

constexpr size_t kSome = 3;
constexpr int kSomeTimes = 4;  // further ones: no signal comes for ever

std::string described(const CallKind &kind, const Fault &fault)
{
    return std::string(kind.name) + " " + std::to_string(fault.nth) + (fault.further ? " and later: " : ": ") +
           fault.failure.name;
}

const CallKind *kindOf(long call)
{
    for (const CallKind &kind : callKinds())
        if (kind.number == call)
            return &kind;
    return nullptr;
}

std::vector<Fault> faultsOf(const std::map<long, int> &calls)
{
    std::vector<Fault> faults;
    for (const auto &[call, count] : calls)
        if (const CallKind *kind = kindOf(call))
            for (int nth = 1; nth <= count; ++nth)
                for (const Failure &failure : kind->failures)
                    for (int further : {0, failure.error == EINTR ? kSomeTimes : INT_MAX})
                        faults.push_back({call, failure, nth, further});
    return faults;
}

// RIDERS_FAULTS="rename 3" tries those alone whose description begins so.
void keepAsked(std::vector<Fault> &faults)
{
    const char *asked = getenv("RIDERS_FAULTS");
    if (asked && !triesAllFaults())
        std::erase_if(faults, [asked](const Fault &fault) {
            return !described(*kindOf(fault.call), fault).starts_with(asked);
        });
}

class SystemCalls : public ::testing::TestWithParam<TriedCommand> {};

}  // namespace

TEST_P(SystemCalls, MayFail)
{
    Trial trial(GetParam());
    ASSERT_GT(trial.right().calls.size(), 3u);
    for (const auto &[call, count] : trial.right().calls)
        EXPECT_TRUE(neverFails(call) || kindOf(call))
            << "call_kinds.cpp does not say how call " << call << " fails";
    std::vector<Fault> faults = faultsOf(trial.right().calls);
    keepAsked(faults);
    keepSome(faults, kSome);
    for (const Fault &fault : faults) {
        const CallKind &kind = *kindOf(fault.call);
        trial.tryWith({fault, {}, fault.further > 0 && removes(fault.call)}, kind.name, described(kind, fault));
    }
    trial.print();
}

INSTANTIATE_TEST_SUITE_P(Of, SystemCalls, ::testing::ValuesIn(triedCommands()),
                         [](const auto &row) { return row.param.name; });
