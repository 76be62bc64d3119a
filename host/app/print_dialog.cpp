#include "app/print_dialog.h"

#include <charconv>

#include "app/dialog_items.h"
#include "app/focus.h"
#include "app/words.h"
#include "toolbox/host/text.h"
#include "toolbox/keys.h"
#include "toolbox/menus.h"
#include "toolbox/system.h"

namespace riders::app {
namespace {

constexpr int16_t kPrintDialog = 1021, kQueueMenu = 1021;
enum PrintItem : int16_t { printButton = 1, cancelButton, printOutline, queueItem = 5, copiesText = 7 };
constexpr int kMostCopies = 999;

class PrintDialog;
PrintDialog *asking = nullptr;

class PrintDialog {
public:
    explicit PrintDialog(const std::vector<std::string> &queues) : queues_(queues) {}

    std::optional<PrintChoice> run();

private:
    static void drawProc(DialogPtr, int16_t item) { asking->draw(item); }
    static Boolean filterProc(DialogPtr, EventRecord *event, int16_t *hit) { return asking->filter(*event, hit); }
    void draw(int16_t item) const;
    bool filter(const EventRecord &event, int16_t *hit);
    void chooseQueue();
    void step(int by);
    int copies() const;

    const std::vector<std::string> &queues_;
    std::size_t queue_ = 0;
    DialogPtr dialog_ = nullptr;
};

// A menu that exists as long as this does.
class QueueMenu {
public:
    explicit QueueMenu(const std::vector<std::string> &queues)
    {
        Str255 text = {0};
        menu_ = NewMenu(kQueueMenu, text);
        for (std::size_t i = 0; menu_ && i < queues.size(); ++i) {
            toolbox::setPascal(text, "x");
            AppendMenu(menu_, text);
            toolbox::setPascal(text, toolbox::romanFromUtf8Lossy(queues[i]));
            SetItem(menu_, static_cast<int16_t>(i + 1), text);
        }
        if (menu_)
            InsertMenu(menu_, -1);
    }
    ~QueueMenu()
    {
        if (menu_)
            DisposeMenu(menu_);
    }
    QueueMenu(const QueueMenu &) = delete;
    QueueMenu &operator=(const QueueMenu &) = delete;
    MenuHandle handle() const { return menu_; }

private:
    MenuHandle menu_ = nullptr;
};

void PrintDialog::draw(int16_t item) const
{
    if (item == printOutline)
        return drawOutline(dialog_, printOutline, printButton);
    const Rect box = itemBox(dialog_, queueItem);
    Str255 text;
    toolbox::setPascal(text, toolbox::romanFromUtf8Lossy(queues_[queue_]));
    PenNormal();
    EraseRect(&box);
    FrameRect(&box);
    MoveTo(static_cast<int16_t>(box.left + 8), static_cast<int16_t>(box.top + 14));
    DrawString(text);
    for (int16_t i = 0; i < 6; ++i) {
        MoveTo(static_cast<int16_t>(box.right - 18 + i), static_cast<int16_t>(box.top + 7 + i));
        Line(static_cast<int16_t>(11 - 2 * i), 0);
    }
}

void PrintDialog::step(int by)
{
    queue_ = (queue_ + queues_.size() + static_cast<std::size_t>(by)) % queues_.size();
    const PortOf port(dialog_);
    draw(queueItem);
}

void PrintDialog::chooseQueue()
{
    const QueueMenu menu(queues_);
    const PortOf port(dialog_);
    const Rect box = itemBox(dialog_, queueItem);
    Point corner{static_cast<int16_t>(box.top + 1), static_cast<int16_t>(box.left + 1)};
    LocalToGlobal(&corner);
    const int32_t chosen = PopUpMenuSelect(menu.handle(), corner.v, corner.h, static_cast<int16_t>(queue_ + 1));
    if (LoWord(chosen) > 0)
        queue_ = static_cast<std::size_t>(LoWord(chosen) - 1);
    draw(queueItem);
}

// Up and down choose the printer: the text field needs neither.
bool PrintDialog::filter(const EventRecord &event, int16_t *hit)
{
    namespace key = toolbox::key;
    if (event.what == keyDown || event.what == autoKey) {
        const auto character = event.message & charCodeMask;
        if (character == key::upArrow || character == key::downArrow) {
            step(character == key::upArrow ? -1 : 1);
            return true;
        }
    }
    *hit = buttonForKey(event, printButton, cancelButton);
    return *hit != 0 && pressByKey(dialog_, *hit);
}

int PrintDialog::copies() const
{
    int16_t type = 0;
    Handle item = nullptr;
    Rect box;
    Str255 text;
    GetDItem(dialog_, copiesText, &type, &item, &box);
    GetIText(item, text);
    const std::string digits = toolbox::utf8FromPascal(text);
    int value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return error == std::errc() && end == digits.data() + digits.size() && value <= kMostCopies ? value : 0;
}

std::optional<PrintChoice> PrintDialog::run()
{
    dialog_ = GetNewDialog(kPrintDialog, nullptr, reinterpret_cast<WindowPtr>(-1));
    if (!dialog_)
        return std::nullopt;
    asking = this;
    const Point corner = centered('DLOG', kPrintDialog);
    MoveWindow(dialog_, corner.h, corner.v, false);
    setUserItem(dialog_, printOutline, drawProc);
    setUserItem(dialog_, queueItem, drawProc);
    SelIText(dialog_, copiesText, 0, INT16_MAX);
    ShowWindow(dialog_);
    std::optional<PrintChoice> choice;
    for (int16_t hit = 0; hit != cancelButton && !choice;) {
        ModalDialog(filterProc, &hit);
        if (hit == queueItem)
            chooseQueue();
        else if (hit == printButton && copies() < 1)
            SysBeep(1), SelIText(dialog_, copiesText, 0, INT16_MAX);
        else if (hit == printButton)
            choice = PrintChoice{queues_[queue_], copies()};
    }
    asking = nullptr;
    DisposDialog(dialog_);
    return choice;
}

}  // namespace

std::optional<PrintChoice> askHowToPrint(const std::vector<std::string> &queues)
{
    return PrintDialog(queues).run();
}

}  // namespace riders::app
