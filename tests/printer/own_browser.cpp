#include "printer/own_browser.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

#include "support/command.h"

namespace fs = std::filesystem;

namespace printer_tests {
namespace {

constexpr int kWaitMilliseconds = 30000, kStepMilliseconds = 20;
constexpr int kMostTabs = 40;

std::string inJson(const std::string &text)
{
    std::string all = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            all += '\\';
        all += c;
    }
    return all + "\"";
}

// The text after "name": in JSON; empty where there is none.
std::string textAfter(const std::string &json, const std::string &name)
{
    const std::string before = "\"" + name + "\":\"";
    const std::size_t begin = json.find(before);
    std::string text;
    if (begin == json.npos)
        return text;
    for (std::size_t at = begin + before.size(); at < json.size() && json[at] != '"'; ++at)
        text += json[at] == '\\' ? json[++at] : json[at];
    return text;
}

[[noreturn]] void become(const fs::path &folder, int in, int out)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    // Where it reads commands and writes answers. The numbers may be each other's.
    const int in2 = fcntl(in, F_DUPFD, 10), out2 = fcntl(out, F_DUPFD, 10);
    dup2(in2, 3);
    dup2(out2, 4);
    const int log = open((folder / "chromium.log").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    dup2(log, 1);
    dup2(log, 2);
    const std::string profile = "--user-data-dir=" + (folder / "profile").string();
    execlp("chromium", "chromium", "--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
           "--no-first-run", "--disable-background-networking", "--remote-debugging-pipe", profile.c_str(),
           "about:blank", nullptr);
    _exit(127);
}

}  // namespace

bool OwnBrowser::isInstalled()
{
    return runProgram({"sh", "-c", "command -v chromium"}).status == 0;
}

OwnBrowser::OwnBrowser(const fs::path &folder)
{
    int in[2], out[2];
    if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipes");
    process_ = fork();
    if (process_ == 0)
        become(folder, in[0], out[1]);
    close(in[0]);
    close(out[1]);
    to_ = in[1];
    from_ = out[0];
    const std::string target = textAfter(ask("Target.createTarget", R"({"url":"about:blank"})"), "targetId");
    session_ = textAfter(ask("Target.attachToTarget", R"({"flatten":true,"targetId":)" + inJson(target) + "}"),
                         "sessionId");
}

OwnBrowser::~OwnBrowser()
{
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    close(to_);
    close(from_);
}

std::string OwnBrowser::receive()
{
    for (;;) {
        if (const std::size_t end = received_.find('\0'); end != received_.npos) {
            const std::string message = received_.substr(0, end);
            received_.erase(0, end + 1);
            return message;
        }
        pollfd ready = {from_, POLLIN, 0};
        char bytes[65536];
        if (poll(&ready, 1, kWaitMilliseconds) <= 0)
            throw std::runtime_error("the browser does not answer");
        const ssize_t count = read(from_, bytes, sizeof bytes);
        if (count <= 0)
            throw std::runtime_error("the browser has ended");
        received_.append(bytes, static_cast<std::size_t>(count));
    }
}

std::string OwnBrowser::ask(const std::string &method, const std::string &parameters)
{
    const std::string id = "{\"id\":" + std::to_string(++asked_);
    std::string command = id + ",\"method\":" + inJson(method) + ",\"params\":" + parameters;
    if (!session_.empty())
        command += ",\"sessionId\":" + inJson(session_);
    command += "}";
    if (write(to_, command.c_str(), command.size() + 1) != static_cast<ssize_t>(command.size() + 1))
        throw std::runtime_error("the browser does not listen");
    for (;;)
        if (const std::string answer = receive(); answer.starts_with(id + ","))
            return answer;
}

void OwnBrowser::becomeTelephone()
{
    ask("Emulation.setDeviceMetricsOverride", R"({"width":360,"height":740,"deviceScaleFactor":2,"mobile":true})");
}

void OwnBrowser::open(const std::string &address)
{
    ask("Page.navigate", "{\"url\":" + inJson(address) + "}");
    waitFor("document.readyState == 'complete' && location.href == '" + address + "'");
}

std::string OwnBrowser::valueOf(const std::string &expression)
{
    const std::string answer =
        ask("Runtime.evaluate",
            "{\"returnByValue\":true,\"expression\":" + inJson("String(" + expression + ")") + "}");
    if (answer.find("\"type\":\"string\"") == answer.npos || answer.find("\"exceptionDetails\"") != answer.npos)
        throw std::runtime_error(expression + ": " + answer);
    return textAfter(answer, "value");
}

void OwnBrowser::waitFor(const std::string &expression)
{
    for (int waited = 0; waited < kWaitMilliseconds; waited += kStepMilliseconds) {
        if (valueOf(expression) == "true")
            return;
        usleep(kStepMilliseconds * 1000);
    }
    throw std::runtime_error("is not so: " + expression + " on " + valueOf("document.body.innerText"));
}

void OwnBrowser::press(const std::string &key)
{
    const std::string code = key == "Tab" ? "9" : key == "Enter" ? "13" : "32";
    const std::string text = key == "Enter" ? R"(,"text":"\r")" : key == "Space" ? R"(,"text":" ")" : "";
    const std::string which = "\"key\":" + inJson(key == "Space" ? " " : key) + ",\"code\":" + inJson(key) +
                              ",\"windowsVirtualKeyCode\":" + code;
    ask("Input.dispatchKeyEvent",
        std::string("{\"type\":") + (text.empty() ? "\"rawKeyDown\"," : "\"keyDown\",") + which + text + "}");
    ask("Input.dispatchKeyEvent", "{\"type\":\"keyUp\"," + which + "}");
}

void OwnBrowser::tabTo(const std::string &words)
{
    for (int tabs = 0; tabs < kMostTabs; ++tabs) {
        press("Tab");
        if (valueOf("document.activeElement.textContent.trim() == '" + words +
                    "' || document.activeElement.name == '" + words + "'") == "true")
            return;
    }
    throw std::runtime_error("the keyboard does not reach " + words);
}

void OwnBrowser::type(const std::string &text)
{
    ask("Input.insertText", "{\"text\":" + inJson(text) + "}");
}

}  // namespace printer_tests
