// SPDX-License-Identifier: GPL-3.0-or-later
// Selects the font files for a requested family.
#pragma once

#include <memory>
#include <optional>

#include "rdl/text/fonts.h"

// Declared by fontconfig.
struct _FcPattern;  // NOLINT(bugprone-reserved-identifier)
struct _FcFontSet;  // NOLINT(bugprone-reserved-identifier)

namespace rdl::text {

// The machine's font files for one request, best first, by fontconfig's rules (metric-compatible substitutes
// first). The order depends only on the request and the machine, so that a text always has the same fonts.
class Matching {
 public:
    explicit Matching(const FontRequest& request);

    // Returns the best match, whose format may not be embeddable; nullopt if the machine has no font.
    std::optional<FontFile> Best() const;
    // Number of files with outlines. The first call is slow: it sorts every font of the machine.
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
    std::vector<_FcPattern*> m_usable;  // owned by m_sorted
};

}  // namespace rdl::text
