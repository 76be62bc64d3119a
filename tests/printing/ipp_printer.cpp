#include "printing/ipp_printer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

#include "support/local_port.h"

namespace fs = std::filesystem;

namespace printing_tests {
namespace {

constexpr int kDocumentMilliseconds = 60000;

}  // namespace

IppPrinter::IppPrinter(const std::string &formats)
    : port_(freeLocalPort()), watch_(inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
{
    fs::create_directory(folder_ / "kept");
    inotify_add_watch(watch_, (folder_ / "kept").c_str(), IN_CLOSE_WRITE);
    process_ = std::make_unique<Started>(
        std::vector<std::string>{"ippeveprinter", "-p", std::to_string(port_), "-n", "localhost", "-r", "off",
                                 "-k", "-d", folder_ / "kept", "-f", formats, "Test"},
        folder_ / "out", std::vector<std::string>{"LD_PRELOAD=" RIDERS_NO_ANNOUNCING});
    process_->waitFor([this] { return acceptsAtLocalPort(port_); });
}

IppPrinter::~IppPrinter()
{
    close(watch_);
}

std::string IppPrinter::uri() const
{
    return "ipp://localhost:" + std::to_string(port_) + "/ipp/print";
}

fs::path IppPrinter::document() const
{
    alignas(inotify_event) std::array<char, 4096> buffer{};
    pollfd end = {watch_, POLLIN, 0};
    if (poll(&end, 1, kDocumentMilliseconds) != 1 || read(watch_, buffer.data(), buffer.size()) <= 0)
        throw std::runtime_error("the printer received nothing");
    return folder_ / "kept" / reinterpret_cast<const inotify_event *>(buffer.data())->name;
}

}  // namespace printing_tests
