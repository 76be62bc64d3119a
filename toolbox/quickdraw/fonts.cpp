#include "quickdraw/fonts.h"

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>
#include <tuple>

#include "quickdraw/font_files.h"
#include "quickdraw/freetype.h"
#include "quickdraw/glyph_effects.h"
#include "quickdraw/mark_glyphs.h"
#include "toolbox/host/text.h"
#include "toolbox/host/utf8.h"

namespace toolbox::quickdraw {

const char *const usualFontFolder = "/usr/share/fonts";

namespace {

struct LibraryDone {
    void operator()(FT_Library library) const { freeType().done(library); }
};
struct FaceDone {
    void operator()(FT_Face face) const { freeType().doneFace(face); }
};
using Face = std::unique_ptr<FT_FaceRec_, FaceDone>;

struct OpenFont {
    FontFile file;
    Face face;
    std::array<FT_UInt, 256> glyphs{};
    std::array<int, 256> designWidths{};
    int unitsPerEm = 1000;
};

using GlyphKey = std::tuple<const OpenFont *, int /* device size */, int /* scale */, FT_UInt /* glyph or mark */,
                            uint8_t /* effects */, bool /* graded */>;

struct Fonts {
    std::filesystem::path folder = usualFontFolder;
    std::unique_ptr<FT_LibraryRec_, LibraryDone> library;
    std::map<std::tuple<std::string, bool, bool>, OpenFont> open;
    std::map<std::pair<int16_t, uint8_t>, const OpenFont *> chosen;
    std::map<GlyphKey, GlyphImage> images;

    void forget()
    {
        images.clear();
        chosen.clear();
        open.clear();
    }
};
Fonts fonts;

FT_UInt glyphIndex(const OpenFont &font, int character)
{
    const auto byte = static_cast<char>(character);
    const char32_t code =
        font.file.ownEncoding ? static_cast<char32_t>(character) : codePoints(utf8FromRoman({&byte, 1}))->front();
    return freeType().charIndex(font.face.get(), code);
}

void findGlyphs(OpenFont &font)
{
    freeType().selectCharmap(font.face.get(),
                             font.file.ownEncoding ? FT_ENCODING_ADOBE_CUSTOM : FT_ENCODING_UNICODE);
    font.unitsPerEm = std::max<int>(font.face->units_per_EM, 1);
    for (int character = 0; character < 256; ++character) {
        FT_UInt glyph = glyphIndex(font, character);
        font.glyphs[character] = glyph ? glyph : glyphIndex(font, '?');
        FT_Fixed width = 0;
        freeType().advance(font.face.get(), font.glyphs[character], FT_LOAD_NO_SCALE, &width);
        font.designWidths[character] = static_cast<int>(width);
    }
}

Face openFace(const std::string &name)
{
    if (!fonts.library) {
        FT_Library library = nullptr;
        if (freeType().init(&library))
            throw std::runtime_error("FreeType does not start");
        fonts.library.reset(library);
    }
    const std::string path = (fonts.folder / name).string();
    FT_Face face = nullptr;
    if (freeType().newFace(fonts.library.get(), path.c_str(), 0, &face))
        throw std::runtime_error("the font " + path +
                                 " is missing or damaged: install the Debian package fonts-urw-base35");
    return Face(face);
}

const OpenFont &fontFor(const TextStyle &style)
{
    const std::pair<int16_t, uint8_t> asked(style.font, style.face & (bold | italic));
    if (auto known = fonts.chosen.find(asked); known != fonts.chosen.end())
        return *known->second;
    const FontFile file = fontFileFor(style.font, style.face);
    const auto key = std::make_tuple(file.name, file.makeBold, file.makeItalic);
    auto found = fonts.open.find(key);
    if (found == fonts.open.end()) {
        OpenFont font{.file = file, .face = openFace(file.name)};
        findGlyphs(font);
        found = fonts.open.emplace(key, std::move(font)).first;
    }
    fonts.chosen[asked] = &found->second;
    return found->second;
}

// Beyond the largest size, glyphs would take an unreasonable amount of memory.
int pixelSize(const TextStyle &style)
{
    constexpr int usual = 12, largest = 1000;
    return style.size <= 0 ? usual : std::min<int>(style.size, largest);
}

GlyphImage imageFrom(FT_GlyphSlot slot)
{
    const FT_Bitmap &bitmap = slot->bitmap;
    GlyphImage image{
        slot->bitmap_left, -slot->bitmap_top, static_cast<int>(bitmap.width), static_cast<int>(bitmap.rows), {}};
    for (unsigned y = 0; y < bitmap.rows; ++y) {
        const unsigned char *row = bitmap.buffer + static_cast<std::ptrdiff_t>(y) * bitmap.pitch;
        for (unsigned x = 0; x < bitmap.width; ++x)
            image.coverage.push_back(
                bitmap.pixel_mode == FT_PIXEL_MODE_MONO ? ((row[x / 8] & 0x80u >> x % 8) ? 255 : 0) : row[x]);
    }
    return image;
}

// Without grades, thin stems need hinting that puts them on whole pixels, which
// the font's own does not do at small sizes; bold ones keep their gaps best when
// the grades are cut at one half.
FT_Int32 loadingFor(FT_Face face, int deviceSize, bool graded)
{
    constexpr int smallSize = 12;
    if (graded || face->style_flags & FT_STYLE_FLAG_BOLD)
        return FT_LOAD_TARGET_LIGHT;
    return deviceSize <= smallSize ? FT_LOAD_TARGET_MONO | FT_LOAD_FORCE_AUTOHINT : FT_LOAD_TARGET_MONO;
}

void cutGrades(GlyphImage &image)
{
    for (std::uint8_t &coverage : image.coverage)
        coverage = coverage >= 128 ? 255 : 0;
}

GlyphImage renderGlyph(const OpenFont &font, FT_UInt glyph, int deviceSize, bool graded)
{
    FT_Face face = font.face.get();
    freeType().setPixelSizes(face, 0, static_cast<FT_UInt>(deviceSize));
    const FT_Int32 loading = loadingFor(face, deviceSize, graded);
    if (freeType().loadGlyph(face, glyph, loading))
        return {};
    if (font.file.makeItalic)
        freeType().slant(face->glyph);
    if (freeType().renderGlyph(face->glyph, FT_LOAD_TARGET_MODE(loading)))
        return {};
    GlyphImage image = imageFrom(face->glyph);
    if (!graded)
        cutGrades(image);
    return image;
}

GlyphImage withEffects(GlyphImage image, bool makeBold, uint8_t effects, int scale)
{
    if (makeBold)
        image = emboldened(image, scale);
    if (effects & shadow)
        return shadowed(image, scale, effects & outline ? 2 : 1);
    return effects & outline ? outlined(image, scale) : image;
}

}  // namespace

static int inPixels(const OpenFont &font, int designWidth, int size)
{
    return (2 * designWidth * size + font.unitsPerEm) / (2 * font.unitsPerEm);
}

int advanceOf(const TextStyle &style, uint8_t character)
{
    const int size = pixelSize(style);
    int width = markAdvance(size);
    bool widened = false;
    if (!isMark(character)) {
        const OpenFont &font = fontFor(style);
        width = inPixels(font, font.designWidths[character], size);
        widened = font.file.makeBold;
    }
    for (uint8_t wider : {outline, shadow, extend})
        width += (style.face & wider) ? 1 : 0;
    width += (widened ? 1 : 0) - (style.face & condense ? 1 : 0);
    return std::max(width, 0);
}

const GlyphImage &glyphOf(const TextStyle &style, uint8_t character, int scale, bool graded)
{
    const int deviceSize = pixelSize(style) * scale;
    const OpenFont *font = isMark(character) ? nullptr : &fontFor(style);
    const auto effects = static_cast<uint8_t>(style.face & (outline | shadow));
    const FT_UInt glyph = font ? font->glyphs[character] : character;
    const GlyphKey key(font, deviceSize, scale, glyph, effects, graded);
    if (auto known = fonts.images.find(key); known != fonts.images.end())
        return known->second;
    GlyphImage image = font ? renderGlyph(*font, glyph, deviceSize, graded) : markImage(character, deviceSize);
    image = withEffects(std::move(image), font && font->file.makeBold, effects, scale);
    return fonts.images.emplace(key, std::move(image)).first->second;
}

std::optional<int> wideAdvanceOf(const TextStyle &style, char32_t character)
{
    const OpenFont &font = fontFor(style);
    const FT_UInt glyph = font.file.ownEncoding ? 0 : freeType().charIndex(font.face.get(), character);
    FT_Fixed width = 0;
    if (glyph == 0 || freeType().advance(font.face.get(), glyph, FT_LOAD_NO_SCALE, &width))
        return std::nullopt;
    return inPixels(font, static_cast<int>(width), pixelSize(style));
}

const GlyphImage &wideGlyphOf(const TextStyle &style, char32_t character, int scale, bool graded)
{
    const OpenFont &font = fontFor(style);
    const FT_UInt glyph = freeType().charIndex(font.face.get(), character);
    const int deviceSize = pixelSize(style) * scale;
    const GlyphKey key(&font, deviceSize, scale, glyph, 0, graded);
    auto known = fonts.images.find(key);
    if (known == fonts.images.end())
        known = fonts.images.emplace(key, renderGlyph(font, glyph, deviceSize, graded)).first;
    return known->second;
}

// 12, 3 and 1 at size 12, where dialogs expect lines of 16 pixels. The fonts'
// own ascent leaves no room for accents on capitals.
FontInfo fontInfoOf(const TextStyle &style)
{
    const int size = pixelSize(style);
    const OpenFont &font = fontFor(style);
    const int widest = *std::max_element(font.designWidths.begin(), font.designWidths.end());
    FontInfo info;
    info.ascent = static_cast<int16_t>((size * 19 + 19) / 20);
    info.descent = static_cast<int16_t>((size + 3) / 4);
    info.leading = static_cast<int16_t>((size + 11) / 12);
    info.widMax = static_cast<int16_t>((widest * size + font.unitsPerEm - 1) / font.unitsPerEm);
    return info;
}

void setFontFolder(const std::filesystem::path &folder)
{
    fonts.forget();
    fonts.folder = folder;
}

}  // namespace toolbox::quickdraw
