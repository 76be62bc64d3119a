// The About box: a picture that zooms in, an icon that falls out of the window
// when the picture is clicked, lines that scroll by for a control-click, and
// the credits panel, which an option-click opens.
#pragma once

#include "source/openDialogs.h"
#include "source/resourceNumbers.h"

// One item at a time is updated through it. Exists while the box is open.
extern RgnHandle gTheAboutRgn;
// Closes the box, or the panel.
extern Boolean gAboutDone;
// 1 until the intro is over and while the icon falls: only the animation draws.
extern Boolean gDoIntro;
// Events so far, 16 at most.
extern int16_t gPreIntroCounter;
extern Boolean gIconDone;
extern Boolean gScrollInProg;
// The line is yet to be loaded.
extern Boolean gGetScrollStr;
// 1 to 3.
extern int16_t gWhichScrollString;
extern Str255 gTheScrollStr;
// Minus the line's width: where the pen is when all of the line has scrolled out.
extern int32_t gScrollStrLen;
// Where the line begins, local; at the port's right edge nothing scrolls.
extern int32_t gScrollDelta;
extern Rect gScrollRect;

void AboutInit();
// The credits panel's hook.
void CreditsInit();

// Shows the About box until the user closes it, and then the credits panel if
// that was asked for. Needs the settings and the environment; the panel may
// change useColor. Returns 1. Does not return when a dialog or an information
// line is missing.
int16_t HandleAboutDialog();

// All below act on the open box, gTheDialog, which is the current port.
Boolean AboutFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit);
void AboutProc(DialogPtr dialog, int16_t item);
// Shows the picture, if wanted, and the icon, unless it has fallen, for the main
// display's current depth; hides those for other depths.
void SetAboutPicts(Boolean showPicture);
// Grows the picture to its size and plays the sound, or shrinks it to nothing.
void DoAboutIntro(Boolean grow);
// Draws the title and, unless titleOnly, the three information lines.
void DoAboutInfo(Boolean titleOnly);
void DoAboutIconMove();
// One step of the scrolling lines.
void DoAboutScrollText();
