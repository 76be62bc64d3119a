// What the parts of TextEdit share about a record: its text, its lines, where
// a character stands, and drawing it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "quickdraw/port_scope.h"
#include "textedit/lines.h"
#include "toolbox/textedit.h"

namespace toolbox::textedit {

// Draws in the record's port and text settings, and puts the port's back.
class RecordScope {
public:
    explicit RecordScope(TEHandle text);

private:
    quickdraw::DrawingScope drawing_;
};

// The characters and where they stand. Made inside a RecordScope; good until
// the record changes.
class Layout {
public:
    explicit Layout(TEHandle text);

    const std::string &text() const { return text_; }
    const std::vector<Line> &lines() const { return lines_; }
    int lineOf(int offset) const;
    // Top left of the caret before the character, local.
    Point positionOf(int offset) const;
    // The nearest place for a caret.
    int offsetAt(Point where) const;
    int offsetInLine(int line, int h) const;
    int height() const { return height_; }
    int ascent() const { return ascent_; }
    std::string_view lineText(int line) const;

private:
    int leftOfLine(int line) const;

    std::string text_;
    std::vector<Line> lines_;
    Rect box_;   // destRect, shifted by the scroll
    int just_;
    int height_;
    int ascent_;
};

std::string charactersOf(TEHandle text);
// Puts the characters in place of those from start to end, caret after them.
// False, and nothing is changed, when memory or TextEdit's limit of 32767
// characters does not allow it.
bool replace(TEHandle text, int start, int end, std::string_view characters);
// Selects, scrolls the end into view, or the offset that is to be shown, draws.
void select(TEHandle text, int start, int end);
void select(TEHandle text, int start, int end, int shown);
void draw(TEHandle text);
// The next press is no second half of a double-click, and no selection is known
// to have been made from one end to the other.
void forgetPresses();

}  // namespace toolbox::textedit
