// A real browser without a display, for tests of pages: what it shows, and keys and mouse as it gets them.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

class Chromium {
public:
    static bool isInstalled();

    // Looks at the page, with such a window, narrow ones as a telephone's; its own files go into the folder. Ended
    // with this, or with the test. Throws std::runtime_error where there is no browser.
    Chromium(const std::filesystem::path &own, const std::string &url, int width, int height);
    ~Chromium();
    Chromium(const Chromium &) = delete;
    Chromium &operator=(const Chromium &) = delete;

    // What a script results in, as a text; a promise is waited for. Throws std::runtime_error with what it throws.
    std::string valueOf(const std::string &script);
    // Until a script results in true; throws after half a minute.
    void await(const std::string &script);
    void open(const std::string &url);
    void beDark();
    // A key by its name in scripts, as "Tab", "Enter", "+" or " ".
    void press(const std::string &key);
    // Goes on with Tab until what has the focus says that, or has that name. Throws where nothing does.
    void tabTo(const std::string &words);
    // Puts the text in where the focus is.
    void type(const std::string &text);
    void drag(int x, int y, int toX, int toY);
    // The left button: mousePressed, mouseMoved or mouseReleased there.
    void mouse(const std::string &type, int x, int y);
    // What the window shows, the bytes of a PNG file.
    std::string screen();
    // All that it asked for since the start, pages and pictures.
    const std::vector<std::string> &asked() const { return asked_; }

private:
    std::string call(const std::string &method, const std::string &parameters);
    void send(const std::string &message) const;
    std::string receive();

    pid_t process_ = -1;
    int to_ = -1, from_ = -1, number_ = 0;
    std::string session_, pending_;
    std::vector<std::string> asked_;
};
