// SPDX-License-Identifier: GPL-3.0-or-later
// The CSS classes of one HTML file: equal styles share a class. Returned references stay valid for the life
// of the object.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "rdl/layout/model/style.h"

namespace rdl::writers {

class HtmlStyles {
 public:
    enum class Place { Cell, Block };  // a table cell or a grid item

    // Returns the class of an item's box, including font and colour if `text` is not null.
    const std::string& Box(const layout::BoxStylePtr& box, Place place, const layout::CharStylePtr& text,
                           layout::HAlign align);
    const std::string& Text(const layout::CharStylePtr& text);
    // Returns the class with these declarations.
    const std::string& Class(const std::string& declarations);
    // Returns the class of a drawn line, unlike a box's border.
    const std::string& Stroke(const layout::Border& line);
    // Returns the style sheet with all classes used so far.
    std::string Sheet() const;

 private:
    // Returns the CSS variable of a background image: its bytes occur once in the file.
    const std::string& Picture(const layout::BackgroundPicture& picture);
    struct Key {
        const void* box;
        const void* text;
        int rest;
        bool operator==(const Key&) const = default;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const;
    };
    // Keys compare addresses, so the styles are kept alive.
    struct Known {
        layout::BoxStylePtr box;
        layout::CharStylePtr text;
        const std::string* name;
    };

    std::unordered_map<std::string, std::string> m_names;  // by declarations; nodes have stable addresses
    std::vector<const std::string*> m_order;               // declarations in order of first use
    std::unordered_map<Key, Known, KeyHash> m_known;
    std::map<std::string, std::string> m_pictures;  // variable names by their value in the file
};

}  // namespace rdl::writers
