// Which font files stand for a font that a report names.
#pragma once

#include <memory>
#include <optional>

#include "rdl/text/fonts.h"

// fontconfig's own names.
struct _FcPattern;  // NOLINT(bugprone-reserved-identifier)
struct _FcFontSet;  // NOLINT(bugprone-reserved-identifier)

namespace rdl::text {

// The machine's files for one request, best first, by fontconfig's rules (metric-compatible substitutes
// before others). The list depends on the request and the machine alone, so that the same text is always in
// the same fonts.
class Matching {
 public:
    explicit Matching(const FontRequest& request);

    // The best file; it may be of a kind that no document can hold. Nothing: the machine has no font.
    std::optional<FontFile> Best() const;
    // All files with outlines, in order. The first call is slow: it sorts every font of the machine.
    std::size_t Count();
    FontFile At(std::size_t index);
    bool HasCharacter(std::size_t index, char32_t character);

 private:
    struct Destroy {
        void operator()(_FcPattern* pattern) const;
        void operator()(_FcFontSet* set) const;
    };
    FontFile FileOf(const _FcPattern* pattern) const;
    void Sort();

    FontRequest m_request;
    std::unique_ptr<_FcPattern, Destroy> m_wanted;
    std::unique_ptr<_FcFontSet, Destroy> m_sorted;
    std::vector<_FcPattern*> m_usable;  // of m_sorted
};

}  // namespace rdl::text
