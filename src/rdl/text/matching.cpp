// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/text/matching.h"

#include <fontconfig/fontconfig.h>

#include <span>
#include <string_view>

#include "rdl/text/near_families.h"

namespace rdl::text {

namespace {

const FcChar8* Name(const std::string& family) {
    return reinterpret_cast<const FcChar8*>(family.c_str());
}

// Whether fontconfig takes the family for a sans-serif one, as it does with families that it does not know.
bool IsSans(const std::string& family) {
    const std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)> pattern(FcPatternCreate(),
                                                                          FcPatternDestroy);
    FcPatternAddString(pattern.get(), FC_FAMILY, Name(family));
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    FcChar8* name = nullptr;
    for (int i = 0; FcPatternGetString(pattern.get(), FC_FAMILY, i, &name) == FcResultMatch; ++i) {
        const std::string_view known = reinterpret_cast<const char*>(name);
        if (known == "serif" || known == "monospace" || known == "sans-serif" || known == "cursive" ||
            known == "fantasy" || known == "emoji") {
            return known == "sans-serif";
        }
    }
    return true;
}

bool IsInstalled(const std::string& family) {
    const std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)> pattern(FcPatternCreate(),
                                                                          FcPatternDestroy);
    FcPatternAddString(pattern.get(), FC_FAMILY, Name(family));
    const std::unique_ptr<FcObjectSet, decltype(&FcObjectSetDestroy)> properties(
        FcObjectSetBuild(FC_FAMILY, nullptr), FcObjectSetDestroy);
    const std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)> found(
        FcFontList(nullptr, pattern.get(), properties.get()), FcFontSetDestroy);
    return found && found->nfont > 0;
}

// A machine's own substitutes may be of another width, so the nearest families come before them.
void AddNearFamilies(FcPattern* pattern, const std::string& family) {
    const std::span<const std::string_view> near = NearFamilies(family);
    if (near.empty() || IsInstalled(family)) {
        return;
    }
    for (const std::string_view name : near) {
        if (const std::string other(name); IsInstalled(other)) {
            FcPatternAddString(pattern, FC_FAMILY, Name(other));
        }
    }
}

FcPattern* PatternOf(const FontRequest& request) {
    FcPattern* pattern = FcPatternCreate();
    const std::string family = request.family.empty() ? "Arial" : request.family;
    AddNearFamilies(pattern, family);
    FcPatternAddString(pattern, FC_FAMILY, Name(family));
    // The usual sans font of a machine is as wide as Verdana; a report that was laid out in another one,
    // Segoe UI or Tahoma, would break its lines early. Arial's width is nearer to theirs.
    if (FcStrCmpIgnoreCase(Name(family), Name("Verdana")) != 0 && IsSans(family)) {
        FcPatternAddString(pattern, FC_FAMILY, Name("Arial"));
    }
    FcPatternAddInteger(pattern, FC_WEIGHT, request.bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern, FC_SLANT, request.italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern, FC_SCALABLE, FcTrue);
    FcPatternAddBool(pattern, FC_COLOR, FcFalse);
    FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
    return pattern;
}

std::string TextOf(const FcPattern* pattern, const char* property) {
    FcChar8* text = nullptr;
    return FcPatternGetString(pattern, property, 0, &text) == FcResultMatch ? reinterpret_cast<char*>(text)
                                                                            : std::string();
}

int NumberOf(const FcPattern* pattern, const char* property) {
    int number = 0;
    FcPatternGetInteger(pattern, property, 0, &number);
    return number;
}

bool Is(const FcPattern* pattern, const char* property) {
    FcBool flag = FcFalse;
    return FcPatternGetBool(pattern, property, 0, &flag) == FcResultMatch && flag == FcTrue;
}

}  // namespace

void Matching::Destroy::operator()(_FcPattern* pattern) const {
    FcPatternDestroy(pattern);
}

void Matching::Destroy::operator()(_FcFontSet* set) const {
    FcFontSetDestroy(set);
}

Matching::Matching(const FontRequest& request) : m_request(request), m_wanted(PatternOf(request)) {}

FontFile Matching::FileOf(const _FcPattern* pattern) const {
    FontFile file;
    file.path = TextOf(pattern, FC_FILE);
    const int index = NumberOf(pattern, FC_INDEX);
    file.index = index & 0xFFFF;
    file.family = TextOf(pattern, FC_FAMILY);
    // fontconfig flags synthetic bold and slant; a named instance of a variable font (the upper half of the
    // index) counts as synthetic: the file's default has the regular weight.
    const bool madeBold = Is(pattern, FC_EMBOLDEN) || (index >> 16) != 0;
    FcMatrix* slant = nullptr;
    const bool madeItalic = FcPatternGetMatrix(pattern, FC_MATRIX, 0, &slant) == FcResultMatch;
    file.bold = !madeBold && NumberOf(pattern, FC_WEIGHT) >= FC_WEIGHT_DEMIBOLD;
    file.italic = !madeItalic && NumberOf(pattern, FC_SLANT) != FC_SLANT_ROMAN;
    file.syntheticBold = m_request.bold && !file.bold;
    file.syntheticItalic = m_request.italic && !file.italic;
    return file;
}

std::optional<FontFile> Matching::Best() const {
    FcResult result = FcResultNoMatch;
    const std::unique_ptr<_FcPattern, Destroy> found(FcFontMatch(nullptr, m_wanted.get(), &result));
    if (!found) {
        return std::nullopt;
    }
    return FileOf(found.get());
}

void Matching::Sort() {
    FcResult result = FcResultNoMatch;
    m_sorted.reset(FcFontSort(nullptr, m_wanted.get(), FcFalse, nullptr, &result));
    if (!m_sorted) {
        m_sorted.reset(FcFontSetCreate());
    }
    for (int i = 0; i < m_sorted->nfont; ++i) {
        FcPattern* font = m_sorted->fonts[i];
        if (Is(font, FC_OUTLINE) && !Is(font, FC_COLOR)) {
            m_usable.push_back(font);
        }
    }
}

std::size_t Matching::Count() {
    if (!m_sorted) {
        Sort();
    }
    return m_usable.size();
}

FontFile Matching::At(std::size_t index) {
    const std::unique_ptr<_FcPattern, Destroy> prepared(
        FcFontRenderPrepare(nullptr, m_wanted.get(), m_usable.at(index)));
    return FileOf(prepared.get());
}

bool Matching::HasCharacter(std::size_t index, char32_t character) {
    FcCharSet* characters = nullptr;
    return FcPatternGetCharSet(m_usable.at(index), FC_CHARSET, 0, &characters) == FcResultMatch &&
           FcCharSetHasChar(characters, character) == FcTrue;
}

}  // namespace rdl::text
