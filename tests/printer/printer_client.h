// A client of the printer, at a port of this machine.
#pragma once

#include <cups/cups.h>

#include <filesystem>
#include <map>
#include <string>

namespace printer_tests {

struct Answer {
    ipp_status_t status = IPP_STATUS_ERROR_INTERNAL;
    int job = 0;
    std::string message = {};
};

class PrinterClient {
public:
    explicit PrinterClient(int port) : port_(port) {}

    std::string uri(const std::string &queue = "films") const;
    int port() const { return port_; }

    // Sends a document with attributes of the job, as lp -o has them.
    Answer send(const std::filesystem::path &document, const std::string &title,
                const std::map<std::string, std::string> &attributes = {}, const std::string &queue = "films",
                const std::string &format = "application/octet-stream") const;
    // Asks whether a document of that format would be taken.
    ipp_status_t validate(const std::string &format) const;
    ipp_jstate_t stateOf(int job, const std::string &queue = "films") const;
    std::string messageOf(int job, const std::string &queue = "films") const;
    void cancel(int job) const;
    // A page as a browser asks for it, with its head; with a body, as a form that is sent.
    std::string page(const std::string &path, const std::string &form = {}) const;

private:
    std::string attribute(int job, const std::string &queue, const char *name) const;

    int port_;
};

}  // namespace printer_tests
