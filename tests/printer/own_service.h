// A printer of the test's own.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "printer/printer_client.h"
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

class OwnService : public PrinterClient {
public:
    // Jobs and films are in that folder, also those of an earlier one.
    explicit OwnService(const std::filesystem::path &folder, std::vector<std::string> options = {},
                        std::vector<std::string> before = {});

    // How it ended; as waitpid has it.
    int end(int signal) { return process_->end(signal); }
    std::filesystem::path films() const { return folder_ / "films"; }
    std::filesystem::path state() const { return folder_ / "state"; }

    // Waits, half a minute at most.
    void waitFor(int job, ipp_jstate_t state, const std::string &queue = "films") const;
    template <class Attempt>
    void waitUntil(Attempt attempt) const
    {
        process_->waitFor(attempt);
    }
    std::string log() const { return contentsOf(folder_ / "log"); }

private:
    std::filesystem::path folder_;
    std::unique_ptr<printing_tests::Started> process_;
};

// The printer's process whose files are in that folder; 0 where there is none.
pid_t printerIn(const std::filesystem::path &folder);
// The films below the folder: the file's name without its folder, and its bytes.
std::map<std::string, std::string> filmsIn(const std::filesystem::path &folder);
// What `riders film` makes of that document under that title.
std::map<std::string, std::string> filmsOf(const std::string &document, const std::string &title,
                                           std::vector<std::string> options = {});

}  // namespace printer_tests
