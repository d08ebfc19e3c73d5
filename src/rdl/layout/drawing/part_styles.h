// SPDX-License-Identifier: GPL-3.0-or-later
// Evaluates properties and styles of chart, gauge and map parts at the evaluator's current place.
#pragma once

#include <optional>
#include <string>

#include "rdl/layout/drawing/chart_caption.h"
#include "rdl/layout/region/property_reader.h"

namespace rdl::layout {

// Returns the number of a value: days for dates and times; texts that are numbers count, as constants and
// untyped files have them. Returns false for any other value.
bool NumberOf(const Value& value, double& number);

// Cuts a text at a whole character after 400 bytes, which is more than a chart, gauge or map can show.
std::string ReadableText(std::string text);

class PartStyles {
 public:
    PartStyles(const Programs& programs, PropertyReader& reader) : m_programs(programs), m_reader(reader) {}

    Value Get(const Expr& source) const;
    std::string Text(const Expr& source) const;
    // Returns nullopt for Auto, NaN, empty and non-numeric values.
    std::optional<double> Number(const Expr& source) const;
    std::optional<bool> Flag(const Expr& source) const;

    CharStylePtr TextStyle(const Style& style, float size = 8) const;
    BoxStylePtr Box(const Style& style) const;
    std::string Format(const Style& style) const;
    // Returns the colour of the first property that is set; Transparent if none is.
    Color ColorOf(const Style& style, std::initializer_list<StyleProperty> properties) const;
    // A line that is drawn unless the style is None.
    Border LineOf(const Style& style, Color color, float width) const;
    // A border that is drawn only if the style sets one.
    Border BorderOf(const Style& style) const;
    double Points(const Expr& source, double otherwise) const;
    ChartCaption Caption(const ChartText& text, float size) const;

 private:
    std::string Part(const Style& style, StyleProperty property) const;

    const Programs& m_programs;
    PropertyReader& m_reader;
};

}  // namespace rdl::layout
