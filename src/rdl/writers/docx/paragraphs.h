// SPDX-License-Identifier: GPL-3.0-or-later
// Writes text boxes, images and empty space as paragraphs (ECMA-376 Part 1, 17.3 Paragraphs, 17.13.6
// Bookmarks, 17.16 Fields and Hyperlinks). Each function appends whole paragraphs to `out`.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "rdl/layout/model/instance.h"
#include "rdl/writers/common/flow_row.h"
#include "rdl/writers/common/flow_text.h"
#include "rdl/writers/docx/contents.h"
#include "rdl/writers/docx/picture.h"
#include "rdl/writers/docx/relations.h"
#include "rdl/writers/docx/styles.h"

namespace rdl::writers {

// What all parts of a document share.
struct DocxDocument {
    explicit DocxDocument(DocxZip& archive) : pictures(archive) {}
    DocxStyles styles;
    DocxPictures pictures;
    FlowBookmarks bookmarks;
    int bookmarkCount = 0;
};

class DocxParagraphs {
 public:
    // All outlive this; `relations` are those of the part. Labels go to `contents`; null omits them.
    DocxParagraphs(DocxDocument& document, DocxRelations& relations, DocxContents* contents)
        : m_document(document), m_relations(relations), m_contents(contents) {}

    // Appends the paragraphs of a text box, at least an empty one, with its bookmark, label and link.
    void Box(const layout::Instance& item, const FlowPlace& place, std::string& out);
    // Raises rdl::Error naming the item if it cannot be shown.
    void Picture(const layout::Instance& item, const FlowPlace& place, std::string& out);
    // Appends the message of a table without rows as one paragraph.
    void Message(const layout::TableInstance& table, const FlowPlace& place, std::string& out);
    // Appends an empty paragraph of exactly `height` points with further properties in `end`.
    void Blank(double height, const FlowPlace& place, const std::string& end, std::string& out);
    // Appends an empty paragraph that begins a page.
    static void PageBreak(std::string& out);
    // Keeps a bookmark and a label for the next paragraph. Empty ones are not kept; the outermost level is 0.
    void Mark(const std::string& bookmark, const std::string& label, int level);
    // Keeps a label of a row: for the paragraph of its cells that shows it, else for the first one.
    void MarkRow(const layout::MapLabel& label, const FlowRow& row);

 private:
    struct Look {
        std::string paragraph, characters;  // properties
        std::string style;                  // id; empty: none
    };
    struct KnownLook {
        FlowMeasures measures;
        layout::CharStylePtr characters;
        Look look;
    };
    // The result is valid until the next call.
    const Look& LookOf(const FlowMeasures& measures, const layout::CharStylePtr& characters);
    struct LabelMark {
        std::string label, name;
        int level;
        bool isAwaited;  // a paragraph to come shows it
    };
    void Paragraph(const layout::Instance& item, const layout::ParagraphInstance& paragraph,
                   const FlowPlace& place, std::string& out);
    // Appends the beginning of a paragraph. Returns whether its style already gives its runs the look
    // `characters`.
    static bool Begin(const Look& look, const FlowPlace& place, const std::string& heading, std::string& out);
    // Returns the heading style for the pending label that the paragraph itself shows; else an empty text.
    std::string TakeHeading(const layout::ParagraphInstance& paragraph);
    void AppendMarks(std::string& out);
    void AppendBookmark(const std::string& name, std::string& out);
    void Run(const layout::RunInstance& run, const std::string& properties, std::string& out);
    std::string OpenLink(const layout::Instance& item);
    std::string OpenAddress(const std::string& link, const std::string& toolTip);

    DocxDocument& m_document;
    DocxRelations& m_relations;
    DocxContents* m_contents;
    std::vector<std::string> m_bookmarks;  // names that wait for a paragraph
    std::vector<LabelMark> m_labels;       // the same for labels
    std::vector<KnownLook> m_looks;        // the last ones: the cells of a row have few
    std::size_t m_oldest = 0;              // of them
};

}  // namespace rdl::writers
