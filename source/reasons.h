// The numbers that a report shows after "ID = ": which step failed. Users quote them
// when they ask for help, so a number never changes its meaning. A name defined as
// another name shares its number on purpose; with a number of its own, users would
// quote another one than before. A test refuses any other number that occurs twice.
#pragma once

#include <cstdint>

enum : int16_t {
    kNoReason = 0,                     // no number is shown
    kColourUnknown = 2,                // Gestalt does not know about QuickDraw
    kNoVersion = 3,                    // 'vers' 1
    kNoMenu = 7,                       // any popup's menu
    kNoMessage = 8,                    // a 'STR ', written out in the fixed text of the last resort
    kNoHeader = 11,                    // either piece that a riders file begins with
    kNoSetup = 12,                     // the piece it ends with
    kNoFreqBegin = 13,                 // before the frequency
    kNoFreqEnd = 14,                   // after it
    kNoAngleBegin = 15,                // before the angle
    kNoAngleEnd = 16,                  // after it
    kNoFlat = 17,                      // before or after the flatness
    kNoAnnoFont = 18,                  // before the annotation's font
    kNoAnnoSize = 19,                  // before its size
    kNoSpotBegin = 20,                 // before the spot function's body
    kNoAnnoText = kNoSpotBegin,        // before the annotation's text
    kNoRoundDot = 21,                  // 21 to 27: the dot shapes, see dotShapes.h
    kNoAnnoEnd = kNoRoundDot,          // after the annotation's text
    kNoSpotEnd = 28,                   // after the spot function's body
    kNoScreenCheck = 29,               // in the spot function's place
    kNoErrorHandler = kNoScreenCheck,  // prints errors on the page
    kFreqNotInMenu = 31,               // a stored frequency item that its menu does not have
    kAngleNotInMenu = 32,              // a stored angle item that its menu does not have
    kSpotNotInMenu = 33,               // a stored spot function item that its menu does not have
    kFlatNotInMenu = 34,               // a stored flatness item that its menu does not have
    kAnnoNotInMenu = 35,               // a stored annotation item that its menu does not have
    kErrorNotInMenu = 36,              // a stored error handler item that its menu does not have
    kNoStoredRecord = 50,              // a settings file without 'STUF' 128
    kNoSpotMagic = 51,                 // no "%!KT1_Spot" where it should be
    kNoSpotReturn = 52,                // no line end after it
    kNoSettingsDialog = 78,            // the settings dialog's DLOG
    kNoDialog = 80,                    // another dialog's DLOG
    kNoDialogToPlace = 81,             // a DLOG whose stored position is checked
    kNoAlert = 82,                     // the ALRT
    kNoDisplay = 83,                   // not even a main one
    kNoWindowColours = 87,             // a 'dctb'
    kNoButtonColours = 88,             // a 'cctb'
    kNoString = 90,                    // a text of a 'STR#'
    kNoRecordBlock = 94,               // no memory for a record
    kNoFileBlock = 95,                 // no memory for a file's bytes, or a popup
    kFileTooLarge = 96,                // more than memory may be asked for
    kStoredSpotNotRead = 97,           // the spot function in the settings file
    kStoredSpotNoBlock = 98,           // no memory for it
    kStoredSpotTooLarge = 99,          // more than memory may be asked for
    kStoredSpotNoLength = 100,         // its length is not known
    kStoredSpotNotOpened = 101,        // the file cannot be opened
};
