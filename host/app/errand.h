// Something that takes a while, with a small window that says so and lets the person stop it.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "io/background.h"
#include "io/progress_lines.h"
#include "toolbox/dialogs.h"

namespace riders::app {

class Errand {
public:
    enum class End { done, failed, stopped };

    // `waits`: for sessions in which no real time passes.
    explicit Errand(bool waits) : waits_(waits) {}

    // Runs one of the program's own commands as a process, with that argument list, in that folder, and shows
    // which page it is at. What it says is in said(): the last line of it where it fails.
    End run(const std::string &title, const std::filesystem::path &program,
            const std::vector<std::string> &arguments, const std::filesystem::path &folder);
    // Runs anything else on another thread; what it throws as Refusal is said.
    End run(const std::string &title, std::function<void(io::Beside &unwanted)> work);

    const std::string &said() const { return said_; }
    // The same where it begins with the command's name, which the person has not typed.
    std::string withoutCommand() const;

private:
    // What a process has told, from its thread.
    class Pages {
    public:
        void set(const io::ToldProgress &told)
        {
            const std::lock_guard lock(mutex_);
            told_ = told;
        }
        io::ToldProgress get()
        {
            const std::lock_guard lock(mutex_);
            return told_;
        }

    private:
        std::mutex mutex_;
        io::ToldProgress told_;
    };

    std::string howFar() const;
    static Boolean filterProc(DialogPtr dialog, EventRecord *event, int16_t *itemHit);
    bool filter(DialogPtr dialog, const EventRecord &event, int16_t *itemHit);

    bool waits_;
    io::Background work_;
    std::shared_ptr<Pages> pages_;
    std::string title_, said_;
    bool failed_ = false, over_ = false;
    std::uint32_t begun_ = 0, shown_ = 0;
};

}  // namespace riders::app
