// SPDX-License-Identifier: GPL-3.0-or-later
// The pages of one run, for a screen. Pages are made on demand, in order. Lengths are points from the top
// left corner of a page, y downwards; page numbers count from 1.
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

// One selectable character as shown, with its combining marks.
struct PageCharacter {
    std::string text;  // UTF-8
    Area area;
    bool endsLine = false;
};

struct PageLink {
    Area area;
    std::string uri;  // as written in the report, of any scheme; empty: the target is `page` and `y`
    int page = 0;
    double y = 0;
};

struct MapEntry {  // an entry of the document map
    std::string label;
    int level = 0;  // from 0
    int page = 0;
    double y = 0;
};

class Pages {
 public:
    virtual ~Pages() = default;

    // Makes pages up to page n. Returns false if the report has fewer pages; it has at least one. After an
    // error the finished pages remain, and every later call raises the same error.
    virtual bool Reach(int n) = 0;
    virtual int Made() const = 0;
    virtual bool AllMade() const = 0;
    // Whether the pages show the total page count, which is known only once all are made.
    virtual bool WaitsForTotal() const = 0;

    // In points, of a finished page.
    virtual double Width(int n) const = 0;
    virtual double Height(int n) const = 0;
    // One point is one unit of the painter. Draws only inside the page and the painter's clip. Raises an
    // error naming the item if an image cannot be decoded.
    virtual void Draw(int n, QPainter& painter) = 0;
    virtual std::vector<PageCharacter> Characters(int n) = 0;  // in reading order
    // Omits links whose target page is not made yet.
    virtual std::vector<PageLink> Links(int n) = 0;
    virtual const std::vector<MapEntry>& DocumentMap() const = 0;  // of the pages made so far

    // Writes the finished pages `first` to `last` as a PDF document. Calls `goOn` before each page and stops
    // when it returns false. Returns whether the document is complete.
    virtual bool WritePdf(Output& output, int first, int last, const std::function<bool(int page)>& goOn) = 0;
};

}  // namespace rdl
