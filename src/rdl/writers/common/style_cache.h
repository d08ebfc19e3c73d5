// SPDX-License-Identifier: GPL-3.0-or-later
// The indexes of styles by the objects that a cell refers to: most cells of a table refer to the same few.
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>

#include "rdl/layout/model/style.h"

namespace rdl::writers {

class StyleCache {
 public:
    struct Key {
        const void* box;
        const void* text;
        std::uint32_t rest;
        bool operator==(const Key&) const = default;
    };
    static Key KeyOf(const layout::BoxStylePtr& box, const layout::CharStylePtr& text, layout::HAlign align,
                     std::uint16_t format, bool wrap) {
        return {box.get(), text.get(),
                static_cast<std::uint32_t>(align) << 17 | (wrap ? 1u : 0u) << 16 | format};
    }

    // Returns the index that Keep stored for the key, or nullopt.
    std::optional<std::uint16_t> Find(const Key& key) const {
        const auto found = m_known.find(key);
        return found == m_known.end() ? std::nullopt : std::optional(found->second.index);
    }
    // Keeps the styles alive, because their addresses are the key. Forgets the others when there are too
    // many.
    void Keep(const Key& key, const layout::BoxStylePtr& box, const layout::CharStylePtr& text,
              std::uint16_t index) {
        constexpr std::size_t MostKnown = 8192;
        if (m_known.size() >= MostKnown) {
            m_known.clear();
        }
        m_known.emplace(key, Known{box, text, index});
    }

 private:
    struct KeyHash {
        std::size_t operator()(const Key& key) const {
            const std::hash<const void*> hash;
            return hash(key.box) * 31 + hash(key.text) * 7 + key.rest;
        }
    };
    struct Known {
        layout::BoxStylePtr box;
        layout::CharStylePtr text;
        std::uint16_t index;
    };

    std::unordered_map<Key, Known, KeyHash> m_known;
};

}  // namespace rdl::writers
