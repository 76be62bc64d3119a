// What the program says, from its resource fork, and where it says it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "toolbox/dialogs.h"

namespace riders::app {

// Numbers in 'STR#' 1000.
enum class Words {
    notStated = 1, inThisJob, none, saveWith, saveWithout, endingWith, endingWithout,
    drawing, pageOf, page, withRiders, withoutRiders, asItIs,
    lines, atAngle, noInkThere, noScreenThere, frequencyMissed, angleMissed, asAskedFor, nobodyAsks,
    askedByRiders, askedByJob, interpretersOwn, measuredOn, annotated,
    dpi, triedNotSaved, noRidersFile, jobGone,
    openJob, makeRiders, howToBegin, madeIn, addMade, addToJob, addRiders,
    seconds, proofing, proofMade, askingPrinters, noPrinter, printing, printed, wouldDo,
    titleLabel, choosesLabel, andMore, takeItOut, change, notExact, notInDialog, madeAgain, makeAgain, newRiders,
    cutOff, askTrash, askDelete, trashed, readingPage, saving
};
// UTF-8. ^0 to ^3 in them stand for the parts.
std::string words(Words which, const std::vector<std::string> &parts = {});

// A problem without that folder's path, which the person knows.
std::string inPlainWords(std::string problem, const std::filesystem::path &folder);

// The top left corner, global, with which the 'DLOG' or 'ALRT' (as the type says) lies
// in the middle of the main display, a third of the free height down.
Point centered(ResType type, int id);

// By their 'ALRT' resources, whose buttons are "Add" and "Not Now", "Go On" and "Cancel", "Move to Trash" and "Keep
// It", "Delete" and "Keep It".
enum class Question : int16_t { add = 1011, goOn = 1013, moveToTrash, deleteForGood };
// Asks, UTF-8; true for the default button, the first. Escape means the other.
bool ask(Question question, const std::string &text);

// Says something, UTF-8, and waits for OK.
void showNote(const std::string &text);

// Shows what went wrong, UTF-8, and waits for OK.
void showProblem(const std::string &text);

}  // namespace riders::app
