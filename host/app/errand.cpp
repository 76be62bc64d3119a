#include "app/errand.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "app/dialog_items.h"
#include "app/words.h"
#include "io/limited_process.h"
#include "io/private_folder.h"
#include "io/refusal.h"
#include "toolbox/events.h"

namespace riders::app {
namespace {

constexpr int16_t kErrandDialog = 1020;
enum ErrandItem : int16_t { stopButton = 1, whatText, timeText };
constexpr std::uint32_t kSecond = 60;  // ticks

Errand *running = nullptr;

}  // namespace

Errand::End Errand::run(const std::string &title, const std::filesystem::path &program,
                        const std::vector<std::string> &arguments, const std::filesystem::path &folder)
{
    const auto last = std::make_shared<std::string>();
    const auto pages = std::make_shared<Pages>();
    pages_ = pages;
    const End end = run(title, [=](io::Beside &unwanted) {
        const io::PrivateFolder temporary;
        std::vector<std::string> command{"env", "RIDERS_PROGRESS=lines", program.string()};
        command.insert(command.end(), arguments.begin(), arguments.end());
        constexpr int day = 24 * 3600;
        const io::LimitedResult result = io::runLimited({.command = command,
                                                         .folder = folder,
                                                         .temporary = temporary.path(),
                                                         .seconds = day,
                                                         .secondsInAll = day,
                                                         .megabytes = 1 << 30,
                                                         .temporaryMegabytes = 1 << 16,
                                                         .folderMegabytes = 1 << 24,
                                                         .line =
                                                             [&](std::string_view line) {
                                                                 if (const auto told = io::toldProgress(line))
                                                                     pages->set(*told);
                                                                 else if (!line.empty())
                                                                     *last = line;
                                                                 return false;
                                                             },
                                                         .beside = &unwanted});
        if (result.end != io::RunEnd::exited || result.status != 0)
            throw io::Refusal(*last);
    });
    said_ = *last;
    pages_.reset();
    return end;
}

Errand::End Errand::run(const std::string &title, std::function<void(io::Beside &unwanted)> work)
{
    DialogPtr dialog = GetNewDialog(kErrandDialog, nullptr, reinterpret_cast<WindowPtr>(-1));
    if (!dialog)
        return End::failed;
    const Point corner = centered('DLOG', kErrandDialog);
    MoveWindow(dialog, corner.h, corner.v, false);
    setItemText(dialog, whatText, title);
    failed_ = over_ = false;
    begun_ = shown_ = TickCount();
    work_.begin([this, work = std::move(work)](io::Beside &unwanted) {
        std::string problem;
        bool failed = false;
        try {
            work(unwanted);
        } catch (const io::Refusal &refusal) {
            problem = refusal.message;
            failed = true;
        }
        return [this, problem, failed] {
            said_ = problem;
            failed_ = failed;
            over_ = true;
        };
    });
    ShowWindow(dialog);
    Errand *const before = std::exchange(running, this);
    int16_t hit = 0;
    do
        ModalDialog(filterProc, &hit);
    while (!over_ && hit != stopButton);
    running = before;
    const bool stopped = !over_;
    work_.stop();
    DisposDialog(dialog);
    return stopped ? End::stopped : failed_ ? End::failed : End::done;
}

std::string Errand::withoutCommand() const
{
    const std::size_t colon = said_.find(": ");
    return said_.starts_with("riders ") && colon != said_.npos ? said_.substr(colon + 2) : said_;
}

// "Page 3 of 10, ": the one in work.
std::string Errand::howFar() const
{
    const io::ToldProgress told = pages_ ? pages_->get() : io::ToldProgress();
    if (!pages_ || (told.done == 0 && told.pages == 0))
        return {};
    if (told.pages == 0)
        return words(Words::readingPage, {std::to_string(told.done + 1)}) + ", ";
    return words(Words::pageOf,
                 {std::to_string(std::min(told.done + 1, told.pages)), std::to_string(told.pages)}) +
           ", ";
}

Boolean Errand::filterProc(DialogPtr dialog, EventRecord *event, int16_t *itemHit)
{
    return running->filter(dialog, *event, itemHit);
}

bool Errand::filter(DialogPtr dialog, const EventRecord &event, int16_t *itemHit)
{
    if (event.what == nullEvent) {
        if (waits_)
            work_.wait();
        work_.takeResult();
        if (const std::uint32_t now = TickCount(); now - shown_ >= kSecond) {
            shown_ = now;
            setItemText(dialog, timeText,
                        howFar() + words(Words::seconds, {std::to_string((now - begun_) / kSecond)}));
        }
        return over_;
    }
    *itemHit = buttonForKey(event, stopButton, stopButton);
    return *itemHit != 0 && pressByKey(dialog, *itemHit);
}

}  // namespace riders::app
