// SPDX-License-Identifier: GPL-3.0-or-later
// The pages of a report for the screen and the printer. They are made one after another on request, so that
// the first page of a long report shows at once. All functions raise RuntimeError on a failure. Lengths are
// in points (1/72 inch), y downwards.
#pragma once

#include <functional>
#include <string>
#include <vector>

class QPainter;

namespace report {

// In points from the page's top left corner, y downwards.
struct Area {
    double x = 0, y = 0, width = 0, height = 0;
};

// The smallest unit that can be selected: one character as it is shown, with its combining characters.
struct Character {
    std::string text;  // UTF-8
    Area area;
    bool endsLine = false;
};

struct Link {
    Area area;
    std::string uri;  // as the report has it, of any scheme; if empty, a place in the report:
    int page = 0;     // from 1
    double y = 0;     // on that page, in points
};

struct MapEntry {  // an entry of the document map
    std::string label;
    int level = 0;  // from 0
    int page = 0;   // from 1
    double y = 0;
};

class PageView {
 public:
    virtual ~PageView() = default;

    // Makes pages up to page `n` (from 1). Returns false if the report ends before it. A report has at least
    // one page. After an error the pages made before it remain, and each further call raises the error again.
    virtual bool Reach(int n) = 0;
    virtual int PagesMade() const = 0;
    virtual bool AllMade() const = 0;

    // Of a page that is made; page numbers count from 1.
    virtual double Width(int n) const = 0;   // points
    virtual double Height(int n) const = 0;  // points
    // Returns true if pages will change once all pages are made, because they show the total number.
    virtual bool WaitsForTotal() const = 0;
    // Draws a page; one point of the page is one unit of the painter. Draws only what the painter's device
    // and clip show, and nothing outside the page.
    virtual void Draw(int n, QPainter& painter) = 0;
    // Writes pages `first` to `last`, which must be made, as a PDF document. `file` is a path of the machine;
    // it appears complete or not at all. Calls `goOn` before each page; if it returns false, writing stops
    // and no file appears. Returns true if the file was written.
    virtual bool WritePdf(const std::string& file, int first, int last,
                          const std::function<bool(int page)>& goOn) = 0;
    virtual std::vector<Character> Characters(int n) = 0;  // in reading order
    // Leaves out links to places on pages that are not made yet.
    virtual std::vector<Link> Links(int n) = 0;
    virtual const std::vector<MapEntry>& DocumentMap() const = 0;  // of the pages made so far
};

}  // namespace report
