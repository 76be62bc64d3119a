#include "source/settings.h"

#include <cstring>

#include "source/environment.h"
#include "source/reasons.h"
#include "source/resourceNumbers.h"
#include "source/strings.h"
#include "toolbox/system.h"

Handle gFreqPopInfo = nullptr;
Handle gAnglePopInfo = nullptr;
Handle gSpotPopInfo = nullptr;
Handle gFlatPopInfo = nullptr;
Handle gAnnoPopInfo = nullptr;
Handle gErrorPopInfo = nullptr;

// The degree sign is in Mac OS Roman.
const Setting kSettings[6] = {
    {.menuID = kFreqMenu,
     .popup = &gFreqPopInfo,
     .dialogItem = 4,
     .choice = &PrefsRec::freqItem,
     .standard = 5,
     .notInMenu = kFreqNotInMenu,
     .written = kUnlessFirst,
     .writing = " (writefreq)",
     .value = {.kind = kFreqKind,
               .text = &PrefsRec::freqStr,
               .unit = " lpi",
               .lowest = 1.0,
               .highest = 999.0,
               .lowestText = "1",
               .highestText = "999",
               .outOfRange = kFreqOutOfRange,
               .label = 5,
               .unitLabel = 8,
               .before = kFreqBegin,
               .noBefore = kNoFreqBegin,
               .after = kFreqEnd,
               .noAfter = kNoFreqEnd}},
    {.menuID = kAngleMenu,
     .popup = &gAnglePopInfo,
     .dialogItem = 5,
     .choice = &PrefsRec::angleItem,
     .standard = 6,
     .notInMenu = kAngleNotInMenu,
     .written = kUnlessFirst,
     .writing = " (writeangle)",
     .value = {.kind = kAngleKind,
               .text = &PrefsRec::angleStr,
               .unit = "\xA1",
               .lowest = 0.0,
               .highest = 360.0,
               .lowestText = "0",
               .highestText = "360",
               .outOfRange = kAngleOutOfRange,
               .label = 6,
               .unitLabel = 9,
               .before = kAngleBegin,
               .noBefore = kNoAngleBegin,
               .after = kAngleEnd,
               .noAfter = kNoAngleEnd}},
    {.menuID = kSpotMenu,
     .popup = &gSpotPopInfo,
     .dialogItem = 6,
     .choice = &PrefsRec::spotItem,
     .standard = 1,
     .notInMenu = kSpotNotInMenu,
     .written = kUnlessFirst,
     .writing = " (writespot)",
     .value = {}},
    {.menuID = kFlatMenu,
     .popup = &gFlatPopInfo,
     .dialogItem = 7,
     .choice = &PrefsRec::flatItem,
     .standard = 1,
     .notInMenu = kFlatNotInMenu,
     .written = kUnlessFirst,
     .writing = " (writeflat)",
     .value = {.kind = kFlatKind,
               .text = &PrefsRec::flatStr,
               .unit = "",
               .lowest = 0.2,
               .highest = 200.0,
               .lowestText = "0.2",
               .highestText = "200",
               .outOfRange = kFlatOutOfRange,
               .label = 7,
               .before = kFlatBegin,
               .noBefore = kNoFlat,
               .after = kFlatEnd,
               .noAfter = kNoFlat}},
    {.menuID = kAnnoMenu,
     .popup = &gAnnoPopInfo,
     .dialogItem = 8,
     .choice = &PrefsRec::annoItem,
     .standard = 1,
     .notInMenu = kAnnoNotInMenu,
     .written = kIfSecond,
     .writing = " (writeanno)",
     .value = {}},
    {.menuID = kErrorMenu,
     .popup = &gErrorPopInfo,
     .dialogItem = 9,
     .choice = &PrefsRec::errorItem,
     .standard = 1,
     .notInMenu = kErrorNotInMenu,
     .written = kIfSecond,
     .writing = " (writeerror)",
     .value = {}},
};

const Setting *SettingWithMenu(int16_t menuID)
{
    for (const Setting &setting : kSettings)
        if (setting.menuID == menuID)
            return &setting;
    return nullptr;
}

const Setting *SettingOfKind(int16_t kind)
{
    for (const Setting &setting : kSettings)
        if (setting.value.text && setting.value.kind == kind)
            return &setting;
    return nullptr;
}

Boolean IsWritten(const Setting &setting)
{
    int16_t item = gPrefsPtr->*setting.choice;
    return setting.written == kIfSecond ? item == 2 : item != 1;
}

StringPtr OwnValue(const Setting &setting)
{
    return gPrefsPtr->*setting.value.text;
}

void OwnValueWithUnit(const Setting &setting, int16_t limit, Str255 out)
{
    CopyPStr(OwnValue(setting), out, limit);
    ConcatPStr(ql_quorum_passtr(setting.value.unit), out, limit);
}

void ValueOfChoice(const Setting &setting, MenuHandle menu, int16_t item, Str255 out)
{
    StringPtr own = OwnValue(setting);
    if (item == CountMItems(menu)) {
        CopyPStr(own, out, kValueLimit);
    } else {
        GetItem(menu, item, out);
        size_t unit = strlen(setting.value.unit);
        out[0] = out[0] > unit ? static_cast<unsigned char>(out[0] - unit) : 0;
    }
    ConvertDecimalToPeriod(out);
}

// The comma is used for every separator that is not a period. Users with a third one
// have it refused at the next OK, and type over it: the field is selected.
void LowestValue(const Setting &setting, Str15 out)
{
    CopyPStr(ql_quorum_passtr(setting.value.lowestText), out, kValueLimit);
    for (int i = 1; i <= out[0]; ++i)
        if (out[i] == '.' && gEnvirInfo->decimalPt != '.')
            out[i] = ',';
}
