#include "standardfile/file_dialog.h"

#include "files/directory.h"
#include "quickdraw/port.h"
#include "quickdraw/port_scope.h"
#include "standardfile/folders_used.h"
#include "toolbox/host/flash_button.h"
#include "toolbox/host/folders.h"
#include "toolbox/host/listed_files.h"
#include "toolbox/host/text.h"
#include "toolbox/keys.h"
#include "toolbox/resources.h"
#include "toolbox/system.h"

namespace fs = std::filesystem;

namespace toolbox::standardfile {
namespace {

// The dialog that is open; the inner one when a hook has opened another.
FileDialog *current = nullptr;

class Current {
public:
    explicit Current(FileDialog *dialog) : before_(current) { current = dialog; }
    ~Current() { current = before_; }
    Current(const Current &) = delete;
    Current &operator=(const Current &) = delete;

private:
    FileDialog *before_;
};

Rect globalRect(Rect r)
{
    Point topLeft{r.top, r.left};
    LocalToGlobal(&topLeft);
    OffsetRect(&r, static_cast<int16_t>(topLeft.h - r.left), static_cast<int16_t>(topLeft.v - r.top));
    return r;
}

}  // namespace

bool isCancelKey(std::uint8_t character, std::uint16_t modifiers)
{
    return character == key::escape || (character == '.' && (modifiers & cmdKey));
}

bool isAcceptKey(std::uint8_t character)
{
    return character == key::carriageReturn || character == key::enter;
}

void flashItem(DialogPtr dialog, std::int16_t number)
{
    std::int16_t type = 0;
    Handle item = nullptr;
    Rect box;
    GetDItem(dialog, number, &type, &item, &box);
    if (item)
        flashButton(reinterpret_cast<ControlHandle>(item));
}

std::optional<State> state()
{
    if (!current)
        return std::nullopt;
    return current->state();
}

FileDialog::FileDialog(std::int16_t dialogID, Point where, Items items, DlgHookProcPtr hook,
                       ModalFilterProcPtr filter)
    : dialog_(GetNewDialog(dialogID, nullptr, reinterpret_cast<WindowPtr>(-1))), items_(items), hook_(hook),
      callersFilter_(filter), folder_(startingFolder())
{
    if (dialog_ && CountDITL(dialog_) < items_.scrollBar) {
        DisposDialog(dialog_);
        dialog_ = nullptr;
    }
    if (dialog_)
        MoveWindow(dialog_, where.h, where.v, false);
}

Handle FileDialog::item(std::int16_t number, Rect *box) const
{
    std::int16_t type = 0;
    Handle handle = nullptr;
    Rect ignored;
    GetDItem(dialog_, number, &type, &handle, box ? box : &ignored);
    return handle;
}

void FileDialog::placeItems()
{
    for (std::int16_t number : {std::int16_t(folderItem), std::int16_t(outlineItem), items_.list, items_.scrollBar}) {
        std::int16_t type = 0;
        Handle handle = nullptr;
        Rect box;
        GetDItem(dialog_, number, &type, &handle, &box);
        if ((type & ~itemDisable) == userItem)
            SetDItem(dialog_, number, type, reinterpret_cast<Handle>(&drawItemProc), &box);
    }
    Rect listBox{}, scrollBox{};
    item(items_.list, &listBox);
    item(items_.scrollBar, &scrollBox);
    list_.setPlace(listBox, scrollBox);
}

bool FileDialog::run()
{
    if (!dialog_) {
        SysBeep(1);  // whoever asked for it sees nothing come up
        return false;
    }
    Current beingCurrent(this);
    quickdraw::PortScope port(dialog_);
    placeItems();
    list_.setRows(rowsOf(folder_));
    prepare();
    showWhatIsPossible();
    if (hook_)
        hook_(-1, dialog_);
    ShowWindow(dialog_);
    for (;;) {
        std::int16_t hit = 0;
        ModalDialog(&filterProc, &hit);
        if (hook_)
            hit = hook_(hit, dialog_);
        if (hit == items_.cancel || (hit == acceptItem && accept())) {
            bool accepted = hit == acceptItem;
            SetPort(quickdraw::desktopPort());
            DisposDialog(dialog_);
            return accepted;
        }
    }
}

Boolean FileDialog::filterProc(DialogPtr dialog, EventRecord *event, std::int16_t *itemHit)
{
    quickdraw::PortScope port(current->dialog_);
    if (current->callersFilter_ && current->callersFilter_(dialog, event, itemHit))
        return true;
    return current->filter(event, itemHit);
}

bool FileDialog::filter(EventRecord *event, std::int16_t *itemHit)
{
    showWhatIsPossible();
    bool taken = false;
    if (event->what == mouseDown)
        taken = mouse(*event, itemHit);
    else if (event->what == keyDown || event->what == autoKey)
        taken = keyPressed(*event, itemHit);
    if (taken)
        showWhatIsPossible();
    return taken;
}

bool FileDialog::mouse(const EventRecord &event, std::int16_t *itemHit)
{
    Point where = event.where;
    GlobalToLocal(&where);
    Rect folderBox{};
    item(folderItem, &folderBox);
    if (PtInRect(where, &folderBox)) {
        followFolderPopup();
        *itemHit = folderItem;
        return true;
    }
    FileList::Click click = list_.click(where, event.when);
    if (click == FileList::Click::outside)
        return false;
    *itemHit = items_.list;
    if (click == FileList::Click::opened && !openSelectedFolder())
        *itemHit = acceptItem;
    return true;
}

bool FileDialog::keyPressed(const EventRecord &event, std::int16_t *itemHit)
{
    auto character = static_cast<std::uint8_t>(event.message & charCodeMask);
    bool command = event.modifiers & cmdKey;
    *itemHit = items_.list;
    if (isAcceptKey(character))
        return press(acceptItem, itemHit);
    if (isCancelKey(character, event.modifiers))
        return press(items_.cancel, itemHit);
    if (character == toolbox::key::upArrow && command) {
        if (fs::path above = files::parentOf(folder_); !above.empty())
            goTo(above);
    } else if (character == toolbox::key::downArrow && command) {
        openSelectedFolder();
    } else if (character == toolbox::key::upArrow || character == toolbox::key::downArrow) {
        list_.moveSelection(character == toolbox::key::upArrow ? -1 : 1);
    } else {
        return key(character, event.modifiers, event.when);
    }
    return true;
}

// Acts as if the button were pressed by hand; a dimmed one beeps.
bool FileDialog::press(std::int16_t button, std::int16_t *itemHit)
{
    if (button == acceptItem && !acceptPossible()) {
        SysBeep(1);
        return true;
    }
    *itemHit = button;
    flashItem(dialog_, button);
    return true;
}

bool FileDialog::openSelectedFolder()
{
    const Row *row = list_.selected();
    if (!row || !row->isFolder)
        return false;
    fs::path folder = folder_ / row->linuxName;
    std::error_code ignored;
    if (!fs::is_directory(folder, ignored)) {
        refuse(folderIsGone, row->name);
        folder = nearestFolder(folder);
    }
    goTo(folder);
    return true;
}

void FileDialog::goTo(const fs::path &folder)
{
    folder_ = folder;
    list_.setRows(rowsOf(folder_));
    redrawContents();
}

void FileDialog::redrawContents()
{
    drawFolder();
    list_.drawList();
    list_.drawScrollBar();
}

void FileDialog::followFolderPopup()
{
    Rect box{};
    item(folderItem, &box);
    Point where{static_cast<int16_t>(box.top + 1), static_cast<int16_t>(box.left + 1)};
    LocalToGlobal(&where);
    fs::path chosen = chooseAbove(folder_, where);
    if (!chosen.empty() && chosen != folder_)
        goTo(chosen);
}

void FileDialog::drawItemProc(DialogPtr dialog, std::int16_t number)
{
    if (current && current->dialog_ == dialog)
        current->drawItem(number);
}

void FileDialog::drawItem(std::int16_t number)
{
    if (number == folderItem)
        drawFolder();
    else if (number == outlineItem)
        drawOutline();
    else if (number == items_.list)
        list_.drawList();
    else if (number == items_.scrollBar)
        list_.drawScrollBar();
}

void FileDialog::drawFolder() const
{
    Rect box{};
    item(folderItem, &box);
    PenNormal();
    EraseRect(&box);
    --box.right;
    --box.bottom;
    FrameRect(&box);
    MoveTo(static_cast<int16_t>(box.left + 1), box.bottom);
    LineTo(box.right, box.bottom);
    LineTo(box.right, static_cast<int16_t>(box.top + 1));
    drawFolderPicture(static_cast<int16_t>(box.left + 4), static_cast<int16_t>(box.top + 2));
    TextFont(systemFont);
    TextSize(12);
    MoveTo(static_cast<int16_t>(box.left + 20), static_cast<int16_t>(box.top + 12));
    drawFitting(files::folderName(folder_), folder_.filename(), box.right - box.left - 44);
    for (int16_t i = 0; i < 6; ++i) {
        MoveTo(static_cast<int16_t>(box.right - 17 + i), static_cast<int16_t>(box.top + 5 + i));
        Line(static_cast<int16_t>(11 - 2 * i), 0);
    }
}

void FileDialog::drawOutline() const
{
    Rect box{};
    item(outlineItem, &box);
    if (EmptyRect(&box))
        return;
    PenSize(3, 3);
    if (!acceptPossible())
        PenPat(&qd.gray);
    FrameRoundRect(&box, 16, 16);
    PenNormal();
}

void FileDialog::showWhatIsPossible()
{
    auto *button = reinterpret_cast<ControlHandle>(item(acceptItem));
    constexpr std::uint8_t dimmed = 255;
    std::uint8_t wanted = acceptPossible() ? 0 : dimmed;
    if (!button || (**button).contrlHilite == wanted)
        return;
    HiliteControl(button, wanted);
    if (reinterpret_cast<WindowPeek>(dialog_)->visible)
        drawOutline();
}

void FileDialog::refuse(int message, const std::string &about)
{
    Str255 text;
    GetIndString(text, messageStrings, static_cast<std::int16_t>(message));
    std::string words(pascalView(text));
    if (auto place = words.find("^0"); place != words.npos)
        words.replace(place, 2, about);
    refuseInWords(words);
}

void FileDialog::refuseInWords(const std::string &words)
{
    Str255 text, empty = {0};
    setPascal(text, words);
    ParamText(text, empty, empty, empty);
    if (StopAlert(messageAlert, nullptr) == -1)
        SysBeep(1);
}

bool FileDialog::folderThere(std::int16_t &workingDirectory)
{
    std::optional<std::int16_t> number = folders::workingDirectory(folder_);
    if (number) {
        workingDirectory = *number;
        return true;
    }
    refuse(folderIsGone, files::folderName(folder_));
    goTo(nearestFolder(folder_));
    return false;
}

State FileDialog::state() const
{
    quickdraw::PortScope port(dialog_);
    State state{dialog_,
                items_.name != 0,
                folder_,
                list_.rows(),
                {},
                globalRect(list_.arrowUp()),
                globalRect(list_.arrowDown()),
                list_.selectedIndex(),
                items_.cancel,
                items_.name};
    for (int i = 0; i < static_cast<int>(list_.rows().size()); ++i) {
        Rect row = list_.rowRect(i);
        state.rowRects.push_back(EmptyRect(&row) ? Rect{} : globalRect(row));
    }
    return state;
}

}  // namespace toolbox::standardfile

void toolbox::listFilesAgain()
{
    if (standardfile::current)
        standardfile::current->listAgain();
}
