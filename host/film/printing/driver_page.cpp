#include "film/printing/driver_page.h"

#include <algorithm>
#include <cstdio>
#include <optional>

#include "io/refusal.h"

namespace riders::printing {
namespace {

using cups::libcups;

// The library's list of options, from ours.
class Options {
public:
    explicit Options(const std::vector<JobOption> &options)
    {
        for (const JobOption &option : options)
            count_ = libcups().addOption(option.name.c_str(), option.value.c_str(), count_, &options_);
    }
    Options(const Options &) = delete;
    Options &operator=(const Options &) = delete;
    ~Options() { libcups().freeOptions(count_, options_); }

    int count() const { return count_; }
    cups_option_t *options() const { return options_; }

private:
    int count_ = 0;
    cups_option_t *options_ = nullptr;
};

std::optional<cups_page_header2_t> interpreted(const Queue &queue, const std::vector<JobOption> &options)
{
    ppd_file_t *ppd = queue.description.get();
    const Options list(options);
    libcups().ppdMarkDefaults(ppd);
    libcups().ppdMarkOptions(ppd, list.count(), list.options());
    cups_page_header2_t header{};
    if (libcups().rasterInterpretPpd(&header, ppd, list.count(), list.options(), nullptr) != 0)
        return std::nullopt;
    return header;
}

bool isBlackAndWhite(const cups_page_header2_t &header)
{
    return (header.cupsBitsPerColor == 1 || header.cupsBitsPerColor == 8) &&
           (header.cupsColorSpace == CUPS_CSPACE_K || header.cupsColorSpace == CUPS_CSPACE_W ||
            header.cupsColorSpace == CUPS_CSPACE_SW);
}

// Fewest bits first, then what is black by itself.
int rank(const cups_page_header2_t &header)
{
    return static_cast<int>(header.cupsBitsPerColor) * 2 + (blackIsSet(header) ? 0 : 1);
}

}  // namespace

bool blackIsSet(const cups_page_header2_t &header)
{
    return header.cupsColorSpace == CUPS_CSPACE_K;
}

ColourModel chooseColourModel(const Queue &queue)
{
    std::vector<std::string> choices = {""};
    if (const auto option = queue.options.find("ColorModel"); option != queue.options.end())
        choices = option->second.choices;
    std::optional<ColourModel> best;
    int bestRank = 0;
    for (const std::string &choice : choices) {
        const std::optional<cups_page_header2_t> header = interpreted(
            queue, choice.empty() ? std::vector<JobOption>() : std::vector<JobOption>{{"ColorModel", choice}});
        if (header && isBlackAndWhite(*header) && (!best || rank(*header) < bestRank)) {
            best = ColourModel{choice, header->cupsBitsPerColor};
            bestRank = rank(*header);
        }
    }
    if (!best)
        throw io::Refusal(queue.name + ": its driver takes only colour, and would make dots of its own from that");
    return *best;
}

cups_page_header2_t driverPage(const Queue &queue, const std::vector<JobOption> &options, const QueueSheet &sheet,
                               const screening::Resolution &dpi)
{
    const std::optional<cups_page_header2_t> interpretation = interpreted(queue, options);
    if (!interpretation || !isBlackAndWhite(*interpretation))
        throw io::Refusal(queue.name + ": its driver's description cannot be understood");
    cups_page_header2_t header = *interpretation;
    // A driver's other options may name a resolution, too, and the last would count: Gutenprint's quality does.
    header.HWResolution[0] = static_cast<unsigned>(dpi.across);
    header.HWResolution[1] = static_cast<unsigned>(dpi.down);
    header.cupsWidth = static_cast<unsigned>((sheet.right - sheet.left) * dpi.across / 72);
    header.cupsHeight = static_cast<unsigned>((sheet.top - sheet.bottom) * dpi.down / 72);
    header.cupsNumColors = 1;
    header.cupsBitsPerPixel = header.cupsBitsPerColor;
    header.cupsColorOrder = CUPS_ORDER_CHUNKED;
    header.cupsBytesPerLine = (header.cupsWidth * header.cupsBitsPerPixel + 7) / 8;
    header.NumCopies = 1;
    return header;
}

}  // namespace riders::printing
