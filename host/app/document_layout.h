// Where things lie in the window of a job, and how its pictures are drawn.
#pragma once

#include "app/job_view.h"
#include "toolbox/dialogs.h"

namespace riders::app {

enum DocumentItem : int16_t {
    addButton = 1,
    closeButton,
    takeOutButton,
    outlineItem,
    titleLabel,
    pagesLabel,
    ridersLabel,
    titleText,
    pagesText,
    ridersText,
    pageItem,
    withItem,
    withoutItem,
    withCaption,
    withoutCaption,
    verdictText,
    factsText,
    previousButton,
    nextButton,
    pageText,
    firstChoiceText,
    againButton = firstChoiceText + 8
};

// Lines of what a riders file chooses; more are not shown.
inline constexpr int kMostChoices = againButton - firstChoiceText;

// Sizes and places the window and its items for the display: with so many lines of what a riders file chooses, or,
// with 0, as the window of a job. Returns the room there is for pictures.
RoomForPictures layOut(DialogPtr dialog, const toolbox::Display &display, int choices);

// Where the page lies in its item, and the dots in theirs, so that each of their pixels is one of the display's,
// or so many as they are enlarged to.
Rect pagePlace(const Rect &box, const viewing::PagePicture &page, int scale);
Rect dotsPlace(const Rect &frame, const toolbox::Picture &dots, int enlargement, int scale);

// These draw into the current port.
void drawPageAround(const Rect &box, const Rect &place);
void drawLoupe(const Rect &place, const JobView::Part &part);
// In the middle; UTF-8.
void drawWords(const Rect &box, const std::string &text);

// On a display with two colours, black dots in place of tones.
toolbox::Picture forDepth(const toolbox::Picture &picture, int depth);

}  // namespace riders::app
