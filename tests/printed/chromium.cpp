#include "printed/chromium.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>
#include <thread>

#include "io/json.h"
#include "support/command.h"
#include "toolbox/host/utf8.h"

namespace {

using riders::io::jsonText;

// The text after "name":" in a message, with its escapes undone.
std::string textIn(const std::string &message, const std::string &name)
{
    const std::string start = "\"" + name + "\":\"";
    std::size_t at = message.find(start);
    if (at == message.npos)
        return {};
    std::string text;
    for (at += start.size(); at < message.size() && message[at] != '"'; ++at) {
        if (message[at] != '\\') {
            text += message[at];
            continue;
        }
        const char next = message[++at];
        if (next == 'u') {
            toolbox::appendUtf8(text, static_cast<char32_t>(std::stoi(message.substr(at + 1, 4), nullptr, 16)));
            at += 4;
        } else {
            text += next == 'n' ? '\n' : next == 't' ? '\t' : next;
        }
    }
    return text;
}

std::string fromBase64(const std::string &text)
{
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    unsigned bits = 0;
    int count = 0;
    for (const char c : text) {
        const std::size_t digit = digits.find(c);
        if (digit == digits.npos)
            break;
        bits = bits << 6 | static_cast<unsigned>(digit);
        if ((count += 6) >= 8)
            bytes += static_cast<char>(bits >> (count -= 8));
    }
    return bytes;
}

// Those of the browser that it reads and writes messages on are 3 and 4.
[[noreturn]] void become(const std::string &profile, int reading, int writing)
{
    const int in = fcntl(reading, F_DUPFD, 10), out = fcntl(writing, F_DUPFD, 10),
              none = open("/dev/null", O_RDWR);
    dup2(in, 3);
    dup2(out, 4);
    dup2(none, STDOUT_FILENO);
    dup2(none, STDERR_FILENO);
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const std::string folder = "--user-data-dir=" + profile;
    execlp("chromium", "chromium", "--headless", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
           "--no-first-run", "--disable-extensions", "--disable-background-networking", "--remote-debugging-pipe",
           folder.c_str(), nullptr);
    _exit(127);
}

}  // namespace

bool Chromium::isInstalled()
{
    return runProgram({"sh", "-c", "command -v chromium"}).status == 0;
}

Chromium::Chromium(const std::filesystem::path &own, const std::string &url, int width, int height)
{
    int toIt[2], fromIt[2];
    if (pipe2(toIt, O_CLOEXEC) != 0 || pipe2(fromIt, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    process_ = fork();
    if (process_ == 0)
        become(own, toIt[0], fromIt[1]);
    close(toIt[0]);
    close(fromIt[1]);
    to_ = toIt[1];
    from_ = fromIt[0];
    const std::string target = textIn(call("Target.createTarget", "{\"url\":\"about:blank\"}"), "targetId");
    session_ = textIn(call("Target.attachToTarget", "{\"flatten\":true,\"targetId\":" + jsonText(target) + "}"),
                      "sessionId");
    call("Network.enable", "{}");
    call("Page.enable", "{}");
    call("Emulation.setDeviceMetricsOverride",
         "{\"width\":" + std::to_string(width) + ",\"height\":" + std::to_string(height) +
             ",\"deviceScaleFactor\":1,\"mobile\":" + (width < 500 ? "true" : "false") + "}");
    open(url);
}

Chromium::~Chromium()
{
    close(to_);
    close(from_);
    kill(-process_, SIGKILL);
    waitpid(process_, nullptr, 0);
}

void Chromium::send(const std::string &message) const
{
    std::size_t sent = 0;
    while (sent <= message.size()) {  // with the 0 at its end
        const ssize_t some = write(to_, message.c_str() + sent, message.size() + 1 - sent);
        if (some <= 0)
            throw std::runtime_error("the browser does not listen");
        sent += static_cast<std::size_t>(some);
    }
}

std::string Chromium::receive()
{
    for (;;) {
        const std::size_t end = pending_.find('\0');
        if (end != pending_.npos) {
            std::string message = pending_.substr(0, end);
            pending_.erase(0, end + 1);
            return message;
        }
        pollfd ready{from_, POLLIN, 0};
        char bytes[65536];
        const ssize_t some = poll(&ready, 1, 60000) == 1 ? read(from_, bytes, sizeof bytes) : -1;
        if (some <= 0)
            throw std::runtime_error("the browser says nothing; is chromium installed?");
        pending_.append(bytes, static_cast<std::size_t>(some));
    }
}

std::string Chromium::call(const std::string &method, const std::string &parameters)
{
    const std::string id = "{\"id\":" + std::to_string(++number_) + ",";
    send(id + "\"method\":\"" + method + "\"" + (session_.empty() ? "" : ",\"sessionId\":" + jsonText(session_)) +
         ",\"params\":" + parameters + "}");
    for (;;) {
        std::string message = receive();
        if (message.find("\"method\":\"Network.requestWillBeSent\"") != message.npos)
            asked_.push_back(textIn(message.substr(message.find("\"request\":")), "url"));
        if (!message.starts_with(id))
            continue;
        if (message.starts_with(id + "\"error\""))
            throw std::runtime_error(method + ": " + message);
        return message;
    }
}

std::string Chromium::valueOf(const std::string &script)
{
    const std::string message =
        call("Runtime.evaluate", "{\"returnByValue\":true,\"awaitPromise\":true,\"expression\":" +
                                     jsonText("(async () => String(await (" + script + ")))()") + "}");
    if (message.find("\"exceptionDetails\"") != message.npos)
        throw std::runtime_error(script + ": " + textIn(message, "description"));
    return textIn(message, "value");
}

void Chromium::await(const std::string &script)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    for (std::string problem;; problem.clear()) {
        try {
            if (valueOf(script) == "true")
                return;
        } catch (const std::runtime_error &error) {
            problem = error.what();  // a page that goes while it is asked
        }
        if (std::chrono::steady_clock::now() > end)
            throw std::runtime_error(script + " does not come true " + problem);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

void Chromium::open(const std::string &url)
{
    call("Page.navigate", "{\"url\":" + jsonText(url) + "}");
    await("document.readyState === 'complete' && location.href.split('#')[0] === " +
          jsonText(url.substr(0, url.find('#'))));
}

void Chromium::beDark()
{
    call("Emulation.setEmulatedMedia", "{\"features\":[{\"name\":\"prefers-color-scheme\",\"value\":\"dark\"}]}");
}

void Chromium::press(const std::string &key)
{
    const std::string text = key == "Enter" ? "\r" : key.size() == 1 ? key : "";
    const std::string code = key == "Tab"          ? "9"
                             : key == "Enter"      ? "13"
                             : key == " "          ? "32"
                             : key == "+"          ? "187"
                             : key == "-"          ? "189"
                             : key == "ArrowRight" ? "39"
                             : key == "ArrowDown"  ? "40"
                                                   : "0";
    const std::string words = ",\"key\":" + jsonText(key) + ",\"windowsVirtualKeyCode\":" + code + "}";
    call("Input.dispatchKeyEvent", (text.empty() ? std::string("{\"type\":\"rawKeyDown\"")
                                                 : "{\"type\":\"keyDown\",\"text\":" + jsonText(text)) +
                                       words);
    call("Input.dispatchKeyEvent", "{\"type\":\"keyUp\"" + words);
}

void Chromium::tabTo(const std::string &words)
{
    constexpr int most = 40;
    for (int tabs = 0; tabs < most; ++tabs) {
        press("Tab");
        if (valueOf("document.activeElement.textContent.trim() == '" + words +
                    "' || document.activeElement.name == '" + words + "'") == "true")
            return;
    }
    throw std::runtime_error("the keyboard does not reach " + words);
}

void Chromium::type(const std::string &text)
{
    call("Input.insertText", "{\"text\":" + jsonText(text) + "}");
}

void Chromium::mouse(const std::string &type, int x, int y)
{
    call("Input.dispatchMouseEvent", "{\"type\":\"" + type +
                                         "\",\"button\":\"left\",\"buttons\":1,\"clickCount\":1,\"x\":" +
                                         std::to_string(x) + ",\"y\":" + std::to_string(y) + "}");
}

void Chromium::drag(int x, int y, int toX, int toY)
{
    constexpr int steps = 10;
    mouse("mousePressed", x, y);
    for (int i = 1; i <= steps; ++i)
        mouse("mouseMoved", x + (toX - x) * i / steps, y + (toY - y) * i / steps);
    mouse("mouseReleased", toX, toY);
}

std::string Chromium::screen()
{
    return fromBase64(textIn(call("Page.captureScreenshot", "{\"format\":\"png\"}"), "data"));
}
