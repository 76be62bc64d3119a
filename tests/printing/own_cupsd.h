// A print server of the test's own.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "support/toolbox_test.h"

namespace printing_tests {

// A program that ends when this goes, or the test program does.
class Started {
public:
    // In that folder; what it prints goes to the file `log`.
    Started(const std::vector<std::string> &command, const std::filesystem::path &log,
            const std::vector<std::string> &environment = {});
    ~Started();
    Started(const Started &) = delete;
    Started &operator=(const Started &) = delete;

    // Sends it a signal, and returns how it ended, as waitpid has it.
    int end(int signal);
    // Tries until it succeeds. Throws where the program has ended, or half a minute has passed.
    template <class Attempt>
    void waitFor(Attempt attempt) const
    {
        while (!attempt())
            waitALittle();
    }

private:
    void waitALittle() const;

    pid_t process_ = -1;
    int descriptor_ = -1;
    std::filesystem::path log_;
    mutable int waits_ = 0;
};

// cupsd in folders of its own, at a socket in one of them: it opens no port. CUPS_SERVER names it while it lives.
class OwnCupsd {
public:
    // The description of a queue's driver, and where what is printed goes.
    struct Queue {
        std::string name, ppd, uri;
    };

    // `more` is added to its configuration.
    explicit OwnCupsd(const std::vector<Queue> &queues, const std::string &more = {});
    ~OwnCupsd();

    const std::filesystem::path &folder() const { return folder_.path(); }
    // Until there is a description of that queue's driver: of a queue without one, the server makes it after lpadmin
    // has returned.
    void waitForDescription(const std::string &queue) const;

private:
    void makeFolders(const std::vector<Queue> &queues, const std::string &more) const;

    TemporaryFolder folder_;
    std::unique_ptr<Started> process_;
};

// What a queue prints to: a pipe, so that its end is seen.
class PrinterPipe {
public:
    explicit PrinterPipe(std::filesystem::path path);
    ~PrinterPipe();
    PrinterPipe(const PrinterPipe &) = delete;
    PrinterPipe &operator=(const PrinterPipe &) = delete;

    std::string uri() const { return "file://" + path_.string(); }
    // All that so many jobs print.
    std::string read(int jobs = 1) const;
    // Whether something has been printed that was not read.
    bool isSilent() const;

private:
    std::filesystem::path path_;
    int descriptor_;
};

// Of Gutenprint's driver for that printer: escp2-1400.
std::string gutenprintPpd(const std::string &driver);

}  // namespace printing_tests
