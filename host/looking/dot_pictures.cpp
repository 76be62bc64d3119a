#include "looking/dot_pictures.h"

#include <utility>
#include <vector>

#include "looking/file_names.h"
#include "looking/pictures/pictures.h"
#include "looking/pictures/png_file.h"
#include "plates/files/plate_names.h"

namespace riders::looking {

PageFacts startedFacts(const plates::Survey &survey, std::size_t index, const PageLook &look, double dpi)
{
    const plates::SurveyedPage &surveyed = survey.pages[index];
    PageFacts page;
    page.number = surveyed.number;
    page.width = surveyed.width;
    page.height = surveyed.height;
    page.dpi = dpi;
    page.loupe = look.loupe;
    page.picture = pictureCalled(nameOf(page));
    for (std::size_t i = 0; i < surveyed.plates.size(); ++i) {
        PlateFacts plate;
        plate.name = plates::plateNameFrom(surveyed.plates[i].plate, survey.inksKnown());
        plate.tints = look.plates[i].tints;
        plate.flatPlace = look.plates[i].flatPlace;
        plate.flatTint = look.plates[i].flatInk;
        plate.loupe = look.plates[i].loupe;
        page.plates.push_back(std::move(plate));
    }
    return page;
}

void drawPlate(const PageFacts &page, std::size_t plate, const PageDots &dots, const std::filesystem::path &folder)
{
    const PlateFacts &facts = page.plates[plate];
    const PageDots::Part part = dots.at(plate, facts.loupe.empty() ? page.loupe : facts.loupe);
    writePicture(folder / facts.picture, loupePicture({{part.bits, {0, 0, 0}}}, page.dpi, part.place),
                 loupePictureDpi(page.dpi));
}

void drawAllInks(PageFacts &page, const PageDots &dots, const std::filesystem::path &folder)
{
    std::vector<InkedPlate> inked;
    plates::Place place;
    for (std::size_t i = 0; i < page.plates.size(); ++i)
        if (!page.plates[i].picture.empty()) {
            const PageDots::Part part = dots.at(i, page.loupe);
            inked.push_back({part.bits, page.plates[i].ink});
            place = part.place;
        }
    if (inked.empty())
        return;
    page.rosette = rosetteOf(page);
    writePicture(folder / page.rosette, loupePicture(inked, page.dpi, place), loupePictureDpi(page.dpi));
}

}  // namespace riders::looking
