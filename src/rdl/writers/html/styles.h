// The style classes of one HTML file: equal styles share a class.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "rdl/layout/model/instance.h"
#include "rdl/layout/model/style.h"

namespace rdl::writers {

class HtmlStyles {
 public:
    enum class Place { Cell, Block };  // a table's cell, or an item of a grid

    // Class of an item's box. With `text`, its letters as well.
    const std::string& Box(const layout::BoxStylePtr& box, Place place, const layout::CharStylePtr& text,
                           layout::HAlign align);
    const std::string& Text(const layout::CharStylePtr& text);
    // The class with exactly these declarations.
    const std::string& Class(const std::string& declarations);
    // Of a line that is drawn, not the border of a box.
    const std::string& Stroke(const layout::Border& line);
    // The style sheet.
    std::string Sheet() const;

 private:
    // The variable that holds a picture: it stands in the file once, however many classes show it.
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
    // Pointers are told apart by address, so what is remembered is kept alive.
    struct Known {
        layout::BoxStylePtr box;
        layout::CharStylePtr text;
        const std::string* name;
    };

    std::unordered_map<std::string, std::string> m_names;  // by declarations; nodes stay where they are
    std::vector<const std::string*> m_order;               // declarations
    std::unordered_map<Key, Known, KeyHash> m_known;
    std::map<std::string, std::string> m_pictures;  // names by what stands in the file
};

}  // namespace rdl::writers
