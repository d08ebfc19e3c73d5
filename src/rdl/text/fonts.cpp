// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/text/fonts.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>

#include "rdl/text/font_table.h"
#include "rdl/text/matching.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"

namespace rdl::text {

namespace {

// Families and characters may come out of data: what is remembered of them has an end.
constexpr std::size_t MostFound = 4096;
constexpr std::size_t MostSubstitutes = 65536;

struct FontTable {
    std::vector<std::unique_ptr<Face>> faces;
    std::vector<std::unique_ptr<Matching>> substitutesOf;  // by face, made when a character is missing
    std::map<std::tuple<std::string, bool, bool>, FontId> found;
    std::map<std::pair<FontId, char32_t>, FontId> substitutes;
};

FontTable& Table() {
    static auto* const table = new FontTable;  // faces may be in use until the process ends
    return *table;
}

// Returns nullopt if the file is not a font or may not be embedded.
std::optional<FontId> Enter(FontFile file) {
    FontTable& table = Table();
    const auto same = std::find_if(table.faces.begin(), table.faces.end(),
                                   [&file](const auto& face) { return face->SameFile(file); });
    if (same != table.faces.end()) {
        return static_cast<FontId>(same - table.faces.begin());
    }
    std::unique_ptr<Face> face;
    try {
        face = std::make_unique<Face>(std::move(file));
    } catch (const NotAFont&) {
        return std::nullopt;
    }
    if (!face->File().embeddable) {
        return std::nullopt;
    }
    table.faces.push_back(std::move(face));
    table.substitutesOf.emplace_back();
    return static_cast<FontId>(table.faces.size() - 1);
}

FontId Match(const FontRequest& request) {
    Matching matching(request);
    if (std::optional<FontFile> best = matching.Best()) {
        if (const std::optional<FontId> font = Enter(std::move(*best))) {
            return *font;
        }
    }
    for (std::size_t i = 0; i < matching.Count(); ++i) {
        if (const std::optional<FontId> font = Enter(matching.At(i))) {
            return *font;
        }
    }
    throw Error(
        "This machine has no font that a document may hold; install fonts-liberation or another font "
        "package");
}

Matching& SubstitutesOf(FontId font) {
    std::unique_ptr<Matching>& matching = Table().substitutesOf.at(static_cast<std::size_t>(font));
    if (!matching) {
        // The request that the font was first found for would not do: it depends on the reports before.
        const FontFile& file = File(font);
        matching = std::make_unique<Matching>(
            FontRequest{file.family, file.bold || file.syntheticBold, file.italic || file.syntheticItalic});
    }
    return *matching;
}

FontId Substitute(FontId font, char32_t character) {
    Matching& matching = SubstitutesOf(font);
    for (std::size_t i = 0; i < matching.Count(); ++i) {
        if (!matching.HasCharacter(i, character)) {
            continue;
        }
        const std::optional<FontId> other = Enter(matching.At(i));
        if (other && FaceOf(*other).GlyphOf(character) != 0) {
            return *other;
        }
    }
    return font;
}

}  // namespace

std::unique_lock<std::recursive_mutex> LockFonts() {
    static auto* const mutex = new std::recursive_mutex;  // as long as the table
    return std::unique_lock(*mutex);
}

Face& FaceOf(FontId font) {
    return *Table().faces.at(static_cast<std::size_t>(font));
}

FontId FindFont(const FontRequest& request) {
    const auto lock = LockFonts();
    auto key = std::make_tuple(LowerAscii(request.family), request.bold, request.italic);
    auto& found = Table().found;
    const auto known = found.find(key);
    if (known != found.end()) {
        return known->second;
    }
    const FontId font = Match(request);
    if (found.size() >= MostFound) {
        found.clear();
    }
    found.emplace(std::move(key), font);
    return font;
}

FontId FontWith(FontId font, char32_t character) {
    if (FaceOf(font).GlyphOf(character) != 0) {
        return font;
    }
    auto& substitutes = Table().substitutes;
    const auto key = std::make_pair(font, character);
    const auto known = substitutes.find(key);
    if (known != substitutes.end()) {
        return known->second;
    }
    const FontId substitute = Substitute(font, character);
    if (substitutes.size() >= MostSubstitutes) {
        substitutes.clear();
    }
    substitutes.emplace(key, substitute);
    return substitute;
}

const FontMetrics& Metrics(FontId font) {
    const auto lock = LockFonts();
    return FaceOf(font).Metrics();
}

const FontFile& File(FontId font) {
    const auto lock = LockFonts();
    return FaceOf(font).File();
}

double GlyphAdvance(FontId font, std::uint16_t glyph) {
    const auto lock = LockFonts();
    return 1000 * FaceOf(font).AdvanceOf(glyph);
}

}  // namespace rdl::text
