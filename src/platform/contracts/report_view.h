// The pages of a run for the screen and the printer: made one after another as they are asked for, so that
// the first page of a long report shows at once. All fail by raising RuntimeError.
#pragma once

#include <functional>
#include <string>
#include <vector>

class QPainter;

namespace report {

// In points (1/72 inch) from the page's top left corner, y downwards.
struct Area {
    double x = 0, y = 0, width = 0, height = 0;
};

// What a reader can mark: one character as it is shown, with what combines with it.
struct Letter {
    std::string text;  // UTF-8
    Area area;
    bool endsLine = false;
};

struct Link {
    Area area;
    std::string uri;  // as the report has it, of any kind; or, when empty, a place in the report:
    int page = 0;     // from 1
    double y = 0;     // on it
};

struct MapEntry {  // of the document map
    std::string label;
    int level = 0;  // from 0
    int page = 0;   // from 1
    double y = 0;
};

class PageView {
 public:
    virtual ~PageView() = default;

    // Makes pages until page n (from 1) is there; false when the report ends before it. A report has one page
    // at least. After an error there are the pages made before it, and asking again raises it again.
    virtual bool Reach(int n) = 0;
    virtual int PagesMade() const = 0;
    virtual bool AllMade() const = 0;

    // Of a page that is made.
    virtual double Width(int n) const = 0;   // points
    virtual double Height(int n) const = 0;  // points
    // Whether the page will look otherwise once all pages are made: it says how many there are.
    virtual bool WaitsForTotal() const = 0;
    // One point of the page is one unit of the painter. Only what the painter's device and clip show is
    // drawn, and nothing outside of the page.
    virtual void Draw(int n, QPainter& painter) = 0;
    // Writes pages `first` to `last`, which are made, as a PDF document; the file, a path of the machine, is
    // there whole or not at all. `goOn` is asked before each page: false stops, and there is no file. Whether
    // there is one.
    virtual bool WritePdf(const std::string& file, int first, int last,
                          const std::function<bool(int page)>& goOn) = 0;
    virtual std::vector<Letter> Letters(int n) = 0;  // in reading order
    // Those whose place is on a page that is not made yet are left out.
    virtual std::vector<Link> Links(int n) = 0;
    virtual const std::vector<MapEntry>& DocumentMap() const = 0;  // of the pages made so far
};

}  // namespace report
