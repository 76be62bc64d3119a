#include "printer/own_service.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

#include "support/command.h"
#include "support/local_port.h"

namespace fs = std::filesystem;

namespace printer_tests {
namespace {

std::vector<std::string> joined(std::vector<std::string> one, const std::vector<std::string> &other)
{
    one.insert(one.end(), other.begin(), other.end());
    return one;
}

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

std::string slowJob()
{
    std::string job = kJob;
    job.insert(job.find("0.5 0"), "0 1 5000000 {pop} for\n");
    return job;
}

OwnService::OwnService(const fs::path &folder, std::vector<std::string> options, std::vector<std::string> before)
    : folder_(folder), port_(freeLocalPort())
{
    const std::vector<std::string> command = {RIDERS_BINARY_DIR "/riders",
                                              "printer",
                                              "--port",
                                              std::to_string(port_),
                                              "--state",
                                              state(),
                                              "--films",
                                              films()};
    process_ =
        std::make_unique<printing_tests::Started>(joined(joined(before, command), options), folder_ / "log");
    process_->waitFor([this] { return acceptsAtLocalPort(port_); });
}

std::string OwnService::uri(const std::string &queue) const
{
    return "ipp://localhost:" + std::to_string(port_) + "/ipp/print/" + queue;
}

Answer OwnService::send(const fs::path &document, const std::string &title,
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

std::string OwnService::attribute(int job, const std::string &queue, const char *name) const
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

ipp_jstate_t OwnService::stateOf(int job, const std::string &queue) const
{
    return static_cast<ipp_jstate_t>(ippEnumValue("job-state", attribute(job, queue, "job-state").c_str()));
}

std::string OwnService::messageOf(int job, const std::string &queue) const
{
    return attribute(job, queue, "job-state-message");
}

void OwnService::cancel(int job) const
{
    const Connection printer(port_);
    ippDelete(cupsDoRequest(printer.http, requestFor(IPP_OP_CANCEL_JOB, uri(), job), pathOf(uri()).c_str()));
}

void OwnService::waitFor(int job, ipp_jstate_t state, const std::string &queue) const
{
    process_->waitFor([&] {
        const ipp_jstate_t now = stateOf(job, queue);
        if (now > IPP_JSTATE_PROCESSING && now != state)
            throw std::runtime_error("job " + std::to_string(job) + " ended otherwise: " + messageOf(job, queue));
        return now == state;
    });
}

std::string OwnService::page(const std::string &path, const std::string &form) const
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

std::map<std::string, std::string> filmsIn(const fs::path &folder)
{
    std::map<std::string, std::string> films;
    if (fs::exists(folder))
        for (const fs::directory_entry &entry : fs::recursive_directory_iterator(folder))
            if (entry.path().extension() == ".tif")
                films[entry.path().filename()] = contentsOf(entry.path());
    return films;
}

std::map<std::string, std::string> filmsOf(const std::string &document, const std::string &title,
                                           std::vector<std::string> options)
{
    TemporaryFolder folder;
    writeFile(folder / title, document);
    const CommandResult result =
        runRiders(joined({"film", title, "-o", "films", "--quiet"}, options), "", folder.path());
    EXPECT_EQ(result.status, 0) << result.err;
    return filmsIn(folder / "films");
}

}  // namespace printer_tests
