// Pages that are made side by side and finished in their order, so that what is there after a failure is what
// there would be if they had been made one after the other.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <map>
#include <mutex>

namespace riders::film {

// Thrown where work on a page is of no more use, since one before it has failed.
struct EarlierPageFailed {};

// Pages are meant by their place among all that are made, from 0. From any thread.
class PageOrder {
public:
    // Waits until all pages before this one are finished. Throws Interrupted, and what check() does.
    void awaitTurn(std::size_t place);
    // The page, whose turn it is, is finished.
    void finished(std::size_t place);
    bool isFinished(std::size_t place);
    // Throws EarlierPageFailed where a page before this one has failed.
    void check(std::size_t place);
    // This ended the work before the page was finished; a place after the last is for what ended it after all
    // pages.
    void failed(std::size_t place, std::exception_ptr failure);
    // Throws what ended the work on the first of the pages that failed; does nothing where none did.
    void rethrow();

    // Held while a film is begun.
    std::mutex beginning;

private:
    bool hasFailedBefore(std::size_t place) const;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::size_t finished_ = 0;
    std::map<std::size_t, std::exception_ptr> failures_;
};

}  // namespace riders::film
