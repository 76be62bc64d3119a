#include "film/printing/device_raster.h"

#include <algorithm>
#include <array>

#include "io/refusal.h"

namespace riders::printing {
namespace {

using cups::libcups;

constexpr int kPrinterMilliseconds = 10000;

struct Dest {
    cups_dest_t *dest;

    Dest(const PrintServer &server, const std::string &queue)
        : dest(libcups().namedDest(server.connection(), queue.c_str(), nullptr))
    {
    }
    Dest(const Dest &) = delete;
    Dest &operator=(const Dest &) = delete;
    ~Dest() { libcups().freeDests(dest ? 1 : 0, dest); }
};

Response attributesOf(const Dest &dest, const std::string &queue)
{
    std::array<char, 1024> resource{};
    const std::unique_ptr<http_t, decltype(&::httpClose)> connection(
        dest.dest ? libcups().connectDest(dest.dest, CUPS_DEST_FLAGS_DEVICE, kPrinterMilliseconds, nullptr,
                                          resource.data(), resource.size(), nullptr, nullptr)
                  : nullptr,
        libcups().close);
    const char *uri =
        dest.dest ? libcups().getOption("device-uri", dest.dest->num_options, dest.dest->options) : nullptr;
    if (!connection || !uri)
        throw io::Refusal(queue + ": its printer does not say what it takes (" + PrintServer::lastError() + ")");
    limitWaiting(connection.get());
    ipp_t *request = libcups().newRequest(IPP_OP_GET_PRINTER_ATTRIBUTES);
    libcups().addString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, uri);
    return {libcups().doRequest(connection.get(), request, resource.data()), libcups().deleteRequest};
}

}  // namespace

std::vector<QueueResolution> askDevice(const PrintServer &server, const std::string &queue)
{
    const Dest dest(server, queue);
    const Response response = attributesOf(dest, queue);
    const std::vector<std::string> types = textsOf(response.get(), "pwg-raster-document-type-supported");
    if (std::find(types.begin(), types.end(), "black_1") == types.end()) {
        std::string list;
        for (const std::string &type : types)
            list += (list.empty() ? "" : ", ") + type;
        throw io::Refusal(queue + ": its printer takes no raster of one bit a pixel" +
                          (list.empty() ? "" : " (but " + list + ")") +
                          ", and would make dots of its own from anything else");
    }
    std::vector<QueueResolution> resolutions;
    ipp_attribute_t *found =
        libcups().findAttribute(response.get(), "pwg-raster-document-resolution-supported", IPP_TAG_RESOLUTION);
    for (int i = 0; found && i < libcups().attributeCount(found); ++i) {
        int down = 0;
        ipp_res_t units = IPP_RES_PER_INCH;
        const int across = libcups().attributeResolution(found, i, &down, &units);
        if (units == IPP_RES_PER_INCH && across > 0 && down > 0)
            resolutions.push_back({"", {double(across), double(down)}});
    }
    return resolutions;
}

}  // namespace riders::printing
