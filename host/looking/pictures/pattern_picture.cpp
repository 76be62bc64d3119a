#include "looking/pictures/pattern_picture.h"

#include <algorithm>
#include <cmath>

#include "looking/pictures/linear_light.h"

namespace riders::looking {
namespace {

// Of a cell: this blurs its own wave to less than a hundredth, and leaves a quarter of the rosette's.
constexpr double kBlur = 0.5;
constexpr double kLeastPixelsACell = 3;  // before it is blurred

struct LightPicture {
    int width = 0, height = 0;
    std::vector<Light> pixels;

    Light &at(int x, int y) { return pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + x]; }
    const Light &at(int x, int y) const { return pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + x]; }
};

void add(Light &sum, const Light &light, float share)
{
    sum.red += light.red * share;
    sum.green += light.green * share;
    sum.blue += light.blue * share;
}

// What light all possible overprints let through: bit i is plate i.
std::vector<Light> overprints(const std::vector<InkedPlate> &plates)
{
    std::vector<Light> lights(size_t{1} << plates.size());
    for (size_t inks = 0; inks < lights.size(); ++inks)
        for (size_t i = 0; i < plates.size(); ++i)
            if (inks >> i & 1) {
                const Light ink = lightOf(plates[i].ink);
                Light &all = lights[inks];
                all = {all.red * ink.red, all.green * ink.green, all.blue * ink.blue};
            }
    return lights;
}

struct PixelPlace {
    int left, top, width, height;
};

PixelPlace pixelsOf(const plates::BitPlate &plate, double dpi, const plates::Place &place)
{
    const auto pixels = [dpi](double inches) { return static_cast<int>(std::lround(inches * dpi)); };
    const int left = std::clamp(pixels(place.left), 0, plate.width - 1);
    const int top = std::clamp(pixels(place.top), 0, plate.height - 1);
    return {left, top, std::clamp(pixels(place.width), 1, plate.width - left),
            std::clamp(pixels(place.height), 1, plate.height - top)};
}

// Each pixel the mean of those of the plates that it covers: at most `longest` along a side.
LightPicture averaged(const std::vector<InkedPlate> &plates, const PixelPlace &place, int longest)
{
    const double step = std::max(1.0, std::max(place.width, place.height) / static_cast<double>(longest));
    LightPicture picture{
        std::max(1, static_cast<int>(place.width / step)), std::max(1, static_cast<int>(place.height / step)), {}};
    picture.pixels.resize(static_cast<size_t>(picture.width) * static_cast<size_t>(picture.height));
    const std::vector<Light> lights = overprints(plates);
    const auto start = [step](int i) { return static_cast<int>(std::lround(i * step)); };
    std::vector<int> counts(lights.size());
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) {
            std::fill(counts.begin(), counts.end(), 0);
            for (int py = start(y); py < std::min(start(y + 1), place.height); ++py)
                for (int px = start(x); px < std::min(start(x + 1), place.width); ++px) {
                    size_t inks = 0;
                    for (size_t i = 0; i < plates.size(); ++i)
                        inks |= size_t{plates[i].plate->at(place.left + px, place.top + py)} << i;
                    ++counts[inks];
                }
            int all = 0;
            for (const int count : counts)
                all += count;
            Light mean{0, 0, 0};
            for (size_t inks = 0; inks < lights.size(); ++inks)
                add(mean, lights[inks], static_cast<float>(counts[inks]) / static_cast<float>(std::max(1, all)));
            picture.at(x, y) = mean;
        }
    return picture;
}

// Blurred by a bell curve along the rows; columns and rows change places.
LightPicture blurredAndTurned(const LightPicture &picture, double spread)
{
    const int reach = static_cast<int>(std::ceil(3 * spread));
    std::vector<float> bell;
    for (int i = -reach; i <= reach; ++i)
        bell.push_back(static_cast<float>(std::exp(-i * i / (2 * spread * spread))));
    LightPicture turned{picture.height, picture.width, std::vector<Light>(picture.pixels.size())};
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) {
            const int first = std::max(-reach, -x), last = std::min(reach, picture.width - 1 - x);
            float weight = 0;
            for (int i = first; i <= last; ++i)
                weight += bell[static_cast<size_t>(i + reach)];
            Light sum{0, 0, 0};
            for (int i = first; i <= last; ++i)
                add(sum, picture.at(x + i, y), bell[static_cast<size_t>(i + reach)] / weight);
            turned.at(y, x) = sum;
        }
    return turned;
}

LightPicture reduced(const LightPicture &picture, int step)
{
    LightPicture small{picture.width / step, picture.height / step, {}};
    small.pixels.resize(static_cast<size_t>(small.width) * static_cast<size_t>(small.height));
    const float share = 1.0F / static_cast<float>(step * step);
    for (int y = 0; y < small.height; ++y)
        for (int x = 0; x < small.width; ++x) {
            Light mean{0, 0, 0};
            for (int i = 0; i < step * step; ++i)
                add(mean, picture.at(x * step + i % step, y * step + i / step), share);
            small.at(x, y) = mean;
        }
    return small;
}

LightPicture seenFromAfar(const std::vector<InkedPlate> &plates, const PixelPlace &place, double cells)
{
    const int longest = std::max(kPatternPixels, static_cast<int>(cells * kLeastPixelsACell));
    LightPicture picture = averaged(plates, place, longest);
    const double spread = kBlur * std::max(picture.width, picture.height) / cells;
    picture = blurredAndTurned(blurredAndTurned(picture, spread), spread);
    return reduced(picture, (longest + kPatternPixels - 1) / kPatternPixels);
}

}  // namespace

bool showsDots(const plates::Place &place, double cell)
{
    return std::max(place.width, place.height) / cell * kPixelsACell <= kPatternPixels;
}

Picture patternPicture(const std::vector<InkedPlate> &plates, double dpi, const plates::Place &place, double cell)
{
    const PixelPlace pixels = pixelsOf(*plates[0].plate, dpi, place);
    const LightPicture light = showsDots(place, cell)
                                   ? averaged(plates, pixels, kPatternPixels)
                                   : seenFromAfar(plates, pixels, std::max(place.width, place.height) / cell);
    Picture picture{light.width, light.height, {}};
    for (const Light &pixel : light.pixels)
        picture.pixels.push_back(colourOf(pixel));
    return picture;
}

}  // namespace riders::looking
