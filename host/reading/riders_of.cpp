// The same pieces as in resources/pieces.res and host/make/plates_piece.cpp, in the order of docs/riders-file.md.
#include "io/hex_string.h"
#include "reading/written_in.h"

namespace riders::reading {

extern const std::string_view kHeader, kBegin, kSpotReading, kSpotBegin, kSpotMark, kSpotTrying, kSpotEnd,
    kScreenCheck, kFrequencyBegin, kFrequencyEnd, kAngleBegin, kAngleEnd, kFlatnessBegin, kFlatnessEnd,
    kAnnotationFont, kAnnotationSize, kAnnotationText, kAnnotationEnd, kErrorHandler, kPlatesBegin, kPlatesChange,
    kSpotPlates, kPagePlate, kSetupPlates, kSetupThresholds, kSetupSupercell, kSetupHalftone, kSetupPageDevice,
    kSetupOperators, kSetupEnd;

namespace {

using Parts = std::initializer_list<std::string_view>;

void append(std::string &text, Parts parts)
{
    for (const std::string_view part : parts)
        text += part;
}

void appendScreen(std::string &text, const Written &written)
{
    if (written.shape)
        append(text, {kSpotReading, kSpotBegin, *written.shape, kSpotMark, kSpotTrying, kSpotEnd});
    else if (written.frequency || written.angle)
        text += kScreenCheck;
    if (written.frequency)
        append(text, {kFrequencyBegin, *written.frequency, kFrequencyEnd});
    if (written.angle)
        append(text, {kAngleBegin, *written.angle, kAngleEnd});
}

void appendEntry(std::string &text, const WrittenEntry &entry)
{
    text += io::hexString(entry.plate);
    if (entry.element == WrittenEntry::shape)
        append(text, {" riderShapeOnPlate ", entry.value, kSpotMark});
    else
        append(text, {entry.element == WrittenEntry::angle ? " 1 " : " 0 ", entry.value, " riderOnPlate\n"});
}

void appendPlates(std::string &text, const Written &written)
{
    append(text, {kPlatesBegin, kSpotReading, kSpotTrying, kPlatesChange, kSpotPlates, kPagePlate});
    append(text, {*written.plates, " riderAddPlates\n"});
    for (const WrittenEntry &entry : written.entries)
        appendEntry(text, entry);
}

}  // namespace

std::string ridersOf(const Written &written)
{
    std::string text;
    append(text, {kHeader, kBegin});
    appendScreen(text, written);
    if (written.flatness)
        append(text, {kFlatnessBegin, *written.flatness, kFlatnessEnd});
    if (const auto &annotation = written.annotation)
        append(text, {kAnnotationFont, annotation->font, kAnnotationSize, annotation->size, kAnnotationText,
                      annotation->text, kAnnotationEnd});
    if (written.errorHandler)
        text += kErrorHandler;
    if (written.plates)
        appendPlates(text, written);
    for (const WrittenShapeName &name : written.shapeNames)
        text += shapeNameLine(name.plate, name.file);
    append(text, {kSetupPlates, kSetupThresholds, kSetupSupercell, kSetupHalftone, kSetupPageDevice,
                  kSetupOperators, kSetupEnd});
    return text;
}

std::string shapeNameLine(const std::string &plate, const std::string &file)
{
    return "%Zu3_RidersShape " + io::hexString(plate) + " " + io::hexString(file) + "\n";
}

}  // namespace riders::reading
