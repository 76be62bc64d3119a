// `riders printer`: many jobs by many clients, against plain Ghostscript on the same jobs; its memory.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "benches.h"
#include "processes.h"

namespace {

namespace fs = std::filesystem;

constexpr const char *kPort = "8639";
constexpr const char *kUri = "ipp://localhost:8639/ipp/print/films";

constexpr const char *kPage =
    "%!PS-Adobe-3.0\n%%Pages: 1\n%%EndComments\n<< /PageSize [595 842] >> setpagedevice\n"
    "%%Page: 1 1\n0.3 0.2 0.1 0 setcmykcolor 50 50 400 500 rectfill\n"
    "0 0 0 1 setcmykcolor /Times-Roman findfont 24 scalefont setfont 50 700 moveto\n"
    "(Words above a tint) show showpage\n%%EOF\n";

constexpr const char *kTest =
    "{ NAME \"Print\" OPERATION Print-Job GROUP operation-attributes-tag ATTR charset attributes-charset utf-8\n"
    "ATTR language attributes-natural-language en ATTR uri printer-uri $uri ATTR name job-name \"job\"\n"
    "ATTR mimeMediaType document-format application/postscript FILE $filename STATUS successful-ok }\n";

void write(const fs::path &file, const std::string &bytes)
{
    std::ofstream(file) << bytes;
}

// The printer, ended with this.
class Printer {
public:
    Printer(const fs::path &riders, const Workplace &place) : place_(place), process_(fork())
    {
        if (process_ == 0) {
            const std::string state = place / "state", films = place / "films", log = place / "log";
            (void)!freopen(log.c_str(), "w", stderr);
            (void)!freopen(log.c_str(), "a", stdout);
            execl(riders.c_str(), "riders", "printer", "--port", kPort, "--state", state.c_str(), "--films",
                  films.c_str(), "--queue", "films:screens=offset,dpi=600", nullptr);
            _exit(127);
        }
        until([&] { return fs::exists(place_ / "films") && send(1, 1) == 0; });
        until([&] { return made() == 1; });
    }
    ~Printer()
    {
        kill(process_, SIGTERM);
        waitpid(process_, nullptr, 0);
    }
    Printer(const Printer &) = delete;
    Printer &operator=(const Printer &) = delete;

    // Exit status of so many clients that send so many jobs together.
    int send(int jobs, int clients) const
    {
        return runProcess({"sh", "-c",
                           "seq " + std::to_string(jobs) + " | xargs -P " + std::to_string(clients) +
                               " -I{} ipptool -q -f '" + (place_ / "job.ps").string() + "' " + kUri + " '" +
                               (place_ / "print.test").string() + "' 2>/dev/null"},
                          place_ / "said")
            .status;
    }
    long made() const
    {
        long count = 0;
        for (const fs::directory_entry &entry : fs::directory_iterator(place_ / "films"))
            count += entry.path().filename().string().starts_with("films-") ? 1 : 0;
        return count;
    }
    template <class Condition>
    static void until(Condition condition)
    {
        for (int i = 0; i < 200000; ++i, std::this_thread::sleep_for(std::chrono::milliseconds(5)))
            if (condition())
                return;
        throw std::runtime_error("the printer does not go on");
    }
    double peakMebibytes() const
    {
        std::ifstream status("/proc/" + std::to_string(process_) + "/status");
        for (std::string word; status >> word;)
            if (long kibibytes = 0; word == "VmHWM:" && status >> kibibytes)
                return static_cast<double>(kibibytes) / 1024;
        return 0;
    }

private:
    const Workplace &place_;
    pid_t process_;
};

void measureJobs(const fs::path &riders, int jobs, int clients)
{
    const Workplace place;
    write(place / "job.ps", kPage);
    write(place / "print.test", kTest);
    const Printer printer(riders, place);
    const double one = secondsOf([&] {
        printer.send(1, 1);
        Printer::until([&] { return printer.made() == 2; });
    });
    const double ours = secondsOf([&] {
        if (printer.send(jobs, clients) != 0)
            throw std::runtime_error("a job was refused");
        Printer::until([&] { return printer.made() == jobs + 2; });
    });
    const double plain = secondsOf([&] {
        for (int i = 0; i < jobs; ++i)
            runProcess({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=tiffsep1", "-r600",
                        "-sOutputFile=" + (place / "page%d.tif").string(), place / "job.ps"},
                       place / "said");
    });
    printRow(std::to_string(jobs) + " jobs of a page by " + std::to_string(clients) + " clients : tiffsep1",
             {ours, plain}, 0.6);
    printFigure("  jobs an hour", jobs / ours * 3600, "", 0);
    printFigure("  one job, sent and made", one, "s", 1);
    printFigure("  memory of the printer", printer.peakMebibytes(), "MiB", 200);
}

}  // namespace

void measurePrinter(const fs::path &riders)
{
    printHeading("The printer");
    measureJobs(riders, 500, 20);
}

void measurePrinterSample(const fs::path &riders)
{
    printHeading("The printer");
    measureJobs(riders, 40, 20);
}
