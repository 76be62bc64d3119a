#include "film/drawing/lettering.h"

// The font's face has its outlines; newer versions of Pango offer them for HarfBuzz only.
#define PANGO_VERSION_MIN_REQUIRED PANGO_VERSION_1_42
#include <pango/pango.h>
#include <pango/pangofc-font.h>
#include <pango/pangoft2.h>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <cmath>

#include "io/shared_library.h"

namespace riders::film {

namespace {

constexpr const char *kFont = "DejaVu Sans";

// What the library itself is linked with is found in it, too.
struct Calls {
    io::SharedLibrary library{"libpangoft2-1.0.so.0", "libpangoft2-1.0-0"};

    decltype(&::pango_ft2_font_map_new) mapNew = library("pango_ft2_font_map_new");
    decltype(&::pango_ft2_font_map_set_resolution) mapSetResolution = library("pango_ft2_font_map_set_resolution");
    decltype(&::pango_font_map_create_context) createContext = library("pango_font_map_create_context");
    decltype(&::pango_context_set_base_dir) setDirection = library("pango_context_set_base_dir");
    decltype(&::pango_context_set_round_glyph_positions) setRounding =
        library("pango_context_set_round_glyph_positions");
    decltype(&::pango_font_description_new) fontNew = library("pango_font_description_new");
    decltype(&::pango_font_description_free) fontFree = library("pango_font_description_free");
    decltype(&::pango_font_description_set_family) fontFamily = library("pango_font_description_set_family");
    decltype(&::pango_font_description_set_size) fontSize = library("pango_font_description_set_size");
    decltype(&::pango_font_description_set_weight) fontWeight = library("pango_font_description_set_weight");
    decltype(&::pango_layout_new) layoutNew = library("pango_layout_new");
    decltype(&::pango_layout_set_font_description) layoutFont = library("pango_layout_set_font_description");
    decltype(&::pango_layout_set_auto_dir) layoutAutomaticDirection = library("pango_layout_set_auto_dir");
    decltype(&::pango_layout_set_single_paragraph_mode) layoutOneParagraph =
        library("pango_layout_set_single_paragraph_mode");
    decltype(&::pango_layout_set_text) layoutText = library("pango_layout_set_text");
    decltype(&::pango_layout_set_width) layoutWidth = library("pango_layout_set_width");
    decltype(&::pango_layout_set_ellipsize) layoutEllipsize = library("pango_layout_set_ellipsize");
    decltype(&::pango_layout_get_line_readonly) layoutLine = library("pango_layout_get_line_readonly");
    decltype(&::pango_layout_line_get_extents) lineExtents = library("pango_layout_line_get_extents");
    decltype(&::pango_fc_font_lock_face) lockFace = library("pango_fc_font_lock_face");
    decltype(&::pango_fc_font_unlock_face) unlockFace = library("pango_fc_font_unlock_face");
    decltype(&::g_object_unref) release = library("g_object_unref");
    decltype(&::FT_Set_Char_Size) setCharSize = library("FT_Set_Char_Size");
    decltype(&::FT_Load_Glyph) loadGlyph = library("FT_Load_Glyph");
    decltype(&::FT_Outline_Translate) moveOutline = library("FT_Outline_Translate");
    decltype(&::FT_Outline_Get_Bitmap) drawOutline = library("FT_Outline_Get_Bitmap");
};

const Calls &calls()
{
    static const Calls kCalls;
    return kCalls;
}

struct Release {
    void operator()(void *object) const { calls().release(object); }
    void operator()(PangoFontDescription *font) const { calls().fontFree(font); }
};
template <class Object>
using Held = std::unique_ptr<Object, Release>;

Held<PangoFontDescription> fontOf(const TextStyle &style)
{
    Held<PangoFontDescription> font(calls().fontNew());
    calls().fontFamily(font.get(), kFont);
    calls().fontSize(font.get(), static_cast<int>(std::lround(style.size * PANGO_SCALE)));
    calls().fontWeight(font.get(), style.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    return font;
}

// Draws glyphs into a picture, in their own form: hinting would bend it, and differently across and down.
class Pen {
public:
    // The line begins `left` pixels from the picture's left edge, `baseline` above its bottom edge.
    Pen(BitPicture &picture, double left, double baseline, const screening::Resolution &resolution, double size)
        : left_(left), baseline_(baseline), resolution_(resolution), size_(size)
    {
        bitmap_.rows = static_cast<unsigned>(picture.rows);
        bitmap_.width = static_cast<unsigned>(picture.columns);
        bitmap_.pitch = static_cast<int>(picture.rowBytes());
        bitmap_.buffer = picture.bits.data();
        bitmap_.pixel_mode = FT_PIXEL_MODE_MONO;
    }

    // `along` is how far on the line it begins, in units of Pango's pixels, which are square; returns where it
    // ends.
    int draw(const PangoGlyphItem &run, int along) const
    {
        auto *font = reinterpret_cast<PangoFcFont *>(run.item->analysis.font);
        auto *face = calls().lockFace(font);
        const bool drawable = face && FT_IS_SCALABLE(face) &&
                              !calls().setCharSize(face, 0, std::lround(size_ * 64),
                                                   static_cast<FT_UInt>(std::lround(resolution_.across)),
                                                   static_cast<FT_UInt>(std::lround(resolution_.down)));
        for (int i = 0; i < run.glyphs->num_glyphs; ++i) {
            const PangoGlyphInfo &glyph = run.glyphs->glyphs[i];
            if (drawable && glyph.glyph != PANGO_GLYPH_EMPTY)
                drawGlyph(face, glyph, along);
            along += glyph.geometry.width;
        }
        calls().unlockFace(font);
        return along;
    }

private:
    void drawGlyph(FT_Face face, const PangoGlyphInfo &glyph, int along) const
    {
        // A character that no font has is drawn as the font draws such.
        const FT_UInt index = glyph.glyph & PANGO_GLYPH_UNKNOWN_FLAG ? 0 : glyph.glyph;
        if (calls().loadGlyph(face, index, FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP) ||
            face->glyph->format != FT_GLYPH_FORMAT_OUTLINE)
            return;
        const double x =
            left_ + (along + glyph.geometry.x_offset) * (resolution_.across / resolution_.down) / PANGO_SCALE;
        const double y = baseline_ - glyph.geometry.y_offset / double(PANGO_SCALE);
        calls().moveOutline(&face->glyph->outline, std::lround(x * 64), std::lround(y * 64));
        calls().drawOutline(face->glyph->library, &face->glyph->outline, &bitmap_);
    }

    double left_, baseline_;
    screening::Resolution resolution_;
    double size_;
    FT_Bitmap bitmap_{};
};

// The rectangle of ink in pixels from the line's beginning, with some to spare on each side.
PixelBox inkBox(const PangoRectangle &ink, double stretch)
{
    const auto pixels = [](double value) { return std::llround(value / PANGO_SCALE); };
    return PixelBox{pixels(ink.x * stretch), pixels(ink.y), pixels((ink.x + ink.width) * stretch),
                    pixels(ink.y + ink.height)}
        .grown(2, 2);
}

}  // namespace

struct Lettering::Pango {
    Held<PangoFontMap> map;
    Held<PangoContext> context;
    screening::Resolution resolution;
};

Lettering::Lettering(const screening::Resolution &resolution) : pango_(std::make_unique<Pango>())
{
    pango_->resolution = resolution;
    pango_->map.reset(calls().mapNew());
    calls().mapSetResolution(reinterpret_cast<PangoFT2FontMap *>(pango_->map.get()), resolution.down,
                             resolution.down);
    pango_->context.reset(calls().createContext(pango_->map.get()));
    calls().setDirection(pango_->context.get(), PANGO_DIRECTION_LTR);
    calls().setRounding(pango_->context.get(), FALSE);
}

Lettering::~Lettering() = default;

LetteredLine Lettering::line(const std::string &text, const TextStyle &style) const
{
    const screening::Resolution &resolution = pango_->resolution;
    const Held<PangoFontDescription> font = fontOf(style);
    const Held<PangoLayout> layout(calls().layoutNew(pango_->context.get()));
    calls().layoutFont(layout.get(), font.get());
    calls().layoutAutomaticDirection(layout.get(), FALSE);
    calls().layoutOneParagraph(layout.get(), TRUE);
    calls().layoutText(layout.get(), text.c_str(), static_cast<int>(text.size()));
    if (style.width > 0) {
        calls().layoutEllipsize(layout.get(), PANGO_ELLIPSIZE_MIDDLE);
        calls().layoutWidth(layout.get(), static_cast<int>(style.width / 72 * resolution.down * PANGO_SCALE));
    }
    PangoLayoutLine *line = calls().layoutLine(layout.get(), 0);
    PangoRectangle ink{}, logical{};
    calls().lineExtents(line, &ink, &logical);
    const double stretch = resolution.across / resolution.down;
    const PixelBox box = inkBox(ink, stretch);
    LetteredLine lettered{.picture = {}, .left = box.left, .top = box.top, .advance = 0};
    BitPicture &picture = lettered.picture;
    picture.columns = static_cast<std::size_t>(box.width());
    picture.rows = static_cast<std::size_t>(box.height());
    picture.bits.resize(picture.rowBytes() * picture.rows);
    const Pen pen(picture, static_cast<double>(-box.left), static_cast<double>(box.bottom), resolution,
                  style.size);
    int along = 0;
    for (const GSList *run = line->runs; run; run = run->next)
        along = pen.draw(*static_cast<const PangoGlyphItem *>(run->data), along);
    lettered.advance = std::llround(along * stretch / PANGO_SCALE);
    return lettered;
}

// U+2068 and U+2069 round it: it is isolated, and has its own direction.
std::string nameInLine(const std::string &name)
{
    return "\u2068" + name + "\u2069";  // NOLINT(misc-misleading-bidirectional): the two belong together
}

}  // namespace riders::film
