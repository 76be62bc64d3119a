// A printer of the test's own, and a client of it.
#pragma once

#include <cups/cups.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "printing/own_cupsd.h"
#include "support/toolbox_test.h"

namespace printer_tests {

// A page of two inches with two plates: a tint, and a frame.
inline constexpr const char *kJob = "%!PS-Adobe-3.0\n%%Pages: 1\n%%EndComments\n"
                                    "<< /PageSize [144 108] >> setpagedevice\n"
                                    "%%Page: 1 1\n"
                                    "0.5 0 0 0.1 setcmykcolor 6 6 60 95 rectfill\n"
                                    "1 0 0 1 setcmykcolor 0.1 setlinewidth 3 3 138 102 rectstroke showpage\n"
                                    "%%EOF\n";
// The same, after some seconds of the interpreter's work.
std::string slowJob();

struct Answer {
    ipp_status_t status = IPP_STATUS_ERROR_INTERNAL;
    int job = 0;
    std::string message = {};
};

class OwnService {
public:
    // Jobs and films are in that folder, also those of an earlier one.
    explicit OwnService(const std::filesystem::path &folder, std::vector<std::string> options = {},
                        std::vector<std::string> before = {});

    std::string uri(const std::string &queue = "films") const;
    int port() const { return port_; }
    // How it ended; as waitpid has it.
    int end(int signal) { return process_->end(signal); }
    std::filesystem::path films() const { return folder_ / "films"; }
    std::filesystem::path state() const { return folder_ / "state"; }

    // Sends a document with attributes of the job, as lp -o has them.
    Answer send(const std::filesystem::path &document, const std::string &title,
                const std::map<std::string, std::string> &attributes = {}, const std::string &queue = "films",
                const std::string &format = "application/octet-stream") const;
    ipp_jstate_t stateOf(int job, const std::string &queue = "films") const;
    std::string messageOf(int job, const std::string &queue = "films") const;
    void cancel(int job) const;
    // A page as a browser asks for it, with its head; with a body, as a form that is sent.
    std::string page(const std::string &path, const std::string &form = {}) const;
    // Waits, half a minute at most.
    void waitFor(int job, ipp_jstate_t state, const std::string &queue = "films") const;
    template <class Attempt>
    void waitUntil(Attempt attempt) const
    {
        process_->waitFor(attempt);
    }
    std::string log() const { return contentsOf(folder_ / "log"); }

private:
    std::string attribute(int job, const std::string &queue, const char *name) const;

    std::filesystem::path folder_;
    int port_;
    std::unique_ptr<printing_tests::Started> process_;
};

// The films below the folder: the file's name without its folder, and its bytes.
std::map<std::string, std::string> filmsIn(const std::filesystem::path &folder);
// What `riders film` makes of that document under that title.
std::map<std::string, std::string> filmsOf(const std::string &document, const std::string &title,
                                           std::vector<std::string> options = {});

}  // namespace printer_tests
