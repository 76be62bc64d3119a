#include "film/page_shares.h"

#include <algorithm>
#include <system_error>
#include <thread>

#include "io/refusal.h"

namespace riders::film {
namespace {

// The memory that each takes does not grow with the page, but adds up.
constexpr std::size_t kMostShares = 4;
constexpr int kMostInterpreterThreads = 4;

constexpr std::size_t kAfterAll = static_cast<std::size_t>(-1);

}  // namespace

std::size_t nextPlace(const PageShare &share, PageOrder &order)
{
    const auto first = std::find_if(share.places.begin(), share.places.end(),
                                    [&](std::size_t place) { return !order.isFinished(place); });
    return first == share.places.end() ? kAfterAll : *first;
}

std::vector<PageShare> pageShares(std::size_t pages, int cores)
{
    const std::size_t most = std::min(kMostShares, static_cast<std::size_t>(std::max(1, cores)));
    std::vector<PageShare> shares(std::max<std::size_t>(1, std::min(pages, most)));
    for (std::size_t place = 0; place < pages; ++place)
        shares[place % shares.size()].places.push_back(place);
    const int coresEach = (cores + static_cast<int>(shares.size()) - 1) / static_cast<int>(shares.size());
    for (PageShare &share : shares) {
        share.threads = std::max(1, coresEach);
        share.interpreterThreads = coresEach > 1 ? std::min(coresEach, kMostInterpreterThreads) : 0;
    }
    return shares;
}

void makeShares(const std::vector<PageShare> &shares, PageOrder &order,
                const std::function<void(const PageShare &share, std::size_t number)> &make)
{
    const auto run = [&](std::size_t number) {
        try {
            make(shares[number], number);
        } catch (const EarlierPageFailed &) {
            // Which one is known.
        } catch (...) {
            order.failed(nextPlace(shares[number], order), std::current_exception());
        }
    };
    std::vector<std::thread> others;
    for (std::size_t number = 1; number < shares.size(); ++number)
        try {
            others.emplace_back(run, number);
        } catch (const std::system_error &) {
            order.failed(shares[number].places.front(),
                         std::make_exception_ptr(io::Refusal("there are not enough threads")));
        }
    run(0);
    for (std::thread &other : others)
        other.join();
    order.rethrow();
}

}  // namespace riders::film
