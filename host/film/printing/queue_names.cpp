#include "film/printing/queue_names.h"

#include <algorithm>

#include "film/printing/print_server.h"

namespace riders::printing {

// textsOf gives the first attribute of a name, and here each queue has one.
std::vector<std::string> queueNames()
{
    const cups::Libcups &cups = cups::libcups();
    const PrintServer server;
    ipp_t *request = cups.newRequest(IPP_OP_CUPS_GET_PRINTERS);
    cups.addString(request, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", nullptr, "printer-name");
    const Response response = server.send(request);
    std::vector<std::string> names;
    for (ipp_attribute_t *at = cups.firstAttribute(response.get()); at; at = cups.nextAttribute(response.get())) {
        const char *name = cups.attributeName(at);
        if (name && std::string(name) == "printer-name")
            names.emplace_back(cups.attributeString(at, 0, nullptr));
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

}  // namespace riders::printing
