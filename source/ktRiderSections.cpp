// The pieces of a riders file: PostScript from the resources, and between its
// parts the values that the user chose, as bare characters.
#include "errors.h"
#include "ktAnnoDlg.h"
#include "ktCustomDlg.h"
#include "ktMakeRiders.h"
#include "ktPrefs.h"
#include "ktSpot.h"
#include "popup.h"
#include "strings.h"
#include "toolbox/files.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"
#include "toolbox/system.h"

int32_t gTotalLength = 0;

// Built-in spot functions are items 3 to 9 of the menu.
enum { kFirstBuiltInItem = 3, kLastBuiltInItem = 9, kFirstBuiltInText = 16128, kFirstBuiltInError = 21 };

// What a menu item has behind its number.
enum { kFreqSuffix = 4, kAngleSuffix = 1, kFlatSuffix = 0 };

// The error number says which piece is missing; some numbers serve two.
static OSErr WriteText(int16_t refNum, int16_t id, int32_t errorID)
{
    Handle text = Get1Resource('TEXT', id);
    if (!text)
        TheErrorHandler(kErrorDialog, 16129, errorID, ql_quorum_passtr(" (text resource)"), true);
    int32_t count = SizeResource(text);
    gTotalLength += count;
    int8_t state = HGetState(text);
    HLock(text);
    OSErr error = FSWrite(refNum, &count, *text);
    HSetState(text, state);
    return error;
}

static OSErr WriteString(int16_t refNum, ConstStr255Param text)
{
    int32_t count = text[0];
    gTotalLength += count;
    return FSWrite(refNum, &count, text + 1);
}

// The number in the popup's current item, or the user's own for the last item.
static void PopupValue(Handle popup, int16_t suffix, StringPtr own, Str255 value)
{
    MenuHandle menu = PopupRecord(popup)->menu;
    int16_t item = PopupRecord(popup)->curItem;
    if (item == CountMItems(menu)) {
        CopyPStr(own, value, 15);
    } else {
        GetItem(menu, item, value);
        value[0] = value[0] > suffix ? value[0] - suffix : 0;
    }
    ConvertDecimalToPeriod(value);
}

struct ValueSection {
    int16_t before, beforeError;
    int16_t after, afterError;
    int16_t suffix;
};

static OSErr WriteValue(int16_t refNum, const ValueSection &section, Handle popup, StringPtr own)
{
    Str255 value;
    OSErr error = WriteText(refNum, section.before, section.beforeError);
    if (error != noErr)
        return error;
    PopupValue(popup, section.suffix, own, value);
    error = WriteString(refNum, value);
    if (error != noErr)
        return error;
    return WriteText(refNum, section.after, section.afterError);
}

OSErr WriteBegin(int16_t refNum)
{
    OSErr error = WriteText(refNum, 16499, 11);
    if (error != noErr)
        return error;
    return WriteText(refNum, 16500, 11);
}

// gSpotLength itself takes the count of what was written.
static OSErr WriteImportedSpot(int16_t refNum)
{
    if (!gSpotHandle)
        return noErr;
    gTotalLength += gSpotLength;
    HLock(gSpotHandle);
    OSErr error = FSWrite(refNum, &gSpotLength, *gSpotHandle);
    HUnlock(gSpotHandle);
    return error;
}

static OSErr WriteSpotBody(int16_t refNum)
{
    int16_t item = gPrefsPtr->spotItem;
    if (item == CountMItems(PopupRecord(gSpotPopInfo)->menu))
        return WriteImportedSpot(refNum);
    if (item < kFirstBuiltInItem || item > kLastBuiltInItem)
        return noErr;
    int16_t number = item - kFirstBuiltInItem;
    return WriteText(refNum, kFirstBuiltInText + number, kFirstBuiltInError + number);
}

OSErr WriteSpot(int16_t refNum)
{
    OSErr error = WriteText(refNum, 16506, 20);
    if (error != noErr)
        return error;
    error = WriteSpotBody(refNum);
    if (error != noErr)
        return error;
    return WriteText(refNum, 16507, 28);
}

OSErr WriteScreenCheck(int16_t refNum)
{
    return WriteText(refNum, 16135, 29);
}

OSErr WriteFreq(int16_t refNum)
{
    return WriteValue(refNum, {16501, 13, 16502, 14, kFreqSuffix}, gFreqPopInfo, gPrefsPtr->freqStr);
}

OSErr WriteAngle(int16_t refNum)
{
    return WriteValue(refNum, {16503, 15, 16504, 16, kAngleSuffix}, gAnglePopInfo, gPrefsPtr->angleStr);
}

OSErr WriteFlat(int16_t refNum)
{
    return WriteValue(refNum, {16560, 17, 16561, 17, kFlatSuffix}, gFlatPopInfo, gPrefsPtr->flatStr);
}

OSErr WriteAnno(int16_t refNum)
{
    struct {
        int16_t textID, errorID;
        StringPtr value;
        int16_t limit;
    } const parts[] = {{16508, 18, gFontNameStr, 63},
                       {16509, 19, gPrefsPtr->annoSizeStr, 15},
                       {16510, 20, gPrefsPtr->annoText, 255}};
    for (const auto &part : parts) {
        Str255 value;
        OSErr error = WriteText(refNum, part.textID, part.errorID);
        if (error != noErr)
            return error;
        CopyPStr(part.value, value, part.limit);
        error = WriteString(refNum, value);
        if (error != noErr)
            return error;
    }
    return WriteText(refNum, 16511, 21);
}

OSErr WriteError(int16_t refNum)
{
    return WriteText(refNum, 16520, 29);
}

OSErr WriteEnd(int16_t refNum)
{
    return WriteText(refNum, 16600, 12);
}
