// The pages of a run for a screen, made one after another as they are asked for. Lengths are points, from the
// top left corner of a page, y downwards; pages count from 1.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "rdl/api/output.h"

class QPainter;

namespace rdl {

struct Area {
    double x = 0, y = 0, width = 0, height = 0;
};

// What a reader can mark: one character as it is shown, with the marks that combine with it.
struct PageCharacter {
    std::string text;  // UTF-8
    Area area;
    bool endsLine = false;
};

struct PageLink {
    Area area;
    std::string uri;  // as the report has it, of any kind; empty for a place in the report:
    int page = 0;
    double y = 0;
};

struct MapEntry {  // of the document map
    std::string label;
    int level = 0;  // from 0
    int page = 0;
    double y = 0;
};

class Pages {
 public:
    virtual ~Pages() = default;

    // Makes pages until page n is there; false when the report ends before it. A report has at least one
    // page. After an error the pages made before it stay, and the next call raises the error again.
    virtual bool Reach(int n) = 0;
    virtual int Made() const = 0;
    virtual bool AllMade() const = 0;
    // Whether a page will look different once all are made, because it says how many there are.
    virtual bool WaitsForTotal() const = 0;

    // Of a page that is made.
    virtual double Width(int n) const = 0;
    virtual double Height(int n) const = 0;
    // One point is one unit of the painter. Draws only what the painter's clip shows, and nothing outside the
    // page.
    virtual void Draw(int n, QPainter& painter) = 0;
    virtual std::vector<PageCharacter> Characters(int n) = 0;  // in reading order
    // Leaves out links to places on pages that are not made yet.
    virtual std::vector<PageLink> Links(int n) = 0;
    virtual const std::vector<MapEntry>& DocumentMap() const = 0;  // of the pages made so far

    // Writes pages `first` to `last`, which are made, as a PDF document. Calls `goOn` before each page and
    // stops when that says false. Returns whether the document is complete.
    virtual bool WritePdf(Output& output, int first, int last, const std::function<bool(int page)>& goOn) = 0;
};

}  // namespace rdl
