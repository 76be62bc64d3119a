// A run of the printer in which something goes wrong, with a client that knows nothing of it; and what the next
// run makes of what is left.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "printer/printer_client.h"
#include "support/toolbox_test.h"

namespace printer_tests {

class TroubledRun {
public:
    TroubledRun();

    const std::filesystem::path &folder() const { return folder_.path(); }
    // The printer's command line; its port is its own.
    std::vector<std::string> command() const;
    // `run` runs that command to its end, on another thread. Here a client sends a job as soon as it can, waits
    // until it has ended, and ends the printer; it does without where the printer ends before.
    void with(const std::function<void()> &run);

    bool accepted() const { return answer_.status == IPP_STATUS_OK; }
    // What is wrong with what is left when the next printer has done its work; nothing where all is well. A job
    // that was accepted may have failed only where `mayFail`, and then says why.
    std::vector<std::string> wrongs(bool mayFail) const;

private:
    void send(const std::function<bool()> &goesOn);
    void endPrinter(const std::function<bool()> &goesOn) const;

    TemporaryFolder folder_;
    PrinterClient client_;
    Answer answer_;
};

}  // namespace printer_tests
