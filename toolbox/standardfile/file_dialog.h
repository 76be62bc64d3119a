// What the save and the open dialog have in common: a folder, its popup, its
// list, and the keys. Private to Standard File.
#pragma once

#include <filesystem>
#include <string>

#include "standardfile/file_list.h"
#include "standardfile/state.h"
#include "toolbox/host/session.h"
#include "toolbox/standardfile.h"

namespace toolbox::standardfile {

class FileDialog {
public:
    struct Items {
        std::int16_t cancel, name, list, scrollBar;   // name 0: there is none
    };

    // Made from 'DLOG' dialogID, not yet shown; there is no dialog where that is
    // missing or has too few items.
    FileDialog(std::int16_t dialogID, Point where, Items items, DlgHookProcPtr hook, ModalFilterProcPtr filter);
    virtual ~FileDialog() = default;
    FileDialog(const FileDialog &) = delete;
    FileDialog &operator=(const FileDialog &) = delete;

    // Shows the dialog and runs it until it is cancelled (false) or a file is
    // accepted (true), and closes it. Beeps and returns false where there is none.
    bool run();
    State state() const;
    void listAgain() { goTo(folder_); }
    const std::filesystem::path &folder() const { return folder_; }

protected:
    virtual std::vector<Row> rowsOf(const std::filesystem::path &folder) const = 0;
    virtual void prepare() {}
    virtual bool acceptPossible() const = 0;
    // Whether the dialog is done. May ask a question, show a refusal, or open a
    // folder.
    virtual bool accept() = 0;
    // A key that the dialog itself does not handle; true when it was handled.
    virtual bool key(std::uint8_t character, std::uint16_t modifiers, std::uint32_t when) = 0;

    DialogPtr dialog() const { return dialog_; }
    FileList &list() { return list_; }
    const FileList &list() const { return list_; }
    void goTo(const std::filesystem::path &folder);
    bool openSelectedFolder();
    Handle item(std::int16_t number, Rect *box = nullptr) const;
    void refuse(int message, const std::string &about = {});
    void refuseInWords(const std::string &words);
    // Gets the folder's number. False, after a message, when there is no such
    // folder any more: then the dialog shows the nearest one above.
    bool folderThere(std::int16_t &workingDirectory);

private:
    static Boolean filterProc(DialogPtr dialog, EventRecord *event, std::int16_t *itemHit);
    static void drawItemProc(DialogPtr dialog, std::int16_t item);

    bool filter(EventRecord *event, std::int16_t *itemHit);
    bool mouse(const EventRecord &event, std::int16_t *itemHit);
    bool keyPressed(const EventRecord &event, std::int16_t *itemHit);
    bool press(std::int16_t button, std::int16_t *itemHit);
    void drawItem(std::int16_t item);
    void drawFolder() const;
    void drawOutline() const;
    void placeItems();
    void followFolderPopup();
    void showWhatIsPossible();
    void redrawContents();

    DialogPtr dialog_ = nullptr;
    Items items_;
    DlgHookProcPtr hook_;
    ModalFilterProcPtr callersFilter_;
    std::filesystem::path folder_;
    FileList list_;
};

// Keys that mean Cancel and those that press the default button.
bool isCancelKey(std::uint8_t character, std::uint16_t modifiers);
bool isAcceptKey(std::uint8_t character);
// Shows the item, a button, pressed for 8 ticks; nothing where it has no control.
void flashItem(DialogPtr dialog, std::int16_t item);

// The dialogs' messages, by index in 'STR#' messageStrings. ^0 stands for what a
// message is about.
enum Message { nameHasSeparator = 1, nameTooLong, nameNotUsable, nameIsFolder, folderIsGone };
inline constexpr std::int16_t messageStrings = 16402;
inline constexpr std::int16_t messageAlert = 16402;
inline constexpr std::int16_t replaceAlert = 16403;

}  // namespace toolbox::standardfile
