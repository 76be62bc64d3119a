#include "printer/printer_client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "support/local_port.h"

namespace fs = std::filesystem;

namespace printer_tests {
namespace {

// A connection of its own for each question: the printer may have been started anew.
struct Connection {
    explicit Connection(int port)
        : http(httpConnect2("localhost", port, nullptr, AF_INET, HTTP_ENCRYPTION_IF_REQUESTED, 1, 30000, nullptr))
    {
    }
    ~Connection() { httpClose(http); }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    http_t *http;
};

ipp_t *requestFor(ipp_op_t operation, const std::string &uri)
{
    ipp_t *const request = ippNewRequest(operation);
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, uri.c_str());
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, "tester");
    return request;
}

ipp_t *requestFor(ipp_op_t operation, const std::string &uri, int job)
{
    ipp_t *const request = requestFor(operation, uri);
    ippAddInteger(request, IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", job);
    return request;
}

std::string pathOf(const std::string &uri)
{
    return uri.substr(uri.find('/', 6));
}

}  // namespace

std::string PrinterClient::uri(const std::string &queue) const
{
    return "ipp://localhost:" + std::to_string(port_) + "/ipp/print/" + queue;
}

Answer PrinterClient::send(const fs::path &document, const std::string &title,
                           const std::map<std::string, std::string> &attributes, const std::string &queue,
                           const std::string &format) const
{
    const Connection printer(port_);
    ipp_t *const request = requestFor(IPP_OP_PRINT_JOB, uri(queue));
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr, title.c_str());
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_MIMETYPE, "document-format", nullptr, format.c_str());
    for (const auto &[name, value] : attributes)
        if (name == "printer-resolution")
            ippAddResolution(request, IPP_TAG_JOB, name.c_str(), IPP_RES_PER_INCH, std::stoi(value),
                             std::stoi(value));
        else
            ippAddString(request, IPP_TAG_JOB, name == "job-hold-until" ? IPP_TAG_KEYWORD : IPP_TAG_TEXT,
                         name.c_str(), nullptr, value.c_str());
    ipp_t *const answer = cupsDoFileRequest(printer.http, request, pathOf(uri(queue)).c_str(), document.c_str());
    Answer result{cupsLastError(), ippGetInteger(ippFindAttribute(answer, "job-id", IPP_TAG_INTEGER), 0),
                  cupsLastErrorString()};
    ippDelete(answer);
    return result;
}

ipp_status_t PrinterClient::validate(const std::string &format) const
{
    const Connection printer(port_);
    ipp_t *const request = requestFor(IPP_OP_VALIDATE_JOB, uri());
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_MIMETYPE, "document-format", nullptr, format.c_str());
    ippDelete(cupsDoRequest(printer.http, request, pathOf(uri()).c_str()));
    return cupsLastError();
}

std::string PrinterClient::attribute(int job, const std::string &queue, const char *name) const
{
    const Connection printer(port_);
    ipp_t *const answer = cupsDoRequest(printer.http, requestFor(IPP_OP_GET_JOB_ATTRIBUTES, uri(queue), job),
                                        pathOf(uri(queue)).c_str());
    char text[1024] = "";
    if (ipp_attribute_t *const found = ippFindAttribute(answer, name, IPP_TAG_ZERO))
        ippAttributeString(found, text, sizeof text);
    ippDelete(answer);
    return text;
}

ipp_jstate_t PrinterClient::stateOf(int job, const std::string &queue) const
{
    return static_cast<ipp_jstate_t>(ippEnumValue("job-state", attribute(job, queue, "job-state").c_str()));
}

std::string PrinterClient::messageOf(int job, const std::string &queue) const
{
    return attribute(job, queue, "job-state-message");
}

void PrinterClient::cancel(int job) const
{
    const Connection printer(port_);
    ippDelete(cupsDoRequest(printer.http, requestFor(IPP_OP_CANCEL_JOB, uri(), job), pathOf(uri()).c_str()));
}

std::string PrinterClient::page(const std::string &path, const std::string &form) const
{
    std::string request = (form.empty() ? "GET " : "POST ") + path +
                          " HTTP/1.1\r\nHost: localhost:" + std::to_string(port_) + "\r\nConnection: close\r\n";
    if (!form.empty())
        request +=
            "Content-Type: application/x-www-form-urlencoded\r\nContent-Length: " + std::to_string(form.size()) +
            "\r\n";
    request += "\r\n" + form;
    const int end = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = localAddress(port_);
    std::string answer;
    if (connect(end, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0 &&
        ::send(end, request.data(), request.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(request.size())) {
        shutdown(end, SHUT_WR);
        char bytes[4096];
        for (ssize_t count = 0; (count = read(end, bytes, sizeof bytes)) > 0;)
            answer.append(bytes, static_cast<std::size_t>(count));
    }
    close(end);
    return answer;
}

}  // namespace printer_tests
