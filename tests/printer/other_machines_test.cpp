// The printer as other machines know it: in a network of its own, at an address that is not this machine's own.
#include <fcntl.h>
#include <unistd.h>

#include "printer/own_service.h"
#include "support/command.h"

namespace fs = std::filesystem;

namespace printer_tests {
namespace {

constexpr const char *kAddress = "10.99.0.1";

class OtherMachinesTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (const CommandResult tried = runProgram({"unshare", "-rn", "true"}); tried.status != 0)
            GTEST_SKIP() << "no network of its own can be made here: " << tried.err;
        writeFile(folder / "job.ps", kJob);
        writeFile(folder / "password", "secret\n");
        fs::permissions(folder / "password", fs::perms(0600));
        service = std::make_unique<OwnService>(
            folder.path(),
            std::vector<std::string>{"--queue", "films:dpi=150", "--sandbox", "never", "--listen", kAddress,
                                     "--password-file", folder / "password"},
            std::vector<std::string>{"unshare", "-rn", "sh", "-c",
                                     "ip link set lo up; ip addr add 10.99.0.1/32 dev lo; exec \"$@\"", "sh"});
    }

    // Another machine's program, in the same network.
    CommandResult there(const std::vector<std::string> &command) const
    {
        std::vector<std::string> whole = {"nsenter", "-t", std::to_string(printerIn(folder.path())),
                                          "-U",      "-n", "--preserve-credentials"};
        whole.insert(whole.end(), command.begin(), command.end());
        return runProgram(whole, "", folder.path());
    }
    std::string print(const std::string &scheme, const std::string &who,
                      const std::string &test = "print-job.test") const
    {
        return there({"ipptool", "-tv", "-f", folder / "job.ps",
                      scheme + "://" + who + kAddress + ":" + std::to_string(service->port()) + "/ipp/print/films",
                      test})
            .out;
    }

    TemporaryFolder folder;
    std::unique_ptr<OwnService> service;
};

TEST_F(OtherMachinesTest, PrintWithThePasswordAndOverTlsOnly)
{
    // Asked without a document: a refusal may cut off one that is still being sent, so that its words are lost.
    for (const char *who : {"", "ada:wrong@"}) {
        const std::string refused = print("ipps", who, "validate-job.test");
        EXPECT_NE(refused.find("client-error-not-authenticated"), std::string::npos) << who << refused;
        EXPECT_EQ(print("ipps", who).find("[PASS]"), std::string::npos) << who;
    }
    const std::string printed = print("ipps", "ada:secret@");
    EXPECT_NE(printed.find("[PASS]"), std::string::npos) << printed;
    service->waitUntil([&] { return service->log().find("): made") != std::string::npos; });
    EXPECT_EQ(filmsIn(service->films()).size(), filmsOf(kJob, "job", {"--dpi=150"}).size());
    // What it proves its name by is its own, and nobody else's to read.
    int keys = 0;
    for (const fs::directory_entry &entry : fs::directory_iterator(service->state() / "ssl")) {
        EXPECT_EQ(static_cast<int>(entry.status().permissions()) & 077, 0) << entry.path();
        keys += entry.path().extension() == ".key" ? 1 : 0;
    }
    EXPECT_EQ(keys, 1);
}

// What libcups does by itself: it goes over to TLS before it gives the password.
TEST_F(OtherMachinesTest, GetNothingForAPasswordThatCouldBeRead)
{
    ipp_t *const request = ippNewRequest(IPP_OP_PRINT_JOB);
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, service->uri().c_str());
    const int file = open((folder / "request").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    EXPECT_EQ(ippWriteFile(file, request), IPP_STATE_DATA);
    close(file);
    ippDelete(request);
    writeFile(folder / "request", contentsOf(folder / "request") + kJob);
    const auto refused = [&](const std::string &scheme) {
        there({"curl", "-sk", "-u", "ada:secret", "-H", "Content-Type: application/ipp", "--data-binary",
               "@request", "-o", "answer",
               scheme + "://" + kAddress + ":" + std::to_string(service->port()) + "/ipp/print/films"});
        const std::string answer = contentsOf(folder / "answer");
        return answer.size() < 4 || answer[2] != '\0' || answer[3] != '\0';
    };
    EXPECT_TRUE(refused("http"));
    EXPECT_FALSE(refused("https"));
}

TEST_F(OtherMachinesTest, SeeThePagesWithThePasswordOnly)
{
    const std::string page = std::string("https://") + kAddress + ":" + std::to_string(service->port()) + "/films";
    const auto status = [&](std::vector<std::string> command) {
        command.insert(command.begin(), {"curl", "-sk", "-o", "page", "-w", "%{http_code}"});
        return there(command).out;
    };
    EXPECT_EQ(status({page}), "401");
    EXPECT_EQ(status({"-u", "ada:wrong", page}), "401");
    EXPECT_EQ(status({"-u", "ada:secret", page}), "200");
    EXPECT_EQ(status({"-u", "ada:secret", "http" + page.substr(5)}), "301") << "to https";
    EXPECT_EQ(status({"http://localhost:" + std::to_string(service->port()) + "/films"}), "200");
}

}  // namespace
}  // namespace printer_tests
