#include "printer/own_service.h"

#include <fstream>
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

}  // namespace

std::string slowJob()
{
    std::string job = kJob;
    job.insert(job.find("0.5 0"), "0 1 5000000 {pop} for\n");
    return job;
}

OwnService::OwnService(const fs::path &folder, std::vector<std::string> options, std::vector<std::string> before)
    : PrinterClient(freeLocalPort()), folder_(folder)
{
    const std::vector<std::string> command = {RIDERS_BINARY_DIR "/riders",
                                              "printer",
                                              "--port",
                                              std::to_string(port()),
                                              "--state",
                                              state(),
                                              "--films",
                                              films()};
    process_ =
        std::make_unique<printing_tests::Started>(joined(joined(before, command), options), folder_ / "log");
    // Not by asking it: it may be where this process cannot reach it.
    const std::string address = "http://localhost:" + std::to_string(port()) + "/films\n";
    process_->waitFor([&] { return log().find(address) != std::string::npos; });
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

pid_t printerIn(const fs::path &folder)
{
    for (const fs::directory_entry &entry : fs::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        std::ifstream file(entry.path() / "cmdline", std::ios::binary);
        const std::string words((std::istreambuf_iterator<char>(file)), {});
        const std::string program = words.substr(0, words.find('\0'));
        if (program.ends_with("/riders-printer") && words.find((folder / "state").string()) != words.npos)
            return std::stoi(name);
    }
    return 0;
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
