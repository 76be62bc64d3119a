#include "quickdraw/picture_format.h"

#include <cstring>

#include "quickdraw/area.h"
#include "quickdraw/ink.h"
#include "quickdraw/picture_bits.h"
#include "quickdraw/port.h"

namespace toolbox::quickdraw {
namespace {

constexpr std::size_t mostPixels = 16u << 20;
constexpr std::size_t mostSteps = 65535;
enum Opcode {
    clipRegion = 0x01, backPattern = 0x02, textFace = 0x04, penSize = 0x07, penMode = 0x08, penPattern = 0x09,
    fillPattern = 0x0A, originMoved = 0x0C, foreColor = 0x0E, backColor = 0x0F, versionMark = 0x11, rgbFore = 0x1A,
    rgbBack = 0x1B, longLine = 0x20, longLineFrom = 0x21, shortLine = 0x22, shortLineFrom = 0x23, firstRect = 0x30,
    lastRect = 0x34, sameRect = 0x38, lastSameRect = 0x3C, longComment = 0xA1, endOfPicture = 0xFF
};

class Parser {
public:
    explicit Parser(std::string_view bytes) : in_(bytes) {}
    PictureContents read();

private:
    void readVersion();
    unsigned opcode();
    void step(unsigned code);
    bool state(unsigned code);
    bool line(unsigned code);
    bool rectangle(unsigned code);
    bool image(unsigned code);
    void pass(unsigned code);
    void passText(unsigned code);
    void add(PictureStep step);
    Rect movedRect();
    Point movedPoint();
    Pattern pattern();

    PictureBytes in_;
    bool wide_ = false;   // version 2: opcodes are words at even offsets
    PictureContents contents_;
    PictureStyle style_;
    Rect latestRect_{};
    Point pen_{};
    Point origin_{};
    std::size_t pixelsLeft_ = mostPixels;
};

void Parser::readVersion()
{
    unsigned first = in_.word();
    if (first == 0x1101)
        return;
    if (first != 0x0011 || in_.word() != 0x02FF)
        throw DamagedPicture{};
    wide_ = true;
}

unsigned Parser::opcode()
{
    if (!wide_)
        return in_.byte();
    in_.toEven();
    return in_.word();
}

PictureContents Parser::read()
{
    in_.word();
    contents_.frame = in_.rect();
    if (emptyRect(contents_.frame))
        throw DamagedPicture{};
    readVersion();
    for (unsigned code = opcode(); code != endOfPicture; code = opcode())
        step(code);
    return std::move(contents_);
}

void Parser::step(unsigned code)
{
    if (!state(code) && !line(code) && !rectangle(code) && !image(code))
        pass(code);
}

void Parser::add(PictureStep step)
{
    if (contents_.steps.size() == mostSteps)
        throw DamagedPicture{};
    step.style = style_;
    contents_.steps.push_back(std::move(step));
}

Point Parser::movedPoint()
{
    Point point = in_.point();
    return {static_cast<int16_t>(point.v - origin_.v), static_cast<int16_t>(point.h - origin_.h)};
}

Rect Parser::movedRect()
{
    Point first = movedPoint(), last = movedPoint();
    return {first.v, first.h, last.v, last.h};
}

Pattern Parser::pattern()
{
    Pattern pattern;
    std::memcpy(pattern.pat, in_.take(sizeof pattern.pat).data(), sizeof pattern.pat);
    return pattern;
}

bool Parser::state(unsigned code)
{
    switch (code) {
    case clipRegion: {
        Rect bounds = in_.region();
        OffsetRect(&bounds, static_cast<int16_t>(-origin_.h), static_cast<int16_t>(-origin_.v));
        add({.kind = PictureStep::Kind::clip, .rect = bounds});
        return true;
    }
    case backPattern: style_.backPattern = pattern(); return true;
    case penSize: style_.penSize = in_.point(); return true;
    case penMode: style_.penMode = in_.number(); return true;
    case penPattern: style_.penPattern = pattern(); return true;
    case fillPattern: style_.fillPattern = pattern(); return true;
    case originMoved: {
        int16_t dh = in_.number(), dv = in_.number();
        origin_ = {static_cast<int16_t>(origin_.v + dv), static_cast<int16_t>(origin_.h + dh)};
        return true;
    }
    case foreColor: style_.fore = static_cast<std::int32_t>(in_.longWord() & ~directColorFlag); return true;
    case backColor: style_.back = static_cast<std::int32_t>(in_.longWord() & ~directColorFlag); return true;
    case rgbFore: style_.fore = static_cast<std::int32_t>(in_.color() | directColorFlag); return true;
    case rgbBack: style_.back = static_cast<std::int32_t>(in_.color() | directColorFlag); return true;
    }
    return false;
}

bool Parser::line(unsigned code)
{
    if (code < longLine || code > shortLineFrom)
        return false;
    Point from = code == longLine || code == shortLine ? movedPoint() : pen_;
    if (code == longLine || code == longLineFrom) {
        pen_ = movedPoint();
    } else {
        int16_t dh = in_.offset(), dv = in_.offset();
        pen_ = {static_cast<int16_t>(from.v + dv), static_cast<int16_t>(from.h + dh)};
    }
    add({.kind = PictureStep::Kind::line, .from = from, .to = pen_});
    return true;
}

bool Parser::rectangle(unsigned code)
{
    using Kind = PictureStep::Kind;
    constexpr Kind kinds[] = {Kind::frame, Kind::paint, Kind::erase, Kind::invert, Kind::fill};
    bool same = code >= sameRect && code <= lastSameRect;
    if (!same && (code < firstRect || code > lastRect))
        return false;
    if (!same)
        latestRect_ = movedRect();
    add({.kind = kinds[code & 7], .rect = latestRect_});
    return true;
}

// In the modes srcOr and transparent, dithered or not, the white of an image is
// clear.
bool Parser::image(unsigned code)
{
    constexpr int dither = 64, transparent = 36;
    if (code != 0x90 && code != 0x91 && (code < 0x98 || code > 0x9B))
        return false;
    constexpr int deepest = 32;
    PictureBits bits =
        readBits(in_, code, pixelOf(style_.fore, deepest), pixelOf(style_.back, deepest), pixelsLeft_);
    OffsetRect(&bits.destination, static_cast<int16_t>(-origin_.h), static_cast<int16_t>(-origin_.v));
    int mode = bits.mode & ~dither;
    add({.kind = PictureStep::Kind::image,
         .rect = bits.destination,
         .image = std::move(bits.pixels),
         .whiteIsClear = mode == srcOr || mode == transparent});
    return true;
}

// A length byte and the characters, after their position.
void Parser::passText(unsigned code)
{
    constexpr unsigned placeBytes[] = {4, 1, 1, 2};
    in_.skip(placeBytes[code - 0x28]);
    in_.skip(in_.byte());
}

struct Stretch {
    unsigned first, last, bytes;
};

// Opcodes whose data always has the same length.
constexpr Stretch plainOnes[] = {
    {0x00, 0x00, 0},  {0x03, 0x03, 2},  {0x04, 0x04, 1},  {0x05, 0x05, 2},  {0x06, 0x06, 4},  {0x0B, 0x0B, 4},
    {0x0D, 0x0D, 2},  {0x10, 0x10, 8},  {0x15, 0x16, 2},  {0x17, 0x19, 0},  {0x1C, 0x1C, 0},  {0x1D, 0x1D, 6},
    {0x1E, 0x1E, 0},  {0x1F, 0x1F, 6},  {0x35, 0x37, 8},  {0x3D, 0x3F, 0},  {0x40, 0x47, 8},  {0x48, 0x4F, 0},
    {0x50, 0x57, 8},  {0x58, 0x5F, 0},  {0x60, 0x67, 12}, {0x68, 0x6F, 4},  {0x78, 0x7F, 0},  {0x88, 0x8F, 0},
    {0xA0, 0xA0, 2},  {0xB0, 0xCF, 0},  {0x8000, 0x80FF, 0},
};

bool within(unsigned code, unsigned first, unsigned last)
{
    return code >= first && code <= last;
}

// Polygons and regions: the length includes its own bytes.
bool countsItself(unsigned code)
{
    return within(code, 0x70, 0x77) || within(code, 0x80, 0x87);
}

bool hasShortLength(unsigned code)
{
    return within(code, 0x24, 0x27) || within(code, 0x2C, 0x2F) || within(code, 0x92, 0x97) ||
           within(code, 0x9C, 0x9F) || within(code, 0xA2, 0xAF);
}

void Parser::pass(unsigned code)
{
    for (const Stretch &known : plainOnes)
        if (within(code, known.first, known.last))
            return in_.skip(known.bytes);
    if (code == versionMark)
        return in_.skip(wide_ ? 2 : 1);
    if (within(code, 0x28, 0x2B))
        return passText(code);
    if (countsItself(code)) {
        unsigned size = in_.word();
        if (size < 2)
            throw DamagedPicture{};
        return in_.skip(size - 2);
    }
    if (hasShortLength(code))
        return in_.skip(in_.word());
    if (code == longComment) {
        in_.word();
        return in_.skip(in_.word());
    }
    if (within(code, 0xD0, 0xFE) || code >= 0x8100)
        return in_.skip(in_.longWord());
    if (!within(code, 0x0100, 0x7FFF))
        throw DamagedPicture{};
    in_.skip(std::size_t{2} * (code >> 8));
}

}  // namespace

std::optional<PictureContents> readPicture(std::string_view bytes)
{
    try {
        return Parser(bytes).read();
    } catch (const DamagedPicture &) {
        return std::nullopt;
    }
}

}  // namespace toolbox::quickdraw
