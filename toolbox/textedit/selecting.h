// A selection that grows from one end, and words. Private to the Toolbox.
#pragma once

#include <string>

#include "toolbox/textedit.h"

namespace toolbox::textedit {

// The two ends of a selection: the one that stays and the one that moves.
struct Extent {
    int anchor;
    int moving;
};

// Of the selection as it is: as selectTo left it, or, where something else has
// selected since, with the end that the direction (-1, 1) leads to as the
// moving one.
Extent extentOf(TEHandle text, int direction);
// Selects from the anchor to the other end, which is scrolled into view.
void selectTo(TEHandle text, int anchor, int moving);
void forgetExtent();

// The word that holds the offset, or that it is an end of; empty between two
// other characters.
struct WordRange {
    int start;
    int end;
};
WordRange wordAt(const std::string &characters, int offset);
// The next beginning of a word to the left, end of a word to the right.
int wordBefore(const std::string &characters, int offset);
int wordBehind(const std::string &characters, int offset);

}  // namespace toolbox::textedit
