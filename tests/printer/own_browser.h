// Chromium, without a display, asked through its debugging pipe: keys go in as from a keyboard, and scripts say what
// is there.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

namespace printer_tests {

class OwnBrowser {
public:
    static bool isInstalled();

    // Its profile is in that folder. Ended with this.
    explicit OwnBrowser(const std::filesystem::path &folder);
    ~OwnBrowser();
    OwnBrowser(const OwnBrowser &) = delete;
    OwnBrowser &operator=(const OwnBrowser &) = delete;

    // The page is as large as a telephone's.
    void becomeTelephone();
    void open(const std::string &address);
    // What an expression of JavaScript is, as text. Throws where it has none.
    std::string valueOf(const std::string &expression);
    // Waits until it is true. Throws after half a minute.
    void waitFor(const std::string &expression);
    // Tab, Enter or Space.
    void press(const std::string &key);
    // Goes on with Tab until what has the focus says that, or has that name. Throws where nothing does.
    void tabTo(const std::string &words);
    void type(const std::string &text);

private:
    // A command's answer.
    std::string ask(const std::string &method, const std::string &parameters);
    std::string receive();

    pid_t process_ = -1;
    int to_ = -1, from_ = -1;
    int asked_ = 0;
    std::string session_, received_;
};

}  // namespace printer_tests
