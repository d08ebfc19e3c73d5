// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/html/drawings.h"

#include <algorithm>
#include <string_view>

#include "rdl/image/type.h"
#include "rdl/layout/model/double_line.h"
#include "rdl/writers/html/text.h"

namespace rdl::writers {
namespace {

using layout::Color;
using layout::IsVisible;
using layout::LineStyle;

constexpr std::size_t LongestShared = 8u << 10, MostShared = 1000;
constexpr double ThinnestLine = 0.25;  // a width of 0 is a hairline elsewhere and nothing in SVG

// Writes the objects of one drawing, in drawing order.
class SvgObjects {
 public:
    SvgObjects(const layout::Page& page, HtmlStyles& styles, std::map<std::string, std::string>& clips)
        : m_page(page), m_styles(styles), m_clipIds(clips) {}

    std::string Take() {
        for (const layout::Op& op : m_page.ops) {
            std::visit(*this, op);
        }
        for (; m_clips > 0; --m_clips) {
            m_out += "</g>";
        }
        return std::move(m_out);
    }

    void operator()(const layout::TextOp& op) {
        if (op.glyphCount == 0 || !IsVisible(op.color) || !(op.size > 0)) {
            return;
        }
        double length = 0;
        for (std::uint32_t i = 0; i < op.glyphCount; ++i) {
            length += static_cast<double>(m_page.glyphs[op.firstGlyph + i].advance);
        }
        m_out += "<text class=\"" + TextClass(op) + "\"";
        Number("x", op.x);
        Number("y", op.baseline);
        // As wide as in the layout, whatever font the reader has.
        Number("textLength", length);
        m_out += " lengthAdjust=\"spacingAndGlyphs\"";
        if (op.rotation != 0) {
            m_out += " transform=\"rotate(";
            for (const double part : {static_cast<double>(op.rotation), op.x, op.baseline}) {
                AppendNumber(part, m_out);
                m_out += ' ';
            }
            m_out.back() = ')';
            m_out += '"';
        }
        m_out += '>';
        AppendHtml(std::string_view(m_page.text).substr(op.textBegin, op.textEnd - op.textBegin), m_out);
        m_out += "</text>";
    }

    void operator()(const layout::LineOp& op) {
        if (op.style == LineStyle::None || !IsVisible(op.color)) {
            return;
        }
        if (op.style != LineStyle::Double) {
            Line(op);
            return;
        }
        for (const layout::LineOp& one : layout::LinesOfDouble(op)) {
            Line(one);
        }
    }

    void operator()(const layout::RectOp& op) {
        if (!IsVisible(op.color)) {
            return;
        }
        m_out += "<rect";
        Area(op);
        ColorOf("fill", op.color);
        m_out += "/>";
    }

    void operator()(const layout::PathOp& op) {
        const bool fill = IsVisible(op.fill);
        const bool stroke = IsVisible(op.stroke) && op.strokeStyle != LineStyle::None;
        if ((!fill && !stroke) || op.segments.empty()) {
            return;
        }
        m_out += "<path d=\"";
        using Kind = layout::PathOp::Segment::Kind;
        for (const layout::PathOp::Segment& segment : op.segments) {
            m_out += segment.kind == Kind::Move     ? 'M'
                     : segment.kind == Kind::LineTo ? 'L'
                     : segment.kind == Kind::Close  ? 'Z'
                                                    : 'C';
            const int points = segment.kind == Kind::CurveTo ? 3 : segment.kind == Kind::Close ? 0 : 1;
            for (int i = 0; i < points; ++i) {
                m_out += i ? " " : "";
                AppendNumber(segment.x[i], m_out);
                m_out += ' ';
                AppendNumber(segment.y[i], m_out);
            }
        }
        m_out += '"';
        if (fill) {
            ColorOf("fill", op.fill);
        } else {
            m_out += " fill=\"none\"";
        }
        if (stroke) {
            Stroke(op.stroke, static_cast<double>(op.strokeWidth), op.strokeStyle);
        }
        m_out += "/>";
    }

    void operator()(const layout::ImageOp& op) {
        if (!op.bytes || op.bytes->empty()) {
            return;
        }
        m_out += "<image";
        Area(op);
        m_out += " preserveAspectRatio=\"none\" href=\"";
        AppendDataUri(image::TypeOf(*op.bytes, op.name), *op.bytes, m_out);
        m_out += "\"/>";
    }

    // A clip path is written where its area comes first.
    void operator()(const layout::ClipOp& op) {
        const std::size_t before = m_out.size();
        Area(op);
        const std::string area = m_out.substr(before);
        m_out.resize(before);
        const auto [entry, isNew] = m_clipIds.try_emplace(area);
        if (isNew) {
            entry->second = "k" + std::to_string(m_clipIds.size());
            m_out.append("<clipPath id=\"")
                .append(entry->second)
                .append("\"><rect")
                .append(area)
                .append("/></clipPath>");
        }
        m_out.append("<g clip-path=\"url(#").append(entry->second).append(")\">");
        ++m_clips;
    }
    void operator()(const layout::UnclipOp&) {
        if (m_clips > 0) {
            --m_clips;
            m_out += "</g>";
        }
    }

    // Drawings have neither links nor anchors of their own: their item has them.
    void operator()(const layout::LinkOp&) {}
    void operator()(const layout::AnchorOp&) {}

 private:
    void Number(const char* name, double number) {
        m_out.append(" ").append(name).append("=\"");
        AppendNumber(number, m_out);
        m_out += '"';
    }

    void ColorOf(const char* name, Color color) {
        m_out.append(" ").append(name).append("=\"");
        AppendColor(color, m_out);
        m_out += '"';
    }

    template <typename Placed>
    void Area(const Placed& op) {
        Number("x", op.x);
        Number("y", op.y);
        Number("width", std::max(op.width, 0.0));
        Number("height", std::max(op.height, 0.0));
    }

    void Line(const layout::LineOp& op) {
        m_out += "<line";
        Number("x1", op.x1);
        Number("y1", op.y1);
        Number("x2", op.x2);
        Number("y2", op.y2);
        Stroke(op.color, static_cast<double>(op.width), op.style);
        m_out += "/>";
    }

    void Stroke(Color color, double width, LineStyle style) {
        ColorOf("stroke", color);
        Number("stroke-width", std::max(width, ThinnestLine));
        if (const std::string_view dashes = layout::DashesOf(style); !dashes.empty()) {
            m_out += " stroke-dasharray=\"";
            for (const char length : dashes) {
                AppendNumber((length - '0') * std::max(width, ThinnestLine), m_out);
                m_out += ' ';
            }
            m_out.back() = '"';
        }
    }

    const std::string& TextClass(const layout::TextOp& op) {
        const text::FontFile& font = text::File(op.font);
        std::string css;
        AppendFamily(font.family, css);
        css += "font-size:";
        AppendNumber(static_cast<double>(op.size), css);
        css += "px;";  // a user unit, and so a point
        css += font.bold || font.syntheticBold ? "font-weight:bold;" : "";
        css += font.italic || font.syntheticItalic ? "font-style:italic;" : "";
        css += "fill:";
        AppendColor(op.color, css);
        return m_styles.Class(css + ";white-space:pre;");
    }

    const layout::Page& m_page;
    HtmlStyles& m_styles;
    std::map<std::string, std::string>& m_clipIds;
    std::string m_out;
    int m_clips = 0;
};

}  // namespace

void HtmlDrawings::Append(const layout::DrawingInstance& drawing, const std::string& label,
                          std::string& out) {
    std::string css = "display:block;width:";
    AppendPoints(drawing.content.width, css);
    css += ";height:";
    AppendPoints(drawing.content.height, css);
    out += "<svg class=\"" + m_styles.Class(css + ";") + "\" viewBox=\"0 0 ";
    AppendNumber(drawing.content.width, out);
    out += ' ';
    AppendNumber(drawing.content.height, out);
    out += '"';
    if (!label.empty()) {
        out += " role=\"img\" aria-label=\"";
        AppendHtml(label, out);
        out += '"';
    }
    out += '>';
    std::string content = SvgObjects(drawing.content, m_styles, m_clips).Take();
    if (content.size() > LongestShared || m_ids.size() >= MostShared) {
        out += content;
    } else if (const auto known = m_ids.find(content); known != m_ids.end()) {
        out += "<use href=\"#" + known->second + "\"/>";
    } else {
        const std::string id = "g" + std::to_string(m_ids.size() + 1);
        out += "<g id=\"" + id + "\">" + content + "</g>";
        m_ids.emplace(std::move(content), id);
    }
    out += "</svg>";
}

}  // namespace rdl::writers
