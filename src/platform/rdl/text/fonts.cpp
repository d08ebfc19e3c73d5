#include "platform/rdl/text/fonts.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <tuple>

#include "platform/rdl/text/font_table.h"
#include "platform/rdl/text/matching.h"

namespace rdl::text {

namespace {

struct FontTable {
    std::vector<std::unique_ptr<Face>> faces;
    std::vector<FontRequest> requests;  // that a face was first found for
    std::map<std::tuple<std::string, bool, bool>, FontId> found;
    std::map<std::pair<FontId, char32_t>, FontId> substitutes;
};

FontTable& Table() {
    static auto* const table = new FontTable;  // faces may be in use until the process ends
    return *table;
}

FontId Enter(const FontRequest& request, FontFile file) {
    FontTable& table = Table();
    const auto same = std::find_if(table.faces.begin(), table.faces.end(),
                                   [&file](const auto& face) { return face->SameFile(file); });
    if (same != table.faces.end()) {
        return static_cast<FontId>(same - table.faces.begin());
    }
    table.faces.push_back(std::make_unique<Face>(std::move(file)));
    table.requests.push_back(request);
    return static_cast<FontId>(table.faces.size() - 1);
}

std::string LowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

}  // namespace

Face& FaceOf(FontId font) {
    return *Table().faces.at(static_cast<std::size_t>(font));
}

FontId FindFont(const FontRequest& request) {
    const auto key = std::make_tuple(LowerCase(request.family), request.bold, request.italic);
    const auto known = Table().found.find(key);
    if (known != Table().found.end()) {
        return known->second;
    }
    const FontId font = Enter(request, MatchFont(request, 0));
    Table().found.emplace(key, font);
    return font;
}

FontId FontWith(FontId font, char32_t character) {
    if (FaceOf(font).GlyphOf(character) != 0) {
        return font;
    }
    const auto key = std::make_pair(font, character);
    const auto known = Table().substitutes.find(key);
    if (known != Table().substitutes.end()) {
        return known->second;
    }
    const FontRequest request = Table().requests.at(static_cast<std::size_t>(font));
    FontId substitute = Enter(request, MatchFont(request, character));
    if (FaceOf(substitute).GlyphOf(character) == 0) {
        substitute = font;
    }
    Table().substitutes.emplace(key, substitute);
    return substitute;
}

const FontMetrics& Metrics(FontId font) {
    return FaceOf(font).Metrics();
}

const FontFile& File(FontId font) {
    return FaceOf(font).File();
}

double GlyphAdvance(FontId font, std::uint16_t glyph) {
    return 1000 * FaceOf(font).AdvanceOf(glyph);
}

}  // namespace rdl::text
