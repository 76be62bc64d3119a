// The window of a job: a page of it, its dots, what is known about both, and adding a riders file to it or
// taking it out.
#pragma once

#include <filesystem>
#include <functional>

#include "app/focus.h"
#include "app/job_summary.h"
#include "app/job_view.h"
#include "toolbox/dialogs.h"

namespace riders::app {

class Document {
public:
    // What the rest of the program does meanwhile.
    struct Surroundings {
        // Handles the menu bar, its keys and Command keys; true when the event was one of these.
        std::function<bool(const EventRecord &)> menuEvent;
        // Called while the person does nothing.
        std::function<void()> idle;
        // What a riders file's own buttons do.
        std::function<void()> change, makeAgain;
        std::filesystem::path program;
        // Whether pictures are waited for, since no real time passes.
        bool waitsForPictures = false;
    };

    // Throws Refusal when the job cannot be read. Only one may exist at a time.
    Document(const std::filesystem::path &job, Surroundings surroundings);
    ~Document();
    Document(const Document &) = delete;
    Document &operator=(const Document &) = delete;

    // Shows another job instead. Throws Refusal, and keeps the one it has.
    void open(const std::filesystem::path &job);
    // Runs until the person closes the window, close is called, or the program
    // has to end.
    void run();
    void close() { closing_ = true; }

    // What the menus offer.
    void add();
    void takeOut();
    void saveAs();
    const std::filesystem::path &job() const { return job_; }
    const std::filesystem::path &tried() const { return tried_; }
    // A riders file was opened: a page of tints is the job that shows what it chooses.
    bool showsRiders() const { return tints_.has_value(); }
    std::string name() const { return (showsRiders() ? tried_ : job_).filename().string(); }
    bool canAdd() const { return !summary_.hasRiders; }
    bool canTakeOut() const { return !showsRiders() && (summary_.hasRiders || !tried_.empty()); }
    bool canSave() const { return !showsRiders() && summary_.takesRiders && !tried_.empty(); }
    // Shows the job with a riders file, and proposes to save it so. Says what is wrong with the file.
    void addThis(const std::filesystem::path &riders);
    JobView &view() { return view_; }
    // To be called after the view was changed.
    void showView();

private:
    static Boolean filterProc(DialogPtr dialog, EventRecord *event, int16_t *itemHit);
    static void drawProc(DialogPtr dialog, int16_t item);
    bool filter(const EventRecord &event, int16_t *itemHit);
    bool viewKey(const EventRecord &event);
    void openRiders(const std::filesystem::path &riders);
    void addToAJob();
    void makeWindow();
    void layOut();
    void show();
    void showComments();
    void showChoices();
    void draw(int16_t item);
    void drawPage(const Rect &box);
    void drawDots(const Rect &box, const viewing::Dots *dots, bool wanted);
    void followMouse();
    void hit(int16_t item);
    void turn(int pages);
    std::string pageWords() const;
    // Asks for a name, does it, and shows the resulting job. False when the person thinks better of it.
    bool save(bool with, const std::function<bool(const std::filesystem::path &out)> &write);
    // A job so large that it takes a while is saved by the program's own command, which can be stopped:
    // `arguments` of it. False where it was.
    bool saveBeside(const std::filesystem::path &out, std::vector<std::string> arguments) const;
    bool takesAWhile() const;
    std::filesystem::path proposedName(bool with) const;

    std::filesystem::path job_, tried_;
    std::optional<io::PrivateFolder> tints_;
    std::vector<std::string> choices_;  // of a riders file, a line each
    int linesLaidOut_ = -1;
    JobSummary summary_;
    Surroundings surroundings_;
    JobView view_;
    Focus focus_;
    Rect display_{};
    DialogPtr dialog_ = nullptr;
    bool closing_ = false;
};

}  // namespace riders::app
