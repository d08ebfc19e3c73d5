#include "platform/rdl/text/matching.h"

#include <fontconfig/fontconfig.h>

#include <memory>

#include "platform/rdl/error.h"

namespace rdl::text {

namespace {

struct Destroy {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcCharSet* set) const { FcCharSetDestroy(set); }
};
using Pattern = std::unique_ptr<FcPattern, Destroy>;

Pattern PatternOf(const FontRequest& request, char32_t character) {
    Pattern pattern(FcPatternCreate());
    const std::string family = request.family.empty() ? "Arial" : request.family;
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, request.bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern.get(), FC_SLANT, request.italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FcPatternAddBool(pattern.get(), FC_COLOR, FcFalse);
    if (character != 0) {
        const std::unique_ptr<FcCharSet, Destroy> set(FcCharSetCreate());
        FcCharSetAddChar(set.get(), character);
        FcPatternAddCharSet(pattern.get(), FC_CHARSET, set.get());
    }
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    return pattern;
}

std::string TextOf(FcPattern* pattern, const char* property) {
    FcChar8* text = nullptr;
    return FcPatternGetString(pattern, property, 0, &text) == FcResultMatch ? reinterpret_cast<char*>(text)
                                                                            : std::string();
}

int NumberOf(FcPattern* pattern, const char* property) {
    int number = 0;
    FcPatternGetInteger(pattern, property, 0, &number);
    return number;
}

}  // namespace

FontFile MatchFont(const FontRequest& request, char32_t character) {
    const Pattern wanted = PatternOf(request, character);
    FcResult result = FcResultNoMatch;
    const Pattern found(FcFontMatch(nullptr, wanted.get(), &result));
    FontFile file;
    if (found) {
        file.path = TextOf(found.get(), FC_FILE);
    }
    if (file.path.empty()) {
        throw Error("This machine has no font at all; install fonts-liberation or another font package");
    }
    // The upper half names an instance of a variable font, which the file's default stands for.
    file.index = NumberOf(found.get(), FC_INDEX) & 0xFFFF;
    file.family = TextOf(found.get(), FC_FAMILY);
    file.bold = NumberOf(found.get(), FC_WEIGHT) >= FC_WEIGHT_DEMIBOLD;
    file.italic = NumberOf(found.get(), FC_SLANT) != FC_SLANT_ROMAN;
    file.syntheticBold = request.bold && !file.bold;
    file.syntheticItalic = request.italic && !file.italic;
    return file;
}

}  // namespace rdl::text
