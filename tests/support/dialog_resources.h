// Dialogs, alerts and item lists as resource bytes, added to a resource file
// that a test makes for itself.
#pragma once

#include <string>

#include "toolbox/dialogs.h"

class ResourceBytes {
public:
    ResourceBytes &word(int value);
    ResourceBytes &longWord(long value);
    ResourceBytes &byte(int value);
    ResourceBytes &rect(int left, int top, int width, int height);
    ResourceBytes &pascal(const std::string &text);
    ResourceBytes &evenly();

    // Adds it to the current resource file, purgeable.
    void add(ResType type, int id) const;
    const std::string &bytes() const { return bytes_; }

private:
    std::string bytes_;
};

// An item list, item by item; add() closes it.
class ItemList {
public:
    ItemList &item(int type, int left, int top, int width, int height, const std::string &data = "");
    void add(int id) const;

private:
    ResourceBytes items_;
    int count_ = 0;
};

// A 'DLOG', dBoxProc unless procID says otherwise, with the item list of its
// number.
void addDialog(int id, int left, int top, int width, int height, bool visible = false, int procID = 1);
void addAlert(int id, int left, int top, int width, int height, int stages = 0x5555);
// Runs the dialog until the item is hit, and disposes of it.
void runUntil(DialogPtr dialog, int item);
// An empty resource file in the folder, current from then on.
int16_t openNewResourceFile(const std::string &folder);
