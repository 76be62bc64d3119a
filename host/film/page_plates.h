// The plates of the pages as films have them: names, files, screens.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "film/screen_choice.h"
#include "plates/survey/survey.h"

namespace riders::film {

struct PagePlate {
    std::optional<std::size_t> surveyed;  // index among the surveyed page's plates, if it is one of them
    std::string name;                     // UTF-8
    std::filesystem::path file;
    PlateDots dots;
    bool ink = false;   // as far as the survey has seen
    bool known = true;  // to the survey; else it is the page's only if it has ink, since the run that streams the
                        // page may have met the ink on another
};

struct FilmPage {
    std::size_t index = 0;  // in the survey
    int number = 0;
    double width = 0, height = 0;  // inches, of the upright page
    std::vector<PagePlate> plates;
};

struct FilmFiles {
    std::filesystem::path job;  // that they are named after
    std::string extension;
    std::function<std::filesystem::path(const std::string &name)> place;
};

class PagePlates {
public:
    // The survey and the choice must outlive it.
    PagePlates(const plates::Survey &survey, const ScreenChoice &choice, FilmFiles files);

    // All surveyed pages.
    const std::vector<FilmPage> &pages() const { return pages_; }
    // Of an ink that the survey has not met, or seen nothing of: the page's next plate after so many others.
    PagePlate further(const FilmPage &page, const std::string &name, const std::vector<std::string> &others) const;

private:
    FilmPage pageOf(std::size_t index) const;

    const plates::Survey &survey_;
    const ScreenChoice &choice_;
    const FilmFiles files_;
    int lastPage_ = 0;
    std::vector<FilmPage> pages_;
};

}  // namespace riders::film
