#include "looking/pictures/pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace riders::looking {
namespace {

constexpr double kFinestLoupe = 2400;

int loupeStep(double dpi)
{
    return std::max(1, static_cast<int>(std::ceil(dpi / kFinestLoupe)));
}

// The mean of a square of a picture.
class Mean {
public:
    void add(Colour colour)
    {
        red_ += colour.red;
        green_ += colour.green;
        blue_ += colour.blue;
        ++count_;
    }
    Colour value() const
    {
        const auto part = [this](int sum) { return static_cast<std::uint8_t>((sum + count_ / 2) / count_); };
        return count_ ? Colour{part(red_), part(green_), part(blue_)} : Colour{};
    }

private:
    int red_ = 0, green_ = 0, blue_ = 0, count_ = 0;
};

// A picture whose pixels are the means of step x step of those that `rowAt` puts into a row.
template <typename RowAt>
Picture reduced(int width, int height, int step, const RowAt &rowAt)
{
    Picture picture{(width + step - 1) / step, (height + step - 1) / step, {}};
    picture.pixels.reserve(static_cast<size_t>(picture.width) * static_cast<size_t>(picture.height));
    std::vector<Colour> row(static_cast<size_t>(std::max(0, width)));
    std::vector<Mean> means;
    for (int top = 0; top < height; top += step) {
        means.assign(static_cast<size_t>(picture.width), {});
        for (int y = top; y < std::min(top + step, height); ++y) {
            rowAt(y, row);
            for (size_t x = 0, at = 0; step > 1 && at < row.size(); ++x)
                for (const size_t end = std::min(at + static_cast<size_t>(step), row.size()); at < end; ++at)
                    means[x].add(row[at]);
        }
        if (step == 1)
            picture.pixels.insert(picture.pixels.end(), row.begin(), row.end());
        else
            for (const Mean &mean : means)
                picture.pixels.push_back(mean.value());
    }
    return picture;
}

// What inks over each other look like; bit i is plate i.
class Overprints {
public:
    explicit Overprints(const std::vector<InkedPlate> &plates) : plates_(plates)
    {
        for (size_t inks = 0; inks < first_.size(); ++inks)
            first_[inks] = over({}, inks, 0, kFirst);
    }

    Colour of(std::uint64_t inks) const
    {
        const Colour first = first_[inks % first_.size()];
        return plates_.size() <= kFirst ? first : over(first, inks, kFirst, plates_.size());
    }

private:
    static constexpr size_t kFirst = 8;

    Colour over(Colour colour, std::uint64_t inks, size_t from, size_t end) const
    {
        for (size_t i = from; i < std::min(end, plates_.size()); ++i)
            if (inks >> i & 1)
                colour = multiply(colour, plates_[i].ink);
        return colour;
    }

    const std::vector<InkedPlate> &plates_;
    std::array<Colour, size_t{1} << kFirst> first_;
};

}  // namespace

Picture pagePicture(const std::vector<InkedTints> &plates, int step)
{
    std::vector<std::array<Colour, 256>> tints(plates.size());
    for (size_t i = 0; i < plates.size(); ++i)
        for (size_t tint = 0; tint < 256; ++tint)
            tints[i][tint] = tintOf(plates[i].ink, static_cast<int>(tint));
    const int width = plates[0].plate->width, height = plates[0].plate->height;
    return reduced(width, height, step, [&](int y, std::vector<Colour> &row) {
        std::fill(row.begin(), row.end(), Colour{});
        for (size_t i = 0; i < plates.size(); ++i) {
            const std::uint8_t *inks = plates[i].plate->row(y);
            for (size_t x = 0; x < row.size(); ++x)
                if (inks[x])
                    row[x] = multiply(row[x], tints[i][inks[x]]);
        }
    });
}

Picture loupePicture(const std::vector<InkedPlate> &plates, double dpi, const plates::Place &place)
{
    const int pageWidth = plates[0].plate->width, pageHeight = plates[0].plate->height;
    const auto pixels = [dpi](double inches) { return static_cast<int>(std::lround(inches * dpi)); };
    const int left = std::clamp(pixels(place.left), 0, pageWidth),
              top = std::clamp(pixels(place.top), 0, pageHeight);
    const int width = std::min(pixels(place.width), pageWidth - left);
    const int height = std::min(pixels(place.height), pageHeight - top);
    const Overprints overprints(plates);
    std::vector<std::uint64_t> inks(static_cast<size_t>(std::max(0, width)));
    return reduced(width, height, loupeStep(dpi), [&](int y, std::vector<Colour> &row) {
        std::fill(inks.begin(), inks.end(), 0);
        for (size_t i = 0; i < plates.size(); ++i)
            for (int x = 0; x < width; ++x)
                inks[static_cast<size_t>(x)] |= std::uint64_t{plates[i].plate->at(left + x, top + y)} << i;
        for (size_t x = 0; x < row.size(); ++x)
            row[x] = overprints.of(inks[x]);
    });
}

double loupePictureDpi(double plateDpi)
{
    return plateDpi / loupeStep(plateDpi) / kLoupeTimes;
}

}  // namespace riders::looking
