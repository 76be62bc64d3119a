#include "app/document.h"

#include "app/ask_file.h"
#include "app/dialog_items.h"
#include "app/words.h"
#include "apply/apply.h"
#include "io/bytes.h"
#include "io/plain_text.h"
#include "io/refusal.h"
#include "plugin/resource_fork.h"
#include "toolbox/host/standardfile_folder.h"
#include "toolbox/host/text.h"

namespace fs = std::filesystem;

namespace riders::app {
namespace {

constexpr int16_t kWindowID = 1000;
enum Item : int16_t { addButton = 1, closeButton, takeOutButton, outline, titleText = 8, pagesText, ridersText };

Document *current = nullptr;

// Without the folders, which the person knows.
std::string inPlainWords(std::string problem, const fs::path &folder)
{
    const std::string prefix = folder.string() + "/";
    for (size_t at; !folder.empty() && (at = problem.find(prefix)) != problem.npos;)
        problem.erase(at, prefix.size());
    return problem;
}

// What was a file when it was chosen may be a pipe by now, and a window does not wait for one.
void requireFile(const fs::path &file)
{
    io::openOrdinaryFile(file);
}

}  // namespace

Document::Document(const fs::path &job, MenuEvents menuEvents) : menuEvents_(std::move(menuEvents))
{
    open(job);
    makeWindow();
    current = this;
}

Document::~Document()
{
    current = nullptr;
    DisposDialog(dialog_);
}

void Document::open(const fs::path &job)
{
    std::error_code error;
    fs::path path = fs::absolute(job, error);
    try {
        summary_ = summaryOf(path);
    } catch (const io::Refusal &refusal) {
        throw io::Refusal(inPlainWords(refusal.message, path.parent_path()));
    }
    job_ = path;
    if (dialog_)
        show();
}

void Document::makeWindow()
{
    dialog_ = GetNewDialog(kWindowID, nullptr, reinterpret_cast<WindowPtr>(-1));
    if (!dialog_)
        throw plugin::PluginError("the window of a job cannot be made: its resources or memory are missing");
    Point corner = centered('DLOG', kWindowID);
    MoveWindow(dialog_, corner.h, corner.v, false);
    setUserItem(dialog_, outline, outlineProc);
    show();
}

void Document::show()
{
    Str255 name;
    toolbox::setPascal(name, toolbox::romanFromUtf8Lossy(io::plainText(job_.filename().string())));
    SetWTitle(dialog_, name);
    const JobComments &comments = summary_.comments;
    setItemText(dialog_, titleText, comments.title.empty() ? words(Words::notStated) : comments.title);
    setItemText(dialog_, pagesText, comments.pages ? std::to_string(*comments.pages) : words(Words::notStated));
    setItemText(dialog_, ridersText, words(summary_.hasRiders ? Words::inThisJob : Words::none));
    enableButton(dialog_, addButton, !summary_.hasRiders);
    enableButton(dialog_, takeOutButton, summary_.hasRiders);
    drawOutline(dialog_, outline, addButton);
}

void Document::run()
{
    ShowWindow(dialog_);
    while (!closing_) {
        int16_t hit = 0;
        ModalDialog(filterProc, &hit);
        if (hit == closeButton)
            closing_ = true;
        else if (hit == addButton)
            add();
        else if (hit == takeOutButton)
            takeOut();
    }
}

Boolean Document::filterProc(DialogPtr, EventRecord *event, int16_t *itemHit)
{
    return current->filter(*event, itemHit);
}

void Document::outlineProc(DialogPtr dialog, int16_t)
{
    drawOutline(dialog, outline, addButton);
}

bool Document::filter(const EventRecord &event, int16_t *itemHit)
{
    *itemHit = 0;
    if (int16_t button = buttonForKey(event, addButton, closeButton)) {
        if (pressByKey(dialog_, button))
            *itemHit = button;
        return true;
    }
    if (!menuEvents_(event))
        return false;
    SetPort(dialog_);
    return true;
}

fs::path Document::proposedName(bool with) const
{
    std::string stem = job_.stem().string();
    const std::string added = words(Words::endingWith);
    if (with)
        stem += added;
    else if (stem.size() > added.size() && stem.ends_with(added))
        stem.erase(stem.size() - added.size());
    else
        stem += words(Words::endingWithout);
    return job_.parent_path() / (stem + job_.extension().string());
}

void Document::save(bool with, const std::function<void(const fs::path &out)> &write)
{
    fs::path out = askWhereToSave(with ? Words::saveWith : Words::saveWithout, proposedName(with));
    if (out.empty())
        return;
    try {
        requireFile(job_);
        write(out);
        open(out);
    } catch (const io::Refusal &refusal) {
        showProblem(inPlainWords(inPlainWords(refusal.message, job_.parent_path()), out.parent_path()));
    }
}

void Document::add()
{
    toolbox::setStandardFileFolder(job_.parent_path());
    fs::path riders = askForRiders();
    if (!riders.empty())
        save(true, [&](const fs::path &out) {
            requireFile(riders);
            apply::applyRiders({riders, job_, out, true});
        });
}

void Document::takeOut()
{
    save(false, [&](const fs::path &out) { apply::stripRiders({job_, out, true}); });
}

}  // namespace riders::app
