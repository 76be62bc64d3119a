#include "film/printing/ask_queue.h"

#include "film/printing/device_raster.h"
#include "film/printing/driver_description.h"
#include "io/refusal.h"

namespace riders::printing {
namespace {

using cups::libcups;

struct Listed {
    std::string name, model;
    bool isClass = false, accepts = true;
    std::vector<std::string> members;
};

// The attributes of queues follow each other, and each queue's are a group.
std::vector<Listed> listedQueues(const PrintServer &server)
{
    ipp_t *request = server.request(IPP_OP_CUPS_GET_PRINTERS, "");
    constexpr const char *kAttributes[] = {"printer-name", "printer-make-and-model", "printer-type",
                                           "member-names", "printer-is-accepting-jobs"};
    libcups().addStrings(request, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", 5, nullptr,
                         kAttributes);
    const Response response(libcups().doRequest(server.connection(), request, "/"), libcups().deleteRequest);
    std::vector<Listed> queues;
    if (!response || libcups().statusCode(response.get()) == IPP_STATUS_ERROR_NOT_FOUND)
        return queues;
    bool within = false;
    for (ipp_attribute_t *attribute = libcups().firstAttribute(response.get()); attribute;
         attribute = libcups().nextAttribute(response.get())) {
        const char *named = libcups().attributeName(attribute);
        if (!named) {  // between two groups
            within = false;
            continue;
        }
        const std::string name = named;
        if (name.compare(0, 8, "printer-") != 0 && name != "member-names")
            continue;
        if (!within)
            queues.emplace_back();
        within = true;
        const char *text = libcups().attributeString(attribute, 0, nullptr);
        if (name == "printer-name" && text)
            queues.back().name = text;
        else if (name == "printer-make-and-model" && text)
            queues.back().model = text;
        else if (name == "printer-type")
            queues.back().isClass = libcups().attributeInteger(attribute, 0) & CUPS_PRINTER_CLASS;
        else if (name == "printer-is-accepting-jobs")
            queues.back().accepts = libcups().attributeBoolean(attribute, 0) != 0;
        else if (name == "member-names")
            for (int i = 0; i < libcups().attributeCount(attribute); ++i)
                queues.back().members.emplace_back(libcups().attributeString(attribute, i, nullptr));
    }
    return queues;
}

std::string listOf(const std::vector<std::string> &names)
{
    std::string list;
    for (const std::string &name : names)
        list += (list.empty() ? "" : ", ") + name;
    return list;
}

Listed listed(const PrintServer &server, const std::string &name)
{
    std::vector<std::string> names;
    for (const Listed &queue : listedQueues(server)) {
        if (!sameName(queue.name, name)) {
            names.push_back(queue.name);
            continue;
        }
        if (queue.isClass)
            throw io::Refusal(name + " is a class of printers, which need not be alike; name one of them: " +
                              listOf(queue.members));
        if (!queue.accepts)
            throw io::Refusal(name + " does not accept jobs");
        return queue;
    }
    throw io::Refusal("there is no print queue " + name +
                      (names.empty() ? ", nor any other" : "; there are: " + listOf(names)));
}

std::vector<JobOption> savedOptions(const PrintServer &server, const std::string &name)
{
    std::vector<JobOption> options;
    cups_dest_t *dest = libcups().namedDest(server.connection(), name.c_str(), nullptr);
    for (int i = 0; dest && i < dest->num_options; ++i)
        options.push_back({dest->options[i].name, dest->options[i].value});
    if (dest)
        libcups().freeDests(1, dest);
    return options;
}

}  // namespace

Queue askQueue(const PrintServer &server, const std::string &name)
{
    const Listed found = listed(server, name);
    Queue queue;
    queue.name = found.name;
    queue.model = found.model;
    queue.saved = savedOptions(server, queue.name);
    readDescription(server, queue);
    if (queue.kind == QueueKind::pwg)
        queue.resolutions = askDevice(server, queue.name);
    if (queue.resolutions.empty())
        throw io::Refusal(queue.name + ": its driver does not say which resolutions it has");
    return queue;
}

std::vector<QueueName> queueNames(const PrintServer &server)
{
    std::vector<QueueName> names;
    for (const Listed &queue : listedQueues(server))
        if (!queue.isClass)
            names.push_back({queue.name, queue.model});
    return names;
}

}  // namespace riders::printing
