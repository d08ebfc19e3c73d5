// Properties and styles of the parts of charts and gauges at the evaluator's current place.
#pragma once

#include <optional>
#include <string>

#include "rdl/layout/drawing/caption.h"
#include "rdl/layout/region/property_reader.h"

namespace rdl::layout {

// Days for dates and times; texts that are numbers count, as constants and files without types have them.
// False for everything else.
bool NumberOf(const Value& value, double& number);

// The text, cut at a whole character after 400 bytes: nobody can read more in a chart or gauge.
std::string ReadableText(std::string text);

class PartStyles {
 public:
    PartStyles(const Programs& programs, PropertyReader& reader) : m_programs(programs), m_reader(reader) {}

    Value Get(const Expr& source) const;
    std::string Text(const Expr& source) const;
    // Nothing for Auto, NaN, empty and what is no number.
    std::optional<double> Number(const Expr& source) const;
    std::optional<bool> Flag(const Expr& source) const;

    CharStylePtr Letters(const Style& style, float size = 8) const;
    BoxStylePtr Box(const Style& style) const;
    std::string Format(const Style& style) const;
    // Of the first of the properties that is set; Transparent when none is.
    Color ColorOf(const Style& style, std::initializer_list<StyleProperty> properties) const;
    // A line that is there unless the style says none.
    Border LineOf(const Style& style, Color color, float width) const;
    // A border that is there when the style says so.
    Border BorderOf(const Style& style) const;
    double Points(const Expr& source, double otherwise) const;
    ChartCaption Caption(const ChartText& text, float size) const;

 private:
    std::string Part(const Style& style, StyleProperty property) const;

    const Programs& m_programs;
    PropertyReader& m_reader;
};

}  // namespace rdl::layout
