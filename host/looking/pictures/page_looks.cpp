#include "looking/pictures/page_looks.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "looking/pictures/pictures.h"
#include "looking/pictures/png_file.h"
#include "plates/measuring/telling_place.h"

namespace riders::looking {
namespace {

constexpr int kLongestPicture = 1700;  // pixels
// A plate is shown at its page's place if it shows at least this share there of what it shows at its own.
constexpr double kGoodEnough = 0.25;

PlateLook lookAt(const plates::TintPlate &tints, bool ink, double dpi)
{
    PlateLook look;
    look.tints = plates::tintRange(tints, dpi);
    if (!ink)
        return look;
    look.blocks = inkBlocks(tints, dpi);
    look.flatPlace = plates::flatTint(tints, dpi);
    if (!look.flatPlace.empty()) {
        const int x = static_cast<int>((look.flatPlace.left + look.flatPlace.width / 2) * dpi);
        const int y = static_cast<int>((look.flatPlace.top + look.flatPlace.height / 2) * dpi);
        look.flatInk = tints.row(y)[x] / 255.0;
    }
    return look;
}

// Its middle counts as well, since that is what the page shows at first.
bool showsEnough(const plates::TintPlate &tints, double dpi, const plates::Place &place, const plates::Place &own)
{
    const auto share = [&](const plates::Place &of) { return plates::tellingShare(tints, dpi, of); };
    return share(place) >= kGoodEnough * share(own) &&
           share(plates::middleOf(place)) >= kGoodEnough * share(plates::middleOf(own));
}

// Where the loupe is held: over one place for all plates, and over a plate's own if it shows little there.
void chooseLoupes(PageLook &look, const plates::PageInTints &seen)
{
    std::vector<const plates::TintPlate *> inked;
    for (size_t i = 0; i < seen.plates.size(); ++i)
        if (seen.page.plates[i].ink)
            inked.push_back(&seen.plates[i]);
    look.loupe = plates::tellingPlace(inked, seen.dpi, kLoupeInches);
    for (size_t i = 0; i < seen.plates.size(); ++i) {
        if (!seen.page.plates[i].ink)
            continue;
        const plates::Place own = plates::tellingPlace({&seen.plates[i]}, seen.dpi, kLoupeInches);
        look.plates[i].loupe = showsEnough(seen.plates[i], seen.dpi, look.loupe, own) ? look.loupe : own;
    }
}

void writePagePicture(const std::vector<plates::TintPlate> &composite, double dpi,
                      const std::filesystem::path &file)
{
    std::vector<InkedTints> inked;
    for (size_t i = 0; i < std::size(plates::kProcessPlates); ++i)
        inked.push_back({&composite[i], inkColour(plates::kProcessPlates[i], {})});
    const int longest = std::max(composite[0].width, composite[0].height);
    const int step = std::max(2, (longest + kLongestPicture - 1) / kLongestPicture);
    writePicture(file, pagePicture(inked, step), dpi / step);
}

}  // namespace

void PageLooks::take(const plates::PageInTints &seen)
{
    PageLook look;
    for (size_t i = 0; i < seen.plates.size(); ++i)
        look.plates.push_back(lookAt(seen.plates[i], seen.page.plates[i].ink, seen.dpi));
    chooseLoupes(look, seen);
    writePagePicture(seen.composite, seen.dpi, pictures_ / ("page-" + std::to_string(seen.page.number) + ".png"));
    std::lock_guard lock(mutex_);
    looks_[seen.page.number] = std::move(look);
}

}  // namespace riders::looking
