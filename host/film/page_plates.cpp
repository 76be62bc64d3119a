#include "film/page_plates.h"

#include <algorithm>

#include "film/film_names.h"
#include "plates/files/plate_names.h"

namespace riders::film {
namespace {

int lastPageOf(const plates::Survey &survey)
{
    return std::max(static_cast<int>(survey.report.pages.size()), survey.pages.back().number);
}

FilmPage pageWithPlates(const plates::Survey &survey, std::size_t index, const ScreenChoice &choice)
{
    const plates::SurveyedPage &surveyed = survey.pages[index];
    FilmPage page{surveyed.number, surveyed.width, surveyed.height, {}};
    for (std::size_t i = 0; i < surveyed.plates.size(); ++i) {
        const plates::SurveyedPlate &plate = surveyed.plates[i];
        page.plates.push_back({i,
                               plates::plateNameFrom(plate.plate, survey.inksKnown()),
                               {},
                               choice.of(index, plates::inkBytesFrom(plate.plate, survey.inksKnown())),
                               plate.ink});
    }
    return page;
}

}  // namespace

std::vector<FilmPage> filmPages(const plates::Survey &survey, const ScreenChoice &choice,
                                const std::filesystem::path &folder, const std::filesystem::path &job,
                                const std::string &extension)
{
    std::vector<FilmPage> pages;
    for (std::size_t i = 0; i < survey.pages.size(); ++i) {
        FilmPage page = pageWithPlates(survey, i, choice);
        std::vector<std::string> names;
        for (const PagePlate &plate : page.plates)
            names.push_back(plate.name);
        const std::vector<std::string> files = filmNames(job, page.number, lastPageOf(survey), names, extension);
        for (std::size_t plate = 0; plate < files.size(); ++plate)
            page.plates[plate].file = folder / files[plate];
        pages.push_back(std::move(page));
    }
    return pages;
}

}  // namespace riders::film
