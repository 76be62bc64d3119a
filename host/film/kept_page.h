// What is kept of the dots of a page's films, and known of them, to be looked at.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "film/film_made.h"
#include "film/kept_tiles.h"
#include "film/kept_window.h"
#include "film/page_plates.h"
#include "film/plate_screens.h"
#include "film/request.h"
#include "film/sheet.h"
#include "looking/facts/page_facts.h"
#include "looking/page_dots.h"
#include "looking/pictures/page_looks.h"
#include "plates/tones/tones.h"

namespace riders::film {

struct KeptPageRun {
    const FilmRequest &request;
    const plates::Survey &survey;
    const FilmPage &page;
    const looking::PageLook &look;
    const plates::TonePage &tones;
    const Sheet &sheet;
    PlateScreens &screens;
    std::filesystem::path folder;  // of the page to look at
};

struct FilmLink {
    std::string url;   // of the film's file; empty where it is in none
    std::string kind;  // of file, for people
};

// Plates are counted as they come from the interpreter. Nothing of the run but the request is used once it is
// made.
class KeptPage : public looking::PageDots {
public:
    KeptPage(const KeptPageRun &run, const std::vector<const PagePlate *> &plates);

    // What is to be kept of a plate's rows.
    std::vector<std::shared_ptr<KeptWindow>> windowsOf(std::size_t plate) const;
    // What makes tiles of them; none where nobody wants to zoom.
    std::shared_ptr<KeptTiles> tilesOf(std::size_t plate) const { return plates_[inOrder_[plate]].tiles; }
    // Draws the film that was made of a plate; from any thread, once for each. Throws Refusal.
    void take(std::size_t plate, const PlateMade &made, const FilmLink &link, const std::filesystem::path &folder);
    // Draws what all films make together. Throws Refusal.
    looking::PageFacts finish(const std::filesystem::path &folder);

    // By the plate's place among the page's facts.
    Part at(std::size_t plate, const plates::Place &place) const override;

private:
    // What is kept of a plate.
    struct Window {
        plates::Place place;  // on the upright page
        std::shared_ptr<KeptWindow> kept;
        plates::BitPlate dots;  // upright
    };
    struct Plate {
        std::string picture;  // its name, once there is one
        std::vector<Window> windows;
        std::shared_ptr<KeptTiles> tiles;
    };

    void addPlate(const KeptPageRun &run, const PagePlate &plate);
    void keep(const KeptPageRun &run, std::size_t plate, const plates::Place &place);
    void keepTiles(const KeptPageRun &run, std::size_t plate, const std::string &file);
    void layGrid(std::size_t plate);
    void keepWhatIsShown(const KeptPageRun &run);

    const FilmRequest &request_;
    looking::PageFacts facts_;
    std::vector<Plate> plates_;         // as in the facts
    std::vector<std::size_t> inOrder_;  // for each as they come: which of these it is
};

}  // namespace riders::film
