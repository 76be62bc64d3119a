// The pages of a job, shared among several runs of the interpreter so that all cores have work.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "film/page_order.h"

namespace riders::film {

struct PageShare {
    std::vector<std::size_t> places;  // of its pages among all, ascending
    int threads = 1;                  // besides the one that reads its tones
    int interpreterThreads = 0;       // besides the interpreter's own
};

// Pages are dealt out in turn, so that all shares come near to a page's turn at about the same time.
std::vector<PageShare> pageShares(std::size_t pages, int cores);

// The first of the share's pages that is not finished; one after the last where all are.
std::size_t nextPlace(const PageShare &share, PageOrder &order);

// Calls `make` for each share, each on a thread of its own, with the number of the share. It returns once all
// pages of the share are finished in `order`; what it throws counts as a failure of the first that is not. Throws
// what PageOrder::rethrow does, when all have ended.
void makeShares(const std::vector<PageShare> &shares, PageOrder &order,
                const std::function<void(const PageShare &share, std::size_t number)> &make);

}  // namespace riders::film
