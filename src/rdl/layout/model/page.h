// A page as drawable objects. Points from the page's top left corner, y downwards. Drawn in order.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

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
        textEnd;         // in Page::text: what the glyphs say, UTF-8; clusters count from textBegin
    float rotation = 0;  // degrees clockwise about (x, baseline)
};
struct LineOp {
    double x1, y1, x2, y2;
    float width;
    Color color;
    LineStyle style;
};
struct RectOp {  // filled
    double x, y, width, height;
    Color color;
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
};
struct ImageOp {
    double x, y, width, height;
    std::shared_ptr<const std::string> bytes;  // the same pointer for the same image
    std::string name;                          // the item's, for errors
};
struct ClipOp {  // until the matching UnclipOp
    double x, y, width, height;
};
struct UnclipOp {};
struct LinkOp {  // an area that leads elsewhere
    double x, y, width, height;
    std::string uri, bookmark;  // one of the two
};
struct AnchorOp {  // a place to lead to; with a label it is an entry of the document map
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

// Pages in order. The body of each page is given as soon as it is full, header and footer follow when they
// are known: when they depend on the number of pages, that is after the last body. So nothing is kept but
// what a page needs.
class PageSink {
 public:
    virtual ~PageSink() = default;
    virtual void Body(int page /* from 0 */, Page& content) = 0;
    // Header and footer of that page, drawn over the body. Called once for each page that has either.
    virtual void Margins(int page, Page& content) = 0;
};

struct Limits {
    int maxPages = 100'000;
};

// Lays the report out. Raises rdl::Error past the limits. Returns the number of pages, at least 1.
int Paginate(ReportInstance& report, PageSink& sink, const Limits& limits = {});

// The same, one page at a time, for the screen.
class PageStream {
 public:
    virtual ~PageStream() = default;
    // False behind the last page.
    virtual bool NextBody(Page& content) = 0;
    // Header and footer say how many pages there are.
    virtual bool UsesTotals() const = 0;
    // Header and footer of a page from 0. A total of 0: not known, and its mark stands in the texts.
    virtual void MarginsOf(int page, int total, Page& content) = 0;
};
std::unique_ptr<PageStream> OpenPages(ReportInstance& report, const Limits& limits = {});

}  // namespace rdl::layout
