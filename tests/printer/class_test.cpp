// A class of CUPS over printers on three machines: their jobs are spread evenly, and one that is killed loses
// none.
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <stdexcept>

#include "printer/own_service.h"
#include "support/command.h"

namespace fs = std::filesystem;

namespace printer_tests {
namespace {

// A network of its own with a way to it, which end with this.
class OwnNetwork {
public:
    explicit OwnNetwork(int number)
        : name_("riders-" + std::to_string(getpid()) + "-" + std::to_string(number)),
          link_("rd" + std::to_string(getpid() % 100000) + "-" + std::to_string(number)),
          net_("10.213." + std::to_string(number) + ".")
    {
        made_ = ip({"netns", "add", name_}) &&
                ip({"link", "add", link_, "type", "veth", "peer", "name", "way", "netns", name_}) &&
                ip({"addr", "add", net_ + "1/24", "dev", link_}) && ip({"link", "set", link_, "up"}) &&
                ip({"-n", name_, "addr", "add", net_ + "2/24", "dev", "way"}) &&
                ip({"-n", name_, "link", "set", "way", "up"}) && ip({"-n", name_, "link", "set", "lo", "up"});
    }
    ~OwnNetwork()
    {
        ip({"link", "del", link_});
        ip({"netns", "del", name_});
    }
    OwnNetwork(const OwnNetwork &) = delete;
    OwnNetwork &operator=(const OwnNetwork &) = delete;

    bool isMade() const { return made_; }
    std::string address() const { return net_ + "2"; }
    // What is before a command that runs there.
    std::vector<std::string> there() const { return {"ip", "netns", "exec", name_}; }

private:
    static bool ip(std::vector<std::string> words)
    {
        words.insert(words.begin(), "ip");
        return runProgram(words).status == 0;
    }

    std::string name_, link_, net_;
    bool made_ = false;
};

class ClassTest : public ::testing::Test {
protected:
    static constexpr int kMachines = 3;

    void SetUp() override
    {
        for (int machine = 1; machine <= kMachines; ++machine)
            networks.push_back(std::make_unique<OwnNetwork>(machine));
        for (const auto &network : networks)
            if (!network->isMade())
                GTEST_SKIP() << "no networks can be made here: that needs root";
        writeFile(folder / "job.ps", kJob);
        writeFile(folder / "password", "secret\n");
        fs::permissions(folder / "password", fs::perms(0600));
        for (int machine = 0; machine < kMachines; ++machine) {
            fs::create_directory(place(machine));
            services.push_back(serve(machine));
        }
    }

    fs::path place(int machine) const { return folder / std::to_string(machine); }
    std::unique_ptr<OwnService> serve(int machine) const
    {
        const OwnNetwork &network = *networks[static_cast<std::size_t>(machine)];
        return std::make_unique<OwnService>(place(machine),
                                            std::vector<std::string>{"--queue", "films:dpi=150", "--sandbox",
                                                                     "never", "--listen", network.address(),
                                                                     "--password-file", folder / "password"},
                                            network.there());
    }

    // A queue for each, and the class over them. CUPS is done with a job once the printer has it, which then makes
    // it: one that waited for its films would send it to another printer when this one is killed, and it would be
    // made twice.
    void makeClass() const
    {
        for (int machine = 0; machine < kMachines; ++machine) {
            const std::string queue = "m" + std::to_string(machine);
            const OwnNetwork &network = *networks[static_cast<std::size_t>(machine)];
            run({"lpadmin", "-p", queue, "-E", "-m", "raw", "-v",
                 "ipps://printer:secret@" + network.address() + ":" +
                     std::to_string(services[static_cast<std::size_t>(machine)]->port()) +
                     "/ipp/print/films?waitjob=false"});
            run({"lpadmin", "-p", queue, "-c", "studio"});
        }
        run({"cupsenable", "studio"});
        run({"cupsaccept", "studio"});
    }
    void run(const std::vector<std::string> &command) const
    {
        const CommandResult result = runProgram(command, "", folder.path());
        EXPECT_EQ(result.status, 0) << result.err;
    }
    void send(int first, int last) const
    {
        for (int job = first; job <= last; ++job)
            run({"lp", "-d", "studio", "-t", "job" + std::to_string(job), "-o", "raw", "job.ps"});
    }
    // CUPS waits for some seconds before it gives a job of a printer that is gone to the next.
    template <class Condition>
    static void waitUntil(Condition condition)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(4);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end)
                throw std::runtime_error("not all is made: " + runProgram({"lpstat", "-p", "-o"}).out);
            usleep(100000);
        }
    }
    // How often each was made, by its title; and how many on each machine.
    std::map<std::string, int> made(std::vector<int> &onEach) const
    {
        std::map<std::string, int> times;
        onEach.assign(kMachines, 0);
        for (int machine = 0; machine < kMachines; ++machine)
            for (const fs::directory_entry &entry : fs::directory_iterator(place(machine) / "films"))
                if (const std::string name = entry.path().filename(); name.starts_with("films-")) {
                    ++times[name.substr(name.rfind('-') + 1)];
                    ++onEach[static_cast<std::size_t>(machine)];
                }
        return times;
    }

    TemporaryFolder folder;
    std::vector<std::unique_ptr<OwnNetwork>> networks;
    std::vector<std::unique_ptr<OwnService>> services;
};

// A few jobs; with RIDERS_SIXTY_JOBS sixty.
TEST_F(ClassTest, SpreadsJobsAndLosesNoneWhenAMachineIsKilled)
{
    const int jobs = std::getenv("RIDERS_SIXTY_JOBS") != nullptr ? 60 : 6;
    const printing_tests::OwnCupsd server{{}, "ErrorPolicy retry-job\nJobRetryInterval 1\n"};
    makeClass();
    std::vector<int> onEach;
    send(1, jobs / 2);
    // Each machine has its part of them.
    waitUntil([&] { return static_cast<int>(made(onEach).size()) == jobs / 2; });
    for (const int part : onEach)
        EXPECT_NEAR(part, jobs / 2 / kMachines, jobs / 10);
    send(jobs / 2 + 1, jobs * 3 / 4);
    services[1]->end(SIGKILL);
    send(jobs * 3 / 4 + 1, jobs);
    waitUntil([&] { return runProgram({"lpstat", "-o", "studio"}).out.empty(); });
    services[1] = serve(1);  // makes what it had accepted
    waitUntil([&] { return static_cast<int>(made(onEach).size()) == jobs; });
    for (const auto &[title, times] : made(onEach))
        EXPECT_EQ(times, 1) << title;
    std::printf("%d jobs, on the machines: %d, %d, %d\n", jobs, onEach[0], onEach[1], onEach[2]);
}

}  // namespace
}  // namespace printer_tests
