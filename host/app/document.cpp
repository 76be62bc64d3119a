#include "app/document.h"

#include "app/ask_file.h"
#include "app/dialog_items.h"
#include "app/document_layout.h"
#include "app/dot_words.h"
#include "app/errand.h"
#include "app/words.h"
#include "apply/apply.h"
#include "apply/riders_file.h"
#include "io/bytes.h"
#include "io/output.h"
#include "io/plain_text.h"
#include "io/refusal.h"
#include "plugin/resource_fork.h"
#include "reading/choices_in_words.h"
#include "remaking/remake.h"
#include "toolbox/host/draw_pixels.h"
#include "toolbox/host/session.h"
#include "toolbox/host/standardfile_folder.h"
#include "toolbox/host/text.h"
#include "toolbox/keys.h"
#include "viewing/tints.h"

namespace fs = std::filesystem;

namespace riders::app {
namespace {

constexpr int16_t kWindowID = 1000;

Document *current = nullptr;

// What was a file when it was chosen may be a pipe by now, and a window does not wait for one.
void requireFile(const fs::path &file)
{
    io::openOrdinaryFile(file);
}

// Throws Refusal where it cannot be read.
bool isRiders(const fs::path &file)
{
    const io::OpenFile in = io::openOrdinaryFile(file);
    std::string head(64, '\0');
    head.resize(io::readFully(in, head.data(), head.size()));
    return apply::isRidersFile(head);
}

// Throws Refusal.
void requireRiders(const fs::path &file)
{
    if (!isRiders(file))
        throw io::Refusal(words(Words::noRidersFile, {file.filename().string()}));
}

// As many lines as the window has.
std::vector<std::string> choicesOf(const fs::path &riders)
{
    const reading::Choices read = remaking::readRiders(riders).choices;
    std::vector<std::string> lines = reading::choicesInLines(read);
    if (!read.whole)
        lines.push_back(words(Words::cutOff));
    if (lines.size() > kMostChoices) {
        const std::size_t more = lines.size() - kMostChoices + 1;
        lines.resize(kMostChoices - 1);
        lines.push_back(words(Words::andMore, {std::to_string(more)}));
    }
    return lines;
}

toolbox::Display mainDisplay()
{
    return toolbox::machine().displays().front();
}

}  // namespace

Document::Document(const fs::path &job, Surroundings surroundings)
    : surroundings_(std::move(surroundings)), view_(surroundings_.waitsForPictures),
      focus_({pageItem, previousButton, nextButton, againButton, addButton, takeOutButton, closeButton})
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
        if (isRiders(path))
            return openRiders(path);
        summary_ = summaryOf(path);
    } catch (const io::Refusal &refusal) {
        throw io::Refusal(inPlainWords(refusal.message, path.parent_path()));
    }
    job_ = path;
    tried_.clear();
    tints_.reset();
    choices_.clear();
    view_.show(job_, tried_, static_cast<int>(summary_.comments.pages.value_or(0)));
    if (dialog_)
        show();
}

void Document::openRiders(const fs::path &riders)
{
    tints_.emplace();
    job_ = tints_->path() / "Tints.ps";
    io::writeFile(job_, viewing::kTints);
    summary_ = summaryOf(job_);
    tried_ = riders;
    choices_ = choicesOf(riders);
    view_.show(job_, tried_, 1);
    if (dialog_)
        show();
}

// Opens that job in this window's place.
void Document::addToAJob()
{
    const fs::path riders = tried_;
    toolbox::setStandardFileFolder(riders.parent_path());
    const fs::path job = askForJob();
    if (job.empty())
        return;
    try {
        open(job);
    } catch (const io::Refusal &refusal) {
        return showProblem(refusal.message);
    }
    if (!showsRiders() && canAdd())
        addThis(riders);
}

void Document::makeWindow()
{
    dialog_ = GetNewDialog(kWindowID, nullptr, reinterpret_cast<WindowPtr>(-1));
    if (!dialog_)
        throw plugin::PluginError("the window of a job cannot be made: its resources or memory are missing");
    layOut();
    for (const int16_t item : {outlineItem, pageItem, withItem, withoutItem})
        setUserItem(dialog_, item, drawProc);
    show();
}

// As large as the display lets it be.
void Document::layOut()
{
    const toolbox::Display display = mainDisplay();
    display_ = display.bounds;
    linesLaidOut_ = static_cast<int>(choices_.size());
    view_.setRoom(app::layOut(dialog_, display, linesLaidOut_));
    const PortOf port(dialog_);
    EraseRect(&dialog_->portRect);
    InvalRect(&dialog_->portRect);
}

void Document::show()
{
    Str255 title;
    toolbox::setPascal(title, toolbox::romanFromUtf8Lossy(io::plainText(name())));
    SetWTitle(dialog_, title);
    if (linesLaidOut_ != static_cast<int>(choices_.size()))
        layOut();
    if (showsRiders())
        showChoices();
    else
        showComments();
    setTitle(dialog_, addButton, words(showsRiders() ? Words::addToJob : Words::addRiders));
    enableButton(dialog_, addButton, canAdd());
    setTitle(dialog_, takeOutButton, words(showsRiders() ? Words::change : Words::takeItOut));
    enableButton(dialog_, takeOutButton, showsRiders() || canTakeOut());
    enableButton(dialog_, againButton, showsRiders());
    drawOutline(dialog_, outlineItem, addButton);
    showView();
}

void Document::showComments()
{
    setItemText(dialog_, titleLabel, words(Words::titleLabel));
    const JobComments &comments = summary_.comments;
    setItemText(dialog_, titleText, comments.title.empty() ? words(Words::notStated) : comments.title);
    const int counted = view_.pages();
    setItemText(dialog_, pagesText,
                comments.pages ? std::to_string(*comments.pages)
                : counted > 0  ? std::to_string(counted)
                               : words(Words::notStated));
    setItemText(dialog_, ridersText,
                !tried_.empty()      ? words(Words::triedNotSaved, {tried_.filename().string()})
                : summary_.hasRiders ? words(Words::inThisJob)
                                     : words(Words::none));
}

void Document::showChoices()
{
    setItemText(dialog_, titleLabel, words(Words::choosesLabel));
    for (std::size_t i = 0; i < kMostChoices; ++i)
        setItemText(dialog_, static_cast<int16_t>(firstChoiceText + static_cast<int>(i)),
                    i < choices_.size() ? choices_[i] : "");
}

std::string Document::pageWords() const
{
    const int pages = view_.pages();
    const std::string page = std::to_string(view_.page());
    return pages > 0 ? words(Words::pageOf, {page, std::to_string(pages)}) : words(Words::page, {page});
}

void Document::showView()
{
    const viewing::Dots *with = view_.dotsWith();
    const std::string at = " (" + words(Words::dpi, {std::to_string(view_.dpi())}) + ")";
    setItemText(dialog_, pageText, pageWords());
    setItemText(dialog_, withCaption,
                words(view_.hasRiders() || showsRiders() ? Words::withRiders : Words::asItIs) + at);
    setItemText(dialog_, withoutCaption, view_.dotsWithout() ? words(Words::withoutRiders) : "");
    const std::string problem = inPlainWords(view_.problem(), job_.parent_path());
    setParagraph(dialog_, verdictText, !problem.empty() ? problem : with ? verdictOn(*with, view_.dpi()) : "");
    setParagraph(dialog_, factsText, with && problem.empty() ? factsAbout(*with) : "");
    enableButton(dialog_, previousButton, view_.canTurn(-1));
    enableButton(dialog_, nextButton, view_.canTurn(1));
    const PortOf port(dialog_);
    for (const int16_t item : {pageItem, withItem, withoutItem}) {
        const Rect box = itemBox(dialog_, item);
        InvalRect(&box);
    }
}

void Document::run()
{
    ShowWindow(dialog_);
    while (!closing_) {
        int16_t item = 0;
        ModalDialog(filterProc, &item);
        hit(item);
    }
}

void Document::hit(int16_t item)
{
    switch (item) {
    case closeButton:
        closing_ = true;
        return;
    case addButton:
        return add();
    case takeOutButton:
        return showsRiders() ? surroundings_.change() : takeOut();
    case againButton:
        return surroundings_.makeAgain();
    case previousButton:
        return turn(-1);
    case nextButton:
        return turn(1);
    case pageItem:
        return followMouse();
    default:
        return;
    }
}

void Document::turn(int pages)
{
    if (!view_.canTurn(pages))
        return;
    view_.turn(pages);
    showView();
}

Boolean Document::filterProc(DialogPtr, EventRecord *event, int16_t *itemHit)
{
    return current->filter(*event, itemHit);
}

bool Document::filter(const EventRecord &event, int16_t *itemHit)
{
    if (event.what == nullEvent) {
        if (const Rect now = mainDisplay().bounds; !EqualRect(&now, &display_))
            layOut();
        if (view_.lookAtWork(TickCount()))
            show();
        surroundings_.idle();
        return closing_;
    }
    if (surroundings_.menuEvent(event))
        return true;
    if (focus_.key(dialog_, event, itemHit) || viewKey(event))
        return true;
    const int16_t button = buttonForKey(event, addButton, closeButton);
    if (button == 0)
        return false;
    *itemHit = pressByKey(dialog_, button) ? button : 0;
    return true;
}

// Arrows move the loupe, by a quarter of what it shows, with Shift by four times that it shows.
bool Document::viewKey(const EventRecord &event)
{
    if ((event.what != keyDown && event.what != autoKey) || event.modifiers & cmdKey)
        return false;
    const double step = event.modifiers & shiftKey ? 4 : 0.25;
    namespace key = toolbox::key;
    switch (event.message & charCodeMask) {
    case key::pageUp:
        turn(-1);
        return true;
    case key::pageDown:
        turn(1);
        return true;
    case key::leftArrow:
        view_.nudgeLoupe(-step, 0);
        break;
    case key::rightArrow:
        view_.nudgeLoupe(step, 0);
        break;
    case key::upArrow:
        view_.nudgeLoupe(0, -step);
        break;
    case key::downArrow:
        view_.nudgeLoupe(0, step);
        break;
    default:
        return false;
    }
    const PortOf port(dialog_);
    draw(pageItem);
    return true;
}

void Document::drawProc(DialogPtr, int16_t item)
{
    if (current)
        current->draw(item);
}

void Document::draw(int16_t item)
{
    const Rect box = itemBox(dialog_, item);
    switch (item) {
    case pageItem:
        drawPage(box);
        return focus_.draw(dialog_);
    case withItem:
        return drawDots(box, view_.dotsWith(), true);
    case withoutItem:
        return drawDots(box, view_.dotsWithout(), view_.hasRiders());
    default:
        return drawOutline(dialog_, outlineItem, addButton);
    }
}

void Document::drawPage(const Rect &box)
{
    const viewing::PagePicture *page = view_.pagePicture();
    if (!page) {
        EraseRect(&box);
        FrameRect(&box);
        return drawWords(box, view_.problem().empty() ? words(Words::drawing) : "");
    }
    const Rect place = pagePlace(box, *page, mainDisplay().scale);
    drawPageAround(box, place);
    toolbox::drawPixels(forDepth(page->picture, mainDisplay().depth), place);
    if (const auto part = view_.loupe())
        drawLoupe(place, *part);
}

void Document::drawDots(const Rect &box, const viewing::Dots *dots, bool wanted)
{
    if (!wanted || !dots) {
        EraseRect(&box);
        if (wanted) {
            FrameRect(&box);
            drawWords(box, view_.problem().empty() ? words(Words::drawing) : "");
        }
        return;
    }
    Rect frame = box;
    FrameRect(&frame);
    InsetRect(&frame, 1, 1);
    EraseRect(&frame);
    toolbox::drawPixels(forDepth(dots->picture, mainDisplay().depth),
                        dotsPlace(frame, dots->picture, view_.enlargement(), mainDisplay().scale));
}

// The loupe's middle follows the mouse until the button is released.
void Document::followMouse()
{
    const viewing::PagePicture *page = view_.pagePicture();
    if (!page)
        return;
    const PortOf port(dialog_);
    const Rect box = itemBox(dialog_, pageItem), place = pagePlace(box, *page, mainDisplay().scale);
    Point last{-1, -1};
    do {
        Point mouse;
        GetMouse(&mouse);
        if (mouse.h == last.h && mouse.v == last.v)
            continue;
        last = mouse;
        view_.moveLoupe(static_cast<double>(mouse.h - place.left) / (place.right - place.left),
                        static_cast<double>(mouse.v - place.top) / (place.bottom - place.top));
        drawPage(box);
    } while (StillDown());
}

fs::path Document::proposedName(bool with) const
{
    fs::path name = job_.stem();
    name += words(with ? Words::endingWith : Words::endingWithout);
    name += job_.extension();
    return job_.parent_path() / name;
}

bool Document::save(bool with, const std::function<bool(const fs::path &out)> &write)
{
    fs::path out = askWhereToSave(with ? Words::saveWith : Words::saveWithout, proposedName(with));
    if (out.empty())
        return false;
    try {
        requireFile(job_);
        if (write(out))
            open(out);
    } catch (const io::Refusal &refusal) {
        showProblem(inPlainWords(inPlainWords(refusal.message, job_.parent_path()), out.parent_path()));
    }
    return true;
}

bool Document::takesAWhile() const
{
    constexpr std::uintmax_t large = 32 << 20;
    std::error_code failed;
    const std::uintmax_t size = fs::file_size(job_, failed);
    return !failed && size > large;
}

bool Document::saveBeside(const fs::path &out, std::vector<std::string> arguments) const
{
    Errand errand(surroundings_.waitsForPictures);
    const std::string name = out.filename();
    const auto end =
        errand.run(words(Words::saving, {name}), surroundings_.program, std::move(arguments), out.parent_path());
    if (end == Errand::End::failed)
        throw io::Refusal(errand.withoutCommand());
    return end == Errand::End::done;
}

void Document::add()
{
    if (showsRiders())
        return addToAJob();
    toolbox::setStandardFileFolder(job_.parent_path());
    if (const fs::path riders = askForRiders(); !riders.empty())
        addThis(riders);
}

void Document::addThis(const fs::path &riders)
{
    try {
        requireRiders(riders);
    } catch (const io::Refusal &refusal) {
        return showProblem(inPlainWords(refusal.message, riders.parent_path()));
    }
    tried_ = riders;
    view_.show(job_, tried_, static_cast<int>(summary_.comments.pages.value_or(0)));
    show();
    if (summary_.takesRiders)
        saveAs();
}

void Document::saveAs()
{
    const fs::path riders = tried_;
    save(true, [&](const fs::path &out) {
        requireFile(riders);
        if (takesAWhile())
            return saveBeside(out, {"apply", fs::absolute(riders), job_, "-o", out, "--force"});
        apply::applyRiders({riders, job_, out, true});
        return true;
    });
}

void Document::takeOut()
{
    if (tried_.empty()) {
        save(false, [&](const fs::path &out) {
            if (takesAWhile())
                return saveBeside(out, {"strip", job_, "-o", out, "--force"});
            apply::stripRiders({job_, out, true});
            return true;
        });
        return;
    }
    tried_.clear();
    view_.show(job_, tried_, static_cast<int>(summary_.comments.pages.value_or(0)));
    show();
}

}  // namespace riders::app
