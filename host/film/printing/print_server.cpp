#include "film/printing/print_server.h"

#include "io/interruption.h"
#include "io/refusal.h"

namespace riders::printing {
namespace {

using cups::libcups;

constexpr int kConnectMilliseconds = 10000;
constexpr double kSecondsBetweenLooks = 0.5;
constexpr int kLooks = 120;

int goesOn(http_t *, void *)
{
    static thread_local int looks = 0;
    if (io::Interruption::hasCome() || ++looks >= kLooks) {
        looks = 0;
        return 0;
    }
    return 1;
}

}  // namespace

std::vector<std::string> textsOf(ipp_t *response, const char *attribute)
{
    std::vector<std::string> texts;
    ipp_attribute_t *found = libcups().findAttribute(response, attribute, IPP_TAG_ZERO);
    const int count = found ? libcups().attributeCount(found) : 0;
    for (int i = 0; i < count; ++i)
        if (const char *text = libcups().attributeString(found, i, nullptr))
            texts.emplace_back(text);
    return texts;
}

void limitWaiting(http_t *connection)
{
    libcups().setTimeout(connection, kSecondsBetweenLooks, goesOn, nullptr);
}

PrintServer::PrintServer()
    : connection_(libcups().connect(libcups().server(), libcups().port(), nullptr, AF_UNSPEC,
                                    libcups().encryption(), 1, kConnectMilliseconds, nullptr),
                  libcups().close)
{
    if (!connection_)
        throw io::Refusal("no print server at " + std::string(libcups().server()) + ": " + lastError() +
                          "; is CUPS running, and is CUPS_SERVER right?");
    limitWaiting(connection_.get());
}

ipp_t *PrintServer::request(ipp_op_t operation, const std::string &queue) const
{
    ipp_t *request = libcups().newRequest(operation);
    if (!queue.empty())
        libcups().addString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr,
                            ("ipp://localhost/printers/" + queue).c_str());
    libcups().addString(request, IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr,
                        libcups().user());
    return request;
}

Response PrintServer::send(ipp_t *request, const char *resource) const
{
    Response response(libcups().doRequest(connection(), request, resource), libcups().deleteRequest);
    if (!response || libcups().statusCode(response.get()) > IPP_STATUS_OK_CONFLICTING)
        throw io::Refusal("the print server says: " + lastError());
    return response;
}

std::string PrintServer::lastError()
{
    const char *error = libcups().lastError();
    return error && *error ? error : "nothing that can be understood";
}

}  // namespace riders::printing
