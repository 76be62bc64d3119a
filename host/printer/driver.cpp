#include "printer/driver.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "film/resolution_text.h"
#include "io/refusal.h"
#include "printer/formats.h"
#include "printer/hooks.h"
#include "printer/raster.h"

namespace riders::printer {
namespace {

constexpr const char *kDriver = "riders-films";
constexpr const char *kFormat = "application/vnd.riders-films";  // nobody sends it
constexpr const char *kMedia[] = {"iso_a4_210x297mm",  "iso_a3_297x420mm",   "iso_a2_420x594mm",
                                  "iso_a1_594x841mm",  "iso_a0_841x1189mm",  "iso_a5_148x210mm",
                                  "iso_b4_250x353mm",  "na_letter_8.5x11in", "na_legal_8.5x14in",
                                  "na_ledger_11x17in", "na_super-b_13x19in"};

bool makeDocument(pappl_job_t *job, pappl_device_t *, void *)
{
    return gJobLine != nullptr && gJobLine->make(job, {});
}

// The format that is only the filters' end, should somebody send it: no film comes of it.
bool makeRaw(pappl_job_t *job, pappl_pr_options_t *, pappl_device_t *device)
{
    return makeDocument(job, device, nullptr);
}

bool isReady(pappl_printer_t *)
{
    return true;
}

void identify(pappl_printer_t *, pappl_identify_actions_t, const char *)
{
}

void setCallbacks(pappl_pr_driver_data_t &data)
{
    data.identify_cb = identify;
    data.identify_default = data.identify_supported = PAPPL_IDENTIFY_ACTIONS_SOUND;
    data.printfile_cb = makeRaw;
    data.status_cb = isReady;
}

// Its own first: that is what a client asks for that knows none.
void setResolutions(pappl_pr_driver_data_t &data, const Queue &queue)
{
    std::vector<std::pair<int, int>> all;
    if (const auto dpi = film::resolutionFromText(queue.choices.get("dpi")))
        all.emplace_back(static_cast<int>(dpi->across), static_cast<int>(dpi->down));
    for (const int usual : {1200, 600, 2400, 300})
        all.emplace_back(usual, usual);
    for (const auto &resolution : all) {
        bool known = false;
        for (int i = 0; i < data.num_resolution; ++i)
            known |= data.x_resolution[i] == resolution.first && data.y_resolution[i] == resolution.second;
        if (known || data.num_resolution == PAPPL_MAX_RESOLUTION)
            continue;
        data.x_resolution[data.num_resolution] = resolution.first;
        data.y_resolution[data.num_resolution++] = resolution.second;
    }
    data.x_default = data.x_resolution[0];
    data.y_default = data.y_resolution[0];
}

void setMedia(pappl_pr_driver_data_t &data)
{
    for (const char *const medium : kMedia)
        data.media[data.num_media++] = medium;
    data.num_source = 1;
    data.source[0] = "main";
    data.num_type = 1;
    data.type[0] = "stationery";
    pappl_media_col_t &medium = data.media_default;
    std::strncpy(medium.size_name, kMedia[0], sizeof medium.size_name - 1);
    std::strncpy(medium.source, "main", sizeof medium.source - 1);
    std::strncpy(medium.type, "stationery", sizeof medium.type - 1);
    medium.size_width = 21000;
    medium.size_length = 29700;
    data.media_ready[0] = medium;
    data.borderless = true;
}

void setChoices(pappl_pr_driver_data_t &data, ipp_t *attributes)
{
    for (const ChoiceKind &kind : choiceKinds())
        if (kind.attribute != nullptr) {
            data.vendor[data.num_vendor++] = kind.attribute;
            ippAddString(attributes, IPP_TAG_PRINTER, IPP_TAG_TEXT,
                         (std::string(kind.attribute) + "-default").c_str(), nullptr, "");
        }
}

// What IPP Everywhere asks for besides what PAPPL says by itself. Pages of a job cannot have options of their own:
// of overrides there is only what says for which pages they are, and nothing that they could change.
void addEverywhere(ipp_t *attributes)
{
    ippAddBoolean(attributes, IPP_TAG_PRINTER, "preferred-attributes-supported", 0);
    for (const char *const name : {"print-rendering-intent-default", "print-rendering-intent-supported"})
        ippAddString(attributes, IPP_TAG_PRINTER, IPP_TAG_KEYWORD, name, nullptr, "auto");
    ippAddString(attributes, IPP_TAG_PRINTER, IPP_TAG_KEYWORD, "pwg-raster-document-sheet-back", nullptr,
                 "normal");
    static const char *const overrides[] = {"document-number", "document-numbers", "pages"};
    ippAddStrings(attributes, IPP_TAG_PRINTER, IPP_TAG_KEYWORD, "overrides-supported", 3, nullptr, overrides);
    constexpr std::string_view kDisk =
        "type=other;maxcapacity=-2;level=-2;class=other;unit=other;colorantname=none;";
    ippAddOctetString(attributes, IPP_TAG_PRINTER, "printer-supply", kDisk.data(), static_cast<int>(kDisk.size()));
    ippAddString(attributes, IPP_TAG_PRINTER, IPP_TAG_TEXT, "printer-supply-description", nullptr, "Films");
}

// The queue that this thread makes a printer.
thread_local const Queue *served = nullptr;

bool describeQueue(pappl_system_t *, const char *driver, const char *, const char *, pappl_pr_driver_data_t *data,
                   ipp_t **attributes, void *)
{
    if (std::strcmp(driver, kDriver) != 0 || served == nullptr)
        return false;
    setCallbacks(*data);
    data->format = kFormat;
    std::strncpy(data->make_and_model, "Riders Films", sizeof data->make_and_model - 1);
    data->ppm = data->ppm_color = 1;
    data->kind = PAPPL_KIND_DOCUMENT | PAPPL_KIND_LARGE_FORMAT;
    data->color_supported = PAPPL_COLOR_MODE_AUTO | PAPPL_COLOR_MODE_COLOR | PAPPL_COLOR_MODE_MONOCHROME;
    data->color_default = PAPPL_COLOR_MODE_AUTO;
    data->orient_default = IPP_ORIENT_PORTRAIT;
    takeRaster(*data);
    setResolutions(*data, *served);
    setMedia(*data);
    *attributes = ippNew();
    setChoices(*data, *attributes);
    addEverywhere(*attributes);
    return true;
}

}  // namespace

void setDriver(pappl_system_t *system)
{
    static pappl_pr_driver_t driver = {kDriver, "Films", nullptr, nullptr};
    papplSystemSetPrinterDrivers(system, 1, &driver, nullptr, nullptr, describeQueue, nullptr);
    for (const char *const format : kFormats)
        papplSystemAddMIMEFilter(system, format, kFormat, makeDocument, nullptr);
    papplSystemSetMIMECallback(system, formatOf, nullptr);
}

void servePrinter(pappl_system_t *system, const Queue &queue, bool announced)
{
    served = &queue;
    pappl_printer_t *const printer =
        papplPrinterCreate(system, 0, queue.name.c_str(), kDriver, "MFG:Riders;MDL:Films;", "file:///dev/null");
    served = nullptr;
    if (printer == nullptr)
        throw io::Refusal("the queue " + queue.name + " cannot be set up");
    if (!announced)
        papplPrinterSetDNSSDName(printer, nullptr);
}

}  // namespace riders::printer
