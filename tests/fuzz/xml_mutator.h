// SPDX-License-Identifier: GPL-3.0-or-later
// Changes to the elements of an XML text: it stays well-formed, so that a fuzzer gets past the reader.
#pragma once

#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

class XmlMutator {
 public:
    using ChangeText = std::function<std::string(std::string)>;  // of an element without children

    XmlMutator(unsigned seed, ChangeText changeText) : m_random(seed), m_changeText(std::move(changeText)) {}

    // One change: an element removed, doubled, swapped with another, put into another, renamed, or its text
    // changed. Empty when the text has no elements.
    std::string Mutate(std::string_view xml);
    // `xml` with an element of `other` put in.
    std::string Cross(std::string_view xml, std::string_view other);

 private:
    // Offsets of an element: its first byte, first byte of content, first byte of the end tag, the byte after
    // it.
    struct Element {
        std::size_t begin = 0, content = 0, contentEnd = 0, end = 0;
        std::size_t nameEnd = 0;
        bool leaf = true;
    };
    static std::vector<Element> ElementsOf(std::string_view xml);
    std::size_t Below(std::size_t count) { return count == 0 ? 0 : m_random() % count; }
    const Element& Pick(const std::vector<Element>& elements);
    std::string WithText(std::string_view xml, const std::vector<Element>& elements);
    std::string Swapped(std::string_view xml, const std::vector<Element>& elements);
    std::string Renamed(std::string_view xml, const std::vector<Element>& elements);

    std::minstd_rand m_random;
    ChangeText m_changeText;
};

}  // namespace fuzz
