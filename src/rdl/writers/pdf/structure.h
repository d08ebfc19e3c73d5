// SPDX-License-Identifier: GPL-3.0-or-later
// The structure tree of a tagged PDF document (ISO 32000-1, 14.7 and 14.8). An element is written once it is
// ended and its pages are: until then it is kept, with the numbers of what is in it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "rdl/layout/model/structure.h"
#include "rdl/writers/pdf/file.h"

namespace rdl::writers {

class PdfStructure final : public layout::Structure {
 public:
    explicit PdfStructure(PdfFile& file);

    layout::ElementId Begin(const layout::Element& element) override;
    void End(layout::ElementId element) override;

    // Begins the content of a page; returns the page's key in the parent tree (14.7.4.4).
    int BeginPage(int page);
    // Returns the operator that begins a marked-content sequence of the element on the page that was begun
    // last (14.7.4.2).
    std::string Mark(layout::ElementId element);
    // The element has something on the page within this box, in points, y upwards: figures say where they
    // are.
    void Cover(layout::ElementId element, double x1, double y1, double x2, double y2);
    void EndPage();

    // Keeps a link until AddLink, at the latest until Finish.
    void Hold(layout::ElementId link);
    // Adds the annotation of a link (14.7.4.3); returns its key in the parent tree. `annotation` and `page`
    // are numbers of objects.
    int AddLink(layout::ElementId link, int annotation, int page);

    // Writes the rest and returns the entries of the catalog.
    std::string Finish();

 private:
    struct Record {
        int object = 0;  // 0: free
        int parent = 0;  // the object
        layout::Element element;
        int page = 0;  // that of its first marked-content sequence
        bool isAttached = false, isHeld = false, isAnnotated = false, isPlaced = false;
        std::string kids;
        double left = 0, bottom = 0, right = 0, top = 0;  // of a figure, once it is placed
    };
    Record& At(layout::ElementId element) { return m_records[element]; }
    void Attach(Record& record);
    void Write(Record& record);
    void Flush();
    std::string TypeOf(const Record& record) const;

    PdfFile& m_file;
    std::vector<Record> m_records;  // by element; the first is the document
    std::vector<layout::ElementId> m_free, m_ended;
    bool m_hasDrawn = false;  // pages since the last element
    int m_root;
    std::vector<int> m_headings;  // the levels of the headings that the text is under
    int m_page = 0, m_marks = 0;
    std::string m_marked;        // the elements of the page by marked-content identifier
    std::vector<int> m_parents;  // objects by key of the parent tree
    std::size_t m_pageKey = 0;   // of the page that was begun last
};

}  // namespace rdl::writers
