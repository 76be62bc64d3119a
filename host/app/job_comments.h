// The structuring comments of a job that a person wants to know.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace riders::app {

struct JobComments {
    std::string title;  // UTF-8; empty where the job states none
    std::optional<long> pages;

    bool operator==(const JobComments &) const = default;
};

// From the job's first bytes, beginning with its "%!", and its last ones, where
// the number of its pages may stand.
JobComments commentsOf(std::string_view head, std::string_view tail);

}  // namespace riders::app
