#include "hostile/hostile_riders.h"

#include <algorithm>

#include "source/ktAnnoDlg.h"

namespace {

void putBytes(unsigned char *pascalString, const std::string &bytes)
{
    pascalString[0] = static_cast<unsigned char>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), pascalString + 1);
}

}  // namespace

std::string HostileRiders::ridersOf(const HostileAnnotation &annotation)
{
    choose(&PrefsRec::annoItem, 2);
    putBytes(settings.annoText, annotation.text);
    putBytes(settings.annoSizeStr, annotation.size);
    putBytes(gFontNameStr, annotation.font);
    std::filesystem::remove(file());
    trace.clear();
    EXPECT_EQ(make(), 1);
    return contentsOf(file());
}

std::string HostileRiders::shownOf(const HostileAnnotation &annotation)
{
    return toolbox::trace::quoted(toolbox::utf8FromRoman(annotation.text)) + " in " +
           toolbox::trace::quoted(toolbox::utf8FromRoman(annotation.font)) + " of " + annotation.size;
}
