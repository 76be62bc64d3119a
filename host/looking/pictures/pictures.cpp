#include "looking/pictures/pictures.h"

#include <algorithm>
#include <cmath>

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

// A picture whose pixels are the means of step x step of what `at` returns.
template <typename At>
Picture reduced(int width, int height, int step, const At &at)
{
    Picture picture{(width + step - 1) / step, (height + step - 1) / step, {}};
    picture.pixels.reserve(static_cast<size_t>(picture.width) * static_cast<size_t>(picture.height));
    for (int top = 0; top < height; top += step)
        for (int left = 0; left < width; left += step) {
            Mean mean;
            for (int y = top; y < std::min(top + step, height); ++y)
                for (int x = left; x < std::min(left + step, width); ++x)
                    mean.add(at(x, y));
            picture.pixels.push_back(mean.value());
        }
    return picture;
}

}  // namespace

Picture pagePicture(const std::vector<InkedTints> &plates, int step)
{
    const int width = plates[0].plate->width, height = plates[0].plate->height;
    return reduced(width, height, step, [&plates](int x, int y) {
        Colour colour;
        for (const InkedTints &inked : plates)
            if (const int ink = inked.plate->row(y)[x])
                colour = multiply(colour, tintOf(inked.ink, ink));
        return colour;
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
    return reduced(width, height, loupeStep(dpi), [&](int x, int y) {
        Colour colour;
        for (const InkedPlate &inked : plates)
            if (inked.plate->at(left + x, top + y))
                colour = multiply(colour, inked.ink);
        return colour;
    });
}

double loupePictureDpi(double plateDpi)
{
    return plateDpi / loupeStep(plateDpi) / kLoupeTimes;
}

}  // namespace riders::looking
