#include "source/ktRiderSections.h"

#include "source/dotShapes.h"
#include "source/ktAnnoDlg.h"
#include "source/ktSpot.h"
#include "source/needs.h"
#include "source/popup.h"
#include "source/settings.h"
#include "source/strings.h"
#include "toolbox/files.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"

int32_t gTotalLength = 0;

static OSErr WritePiece(int16_t refNum, int16_t id, int16_t reason)
{
    Handle text = Get1Resource('TEXT', id);
    Need(text, reason, " (text resource)");
    int32_t count = SizeResource(text);
    gTotalLength += count;
    int8_t state = HGetState(text);
    HLock(text);
    OSErr error = FSWrite(refNum, &count, *text);
    HSetState(text, state);
    return error;
}

static OSErr WriteCharacters(int16_t refNum, ConstStr255Param text)
{
    int32_t count = text[0];
    gTotalLength += count;
    return FSWrite(refNum, &count, text + 1);
}

// --- Values -------------------------------------------------------------------

static OSErr WriteValue(int16_t refNum, const Setting &setting)
{
    const ValueRow &row = setting.value;
    OSErr error = WritePiece(refNum, row.before, row.noBefore);
    if (error != noErr)
        return error;
    Str255 value;
    const PopupInfo *popup = PopupRecord(*setting.popup);
    ValueOfChoice(setting, popup->menu, popup->curItem, value);
    error = WriteCharacters(refNum, value);
    if (error != noErr)
        return error;
    return WritePiece(refNum, row.after, row.noAfter);
}

OSErr WriteFreq(int16_t refNum)
{
    return WriteValue(refNum, *SettingWithMenu(kFreqMenu));
}

OSErr WriteAngle(int16_t refNum)
{
    return WriteValue(refNum, *SettingWithMenu(kAngleMenu));
}

OSErr WriteFlat(int16_t refNum)
{
    return WriteValue(refNum, *SettingWithMenu(kFlatMenu));
}

// --- The spot function --------------------------------------------------------

static OSErr WriteImportedSpot(int16_t refNum)
{
    if (!gSpotHandle)
        return noErr;
    gTotalLength += gSpotLength;
    return WriteSpotText(refNum);
}

// Goes by the stored item, not by the popup's. The menu's last item imports, even
// in a menu so short that a dot shape has its number. A divider, which only
// damaged settings can name, stands for no function at all.
static OSErr WriteSpotBody(int16_t refNum)
{
    int16_t item = gPrefsPtr->spotItem;
    if (item == CountMItems(PopupRecord(gSpotPopInfo)->menu))
        return WriteImportedSpot(refNum);
    int16_t index = item - kFirstShapeItem;
    if (index < 0 || index >= kDotShapeCount)
        return noErr;
    return WritePiece(refNum, kDotShapes[index].piece, kDotShapes[index].missing);
}

OSErr WriteSpot(int16_t refNum)
{
    OSErr error = WritePiece(refNum, kSpotBegin, kNoSpotBegin);
    if (error != noErr)
        return error;
    error = WriteSpotBody(refNum);
    if (error != noErr)
        return error;
    return WritePiece(refNum, kSpotEnd, kNoSpotEnd);
}

OSErr WriteScreenCheck(int16_t refNum)
{
    return WritePiece(refNum, kScreenCheck, kNoScreenCheck);
}

// --- The rest -----------------------------------------------------------------

// As typed: nothing is escaped and no separator converted. The pieces read the
// text as data, so that brackets and backslashes print as they were typed.
OSErr WriteAnno(int16_t refNum)
{
    struct {
        int16_t piece, reason;
        StringPtr value;
        int16_t limit;
    } const parts[] = {{kAnnoFontPiece, kNoAnnoFont, gFontNameStr, 63},
                       {kAnnoSizePiece, kNoAnnoSize, gPrefsPtr->annoSizeStr, 15},
                       {kAnnoTextPiece, kNoAnnoText, gPrefsPtr->annoText, 255}};
    for (const auto &part : parts) {
        Str255 value;
        OSErr error = WritePiece(refNum, part.piece, part.reason);
        if (error != noErr)
            return error;
        CopyPStr(part.value, value, part.limit);
        error = WriteCharacters(refNum, value);
        if (error != noErr)
            return error;
    }
    return WritePiece(refNum, kAnnoEnd, kNoAnnoEnd);
}

OSErr WriteError(int16_t refNum)
{
    return WritePiece(refNum, kErrorHandlerPiece, kNoErrorHandler);
}

OSErr WriteBegin(int16_t refNum)
{
    OSErr error = WritePiece(refNum, kHeaderPiece, kNoHeader);
    if (error != noErr)
        return error;
    return WritePiece(refNum, kBeginPiece, kNoHeader);
}

OSErr WriteEnd(int16_t refNum)
{
    return WritePiece(refNum, kTrailerPiece, kNoTrailer);
}
