// SPDX-License-Identifier: GPL-3.0-or-later
#include <fribidi.h>
#include <hb.h>

#include <algorithm>

#include "rdl/text/font_table.h"
#include "rdl/text/unicode_properties.h"
#include "rdl/values/utf8.h"

namespace rdl::text {

namespace {

// A character with its properties before glyphs are chosen.
struct Unit {
    char32_t character;
    std::uint32_t begin, end;  // bytes
    FontId font;
    FriBidiLevel level = 0;  // odd: right to left
    bool shaped;
    hb_script_t script = HB_SCRIPT_COMMON;
    char32_t composed;  // with the base character and marks before it
};

bool IsSimple(std::string_view utf8) {
    return std::all_of(utf8.begin(), utf8.end(), [](char c) { return c >= ' ' && c < 0x7F; });
}

bool IsNonSpacingMark(char32_t character) {
    return hb_unicode_general_category(hb_unicode_funcs_get_default(), character) ==
           HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK;
}

// Returns the composed form of a base character and the marks after it if there is one, else the character.
char32_t Composed(const std::vector<Unit>& before, char32_t character) {
    hb_codepoint_t composed = 0;
    const bool is =
        NeedsShaping(character) && !before.empty() &&
        hb_unicode_compose(hb_unicode_funcs_get_default(), before.back().composed, character, &composed) != 0;
    return is ? composed : character;
}

// The last base character and its marks go to a font that has them all.
void MoveLetter(std::vector<Unit>& units, FontId font) {
    constexpr std::size_t MostMarks = 16;  // more are no writing, only work
    const std::size_t least = units.size() > MostMarks ? units.size() - MostMarks : 0;
    std::size_t first = units.size();
    do {
        --first;
        if (FaceOf(font).GlyphOf(units[first].character) == 0) {
            return;
        }
    } while (first > least && IsNonSpacingMark(units[first].character));
    for (std::size_t i = first; i < units.size(); ++i) {
        units[i].font = font;
    }
}

// A mark or joiner stays in the font of what it belongs to, if that can show it; else both move.
FontId ChooseFont(FontId font, char32_t character, std::vector<Unit>& before) {
    if (before.empty()) {
        return IsInvisible(character) ? font : FontWith(font, character);
    }
    Unit& last = before.back();
    if (IsInvisible(character)) {
        return last.font;
    }
    if (!NeedsShaping(character)) {
        return FontWith(font, character);
    }
    Face& face = FaceOf(last.font);
    if (face.GlyphOf(character) != 0 || face.GlyphOf(Composed(before, character)) != 0) {
        return last.font;
    }
    const FontId substitute = FontWith(font, character);
    if (IsNonSpacingMark(character)) {
        MoveLetter(before, substitute);
    }
    return substitute;
}

// Signs that every script uses belong to the one before them.
hb_script_t ScriptOf(char32_t character, const std::vector<Unit>& before) {
    const hb_script_t script = hb_unicode_script(hb_unicode_funcs_get_default(), character);
    if (script != HB_SCRIPT_COMMON && script != HB_SCRIPT_INHERITED && script != HB_SCRIPT_UNKNOWN) {
        return script;
    }
    return before.empty() ? HB_SCRIPT_COMMON : before.back().script;
}

std::vector<Unit> UnitsOf(std::string_view utf8, FontId font, bool& anyRightToLeft) {
    std::vector<Unit> units;
    units.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const std::size_t begin = at;
        const char32_t character = NextCharacter(utf8, at);
        anyRightToLeft = anyRightToLeft || IsRightToLeft(character);
        units.push_back({character, static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(at),
                         ChooseFont(font, character, units), 0, NeedsShaping(character),
                         ScriptOf(character, units), Composed(units, character)});
    }
    return units;
}

void SetLevels(std::vector<Unit>& units, bool rightToLeft) {
    std::vector<FriBidiChar> characters;
    characters.reserve(units.size());
    for (const Unit& unit : units) {
        characters.push_back(unit.character);
    }
    const auto count = static_cast<FriBidiStrIndex>(characters.size());
    std::vector<FriBidiCharType> types(characters.size());
    std::vector<FriBidiBracketType> brackets(characters.size());
    std::vector<FriBidiLevel> levels(characters.size());
    fribidi_get_bidi_types(characters.data(), count, types.data());
    fribidi_get_bracket_types(characters.data(), count, types.data(), brackets.data());
    FriBidiParType base = rightToLeft ? FRIBIDI_PAR_RTL : FRIBIDI_PAR_LTR;
    if (fribidi_get_par_embedding_levels_ex(types.data(), brackets.data(), count, &base, levels.data()) ==
        0) {
        return;
    }
    for (std::size_t i = 0; i < units.size(); ++i) {
        units[i].level = levels[i];
    }
}

using UnitSpan = std::pair<std::size_t, std::size_t>;  // first unit, and the one after the last

GlyphRun LookUp(const std::vector<Unit>& units, UnitSpan span, double size) {
    GlyphRun run;
    run.font = units[span.first].font;
    run.begin = units[span.first].begin;
    run.end = units[span.second - 1].end;
    Face& face = FaceOf(run.font);
    for (std::size_t i = span.first; i < span.second; ++i) {
        if (IsInvisible(units[i].character)) {
            continue;
        }
        const std::uint16_t glyph = face.GlyphOf(units[i].character);
        const double advance = face.AdvanceOf(glyph) * size;
        run.glyphs.push_back({glyph, static_cast<float>(advance), 0, 0, units[i].begin});
        run.width += advance;
    }
    return run;
}

// Control characters would show as boxes; a space without width shows as nothing.
void HideControls(hb_buffer_t* buffer) {
    constexpr hb_codepoint_t ZeroWidthSpace = 0x200B;
    unsigned count = 0;
    hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer, &count);
    for (unsigned i = 0; i < count; ++i) {
        if (IsInvisible(infos[i].codepoint) && infos[i].codepoint < 0xA0) {
            infos[i].codepoint = ZeroWidthSpace;
        }
    }
}

GlyphRun ShapeByHarfBuzz(std::string_view utf8, const std::vector<Unit>& units, UnitSpan span, double size) {
    GlyphRun run;
    run.font = units[span.first].font;
    run.begin = units[span.first].begin;
    run.end = units[span.second - 1].end;
    run.rightToLeft = (units[span.first].level & 1) != 0;
    hb_buffer_t* buffer = hb_buffer_create();
    hb_buffer_add_utf8(buffer, utf8.data(), static_cast<int>(utf8.size()), run.begin,
                       static_cast<int>(run.end - run.begin));
    HideControls(buffer);
    // Set explicitly: guessing would use the first character and the process locale.
    hb_buffer_set_direction(buffer, run.rightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer, units[span.second - 1].script);
    hb_buffer_set_language(buffer, hb_language_from_string("und", -1));
    hb_buffer_set_flags(buffer, HB_BUFFER_FLAG_REMOVE_DEFAULT_IGNORABLES);
    Face& face = FaceOf(run.font);
    hb_shape(face.Shaper(), buffer, nullptr, 0);
    unsigned count = 0;
    const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer, &count);
    const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer, &count);
    const double scale = size / face.Metrics().unitsPerEm;
    for (unsigned i = 0; i < count; ++i) {
        const double advance = positions[i].x_advance * scale;
        run.glyphs.push_back({static_cast<std::uint16_t>(infos[i].codepoint), static_cast<float>(advance),
                              static_cast<float>(positions[i].x_offset * scale),
                              static_cast<float>(positions[i].y_offset * scale), infos[i].cluster});
        run.width += advance;
    }
    hb_buffer_destroy(buffer);
    return run;
}

// What is shaped in one go.
bool BelongTogether(const Unit& one, const Unit& next) {
    const bool sameScript = one.script == next.script || one.script == HB_SCRIPT_COMMON;
    return one.font == next.font && one.level == next.level && sameScript;
}

// Pieces of one font, level and script, in the order of the text.
std::vector<UnitSpan> SpansOf(const std::vector<Unit>& units) {
    std::vector<UnitSpan> spans;
    for (std::size_t i = 0; i < units.size(); ++i) {
        if (i == 0 || !BelongTogether(units[i - 1], units[i])) {
            spans.emplace_back(i, i);
        }
        spans.back().second = i + 1;
    }
    return spans;
}

// Pieces of text order into visual order: from the highest level down, each stretch of at least that level is
// turned.
void Reorder(const std::vector<Unit>& units, std::vector<UnitSpan>& spans) {
    const auto level = [&units](const UnitSpan& span) { return units[span.first].level; };
    FriBidiLevel highest = 0;
    for (const UnitSpan& span : spans) {
        highest = std::max(highest, level(span));
    }
    for (FriBidiLevel current = highest; current >= 1; --current) {
        for (auto begin = spans.begin(); begin != spans.end();) {
            begin = std::find_if(begin, spans.end(), [&](const UnitSpan& s) { return level(s) >= current; });
            const auto end =
                std::find_if(begin, spans.end(), [&](const UnitSpan& s) { return level(s) < current; });
            std::reverse(begin, end);
            begin = end;
        }
    }
}

GlyphRun LookUpAscii(std::string_view utf8, FontId font, double size) {
    GlyphRun run;
    run.font = font;
    run.end = static_cast<std::uint32_t>(utf8.size());
    run.glyphs.reserve(utf8.size());
    Face& face = FaceOf(font);
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const std::uint16_t glyph = face.GlyphOf(static_cast<unsigned char>(utf8[i]));
        const double advance = face.AdvanceOf(glyph) * size;
        run.glyphs.push_back({glyph, static_cast<float>(advance), 0, 0, static_cast<std::uint32_t>(i)});
        run.width += advance;
    }
    return run;
}

bool HasAscii(FontId font) {
    return FaceOf(font).GlyphOf('A') != 0;
}

}  // namespace

void Shape(std::string_view utf8, FontId font, double size, bool rightToLeft, std::vector<GlyphRun>& runs) {
    if (utf8.empty()) {
        return;
    }
    const auto lock = LockFonts();
    if (!rightToLeft && IsSimple(utf8) && HasAscii(font)) {
        runs.push_back(LookUpAscii(utf8, font, size));
        return;
    }
    bool bidi = rightToLeft;
    std::vector<Unit> units = UnitsOf(utf8, font, bidi);
    if (bidi) {
        SetLevels(units, rightToLeft);
    }
    std::vector<UnitSpan> spans = SpansOf(units);
    if (bidi) {
        Reorder(units, spans);
    }
    for (const UnitSpan& span : spans) {
        const auto first = units.begin() + static_cast<std::ptrdiff_t>(span.first);
        const auto last = units.begin() + static_cast<std::ptrdiff_t>(span.second);
        const bool shaped =
            (first->level & 1) != 0 || std::any_of(first, last, [](const Unit& u) { return u.shaped; });
        runs.push_back(shaped ? ShapeByHarfBuzz(utf8, units, span, size) : LookUp(units, span, size));
    }
}

double TextWidth(std::string_view utf8, FontId font, double size) {
    const auto lock = LockFonts();
    if (IsSimple(utf8) && HasAscii(font)) {
        Face& face = FaceOf(font);
        double width = 0;
        for (const char c : utf8) {
            width += face.AdvanceOf(face.GlyphOf(static_cast<unsigned char>(c)));
        }
        return width * size;
    }
    std::vector<GlyphRun> runs;
    Shape(utf8, font, size, false, runs);
    double width = 0;
    for (const GlyphRun& run : runs) {
        width += run.width;
    }
    return width;
}

}  // namespace rdl::text
