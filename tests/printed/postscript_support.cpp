#include "printed/postscript_support.h"

#include <sys/wait.h>

#include <cmath>
#include <complex>
#include <fstream>
#include <numbers>
#include <sstream>

#include "meter/spots.h"

namespace {

constexpr int kWindow = 512;
using Wave = std::complex<double>;

std::string quoted(const std::filesystem::path &path)
{
    return "'" + path.string() + "'";
}

// In place; the size is a power of two.
void transform(std::vector<Wave> &data, size_t first, size_t stride)
{
    const size_t n = kWindow;
    for (size_t i = 1, j = 0; i < n; ++i) {
        size_t bit = n >> 1;
        for (; j & bit; bit >>= 1)
            j ^= bit;
        j ^= bit;
        if (i < j)
            std::swap(data[first + i * stride], data[first + j * stride]);
    }
    for (size_t length = 2; length <= n; length <<= 1) {
        const Wave step = std::polar(1.0, -2 * std::numbers::pi / static_cast<double>(length));
        for (size_t start = 0; start < n; start += length) {
            Wave turn = 1;
            for (size_t k = 0; k < length / 2; ++k, turn *= step) {
                Wave &low = data[first + (start + k) * stride];
                Wave &high = data[first + (start + k + length / 2) * stride];
                const Wave turned = high * turn;
                high = low - turned;
                low += turned;
            }
        }
    }
}

// The window's pixels less their mean, fading out to its edges.
std::vector<Wave> windowed(const Bitmap &page)
{
    const int left = (page.width - kWindow) / 2, top = (page.height - kWindow) / 2;
    const double mean = page.share(left, top, left + kWindow, top + kWindow);
    const auto fade = [](int i) { return 0.5 - 0.5 * std::cos(2 * std::numbers::pi * (i + 0.5) / kWindow); };
    std::vector<Wave> data(kWindow * kWindow);
    for (int y = 0; y < kWindow; ++y)
        for (int x = 0; x < kWindow; ++x)
            data[y * kWindow + x] = (page.at(left + x, top + y) - mean) * fade(x) * fade(y);
    return data;
}

// Strength of the wave with that many periods per window across and down.
double strength(const std::vector<Wave> &data, double across, double down)
{
    const Wave stepX = std::polar(1.0, -2 * std::numbers::pi * across / kWindow);
    const Wave stepY = std::polar(1.0, -2 * std::numbers::pi * down / kWindow);
    Wave sum = 0, turnY = 1;
    for (int y = 0; y < kWindow; ++y, turnY *= stepY) {
        Wave row = 0, turn = 1;
        for (int x = 0; x < kWindow; ++x, turn *= stepX)
            row += data[y * kWindow + x] * turn;
        sum += row * turnY;
    }
    return std::abs(sum);
}

std::pair<double, double> strongestWhole(std::vector<Wave> data)
{
    for (size_t y = 0; y < kWindow; ++y)
        transform(data, y * kWindow, 1);
    for (size_t x = 0; x < kWindow; ++x)
        transform(data, x, kWindow);
    size_t best = 0;
    for (size_t i = 0; i < data.size() / 2; ++i)  // the other half mirrors this one
        if (std::abs(data[i]) > std::abs(data[best]))
            best = i;
    const double across = static_cast<double>(best % kWindow);
    return {across > kWindow / 2 ? across - kWindow : across, static_cast<double>(best / kWindow)};
}

}  // namespace

std::string composeRiders(const RidersChoice &choice)
{
    std::string text = pieceBytes(16499) + pieceBytes(16500);
    if (choice.spotBody)
        text += pieceBytes(16506) + *choice.spotBody + pieceBytes(16507);
    else if (choice.frequency || choice.angle)
        text += pieceBytes(16135);
    if (choice.frequency)
        text += pieceBytes(16501) + *choice.frequency + pieceBytes(16502);
    if (choice.angle)
        text += pieceBytes(16503) + *choice.angle + pieceBytes(16504);
    if (choice.flatness)
        text += pieceBytes(16560) + *choice.flatness + pieceBytes(16561);
    if (choice.annotation)
        text += pieceBytes(16508) + choice.font + pieceBytes(16509) + choice.size + pieceBytes(16510) +
                *choice.annotation + pieceBytes(16511);
    if (choice.errorHandler)
        text += pieceBytes(16520);
    return text + pieceBytes(16600);
}

// The meter's first spot functions are those of the menu.
const std::vector<SpotShape> kSpotShapes = [] {
    std::vector<SpotShape> shapes;
    for (int id = 16128; id <= 16134; ++id) {
        const riders::meter::NamedSpot &spot = riders::meter::namedSpots()[static_cast<size_t>(id - 16128)];
        shapes.push_back({id, spot.name, spot.value});
    }
    return shapes;
}();

GhostscriptResult runGhostscript(const TemporaryFolder &folder, const std::string &job, const std::string &page,
                                 const std::string &options)
{
    writeFile(folder / "job.ps", job);
    const std::string command = "timeout 60 gs -q -dSAFER -dBATCH -dNOPAUSE " + options +
                                " -sOutputFile=" + quoted(folder / page) + " " + quoted(folder / "job.ps") +
                                " </dev/null >" + quoted(folder / "output") + " 2>" + quoted(folder / "errors");
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentsOf(folder / "output"),
            contentsOf(folder / "errors")};
}

double Bitmap::share(int left, int top, int right, int bottom) const
{
    int count = 0;
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x)
            count += at(x, y);
    return static_cast<double>(count) / ((right - left) * (bottom - top));
}

Bitmap readBitmap(const std::filesystem::path &file)
{
    std::ifstream in(file, std::ios::binary);
    std::string magic, line;
    std::getline(in, magic);
    while (in.peek() == '#')
        std::getline(in, line);
    Bitmap page;
    in >> page.width >> page.height;
    in.get();
    if (magic != "P4" || !in)
        throw std::runtime_error("no bitmap: " + file.string());
    page.ink.resize(static_cast<size_t>(page.width) * page.height);
    std::string row((page.width + 7) / 8, 0);
    for (int y = 0; y < page.height && in.read(row.data(), static_cast<std::streamsize>(row.size())); ++y)
        for (int x = 0; x < page.width; ++x)
            page.ink[static_cast<size_t>(y) * page.width + x] = row[x / 8] >> (7 - x % 8) & 1;
    return page;
}

MeasuredScreen measureScreen(const Bitmap &page, double dpi)
{
    const std::vector<Wave> data = windowed(page);
    auto [across, down] = strongestWhole(data);
    double best = strength(data, across, down);
    for (double step = 0.5; step > 0.002;) {
        const double stepped[4][2] = {
            {across + step, down}, {across - step, down}, {across, down + step}, {across, down - step}};
        bool better = false;
        for (const auto &[x, y] : stepped)
            if (const double power = strength(data, x, y); power > best)
                best = power, across = x, down = y, better = true;
        if (!better)
            step /= 2;
    }
    const double degrees = std::atan2(down, across) * 180 / std::numbers::pi;
    return {std::hypot(across, down) / kWindow * dpi, std::fmod(degrees + 360, 180)};
}

std::string onInterpreterWithout(std::string riders, const std::vector<std::string> &names,
                                 const std::string &changed)
{
    std::string before = "userdict /playedSystem systemdict length dict put\n"
                         "systemdict {playedSystem 3 1 roll put} forall\n";
    for (const std::string &name : names)
        before += "playedSystem /" + name + " undef userdict /" + name + " {(trap: " + name + ") = stop} put\n";
    before += changed;
    for (size_t at = 0; (at = riders.find("systemdict", at)) != std::string::npos; at += 12)
        riders.replace(at, 10, "playedSystem");
    std::string after;
    for (const std::string &name : names)
        after += "userdict /" + name + " undef\n";
    return "%!PS\n{} settransfer\n" + before + riders + after;
}

// No level of the language has these.
const std::vector<std::string> kGhostscriptOnly = {"max", "min"};
const std::vector<std::string> kLevel3Only = {"filter", "resourcestatus", "setcolorrendering"};
const std::vector<std::string> kLevel2Only = {
    "filter",         "resourcestatus",     "setpagedevice", "currentpagedevice", "sethalftone", "currenthalftone",
    "setcolorscreen", "currentcolorscreen", "currentglobal", "setglobal",         "rectfill"};
