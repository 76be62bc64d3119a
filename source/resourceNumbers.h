// The numbers of the plug-in's resources, in the order of their sources in
// resources/. Each part begins with the resource type and the source. A test
// compares both: no number here without a resource, no resource without a name
// here.
#pragma once

#include <cstdint>

// 'STR#' in strings.res, and one in about.res: lists of texts.
enum : int16_t {
    kAnnoStrings = 16128,     // the annotation dialog's words
    kSaveStrings = 16129,     // the save dialog's words
    kPrefsStrings = 16131,    // the settings file's name, and the texts of new settings
    kAboutStrings = 16200,    // the prefix of the version, and the About box's lines
    kCommandStrings = 16500,  // the host's menu: heading and commands
    kCreditsStrings = 16201,  // lines that scroll through the About box, lines of the credits panel
};

// 'STR ' in strings.res: messages.
enum : int16_t {
    kSomethingMissing = 16129,      // the plug-in cannot go on
    kSettingsUnusable = 16130,      // stored settings were replaced by new ones
    kInvalidCharacter = 16132,      // no number
    kDiskTrouble = 16134,           // the disk failed to read or write
    kDiskFull = 16137,              // no room
    kDiskLocked = 16138,            // the whole disk can only be read
    kNotWritten = 16139,            // any other failure of writing
    kTwoSeparators = 16140,         // more than one decimal separator
    kFreqOutOfRange = 16141,        // 1 to 999
    kAngleOutOfRange = 16142,       // 0 to 360
    kFlatOutOfRange = 16143,        // 0.2 to 200
    kTooManyDecimals = 16144,       // more than four digits after the separator
    kTextLength = 16145,            // the annotation has 1 to 254 characters
    kImportQuestion = 16146,        // whether to import a spot function
    kFileGone = 16149,              // the file is no longer there
    kNotRead = 16150,               // any other failure of reading
    kFileIsEmpty = 16151,           // nothing to import
    kNoMemoryForFile = 16152,       // to import
    kStoredSpotUnreadable = 16153,  // the spot function imported earlier
    kNoMemoryForStored = 16154,     // the same
    kNothingChosen = 16155,         // all popups on their first item
    kFileLocked = 16156,            // to be written
    kNotAllowed = 16157,            // no permission to write
    kFileInUse = 16158,             // to be written
    kNoRidersFile = 16159,          // not removed
    kNoMemoryToCheck = 16161,       // the file to be removed
    kValuePasteTooLong = 16162,     // over 15 characters with the field
    kTextPasteTooLong = 16163,      // over 254 characters with the field
    kNoSpotFile = 16164,            // not imported
    kSizeNotWhole = 16165,          // a size with a separator
    kSizeOutOfRange = 16166,        // 4 to 30
    kSizePasteTooLong = 16167,      // over 4 characters with the field
};

// 'MENU' in menus.res: popup menus.
enum : int16_t {
    kFreqMenu = 16136,      // screen frequencies
    kAngleMenu = 16137,     // screen angles
    kSpotMenu = 16138,      // spot functions
    kFlatMenu = 16139,      // flatnesses
    kAnnoMenu = 16140,      // whether there is an annotation
    kErrorMenu = 16141,     // whether there is an error handler
    kAnnoFontMenu = 16134,  // the annotation's font
    kAnnoSizeMenu = 16135,  // its size
};

// 'DLOG' in dialogs.res, standardfile.res and about.res.
enum : int16_t {
    kCustomDialogID = 16300,   // the settings
    kFreqDialogID = 16301,     // a value of the user's own
    kAnnoDialogID = 16302,     // the annotation
    kErrorDialog = 16129,      // failures
    kSpareDialog1 = 16130,     // for TheErrorHandler; nothing shows it
    kWarningDialog = 16131,    // about stored settings
    kQuestionDialog = 16132,   // with a second button, item 5
    kSpareDialog2 = 16133,     // for TheErrorHandler; nothing shows it
    kSaveDialogID = 16399,     // where to save a riders file
    kRemoveDialogID = 16400,   // which riders file to remove
    kImportDialogID = 16401,   // which spot function file to import
    kAboutDialogID = 16200,    // the About box
    kCreditsDialogID = 17000,  // the credits panel
};

// 'ALRT' in dialogs.res.
enum : int16_t {
    kAlertID = 16128,  // any four texts
};

// 'dctb' in colors.res: window colours.
enum : int16_t {
    kColourWindow = 18000,  // pale blue
    kPlainWindow = 18001,   // white
};

// 'cctb' in colors.res: button colours.
enum : int16_t {
    kColourButton = 18000,  // blue frame and text
    kPlainButton = 18001,   // black frame and text
};

// 'TEXT' in pieces.res: PostScript. The dot shapes are in dotShapes.h.
enum : int16_t {
    kHeaderPiece = 16499,        // the line by which a riders file is recognised
    kBeginPiece = 16500,         // what the rest builds on
    kFreqBegin = 16501,          // before the frequency
    kFreqEnd = 16502,            // after it
    kAngleBegin = 16503,         // before the angle
    kAngleEnd = 16504,           // after it
    kSpotBegin = 16506,          // before the spot function's body
    kSpotEnd = 16507,            // after it
    kScreenCheck = 16135,        // in the spot function's place
    kFlatBegin = 16560,          // before the flatness
    kFlatEnd = 16561,            // after it
    kAnnoFontPiece = 16508,      // before the font's name
    kAnnoSizePiece = 16509,      // before the size
    kAnnoTextPiece = 16510,      // before the text
    kAnnoEnd = 16511,            // after it
    kErrorHandlerPiece = 16520,  // prints errors on the page
    kSetupPiece = 16600,         // sets the screen; installs its and the annotation's hooks
};

// 'snd ' in about.res.
enum : int16_t {
    kAboutSound = 16500,  // ends the About box's intro
};
