#include "film/printing/print_plan.h"

#include <algorithm>

#include "film/printing/ask_queue.h"
#include "film/printing/driver_page.h"
#include "film/printing/keeping_options.h"
#include "io/interruption.h"
#include "io/refusal.h"

namespace riders::printing {
namespace {

// Beyond that its drivers leave out droplets, so that paper does not drown: of 6.2 million pixels 2.7 were missing
// at 2880x1440.
constexpr double kGutenprintDpi = 1440;

const char *formatOf(QueueKind kind)
{
    switch (kind) {
    case QueueKind::rasterDriver:
        return "application/vnd.cups-raster";
    case QueueKind::pwg:
        return "image/pwg-raster";
    case QueueKind::postScript:
        break;
    }
    return "application/postscript";
}

std::vector<QueueResolution> usable(const Queue &queue)
{
    std::vector<QueueResolution> resolutions = queue.resolutions;
    if (queue.isGutenprint())
        resolutions.erase(std::remove_if(resolutions.begin(), resolutions.end(),
                                         [](const QueueResolution &resolution) {
                                             return std::max(resolution.dpi.across, resolution.dpi.down) >
                                                    kGutenprintDpi;
                                         }),
                          resolutions.end());
    return resolutions;
}

QueueResolution chooseResolution(const Queue &queue, const std::optional<screening::Resolution> &asked)
{
    const std::vector<QueueResolution> resolutions = usable(queue);
    if (resolutions.empty())
        throw io::Refusal(queue.name + " has no resolution at which its driver keeps dots");
    if (!asked)
        return sensible(resolutions);
    for (const QueueResolution &resolution : resolutions)
        if (same(resolution.dpi, *asked))
            return resolution;
    const bool finer = std::any_of(queue.resolutions.begin(), queue.resolutions.end(),
                                   [&](const QueueResolution &other) { return same(other.dpi, *asked); });
    throw io::Refusal(queue.name + (finer ? "'s driver leaves out droplets at " : " cannot print at ") +
                      inWords(*asked) + " dpi; at " + inWords(resolutions) + " it keeps them");
}

}  // namespace

PrintPlan planPrinting(const PrintRequest &request)
{
    const io::Interruption interruption;
    const PrintServer server;
    PrintPlan plan;
    plan.queue = askQueue(server, request.queue);
    io::Interruption::check();
    plan.format = formatOf(plan.queue.kind);
    plan.resolution = chooseResolution(plan.queue, request.resolution);
    plan.options = keepingOptions(plan.queue, request.options);
    if (!plan.queue.resolutionOption.empty())
        plan.options.push_back({plan.queue.resolutionOption, plan.resolution.choice});
    plan.media = request.media;
    plan.copies = request.copies;
    plan.dryRun = request.dryRun;
    // Said to a printer without a driver, too.
    if (const auto model = plan.queue.options.find("ColorModel");
        plan.queue.kind == QueueKind::pwg && model != plan.queue.options.end() &&
        std::count(model->second.choices.begin(), model->second.choices.end(), "FastGray"))
        plan.options.push_back({"ColorModel", "FastGray"});
    if (plan.queue.kind == QueueKind::rasterDriver) {
        const ColourModel model = chooseColourModel(plan.queue);
        if (!model.choice.empty())
            plan.options.push_back({"ColorModel", model.choice});
        if (model.bits != 1 && !plan.queue.isGutenprint())
            plan.doubts.push_back(
                "the driver " + plan.queue.driver +
                " makes droplets of grey; it gets only black and white, but whether it keeps each "
                "pixel has not been measured");
        if (plan.queue.isGutenprint())
            plan.doubts.push_back(
                "the driver does not say how near to the edge the printer prints; films are kept "
                "an eighth of an inch away");
    }
    return plan;
}

}  // namespace riders::printing
