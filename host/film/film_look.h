// The page to look at of the films, made while they are.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "film/kept_page.h"
#include "looking/look_folder.h"
#include "looking/pictures/page_looks.h"

namespace riders::film {

class FilmLook {
public:
    // Makes a folder beside its place. The request must outlive it, and asks for a look. Throws Refusal where
    // anything but an earlier page to look at is there.
    explicit FilmLook(const FilmRequest &request);

    // While the job is surveyed: from any thread. Throws Refusal.
    void take(const plates::PageInTints &seen) { looks_.take(seen); }
    // Once it is: where a plate's screen can be measured, on the upright page; empty where there is no such place.
    plates::Place flatPlace(int page, std::size_t plate) const
    {
        return looks_.of(page).plates.at(plate).flatPlace;
    }

    // Once, before the first page. The survey must outlive it.
    void begin(const plates::Survey &survey) { survey_ = &survey; }
    // A page begins. `plates`: as they come from the interpreter, by which they are then counted.
    void beginPage(const FilmPage &page, const plates::TonePage &tones, const Sheet &sheet, PlateScreens &screens,
                   const std::vector<const PagePlate *> &plates);
    // What is to be kept of a plate's rows.
    std::vector<std::shared_ptr<KeptWindow>> windowsOf(std::size_t plate) const { return page_->windowsOf(plate); }
    // What makes tiles of them; none where nobody wants to zoom.
    std::shared_ptr<KeptTiles> tilesOf(std::size_t plate) const { return page_->tilesOf(plate); }
    // A film was made; from any thread, once for each. Throws Refusal, as the others do.
    void take(std::size_t plate, const PlateMade &made);
    // All of the page's films are made.
    void endPage();

    // Puts the page in place, which is returned. `said`: by the interpreter.
    std::filesystem::path finish(const std::vector<std::string> &said);

private:
    std::string linkTo(const std::filesystem::path &film) const;

    const FilmRequest &request_;
    const plates::Survey *survey_ = nullptr;
    const std::filesystem::path place_;
    looking::LookFolder folder_;
    looking::PageLooks looks_;
    std::optional<KeptPage> page_;
    std::vector<looking::PageFacts> pages_;
};

}  // namespace riders::film
