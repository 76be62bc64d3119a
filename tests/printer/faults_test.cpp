// The printer, with every system call that it makes while it starts, takes a job, makes its films and ends failing
// in turn. Whatever fails, it ends, and a job that was accepted is made by it or by the next, or has failed and
// says why.
#include <errno.h>
#include <signal.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <map>

#include "fault/call_kinds.h"
#include "fault/faulty_run.h"
#include "fault/which_faults.h"
#include "printer/troubled_run.h"

namespace printer_tests {
namespace {

constexpr std::size_t kSome = 3;
constexpr int kFurther = 4;  // of interruptions: no signal comes for ever

struct NamedFault {
    Fault fault;
    std::string kind, name;
};

const CallKind *kindOf(long call)
{
    for (const CallKind &kind : callKinds())
        if (kind.number == call)
            return &kind;
    return nullptr;
}

std::vector<NamedFault> faultsOf(const std::map<long, int> &calls)
{
    std::vector<NamedFault> faults;
    for (const auto &[call, count] : calls)
        if (const CallKind *const kind = kindOf(call))
            for (int nth = 1; nth <= count; ++nth)
                for (const Failure &failure : kind->failures)
                    for (const int further : {0, failure.error == EINTR ? kFurther : INT_MAX})
                        faults.push_back({{call, failure, nth, further},
                                          kind->name,
                                          std::string(kind->name) + " " + std::to_string(nth) +
                                              (further > 0 ? " and later: " : ": ") + failure.name});
    return faults;
}

// RIDERS_FAULTS="rename 3" tries those alone whose name begins so.
void keepAsked(std::vector<NamedFault> &faults)
{
    const char *const asked = std::getenv("RIDERS_FAULTS");
    if (asked != nullptr && !triesAllFaults())
        std::erase_if(faults, [&](const NamedFault &fault) { return !fault.name.starts_with(asked); });
}

// No memory and no thread: the print server's library does not live through that. For its jobs it is as if it had
// been killed.
bool mayKill(const Fault &fault)
{
    return fault.failure.error == ENOMEM || fault.failure.error == EAGAIN;
}

std::vector<std::string> tryWith(const std::optional<Fault> &fault, FaultyRun &run)
{
    TroubledRun trouble;
    const FaultyCommand command{trouble.command(), trouble.folder(), {}, {}};
    trouble.with([&] { run = fault ? runWithFault(command, fault) : runAndCount(command); });
    std::vector<std::string> wrong = trouble.wrongs(fault.has_value());
    if (!fault && !trouble.accepted())
        wrong.emplace_back("the job is refused");
    if (run.status == -SIGALRM)
        wrong.emplace_back("it does not end");
    else if (run.status < 0 && !(fault && mayKill(*fault)))
        wrong.push_back("it is ended by signal " + std::to_string(-run.status));
    else if (run.status > 0 && !run.muted && run.err.find("riders printer: ") == std::string::npos)
        wrong.push_back("it exits with " + std::to_string(run.status) + " and does not say why: " + run.err);
    return wrong;
}

TEST(PrinterFaultsTest, LoseNoJob)
{
    FaultyRun right;
    ASSERT_EQ(tryWith({}, right), std::vector<std::string>()) << right.err;
    for (const auto &[call, count] : right.calls)
        EXPECT_TRUE(neverFails(call) || kindOf(call) != nullptr)
            << "call_kinds.cpp does not say how call " << call << " fails";
    std::vector<NamedFault> faults = faultsOf(right.calls);
    keepAsked(faults);
    keepSome(faults, kSome);
    std::map<std::string, std::pair<int, int>> counts;
    for (const NamedFault &fault : faults) {
        FaultyRun run;
        std::vector<std::string> wrong = tryWith(fault.fault, run);
        // On a busy machine one takes too long once; one that does not end repeats that.
        if (run.status == -SIGALRM)
            wrong = tryWith(fault.fault, run);
        EXPECT_EQ(wrong, std::vector<std::string>()) << fault.name << "\nsaid: " << run.err;
        for (const std::string &row : {fault.kind, std::string("all")}) {
            ++counts[row].first;
            counts[row].second += wrong.empty() ? 0 : 1;
        }
    }
    for (const auto &[kind, count] : counts)
        std::printf("%-24s %-16s %6d tried, %4d failed\n", "printer", kind.c_str(), count.first, count.second);
}

}  // namespace
}  // namespace printer_tests
