// What the parts of TextEdit share about a record: its text, its lines, where a
// character is, and drawing it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "quickdraw/port_scope.h"
#include "textedit/lines.h"
#include "toolbox/textedit.h"

namespace toolbox::textedit {

// Draws in the record's port with its text settings, and restores the port's.
class RecordScope {
public:
    explicit RecordScope(TEHandle text);

private:
    quickdraw::DrawingScope drawing_;
};

// The characters and where they are. Made inside a RecordScope; valid until the
// record changes.
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
// Replaces the characters from start to end, and puts the caret after the new
// ones. False, with nothing changed, when memory or TextEdit's limit of 32767
// characters does not allow it.
bool replace(TEHandle text, int start, int end, std::string_view characters);
// Selects, scrolls the end or the offset `shown` into view, and draws.
void select(TEHandle text, int start, int end);
void select(TEHandle text, int start, int end, int shown);
void draw(TEHandle text);
// The next press does not complete a double-click, and which end of the
// selection moves is forgotten.
void forgetPresses();

}  // namespace toolbox::textedit
