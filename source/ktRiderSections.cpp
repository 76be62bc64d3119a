#include "source/ktRiderSections.h"

#include <initializer_list>

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

// What sections are made of: a piece of PostScript, with the reason reported if it
// is missing; or characters as they are; or a block; or, all nil, nothing.
struct Part {
    int16_t piece = 0;
    int16_t missing = 0;
    ConstStr255Param characters = nullptr;
    Handle block = nullptr;
    int32_t *length = nullptr;  // the block's; takes the count of what was written
};

static Handle BlockOf(const Part &part)
{
    if (part.piece == 0)
        return part.block;
    Handle text = Get1Resource('TEXT', part.piece);
    Need(text, part.missing, " (text resource)");
    return text;
}

// The only place where bytes go into a riders file.
static OSErr WritePart(int16_t refNum, const Part &part)
{
    Handle block = BlockOf(part);
    if (!block && !part.characters)
        return noErr;
    int32_t size = part.piece != 0 ? SizeResource(block) : part.characters ? part.characters[0] : 0;
    int32_t *count = part.length ? part.length : &size;
    gTotalLength += *count;
    int8_t state = block ? HGetState(block) : 0;
    if (block)
        HLock(block);
    const void *bytes = block ? *block : static_cast<const void *>(part.characters + 1);
    OSErr error = FSWrite(refNum, count, bytes);
    if (block)
        HSetState(block, state);
    return error;
}

// In order, up to the first error.
static OSErr WriteParts(int16_t refNum, std::initializer_list<Part> parts)
{
    OSErr error = noErr;
    for (const Part &part : parts)
        if (error == noErr)
            error = WritePart(refNum, part);
    return error;
}

static Part Piece(int16_t id, int16_t missing)
{
    return {.piece = id, .missing = missing};
}

static Part Characters(ConstStr255Param text)
{
    return {.characters = text};
}

// --- Values -------------------------------------------------------------------

static OSErr WriteValue(int16_t refNum, const Setting &setting)
{
    Str255 value;
    const ValueRow &row = setting.value;
    const PopupInfo *popup = PopupRecord(*setting.popup);
    ValueOfChoice(setting, popup->menu, popup->curItem, value);
    return WriteParts(refNum, {Piece(row.before, row.noBefore), Characters(value), Piece(row.after, row.noAfter)});
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

// Uses the stored item, not the popup's; the settings dialog keeps both the same, so
// users see no difference. The menu's last item imports, even in a menu so short that
// a dot shape has its number. A divider, which only damaged settings can name, stands
// for no function at all. After a failed write gSpotLength is what was written, and
// the settings file gets no more: if that were mended, an import would outlast it.
static Part SpotBody()
{
    int16_t item = gPrefsPtr->spotItem;
    if (item == CountMItems(PopupRecord(gSpotPopInfo)->menu))
        return {.block = gSpotHandle, .length = &gSpotLength};
    int16_t index = item - kFirstShapeItem;
    if (index < 0 || index >= kDotShapeCount)
        return {};
    return Piece(kDotShapes[index].piece, kDotShapes[index].missing);
}

OSErr WriteSpot(int16_t refNum)
{
    return WriteParts(refNum, {Piece(kSpotBegin, kNoSpotBegin), SpotBody(), Piece(kSpotEnd, kNoSpotEnd)});
}

OSErr WriteScreenCheck(int16_t refNum)
{
    return WriteParts(refNum, {Piece(kScreenCheck, kNoScreenCheck)});
}

// --- The rest -----------------------------------------------------------------

// As typed: nothing is escaped and no separator converted. The pieces read the text
// as data, so brackets and backslashes are printed as they were typed.
OSErr WriteAnno(int16_t refNum)
{
    // Cut to what each can hold, in place.
    Str255 font, size, text;
    CopyPStr(gFontNameStr, font, 63);
    CopyPStr(gPrefsPtr->annoSizeStr, size, 15);
    CopyPStr(gPrefsPtr->annoText, text, 255);
    return WriteParts(refNum, {Piece(kAnnoFontPiece, kNoAnnoFont), Characters(font),
                               Piece(kAnnoSizePiece, kNoAnnoSize), Characters(size),
                               Piece(kAnnoTextPiece, kNoAnnoText), Characters(text), Piece(kAnnoEnd, kNoAnnoEnd)});
}

OSErr WriteError(int16_t refNum)
{
    return WriteParts(refNum, {Piece(kErrorHandlerPiece, kNoErrorHandler)});
}

OSErr WriteBegin(int16_t refNum)
{
    return WriteParts(refNum, {Piece(kHeaderPiece, kNoHeader), Piece(kBeginPiece, kNoHeader)});
}

OSErr WriteEnd(int16_t refNum)
{
    return WriteParts(refNum, {Piece(kSetupPiece, kNoSetup)});
}
