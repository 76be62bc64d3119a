// Pascal strings, and numbers as users type them.
//
// All work in place on the caller's buffers and allocate nothing. Positions
// count from 1. The decimal separator is the environment record's, so routines
// that use it need gEnvirInfo. Nothing calls ElipseString so far: it belongs to
// the set.
#pragma once

#include "toolbox/types.h"

// Results of PStrToDouble.
enum { kNumberWithDecimals = 0, kWholeNumber = 1, kNotANumber = 2, kTooManySeparators = 3 };

// Copies. A source longer than limit is itself cut to limit: if it were not, stored
// texts that run over their fields would stay damaged in the settings file.
void CopyPStr(StringPtr source, StringPtr destination, int16_t limit);
// Appends and returns the new length. A source that does not fit into limit is
// itself cut to what fits.
int16_t ConcatPStr(StringPtr source, StringPtr destination, int16_t limit);
// 1 when equal byte for byte, else 0.
Boolean ComparePStr(ConstStr255Param a, ConstStr255Param b);

// Reads a text of digits and at most one separator; returns one of the results
// above. *value is 0.0 if it is no number.
int16_t PStrToDouble(ConstStr255Param text, double *value);
// Where the one separator stands; -1 when there is none or more than one.
int16_t GetDecimalPosition(ConstStr255Param text);
// ,5 becomes 0,5; returns 1 if so. The buffer needs room for one more character.
Boolean AddLeadingZero(StringPtr text);
// 007 becomes 7, 00,5 becomes ,5, 000 the empty text; 0 and 0,5 stay. 1 when
// something was removed.
Boolean RemoveLeadingZeros(StringPtr text);
// 12,000 becomes 12 and returns 1; 12,500 becomes 12,5 and returns 0: the result
// says whether the number was whole, not whether zeros were removed. A text without
// exactly one separator stays.
Boolean RemoveTrailingZeros(StringPtr text);
// Every separator becomes a period.
void ConvertDecimalToPeriod(StringPtr text);

// Shortens a text wider than width pixels, in the current port's font, and
// ends it with an ellipsis. Widths under 20 leave every text alone.
void ElipseString(StringPtr text, int16_t width);
void RemoveTrailingSpaces(StringPtr text);
