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

// The ends of the selection: as selectTo left them, or, if something else has
// selected since, with the end in the direction (-1, 1) as the moving one.
Extent extentOf(TEHandle text, int direction);
// Selects from the anchor to the other end, which is scrolled into view.
void selectTo(TEHandle text, int anchor, int moving);
void forgetExtent();

// The word that contains the offset or has an end there; empty between two
// characters that belong to no word.
struct WordRange {
    int start;
    int end;
};
WordRange wordAt(const std::string &characters, int offset);
// The nearest beginning of a word to the left, end of a word to the right.
int wordBefore(const std::string &characters, int offset);
int wordAfter(const std::string &characters, int offset);

}  // namespace toolbox::textedit
