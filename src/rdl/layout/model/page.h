// SPDX-License-Identifier: GPL-3.0-or-later
// A page as drawable objects, in drawing order. Lengths are points from the page's top left corner, y
// downwards. A tag is the element of the logical structure that the object belongs to.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "rdl/layout/model/structure.h"
#include "rdl/layout/model/style.h"
#include "rdl/text/fonts.h"

namespace rdl::layout {

struct TextOp {
    double x, baseline;
    float size;
    Color color;
    text::FontId font;
    std::uint32_t firstGlyph, glyphCount;  // in Page::glyphs
    std::uint32_t textBegin,
        textEnd;  // range in Page::text with the UTF-8 text of the glyphs; clusters count from textBegin
    float rotation = 0;  // degrees clockwise about (x, baseline)
    ElementId tag = 0;
};
struct LineOp {
    // Where a line belongs that lies exactly between two pages side by side: a left border to the page that
    // it begins, a right border to the page that it ends.
    enum class Edge : unsigned char { Either, Begins, Ends };
    double x1, y1, x2, y2;
    float width;
    Color color;
    LineStyle style;
    Edge edge = Edge::Either;
    ElementId tag = 0;
};
struct RectOp {  // filled
    double x, y, width, height;
    Color color;
    ElementId tag = 0;
};
struct PathOp {  // polygons and curves of charts
    struct Segment {
        enum Kind : unsigned char { Move, LineTo, CurveTo, Close } kind;
        double x[3], y[3];
    };
    std::vector<Segment> segments;
    Color fill, stroke;
    float strokeWidth;
    LineStyle strokeStyle;
    ElementId tag = 0;
};
struct ImageOp {
    double x, y, width, height;
    std::shared_ptr<const std::string> bytes;  // equal images share the pointer
    std::string name;                          // name of the item, for errors
    ElementId tag = 0;
};
struct ClipOp {  // clips until the matching UnclipOp
    double x, y, width, height;
};
struct UnclipOp {};
struct LinkOp {  // a link
    double x, y, width, height;
    std::string uri, bookmark;  // exactly one is set
    ElementId tag = 0;
};
struct AnchorOp {  // a link target; with a label also an entry of the document map
    double x, y;
    std::string bookmark, label;
    int level = 0;
};
using Op = std::variant<TextOp, LineOp, RectOp, PathOp, ImageOp, ClipOp, UnclipOp, LinkOp, AnchorOp>;

struct Page {
    double width = 0, height = 0;
    std::vector<Op> ops;
    std::vector<text::Glyph> glyphs;
    std::string text;
    void Clear() {
        ops.clear();
        glyphs.clear();
        text.clear();
    }
};

struct ReportInstance;
struct SectionInstance;

// Receives pages in order. A body arrives as soon as its page is full, header and footer once they are known:
// after the last body if they depend on the number of pages. So only the current page is kept in memory.
class PageSink {
 public:
    virtual ~PageSink() = default;
    virtual void Body(int page /* from 0 */, Page& content) = 0;
    // Header and footer of a page, drawn over the body. Called once for each page that has either.
    virtual void Margins(int page, Page& content) = 0;
};

struct Limits {
    int maxPages = 100'000;
};

// Lays out the report and returns the number of pages, at least 1. `structure`, which may be null, gets the
// elements of bodies; headers and footers are decoration. Raises rdl::Error past the limits.
int Paginate(ReportInstance& report, PageSink& sink, const Limits& limits = {},
             Structure* structure = nullptr);

// The same one page at a time, for the screen.
class PageStream {
 public:
    virtual ~PageStream() = default;
    // Returns false after the last page.
    virtual bool NextBody(Page& content) = 0;
    // Whether header or footer show the number of pages.
    virtual bool UsesTotals() const = 0;
    // Adds header and footer of a page, from 0. With a total of 0, unknown, the placeholder stays in the
    // texts.
    virtual void MarginsOf(int page, int total, Page& content) = 0;
};
// `report` must outlive the stream.
std::unique_ptr<PageStream> OpenPages(ReportInstance& report, const Limits& limits = {});

}  // namespace rdl::layout
