// The open dialogs and their items. Private to the Dialog Manager.
#pragma once

#include <list>
#include <optional>
#include <string>
#include <vector>

#include "toolbox/dialogs.h"

namespace toolbox::dialogs {

struct Item {
    int16_t type = 0;        // itemDisable included
    Rect box{};
    // As GetDItem gives it: control, text, icon, procedure.
    Handle handle = nullptr;
    int16_t resource = -1;   // the number of its icon or picture

    int16_t kind() const { return type & ~itemDisable; }
    bool enabled() const { return !(type & itemDisable); }
    bool isControl() const { return (kind() & ~3) == ctrlItem; }
    bool isText() const { return kind() == statText || kind() == editText; }
};

// What the text of an edit item was.
struct EarlierText {
    int item = 0;
    std::string characters;
    int start = 0, end = 0;  // what was selected
};

struct Dialog {
    DialogPeek record = nullptr;
    int16_t id = 0;
    bool alert = false;
    bool complete = false;       // all items made
    bool ownsRecord = false;
    int16_t alertIcon = -1;      // 0 stop, 1 note, 2 caution
    int quitAsks = 0;            // how often it was asked to cancel since the request to quit
    std::optional<EarlierText> earlier;  // before the last change, for undoing it
    bool typing = false;                 // characters typed now belong to that change
    std::vector<Item> items;
    // DialogRecord.items is a handle to this.
    Ptr master = nullptr;

    DialogPtr pointer() const { return &record->window.port; }
    // Nil when there is no such item; numbers count from 1.
    Item *item(int number);
    bool isCurrent(int number) const { return record->textH && record->editField == number - 1; }
};

// Addresses stay valid until the dialog is removed.
extern std::list<Dialog> dialogs;
// Nil for a window that is not a dialog.
Dialog *find(DialogPtr dialog);
inline DialogPeek peek(DialogPtr dialog) { return reinterpret_cast<DialogPeek>(dialog); }

}  // namespace toolbox::dialogs
