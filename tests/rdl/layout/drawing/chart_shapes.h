// SPDX-License-Identifier: GPL-3.0-or-later
// What a chart draws, as text: lengths in tenths of points, colours as alpha, red, green and blue.
#pragma once

#include <charconv>
#include <string>
#include <variant>
#include <vector>

#include "rdl/layout/drawing/chart_kit.h"

namespace rdl::layout {

inline std::string Tenth(double number) {
    char text[400];
    const auto end =
        std::to_chars(text, text + sizeof text, number == 0 ? 0 : number, std::chars_format::fixed, 1).ptr;
    const std::string made(text, end);
    return made == "-0.0" ? "0.0" : made;
}

inline std::string ColorText(Color color) {
    char text[16];
    std::string hex(text, std::to_chars(text, text + sizeof text, color, 16).ptr);
    return std::string(8 - hex.size(), '0') + hex;
}

inline std::string PointText(double x, double y) {
    return Tenth(x) + "," + Tenth(y);
}

inline std::string ShapeText(const LineOp& op) {
    return "line " + PointText(op.x1, op.y1) + " " + PointText(op.x2, op.y2) + " " + ColorText(op.color) +
           (op.style == LineStyle::Solid ? "" : " dashed");
}

inline std::string ShapeText(const RectOp& op) {
    return "box " + PointText(op.x, op.y) + " " + Tenth(op.width) + "x" + Tenth(op.height) + " " +
           ColorText(op.color);
}

// Of a curve only its ends.
inline std::string ShapeText(const PathOp& op) {
    std::string text = "path " + ColorText(op.fill) + " " + ColorText(op.stroke);
    for (const PathOp::Segment& segment : op.segments) {
        switch (segment.kind) {
            case PathOp::Segment::Move:
            case PathOp::Segment::LineTo:
                text += " " + PointText(segment.x[0], segment.y[0]);
                break;
            case PathOp::Segment::CurveTo:
                text += " ~" + PointText(segment.x[2], segment.y[2]);
                break;
            case PathOp::Segment::Close:
                text += " z";
        }
    }
    return text;
}

// Everything but texts and clips, in the order drawn.
inline std::vector<std::string> Shapes(const Drawn& drawn) {
    std::vector<std::string> shapes;
    for (const Op& op : drawn.Content().ops) {
        if (const auto* line = std::get_if<LineOp>(&op)) {
            shapes.push_back(ShapeText(*line));
        } else if (const auto* box = std::get_if<RectOp>(&op)) {
            shapes.push_back(ShapeText(*box));
        } else if (const auto* path = std::get_if<PathOp>(&op)) {
            shapes.push_back(ShapeText(*path));
        }
    }
    return shapes;
}

// A chart of 288 by 188 points at (6, 6) without axes; values from 0 to 100.
inline ChartParts Bare(const std::string& type, const std::string& subtype) {
    ChartParts parts;
    parts.type = type;
    parts.subtype = subtype;
    parts.categoryAxis = "<Visible>False</Visible>";
    parts.valueAxis = "<Visible>False</Visible><Minimum>0</Minimum><Maximum>100</Maximum>";
    return parts;
}

inline std::string Custom(const std::string& name, const std::string& value) {
    return "<CustomProperties><CustomProperty><Name>" + name + "</Name><Value>" + value +
           "</Value></CustomProperty></CustomProperties>";
}

}  // namespace rdl::layout
