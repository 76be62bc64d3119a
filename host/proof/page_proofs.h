// Fills the folder of a proof with films and pictures, page by page as the plates are ready.
#pragma once

#include <atomic>
#include <filesystem>
#include <memory>
#include <vector>

#include "io/workers.h"
#include "plates/make_plates.h"
#include "proof/facts/page_facts.h"
#include "proof/looking/page_looks.h"
#include "proof/progress.h"

namespace riders::proof {

struct PageProofsRun {
    const plates::Survey &survey;
    const PageLooks &looks;
    const plates::AskedFor &riders;  // what the riders file asks for
    double dpi;
    double mesh;                   // threads per inch; 0 for none
    std::filesystem::path folder;  // of the proof
};

class PageProofs {
public:
    // All must outlive it, and it must outlive the work that it adds.
    PageProofs(const PageProofsRun &run, io::Workers &workers, Progress &progress);

    // Adds the work on the page's plates. From any thread, once for each page. Throws Refusal.
    void take(plates::RenderedPage page);
    // The pages as surveyed; to be called once the workers have finished.
    std::vector<PageFacts> facts();

private:
    using Bits = std::shared_ptr<const std::vector<plates::BitPlate>>;

    PageFacts startedFacts(const plates::RenderedPage &page) const;
    void addPlates(size_t page, const Bits &plates);
    void writeRosette(PageFacts &page, const std::vector<plates::BitPlate> &plates) const;
    void finishPlate(size_t page, size_t plate, const plates::BitPlate &bits);

    const PageProofsRun run_;
    io::Workers &workers_;
    Progress &progress_;
    std::vector<PageFacts> pages_;
    std::vector<std::atomic<size_t>> platesLeft_;  // of each page, to be finished
};

}  // namespace riders::proof
