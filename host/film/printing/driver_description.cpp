#include "film/printing/driver_description.h"

#include <algorithm>
#include <ctime>
#include <sstream>
#include <string>

#include "io/private_folder.h"
#include "io/refusal.h"

namespace riders::printing {
namespace {

using cups::libcups;

// A line of the description: what is taken, and by which program; `made` is what that makes of it.
struct Filter {
    std::string taken, made, program;
};

std::vector<Filter> filtersOf(ppd_file_t *ppd)
{
    std::vector<Filter> filters;
    for (const char *key : {"cupsFilter2", "cupsFilter"})
        for (ppd_attr_t *line = libcups().ppdFindAttr(ppd, key, nullptr); line;
             line = libcups().ppdFindNextAttr(ppd, key, nullptr)) {
            std::istringstream words(line->value ? line->value : "");
            Filter filter;
            std::string cost;
            words >> filter.taken;
            if (std::string(key) == "cupsFilter2")
                words >> filter.made;
            words >> cost >> filter.program;
            filters.push_back(filter);
        }
    return filters;
}

void setKind(const std::vector<Filter> &filters, Queue &queue)
{
    const auto taking = [&](const char *format) {
        return std::find_if(filters.begin(), filters.end(),
                            [&](const Filter &filter) { return filter.taken == format; });
    };
    if (const auto raster = taking("application/vnd.cups-raster"); raster != filters.end()) {
        queue.kind = QueueKind::rasterDriver;
        queue.driver = raster->program;
    } else if (const auto pwg = taking("image/pwg-raster"); pwg != filters.end() && pwg->program == "-") {
        queue.kind = QueueKind::pwg;
    } else if (filters.empty() || taking("application/vnd.cups-postscript") != filters.end() ||
               taking("application/postscript") != filters.end()) {
        queue.kind = QueueKind::postScript;
    } else {
        std::string formats;
        for (const Filter &filter : filters)
            formats += (formats.empty() ? "" : ", ") + filter.taken;
        throw io::Refusal(queue.name + ": its driver makes dots of its own from what it is sent (" + formats +
                          "): it takes neither raster nor PostScript");
    }
}

void addOptions(ppd_file_t *ppd, Queue &queue)
{
    for (ppd_option_t *option = libcups().ppdFirstOption(ppd); option; option = libcups().ppdNextOption(ppd)) {
        const ppd_choice_t *marked = libcups().ppdFindMarkedChoice(ppd, option->keyword);
        QueueOption &known = queue.options[option->keyword];
        known.chosen = marked ? marked->choice : option->defchoice;
        for (int i = 0; i < option->num_choices; ++i)
            known.choices.emplace_back(option->choices[i].choice);
    }
}

void addSheets(ppd_file_t *ppd, Queue &queue)
{
    for (int i = 0; i < ppd->num_sizes; ++i) {
        const ppd_size_t &size = ppd->sizes[i];
        if (std::string(size.name) != "Custom")
            queue.sheets.push_back({.name = size.name,
                                    .width = size.width,
                                    .height = size.length,
                                    .left = size.left,
                                    .bottom = size.bottom,
                                    .right = size.right,
                                    .top = size.top});
    }
    if (ppd->variable_sizes)
        queue.anySheets =
            AnySheets{.least = {.name = {}, .width = ppd->custom_min[0], .height = ppd->custom_min[1]},
                      .most = {.name = {}, .width = ppd->custom_max[0], .height = ppd->custom_max[1]},
                      .left = ppd->custom_margins[0],
                      .bottom = ppd->custom_margins[1],
                      .right = ppd->custom_margins[2],
                      .top = ppd->custom_margins[3]};
    queue.usualSheet = queue.options["PageSize"].chosen;
}

void addResolutions(ppd_file_t *ppd, Queue &queue)
{
    for (const char *name : {"Resolution", "SetResolution", "JCLResolution"}) {
        const ppd_option_t *option = libcups().ppdFindOption(ppd, name);
        for (int i = 0; option && i < option->num_choices; ++i) {
            const ppd_choice_t &choice = option->choices[i];
            const std::string code = choice.code ? choice.code : "";
            // Gutenprint's "automatic" leaves it to the quality.
            if (queue.isGutenprint() && code.find("cupsCompression") == code.npos)
                continue;
            std::optional<screening::Resolution> dpi = resolutionFromCode(code);
            if (!dpi)
                dpi = resolutionFromName(choice.choice);
            const auto known = [&](const QueueResolution &other) { return dpi && same(other.dpi, *dpi); };
            if (dpi && std::none_of(queue.resolutions.begin(), queue.resolutions.end(), known))
                queue.resolutions.push_back({choice.choice, *dpi});
        }
        if (!queue.resolutions.empty()) {
            queue.resolutionOption = name;
            return;
        }
    }
    if (const ppd_attr_t *only = libcups().ppdFindAttr(ppd, "DefaultResolution", nullptr); only && only->value)
        if (const std::optional<screening::Resolution> dpi = resolutionFromName(only->value))
            queue.resolutions.push_back({only->value, *dpi});
}

}  // namespace

void readDescription(const PrintServer &server, Queue &queue)
{
    const io::PrivateFolder folder;
    std::string file = folder.path() / "description.ppd";
    file.resize(file.size() + 1024);
    std::time_t changed = 0;
    const http_status_t status =
        libcups().getPpd(server.connection(), queue.name.c_str(), &changed, file.data(), file.size());
    file.resize(file.find('\0'));
    ppd_file_t *ppd = status == HTTP_STATUS_OK ? libcups().ppdOpenFile(file.c_str()) : nullptr;
    if (!ppd)
        throw io::Refusal(queue.name + " has no driver that says what the printer is; films need one");
    queue.description.reset(ppd, libcups().ppdClose);
    libcups().ppdMarkDefaults(ppd);
    for (const JobOption &option : queue.saved)
        libcups().ppdMarkOption(ppd, option.name.c_str(), option.value.c_str());
    setKind(filtersOf(ppd), queue);
    addOptions(ppd, queue);
    addSheets(ppd, queue);
    addResolutions(ppd, queue);
}

}  // namespace riders::printing
