// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/html/styles.h"

#include <cmath>
#include <cstdio>
#include <string_view>
#include <utility>

#include "rdl/writers/html/text.h"

namespace rdl::writers {
namespace {

using layout::Border;
using layout::BoxStyle;
using layout::CharStyle;
using layout::Color;
using layout::Decoration;
using layout::Gradient;
using layout::HAlign;
using layout::LineStyle;
using layout::VAlign;
using layout::WritingMode;

constexpr std::size_t MostKnown = 4096;
constexpr Color White = 0xFFFFFFFF;

const char* BorderWord(LineStyle style) {
    switch (style) {
        case LineStyle::None:
            return "none";
        case LineStyle::Dotted:
            return "dotted";
        case LineStyle::Dashed:
        case LineStyle::DashDot:
        case LineStyle::DashDotDot:
            return "dashed";
        case LineStyle::Double:
            return "double";
        case LineStyle::Groove:
            return "groove";
        case LineStyle::Ridge:
            return "ridge";
        case LineStyle::Inset:
        case LineStyle::WindowInset:
            return "inset";
        case LineStyle::Outset:
            return "outset";
        case LineStyle::Solid:
            break;
    }
    return "solid";
}

void AppendBorderValue(const Border& border, std::string& css) {
    AppendPoints(border.width, css);
    css += ' ';
    css += BorderWord(border.style);
    css += ' ';
    AppendColor(border.color, css);
    css += ';';
}

void AppendBorders(const BoxStyle& box, std::string& css) {
    if (box.left == box.top && box.left == box.right && box.left == box.bottom) {
        if (box.left.style != LineStyle::None) {
            css += "border:";
            AppendBorderValue(box.left, css);
        }
        return;
    }
    const std::pair<const char*, const Border*> sides[] = {{"border-top:", &box.top},
                                                           {"border-right:", &box.right},
                                                           {"border-bottom:", &box.bottom},
                                                           {"border-left:", &box.left}};
    for (const auto& [property, border] : sides) {
        if (border->style != LineStyle::None) {
            css += property;
            AppendBorderValue(*border, css);
        }
    }
}

void AppendPadding(const BoxStyle& box, std::string& css) {
    css += "padding:";
    AppendPoints(box.paddingTop, css);
    for (const float padding : {box.paddingRight, box.paddingBottom, box.paddingLeft}) {
        css += ' ';
        AppendPoints(padding, css);
    }
    css += ';';
}

void AppendVerticalAlign(const BoxStyle& box, HtmlStyles::Place place, std::string& css) {
    if (place == HtmlStyles::Place::Cell) {
        const char* words[] = {"top", "middle", "bottom"};
        css += std::string("vertical-align:") + words[static_cast<int>(box.vAlign)] + ";";
    } else if (box.vAlign != VAlign::Top) {
        css += std::string("display:flex;flex-direction:column;justify-content:") +
               (box.vAlign == VAlign::Middle ? "center;" : "flex-end;");
    }
}

void AppendAlign(HAlign align, std::string& css) {
    const char* words[] = {"left", "left", "center", "right", "justify"};
    css += std::string("text-align:") + words[static_cast<int>(align)] + ";";
}

void AppendPicture(const layout::BackgroundPicture& picture, const std::string& name, std::string& css) {
    static constexpr const char* Repeats[] = {"repeat", "repeat-x", "repeat-y", "no-repeat", "no-repeat"};
    css += "background-image:var(--" + name +
           ");background-repeat:" + Repeats[static_cast<int>(picture.repeat)] + ";";
    if (picture.repeat == layout::BackgroundPicture::Repeat::Stretch) {
        css += "background-size:100% 100%;";
    } else if (picture.repeat == layout::BackgroundPicture::Repeat::None) {
        const auto percent = [](float share) { return std::to_string(std::lround(share * 100)) + "%"; };
        css += "background-position:" + percent(picture.alignX) + " " + percent(picture.alignY) + ";";
    }
}

void AppendGradient(const BoxStyle& box, std::string& css) {
    // In the order of the kinds; the two colours go where the marks are, the one that is both ends twice.
    static constexpr const char* Kinds[] = {"",
                                            "linear-gradient(to right,<,>)",
                                            "linear-gradient(to bottom,<,>)",
                                            "radial-gradient(farthest-side,<,>)",
                                            "linear-gradient(to bottom right,<,>)",
                                            "linear-gradient(to bottom left,<,>)",
                                            "linear-gradient(to bottom,>,<,>)",
                                            "linear-gradient(to right,>,<,>)"};
    css += "background-image:";
    for (const char* at = Kinds[static_cast<int>(box.gradient)]; *at; ++at) {
        if (*at == '<') {
            AppendColor(layout::IsVisible(box.background) ? box.background : White, css);
        } else if (*at == '>') {
            AppendColor(box.gradientEnd, css);
        } else {
            css += *at;
        }
    }
    css += ';';
}

void AppendBackground(const BoxStyle& box, std::string& css) {
    if (layout::IsVisible(box.background)) {
        css += "background-color:";
        AppendColor(box.background, css);
        css += ';';
    }
    if (!box.picture && box.gradient != Gradient::None && layout::IsVisible(box.gradientEnd)) {
        AppendGradient(box, css);
    }
}

// The style of a box that is turned half round as a whole, so that its sides are where they belong again. The
// borders of a cell are the table's, which does not turn.
BoxStyle TurnedBack(const BoxStyle& box, HtmlStyles::Place place) {
    BoxStyle turned = box;
    std::swap(turned.paddingLeft, turned.paddingRight);
    std::swap(turned.paddingTop, turned.paddingBottom);
    if (place == HtmlStyles::Place::Block) {
        std::swap(turned.left, turned.right);
        std::swap(turned.top, turned.bottom);
    }
    const bool hasDirection = box.gradient == Gradient::LeftRight || box.gradient == Gradient::TopBottom ||
                              box.gradient == Gradient::DiagonalLeft ||
                              box.gradient == Gradient::DiagonalRight;
    if (hasDirection && layout::IsVisible(box.gradientEnd)) {
        turned.background = box.gradientEnd;
        turned.gradientEnd = layout::IsVisible(box.background) ? box.background : White;
    }
    return turned;
}

void AppendBox(const BoxStyle& given, HtmlStyles::Place place, std::string& css) {
    const BoxStyle box = given.writingMode == WritingMode::Rotate270 ? TurnedBack(given, place) : given;
    AppendBackground(box, css);
    AppendBorders(box, css);
    AppendPadding(box, css);
    AppendVerticalAlign(box, place, css);
    if (box.writingMode != WritingMode::Horizontal) {
        css += "writing-mode:vertical-rl;";
    }
    if (box.writingMode == WritingMode::Rotate270) {
        css += "transform:rotate(180deg);";
    }
    if (box.rightToLeft) {
        css += "direction:rtl;";
    }
}

void AppendCharStyle(const CharStyle& text, std::string& css) {
    AppendFamily(text.family, css);
    css += "font-size:";
    AppendPoints(text.size, css);
    css += ';';
    if (text.bold) {
        css += "font-weight:bold;";
    } else if (text.weight != 400) {
        css += "font-weight:" + std::to_string(text.weight) + ";";
    } else {
        css += "font-weight:normal;";
    }
    css += text.italic ? "font-style:italic;" : "";
    const char* decorations[] = {"", "underline;", "overline;", "line-through;"};
    if (text.decoration != Decoration::None) {
        css += std::string("text-decoration:") + decorations[static_cast<int>(text.decoration)];
    }
    css += "color:";
    AppendColor(text.color, css);
    css += ";white-space:pre-wrap;";
}

}  // namespace

std::size_t HtmlStyles::KeyHash::operator()(const Key& key) const {
    const std::hash<const void*> hash;
    return hash(key.box) * 31 + hash(key.text) * 7 + static_cast<std::size_t>(key.rest);
}

const std::string& HtmlStyles::Box(const layout::BoxStylePtr& box, Place place,
                                   const layout::CharStylePtr& text, HAlign align) {
    const Key key{box.get(), text.get(), static_cast<int>(align) * 2 + static_cast<int>(place)};
    if (const auto found = m_known.find(key); found != m_known.end()) {
        return *found->second.name;
    }
    std::string css;
    if (box) {
        AppendBox(*box, place, css);
        if (box->picture) {
            AppendPicture(*box->picture, Picture(*box->picture), css);
        }
    }
    if (text) {
        AppendCharStyle(*text, css);
    }
    AppendAlign(align, css);
    const std::string& name = Class(css);
    if (m_known.size() >= MostKnown) {
        m_known.clear();
    }
    m_known.emplace(key, Known{box, text, &name});
    return name;
}

const std::string& HtmlStyles::Picture(const layout::BackgroundPicture& picture) {
    std::string url = "url(";
    AppendDataUri(image::TypeOf(*picture.bytes, picture.item), *picture.bytes, url);
    url += ')';
    return m_pictures.try_emplace(std::move(url), "p" + std::to_string(m_pictures.size() + 1)).first->second;
}

const std::string& HtmlStyles::Text(const layout::CharStylePtr& text) {
    std::string css;
    if (text) {
        AppendCharStyle(*text, css);
    }
    return Class(css);
}

const std::string& HtmlStyles::Class(const std::string& declarations) {
    const auto [entry, fresh] = m_names.try_emplace(declarations);
    if (fresh) {
        m_order.push_back(&entry->first);
        entry->second = "s" + std::to_string(m_order.size());
    }
    return entry->second;
}

const std::string& HtmlStyles::Stroke(const Border& line) {
    std::string css = "stroke:";
    AppendColor(line.color, css);
    css += ";stroke-width:";
    AppendPoints(line.width, css);
    if (const std::string_view dashes = layout::DashesOf(line.style); !dashes.empty()) {
        css += ";stroke-dasharray:";
        for (const char length : dashes) {
            AppendPoints((length - '0') * line.width, css);
            css += ' ';
        }
        css.pop_back();
    }
    return Class(css + ";");
}

std::string HtmlStyles::Sheet() const {
    std::string sheet;
    for (const auto& [picture, name] : m_pictures) {
        sheet.append(":root{--").append(name).append(":").append(picture).append("}\n");
    }
    for (std::size_t i = 0; i < m_order.size(); ++i) {
        sheet += ".s" + std::to_string(i + 1) + "{" + *m_order[i] + "}\n";
    }
    return sheet;
}

}  // namespace rdl::writers
