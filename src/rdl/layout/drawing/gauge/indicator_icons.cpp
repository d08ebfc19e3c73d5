// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/gauge/indicator_icons.h"

#include <cmath>
#include <iterator>
#include <numbers>

#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

constexpr Color White = 0xFFFFFFFF, Empty = 0xFFD8DCE0, Rim = 0xFF404850;
constexpr Border NoLine;

// Shapes are defined in a unit square.
struct Sheet {
    Rect area;
    Color color;
    Canvas& canvas;

    Spot At(double x, double y) const { return {area.x + x * area.width, area.y + y * area.height}; }
    void Shape(const std::vector<Spot>& corners, Color fill) const {
        std::vector<Spot> placed;
        placed.reserve(corners.size());
        for (const Spot& corner : corners) {
            placed.push_back(At(corner.x, corner.y));
        }
        canvas.Polygon(placed, fill, NoLine);
    }
    void Box(double x, double y, double width, double height, Color fill) const {
        canvas.Rectangle(
            {area.x + x * area.width, area.y + y * area.height, width * area.width, height * area.height},
            fill, NoLine);
    }
    void Disc(double x, double y, double radius, Color fill) const {
        canvas.Circle(At(x, y), radius * area.width, fill, NoLine);
    }
    void Stroke(const std::vector<Spot>& points, double width, Color ink) const {
        std::vector<Spot> placed;
        placed.reserve(points.size());
        for (const Spot& point : points) {
            placed.push_back(At(point.x, point.y));
        }
        canvas.Curve(placed, Course::Straight,
                     {LineStyle::Solid, ink, static_cast<float>(width * area.width)});
    }
};

void Arrow(const Sheet& sheet, double turns) {
    constexpr Spot Up[] = {{0.5, 0.05},  {0.92, 0.5}, {0.66, 0.5}, {0.66, 0.95},
                           {0.34, 0.95}, {0.34, 0.5}, {0.08, 0.5}};
    const double s = std::sin(turns * 2 * std::numbers::pi), c = std::cos(turns * 2 * std::numbers::pi);
    std::vector<Spot> corners;
    for (const Spot& corner : Up) {
        const double x = corner.x - 0.5, y = corner.y - 0.5;
        corners.push_back({0.5 + x * c - y * s, 0.5 + x * s + y * c});
    }
    sheet.Shape(corners, sheet.color);
}

void Flag(const Sheet& sheet) {
    sheet.Box(0.16, 0.05, 0.08, 0.9, Rim);
    sheet.Shape({{0.24, 0.08}, {0.92, 0.32}, {0.24, 0.58}}, sheet.color);
}

void TrafficLight(const Sheet& sheet, bool rimmed) {
    if (rimmed) {
        sheet.Box(0.04, 0.04, 0.92, 0.92, Rim);
    }
    sheet.Disc(0.5, 0.5, rimmed ? 0.4 : 0.46, sheet.color);
}

enum class Symbol { Check, Cross, Exclamation };

void DrawSymbol(const Sheet& sheet, Symbol symbol, bool circled) {
    const Color ink = circled ? White : sheet.color;
    if (circled) {
        sheet.Disc(0.5, 0.5, 0.46, sheet.color);
    }
    const double near = circled ? 0.3 : 0.12, far = 1 - near;
    const double width = circled ? 0.11 : 0.17;
    switch (symbol) {
        case Symbol::Check:
            sheet.Stroke({{near, 0.52}, {0.44, far - 0.03}, {far, near + 0.04}}, width, ink);
            break;
        case Symbol::Cross:
            sheet.Stroke({{near, near}, {far, far}}, width, ink);
            sheet.Stroke({{near, far}, {far, near}}, width, ink);
            break;
        case Symbol::Exclamation:
            sheet.Box(0.5 - width / 2, near - 0.05, width, (far - near) * 0.68, ink);
            sheet.Box(0.5 - width / 2, far - 0.06, width, 0.11, ink);
            break;
    }
}

// Four boxes, filled from the lower left.
void Boxes(const Sheet& sheet, int filled) {
    constexpr Spot Places[] = {{0.05, 0.53}, {0.05, 0.05}, {0.53, 0.05}, {0.53, 0.53}};
    for (int i = 0; i < 4; ++i) {
        sheet.Box(Places[i].x, Places[i].y, 0.42, 0.42, i < filled ? sheet.color : Empty);
    }
}

void Quarters(const Sheet& sheet, int filled) {
    sheet.Disc(0.5, 0.5, 0.46, Empty);
    if (filled > 0) {
        std::vector<PathOp::Segment> segments;
        const Spot middle = sheet.At(0.5, 0.5);
        AppendArc(middle, 0.46 * sheet.area.width, 0, filled * std::numbers::pi / 2, PathOp::Segment::Move,
                  segments);
        if (filled < 4) {
            segments.push_back({PathOp::Segment::LineTo, {middle.x, 0, 0}, {middle.y, 0, 0}});
        }
        segments.push_back({PathOp::Segment::Close, {}, {}});
        sheet.canvas.Path(std::move(segments), sheet.color, NoLine);
    }
}

void Bars(const Sheet& sheet, int filled) {
    for (int i = 0; i < 4; ++i) {
        const double height = 0.22 * (i + 1);
        sheet.Box(0.06 + 0.23 * i, 0.95 - height, 0.18, height, i < filled ? sheet.color : Empty);
    }
}

// Draws a star that is filled from the left, as far as `filled` says.
void Star(const Sheet& sheet, int filled) {
    std::vector<Spot> corners;
    for (int i = 0; i < 10; ++i) {
        const double reach = i % 2 ? 0.2 : 0.5, angle = std::numbers::pi / 5 * i;
        corners.push_back({0.5 + reach * std::sin(angle), 0.54 - reach * std::cos(angle)});
    }
    sheet.Shape(corners, filled == 4 ? sheet.color : Empty);
    if (filled > 0 && filled < 4) {
        sheet.canvas.Clip({sheet.area.x, sheet.area.y, sheet.area.width * filled / 4, sheet.area.height});
        sheet.Shape(corners, sheet.color);
        sheet.canvas.Unclip();
    }
}

enum class Mood { Smile, Neutral, Frown };

void Face(const Sheet& sheet, Mood mood) {
    sheet.Disc(0.5, 0.5, 0.46, sheet.color);
    sheet.Disc(0.34, 0.38, 0.06, Rim);
    sheet.Disc(0.66, 0.38, 0.06, Rim);
    const double bend = mood == Mood::Smile ? 0.12 : mood == Mood::Frown ? -0.12 : 0;
    std::vector<Spot> mouth;
    for (int i = 0; i <= 8; ++i) {
        const double along = i / 8.0;
        mouth.push_back(
            {0.28 + 0.44 * along, 0.68 - bend / 2 + bend * (1 - (2 * along - 1) * (2 * along - 1))});
    }
    sheet.Stroke(mouth, 0.06, Rim);
}

using Draw = void (*)(const Sheet&);
struct Icon {
    std::string_view word;
    Draw draw;
};

constexpr Icon Icons[] = {
    {"ArrowUp", [](const Sheet& s) { Arrow(s, 0); }},
    {"ArrowUpIncline", [](const Sheet& s) { Arrow(s, 0.125); }},
    {"ArrowSide", [](const Sheet& s) { Arrow(s, 0.25); }},
    {"ArrowDownIncline", [](const Sheet& s) { Arrow(s, 0.375); }},
    {"ArrowDown", [](const Sheet& s) { Arrow(s, 0.5); }},
    {"Flag", Flag},
    {"TrafficLight", [](const Sheet& s) { TrafficLight(s, true); }},
    {"TrafficLightUnrimmed", [](const Sheet& s) { TrafficLight(s, false); }},
    {"TriangleUp",
     [](const Sheet& s) {
         s.Shape({{0.5, 0.14}, {0.95, 0.86}, {0.05, 0.86}}, s.color);
     }},
    {"TriangleDown",
     [](const Sheet& s) {
         s.Shape({{0.05, 0.14}, {0.95, 0.14}, {0.5, 0.86}}, s.color);
     }},
    {"TriangleDash", [](const Sheet& s) { s.Box(0.08, 0.38, 0.84, 0.24, s.color); }},
    {"ThreeSignsCircle", [](const Sheet& s) { s.Disc(0.5, 0.5, 0.46, s.color); }},
    {"ThreeSignsTriangle",
     [](const Sheet& s) {
         s.Shape({{0.5, 0.08}, {0.97, 0.9}, {0.03, 0.9}}, s.color);
     }},
    {"ThreeSignsDiamond",
     [](const Sheet& s) {
         s.Shape({{0.5, 0.02}, {0.98, 0.5}, {0.5, 0.98}, {0.02, 0.5}}, s.color);
     }},
    {"ThreeSymbolCheck", [](const Sheet& s) { DrawSymbol(s, Symbol::Check, true); }},
    {"ThreeSymbolCross", [](const Sheet& s) { DrawSymbol(s, Symbol::Cross, true); }},
    {"ThreeSymbolExclamation", [](const Sheet& s) { DrawSymbol(s, Symbol::Exclamation, true); }},
    {"ThreeSymbolUnCircledCheck", [](const Sheet& s) { DrawSymbol(s, Symbol::Check, false); }},
    {"ThreeSymbolUnCircledCross", [](const Sheet& s) { DrawSymbol(s, Symbol::Cross, false); }},
    {"ThreeSymbolUnCircledExclamation", [](const Sheet& s) { DrawSymbol(s, Symbol::Exclamation, false); }},
    {"ButtonStop", [](const Sheet& s) { s.Box(0.12, 0.12, 0.76, 0.76, s.color); }},
    {"ButtonPlay",
     [](const Sheet& s) {
         s.Shape({{0.15, 0.06}, {0.92, 0.5}, {0.15, 0.94}}, s.color);
     }},
    {"ButtonPause",
     [](const Sheet& s) {
         s.Box(0.14, 0.1, 0.26, 0.8, s.color);
         s.Box(0.6, 0.1, 0.26, 0.8, s.color);
     }},
    {"FaceSmile", [](const Sheet& s) { Face(s, Mood::Smile); }},
    {"FaceNeutral", [](const Sheet& s) { Face(s, Mood::Neutral); }},
    {"FaceFrown", [](const Sheet& s) { Face(s, Mood::Frown); }},
    {"None", [](const Sheet&) {}},
};

struct Rating {
    std::string_view prefix;
    void (*draw)(const Sheet&, int filled);
};
constexpr Rating Ratings[] = {
    {"Boxes", Boxes}, {"Quarters", Quarters}, {"SignalMeter", Bars}, {"StarQuarters", Star}};
constexpr std::string_view Filled[] = {"NoneFilled", "OneFilled", "TwoFilled", "ThreeFilled", "AllFilled"};

bool DrawRating(const std::string& word, const Sheet& sheet) {
    for (const Rating& rating : Ratings) {
        if (!word.starts_with(rating.prefix)) {
            continue;
        }
        std::string_view rest = std::string_view(word).substr(rating.prefix.size());
        rest = rest == "FourFilled" ? "AllFilled" : rest;
        for (std::size_t i = 0; i < std::size(Filled); ++i) {
            if (Filled[i] == rest) {
                rating.draw(sheet, static_cast<int>(i));
                return true;
            }
        }
    }
    return false;
}

}  // namespace

void DrawIcon(const std::string& word, const Rect& area, Color color, Canvas& canvas) {
    const Sheet sheet{area, color, canvas};
    for (const Icon& icon : Icons) {
        if (icon.word == word) {
            icon.draw(sheet);
            return;
        }
    }
    if (!DrawRating(word, sheet)) {
        sheet.Disc(0.5, 0.5, 0.46, color);
    }
}

std::string WordsOf(const std::string& icon) {
    std::string words;
    for (const char character : icon) {
        if (IsAsciiUpper(character) && !words.empty()) {
            words += ' ';
        }
        words += AsciiLower(character);
    }
    return words;
}

}  // namespace rdl::layout
