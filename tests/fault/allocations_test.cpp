// Every command of the program, with every allocation that it makes failing in turn, once and for good.
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <climits>

#include "failing_allocations/plan.h"
#include "fault/trial.h"
#include "fault/which_faults.h"

namespace {

constexpr size_t kSome = 2;

// The plan, mapped here and, by the library that it preloads, in the program.
class SharedPlan {
public:
    SharedPlan()
    {
        const int descriptor = open(file_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        if (ftruncate(descriptor, sizeof(AllocationPlan)) != 0)
            abort();
        plan_ = static_cast<AllocationPlan *>(
            mmap(nullptr, sizeof(AllocationPlan), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0));
        close(descriptor);
    }
    ~SharedPlan() { munmap(plan_, sizeof(AllocationPlan)); }
    SharedPlan(const SharedPlan &) = delete;

    AllocationPlan *operator->() { return plan_; }
    std::vector<std::string> environment() const
    {
        return {"LD_PRELOAD=" RIDERS_FAILING_ALLOCATIONS,
                std::string(AllocationPlan::kVariable) + "=" + file_.string()};
    }

private:
    TemporaryFolder folder_;
    std::filesystem::path file_ = folder_ / "plan";
    AllocationPlan *plan_ = nullptr;
};

struct AllocationFault {
    long nth, further;
};

class Allocations : public ::testing::TestWithParam<TriedCommand> {};

}  // namespace

TEST_P(Allocations, MayFail)
{
    Trial trial(GetParam());
    SharedPlan plan;
    const auto tryPlanned = [&](const AllocationFault &fault) {
        plan->nth = fault.nth;
        plan->further = fault.further;
        trial.tryWith({{}, plan.environment(), true}, "allocations",
                      "allocation " + std::to_string(fault.nth) + (fault.further ? " and later" : ""));
    };
    tryPlanned({0, 0});
    const long count = plan->count;
    ASSERT_GT(count, 10);
    std::vector<AllocationFault> faults;
    for (long nth = 1; nth <= count; ++nth)
        for (long further : {0L, LONG_MAX})
            faults.push_back({nth, further});
    keepSome(faults, kSome);
    for (const AllocationFault &fault : faults)
        tryPlanned(fault);
    trial.print();
}

INSTANTIATE_TEST_SUITE_P(Of, Allocations, ::testing::ValuesIn(triedCommands()),
                         [](const auto &row) { return row.param.name; });
