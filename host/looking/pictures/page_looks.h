// What is worth looking at on each page: found while a job is surveyed.
#pragma once

#include <filesystem>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "looking/pictures/shared_place.h"
#include "plates/measuring/flat_tint.h"
#include "plates/survey/survey.h"

namespace riders::looking {

struct PlateLook {
    plates::TintRange tints;
    plates::Place flatPlace;  // the best place to measure on, may be empty
    double flatInk = 0;       // the tint there, 0 to 1
    plates::Place loupe;      // where its dots show best; the page's place if they show well there
    InkBlocks blocks;         // none of a plate without ink
};

struct PageLook {
    plates::Place loupe;
    std::vector<PlateLook> plates;  // as surveyed
};

// Takes the pages as they are surveyed, and keeps what was found on them.
class PageLooks {
public:
    // Where the picture of each page goes, "page-N.png".
    explicit PageLooks(std::filesystem::path pictures) : pictures_(std::move(pictures)) {}

    // From any thread. Throws Refusal when the picture cannot be written.
    void take(const plates::PageInTints &seen);
    // What was found on a page that was taken; from any thread, once all are.
    const PageLook &of(int page) const { return looks_.at(page); }

private:
    const std::filesystem::path pictures_;
    std::mutex mutex_;
    std::map<int, PageLook> looks_;  // by the page's number
};

}  // namespace riders::looking
