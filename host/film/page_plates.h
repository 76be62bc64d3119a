// The plates of the pages as films have them: names, files, screens.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "film/screen_choice.h"
#include "plates/survey/survey.h"

namespace riders::film {

struct PagePlate {
    std::size_t surveyed = 0;  // index among the surveyed page's plates
    std::string name;          // UTF-8
    std::filesystem::path file;
    PlateDots dots;
    bool ink = false;
};

struct FilmPage {
    int number = 0;
    double width = 0, height = 0;  // inches, of the upright page
    std::vector<PagePlate> plates;
};

// Of all surveyed pages; the files are in the folder. `job` is what they are named after.
std::vector<FilmPage> filmPages(const plates::Survey &survey, const ScreenChoice &choice,
                                const std::filesystem::path &folder, const std::filesystem::path &job,
                                const std::string &extension);

}  // namespace riders::film
