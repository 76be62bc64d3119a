// Fills the folder of a proof with films and pictures, page by page as the plates are ready.
#pragma once

#include <atomic>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "io/workers.h"
#include "looking/facts/page_facts.h"
#include "looking/page_dots.h"
#include "looking/pictures/page_looks.h"
#include "plates/make_plates.h"
#include "proof/progress.h"

namespace riders::proof {

struct PageProofsRun {
    const plates::Survey &survey;
    const looking::PageLooks &looks;
    const plates::AskedFor &riders;  // what the riders file asks for
    double dpi;
    double mesh;                   // threads per inch; 0 for none
    std::filesystem::path folder;  // of the proof
    bool loupe = false;            // whether to make tiles
};

// All plates of a page, as surveyed.
class WholePlates : public looking::PageDots {
public:
    explicit WholePlates(std::vector<plates::BitPlate> made) : plates(std::move(made)) {}
    Part at(std::size_t plate, const plates::Place &place) const override { return {&plates[plate], place}; }

    const std::vector<plates::BitPlate> plates;
};

class PageProofs {
public:
    // All must outlive it, and it must outlive the work that it adds.
    PageProofs(const PageProofsRun &run, io::Workers &workers, Progress &progress);

    // Adds the work on the page's plates. From any thread, once for each page. Throws Refusal.
    void take(plates::RenderedPage page);
    // In place of it, for a page whose dots are not to be had; `why` is for people.
    void leaveOut(size_t page, const std::string &why);
    // The pages as surveyed; to be called once the workers have finished.
    std::vector<looking::PageFacts> facts();

private:
    using Dots = std::shared_ptr<const WholePlates>;

    looking::PageFacts startedFacts(const plates::RenderedPage &page) const;
    void addPlates(size_t page, const Dots &dots);
    void finishPlate(size_t page, size_t plate, const WholePlates &dots);
    void cutIntoTiles(looking::PlateFacts &plate, const plates::BitPlate &bits) const;
    void finishPage(size_t page, const WholePlates &dots);

    const PageProofsRun run_;
    io::Workers &workers_;
    Progress &progress_;
    std::vector<looking::PageFacts> pages_;
    std::vector<std::atomic<size_t>> platesLeft_;  // of each page, to be finished
};

}  // namespace riders::proof
