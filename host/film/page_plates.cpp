#include "film/page_plates.h"

#include <algorithm>
#include <utility>

#include "film/film_names.h"
#include "plates/files/plate_names.h"

namespace riders::film {

PagePlates::PagePlates(const plates::Survey &survey, const ScreenChoice &choice, FilmFiles files)
    : survey_(survey), choice_(choice), files_(std::move(files)),
      lastPage_(std::max(static_cast<int>(survey.report.pages.size()), survey.pages.back().number))
{
    for (std::size_t i = 0; i < survey.pages.size(); ++i)
        pages_.push_back(pageOf(i));
}

FilmPage PagePlates::pageOf(std::size_t index) const
{
    const plates::SurveyedPage &surveyed = survey_.pages[index];
    FilmPage page{index, surveyed.number, surveyed.width, surveyed.height, {}};
    std::vector<std::string> names;
    for (const plates::SurveyedPlate &plate : surveyed.plates)
        names.push_back(plates::plateNameFrom(plate.plate, survey_.inksKnown()));
    const std::vector<std::string> files = filmNames(files_.job, page.number, lastPage_, names, files_.extension);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const plates::SurveyedPlate &plate = surveyed.plates[i];
        const std::string ink = plates::inkBytesFrom(plate.plate, survey_.inksKnown());
        page.plates.push_back({i, names[i], files_.place(files[i]), choice_.of(index, ink), plate.ink, true});
    }
    return page;
}

PagePlate PagePlates::further(const FilmPage &page, const std::string &name,
                              const std::vector<std::string> &others) const
{
    std::vector<std::string> names = others;
    names.push_back(name);
    const std::string file = filmNames(files_.job, page.number, lastPage_, names, files_.extension).back();
    const std::vector<std::string> &blank = survey_.pages[page.index].blank;
    const bool known = std::any_of(blank.begin(), blank.end(), [&](const std::string &plate) {
        return plates::plateNameFrom(plate, survey_.inksKnown()) == name;
    });
    return {std::nullopt, name, files_.place(file), choice_.of(page.index, name), false, known};
}

}  // namespace riders::film
