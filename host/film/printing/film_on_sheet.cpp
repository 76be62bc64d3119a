#include "film/printing/film_on_sheet.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <vector>

#include "io/decimal.h"
#include "io/refusal.h"

namespace riders::printing {
namespace {

// Gutenprint's descriptions say that all of a sheet is printed on, and its drivers then cut off what is not: 9
// points at the most, as measured with those for Epson's inkjets.
constexpr double kGutenprintEdge = 9;
// On shorter sheets the driver for Epson's Photo 1400 misplaces rows.
constexpr double kGutenprintLeastHeight = 250;
constexpr double kMostPoints = 100000;

struct Pixels {
    double left, top, right, bottom;
};

double pixels(double points, double dpi)
{
    return points * dpi / 72;
}

QueueSheet printable(const Queue &queue, QueueSheet sheet)
{
    if (queue.isGutenprint()) {
        sheet.left = std::max(sheet.left, kGutenprintEdge);
        sheet.bottom = std::max(sheet.bottom, kGutenprintEdge);
        sheet.right = std::min(sheet.right, sheet.width - kGutenprintEdge);
        sheet.top = std::min(sheet.top, sheet.height - kGutenprintEdge);
    }
    return sheet;
}

FilmOnSheet inTheMiddle(const PrintPlan &plan, const FilmExtent &film, const QueueSheet &sheet)
{
    const screening::Resolution &dpi = plan.resolution.dpi;
    return {sheet.name, sheet,
            std::lround(std::floor((pixels(sheet.width, dpi.across) - static_cast<double>(film.columns)) / 2)),
            std::lround(std::floor((pixels(sheet.height, dpi.down) - static_cast<double>(film.rows)) / 2))};
}

// Empty where it lies well.
std::string problemWith(const PrintPlan &plan, const FilmExtent &film, const FilmOnSheet &on)
{
    if (plan.queue.isGutenprint() && on.sheet.height < kGutenprintLeastHeight)
        return "the driver misplaces rows on a sheet that is lower than 90 mm";
    const screening::Resolution &dpi = plan.resolution.dpi;
    const QueueSheet area = printable(plan.queue, on.sheet);
    const Pixels within = {pixels(area.left, dpi.across), pixels(area.height - area.top, dpi.down),
                           pixels(area.right, dpi.across), pixels(area.height - area.bottom, dpi.down)};
    if (film.left == film.right)
        return "";
    const auto place = [](long corner, std::size_t offset) {
        return static_cast<double>(corner) + static_cast<double>(offset);
    };
    if (place(on.x, film.left) < within.left || place(on.y, film.top) < within.top ||
        place(on.x, film.right) > within.right || place(on.y, film.bottom) > within.bottom)
        return "the film has ink where the printer cannot print";
    return "";
}

std::string inMillimetres(double width, double height)
{
    const auto millimetres = [](double points) { return io::decimal(points * 25.4 / 72, 0); };
    return millimetres(width) + " x " + millimetres(height) + " mm";
}

std::string sizeOf(const PrintPlan &plan, const FilmExtent &film)
{
    const screening::Resolution &dpi = plan.resolution.dpi;
    return inMillimetres(static_cast<double>(film.columns) * 72 / dpi.across,
                         static_cast<double>(film.rows) * 72 / dpi.down);
}

std::optional<QueueSheet> anySheet(const Queue &queue, double width, double height)
{
    if (!queue.anySheets)
        return std::nullopt;
    const AnySheets &any = *queue.anySheets;
    if (width < any.least.width || height < any.least.height || width > any.most.width || height > any.most.height)
        return std::nullopt;
    return QueueSheet{.name = "Custom." + io::decimal(width, 0) + "x" + io::decimal(height, 0),
                      .width = width,
                      .height = height,
                      .left = any.left,
                      .bottom = any.bottom,
                      .right = width - any.right,
                      .top = height - any.top};
}

std::optional<QueueSheet> sheetNamed(const Queue &queue, const std::string &name)
{
    for (const QueueSheet &sheet : queue.sheets)
        if (sameName(sheet.name, name))
            return sheet;
    if (const std::optional<QueueSheet> size = sheetFromText(name))
        return anySheet(queue, std::round(size->width), std::round(size->height));
    return std::nullopt;
}

QueueSheet askedSheet(const PrintPlan &plan)
{
    if (const std::optional<QueueSheet> sheet = sheetNamed(plan.queue, plan.media))
        return *sheet;
    std::string names;
    for (const QueueSheet &sheet : plan.queue.sheets)
        names += (names.empty() ? "" : ", ") + sheet.name;
    throw io::Refusal("--media " + plan.media + ": " + plan.queue.name + " has " + names +
                      (plan.queue.anySheets ? ", and Custom.WIDTHxHEIGHT" : ""));
}

// The one in use, then from the smallest up; then one of the film's own size with room for what cannot be printed
// on.
std::vector<QueueSheet> candidates(const PrintPlan &plan, const FilmExtent &film)
{
    const Queue &queue = plan.queue;
    std::vector<QueueSheet> sheets = queue.sheets;
    std::stable_sort(sheets.begin(), sheets.end(), [&](const QueueSheet &one, const QueueSheet &other) {
        const auto order = [&](const QueueSheet &sheet) {
            return sameName(sheet.name, queue.usualSheet) ? 0 : sheet.width * sheet.height;
        };
        return order(one) < order(other);
    });
    const double width = static_cast<double>(film.columns) * 72 / plan.resolution.dpi.across,
                 height = static_cast<double>(film.rows) * 72 / plan.resolution.dpi.down;
    if (queue.anySheets) {
        const AnySheets &any = *queue.anySheets;
        const double sides = std::max({any.left, any.right, queue.isGutenprint() ? kGutenprintEdge : 0});
        const double ends = std::max({any.top, any.bottom, queue.isGutenprint() ? kGutenprintEdge : 0});
        const double least = queue.isGutenprint() ? kGutenprintLeastHeight : 0;
        if (const std::optional<QueueSheet> own =
                anySheet(queue, std::max(std::ceil(width + 2 * sides), any.least.width),
                         std::max({std::ceil(height + 2 * ends), any.least.height, least})))
            sheets.push_back(*own);
    }
    return sheets;
}

}  // namespace

void FilmExtent::add(const FilmExtent &other)
{
    columns = std::max(columns, other.columns);
    rows = std::max(rows, other.rows);
    if (other.left == other.right)
        return;
    if (left == right) {
        left = other.left;
        top = other.top;
    }
    left = std::min(left, other.left);
    top = std::min(top, other.top);
    right = std::max(right, other.right);
    bottom = std::max(bottom, other.bottom);
}

std::optional<QueueSheet> sheetFromText(std::string_view text)
{
    constexpr std::string_view custom = "custom.";
    if (!sameName(text.substr(0, custom.size()), custom))
        return std::nullopt;
    text.remove_prefix(custom.size());
    double sides[2] = {};
    for (double &side : sides) {
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), side);
        if (error != std::errc())
            return std::nullopt;
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        if (&side == sides) {
            if (text.empty() || text.front() != 'x')
                return std::nullopt;
            text.remove_prefix(1);
        }
    }
    const double unit = text.empty() || text == "pt" ? 1
                        : text == "in"               ? 72
                        : text == "cm"               ? 72 / 2.54
                        : text == "mm"               ? 72 / 25.4
                                                     : 0;
    for (double &side : sides) {
        side *= unit;
        if (!(side >= 1 && side <= kMostPoints))
            return std::nullopt;
    }
    return QueueSheet{.name = {}, .width = sides[0], .height = sides[1]};
}

void checkSheet(const PrintPlan &plan)
{
    if (!plan.media.empty())
        askedSheet(plan);
}

FilmOnSheet layFilm(const PrintPlan &plan, const FilmExtent &film)
{
    if (!plan.media.empty()) {
        const FilmOnSheet on = inTheMiddle(plan, film, askedSheet(plan));
        const std::string problem = problemWith(plan, film, on);
        if (!problem.empty())
            throw io::Refusal("the film of " + sizeOf(plan, film) + " on " + on.choice + ", " +
                              inMillimetres(on.sheet.width, on.sheet.height) + ": " + problem +
                              "; choose a larger --media, or turn the film with --rotate 90");
        return on;
    }
    for (const QueueSheet &sheet : candidates(plan, film)) {
        const FilmOnSheet on = inTheMiddle(plan, film, sheet);
        if (problemWith(plan, film, on).empty())
            return on;
    }
    throw io::Refusal(plan.queue.name + " has no sheet for a film of " + sizeOf(plan, film) +
                      "; perhaps it fits with --rotate 90");
}

}  // namespace riders::printing
