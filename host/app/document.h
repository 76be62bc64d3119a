// The window of a PostScript job: what it is, and adding a riders file to it or
// taking it out.
#pragma once

#include <filesystem>
#include <functional>

#include "app/job_summary.h"
#include "toolbox/dialogs.h"

namespace riders::app {

class Document {
public:
    // Handles the menu bar and Command keys; true when the event was one of these.
    using MenuEvents = std::function<bool(const EventRecord &)>;

    // Throws Refusal when the job cannot be read. Only one may exist at a time.
    Document(const std::filesystem::path &job, MenuEvents menuEvents);
    ~Document();
    Document(const Document &) = delete;
    Document &operator=(const Document &) = delete;

    // Shows another job instead. Throws Refusal, and keeps the one it has.
    void open(const std::filesystem::path &job);
    // Runs until the person closes the window, close is called, or the program
    // has to end.
    void run();
    void close() { closing_ = true; }

private:
    static Boolean filterProc(DialogPtr dialog, EventRecord *event, int16_t *itemHit);
    static void outlineProc(DialogPtr dialog, int16_t item);
    bool filter(const EventRecord &event, int16_t *itemHit);
    void makeWindow();
    void show();
    void add();
    void takeOut();
    // Asks for a name, does it, and shows the resulting job.
    void save(bool with, const std::function<void(const std::filesystem::path &out)> &write);
    std::filesystem::path proposedName(bool with) const;

    std::filesystem::path job_;
    JobSummary summary_;
    MenuEvents menuEvents_;
    DialogPtr dialog_ = nullptr;
    bool closing_ = false;
};

}  // namespace riders::app
