#include "explain/explain.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <sstream>

#include "io/output.h"
#include "io/private_folder.h"
#include "plates/interpreter/interpreter.h"

namespace riders::explain {

// Prints what screenFromLine reads.
extern const std::string_view kExplain;

namespace {

constexpr std::string_view kLine = "%%RidersReached ";
// What the job needs to paint on a page of an inch.
constexpr std::string_view kAhead = "\nuserdict /RidersLine (%%RidersReached ) put "
                                    "<< /PageSize [72 72] >> setpagedevice\n";
constexpr double kDegree = std::numbers::pi / 180;
constexpr int kMostLevels = 256;
constexpr plates::InterpreterLimits kLimits = {.secondsAPage = 60, .slowPages = 1, .megabytes = 1024};

struct Supercell {
    int p = 0, q = 0;  // its side is (p, -q) in device pixels
};

// The whole cells nearest to the supercell's side are those that it was made of, where a cell has at least four
// pixels a side.
void reachBySupercell(ReachedScreen &screen, const Supercell &of, double dpi)
{
    constexpr double leastCell = 4;
    const std::complex<double> asked =
        std::polar(std::max(dpi / screen.askedFrequency, leastCell), screen.askedAngle * kDegree);
    const std::complex<double> side(of.p, -of.q);
    const std::complex<double> inCells = side / asked;
    const std::complex<double> cells(std::round(inCells.real()), std::round(inCells.imag()));
    if (cells == 0.0)
        return;
    const std::complex<double> reached = side / cells;
    screen.frequency = dpi / std::abs(reached);
    screen.angle = screen.askedAngle + std::arg(reached / asked) / kDegree;
    screen.supercellPixels = of.p * of.p + of.q * of.q;
    screen.supercellCells = static_cast<int>(std::norm(cells));
}

bool isUsable(const ReachedScreen &screen, const Supercell &supercell)
{
    constexpr int most = 1 << 14;
    const auto isSide = [](int side) { return side >= 0 && side <= most; };
    return screen.askedFrequency >= 0.01 && screen.askedFrequency < 1e5 && std::abs(screen.askedAngle) < 1e5 &&
           isSide(supercell.p) && isSide(supercell.q) && std::isfinite(screen.frequency) &&
           std::isfinite(screen.angle);
}

plates::PreparedJob jobOf(const std::filesystem::path &riders, const std::filesystem::path &page)
{
    return {plates::JobKind::postScript, riders, {std::filesystem::absolute(riders), page}};
}

}  // namespace

std::optional<ReachedScreen> screenFromLine(const std::string &line, double dpi)
{
    std::istringstream words(line);
    words.exceptions(std::ios::badbit);  // a lack of memory is not a line of another kind
    ReachedScreen screen;
    Supercell supercell;
    if (!(words >> screen.askedFrequency >> screen.askedAngle >> supercell.p >> supercell.q >> screen.frequency >>
          screen.angle >> screen.levels) ||
        words.get() != ' ' || !std::getline(words, screen.plate) || !isUsable(screen, supercell))
        return {};
    if (supercell.p != 0)
        reachBySupercell(screen, supercell, dpi);
    if (screen.frequency <= 0)
        return {};
    screen.cell = dpi / screen.frequency;
    if (screen.levels <= 0)
        screen.levels = static_cast<int>(std::min(screen.cell * screen.cell, 1e6)) + 1;
    screen.levels = std::min(screen.levels, kMostLevels);
    return screen;
}

std::vector<ReachedScreen> explain(const std::filesystem::path &riders, int dpi)
{
    const io::PrivateFolder folder;
    const std::filesystem::path page = folder.path() / "explain.ps", work = folder.path() / "work";
    std::filesystem::create_directory(work);
    io::writeFile(page, kExplain);
    const plates::InterpreterReport report = plates::interpret({.job = jobOf(riders, page),
                                                                .device = plates::PlateDevice::processPlates,
                                                                .dpi = static_cast<double>(dpi),
                                                                .folder = work,
                                                                .limits = kLimits,
                                                                .ahead = std::string(kAhead)});
    std::vector<ReachedScreen> screens;
    for (const std::string &line : report.said)
        if (line.starts_with(kLine))
            if (const auto screen = screenFromLine(line.substr(kLine.size()), dpi))
                screens.push_back(*screen);
    std::sort(screens.begin(), screens.end(), [](const ReachedScreen &one, const ReachedScreen &other) {
        return std::pair(one.plate == "Default", one.plate) < std::pair(other.plate == "Default", other.plate);
    });
    return screens;
}

}  // namespace riders::explain
