// SPDX-License-Identifier: GPL-3.0-or-later
// A report made by hand, for tests of the writers without pages.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "rdl/layout/model/instance.h"
#include "rdl/string_output.h"
#include "rdl/writers/common/writers.h"

namespace rdl::writers::test {

// How often a document has the piece.
inline std::size_t Count(const std::string& document, const std::string& piece) {
    std::size_t count = 0;
    for (std::size_t at = document.find(piece); at != std::string::npos; at = document.find(piece, at + 1)) {
        ++count;
    }
    return count;
}

inline layout::Instance TextItem(const std::string& text, double x = 0, double y = 0, double width = 100,
                                 double height = 12) {
    layout::Instance item;
    item.name = "Box";
    item.x = x;
    item.y = y;
    item.width = width;
    item.height = height;
    static const auto box = std::make_shared<const layout::BoxStyle>();
    static const auto textStyle = std::make_shared<const layout::CharStyle>();
    item.box = box;
    item.paragraphs.resize(1);
    item.paragraphs[0].runs.push_back({text, textStyle, {}});
    return item;
}

inline layout::Instance ValueItem(Value value, const std::string& shown, const std::string& format) {
    layout::Instance item = TextItem(shown);
    item.value = std::move(value);
    item.format = format;
    item.language = "en-US";
    return item;
}

struct SampleTable : layout::TableInstance {
    std::size_t rows = 0;
    std::function<void(std::size_t, layout::TableRow&)> make;
    std::vector<std::size_t> repeated;
    std::size_t RowCount() const override { return rows; }
    void Row(std::size_t index, layout::TableRow& row) override {
        row = layout::TableRow();
        row.height = 15;
        make(index, row);
    }
    std::vector<std::size_t> RepeatedRows(std::size_t) override { return repeated; }
};

inline void AddCell(layout::TableRow& row, layout::Instance content, int columnSpan = 1, int rowSpan = 1) {
    layout::TableCell cell;
    cell.column = 0;
    for (const layout::TableCell& before : row.cells) {
        cell.column = before.column + before.columnSpan;
    }
    cell.columnSpan = columnSpan;
    cell.rowSpan = rowSpan;
    cell.content = std::move(content);
    row.cells.push_back(std::move(cell));
}

// Two columns: a header "Name", "Sum", then "Row 1", "1" and so on; `count` rows with the header.
inline std::shared_ptr<SampleTable> NumberedRows(std::size_t count) {
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {80, 60};
    table->rows = count;
    table->make = [](std::size_t i, layout::TableRow& row) {
        row.columnHeader = i == 0;
        AddCell(row, TextItem(i == 0 ? "Name" : "Row " + std::to_string(i)));
        AddCell(row, TextItem(i == 0 ? "Sum" : "1"));
    };
    return table;
}

inline layout::Instance TableItem(std::shared_ptr<SampleTable> table, double x = 0, double y = 0) {
    layout::Instance item;
    item.kind = layout::InstanceKind::Table;
    item.name = "Tablix1";
    item.x = x;
    item.y = y;
    for (const double width : table->columnWidths) {
        item.width += width;
    }
    item.height = 30;
    item.table = std::move(table);
    return item;
}

// A picture of 50 by 25 points.
inline layout::Instance PictureItem(const std::string& bytes) {
    layout::Instance item;
    item.kind = layout::InstanceKind::Image;
    item.name = "Logo";
    item.width = 50;
    item.height = 25;
    item.imageBytes = std::make_shared<const std::string>(bytes);
    return item;
}

struct SampleSection : layout::SectionInstance {
    std::vector<layout::Instance> header, footer;
    std::vector<layout::Instance> Header(const PageFacts&) override { return header; }
    std::vector<layout::Instance> Footer(const PageFacts&) override { return footer; }
};

inline std::unique_ptr<layout::ReportInstance> SampleReport(std::vector<layout::Instance> items,
                                                            std::vector<layout::Instance> header = {}) {
    auto report = std::make_unique<layout::ReportInstance>();
    report->title = "Sales";
    report->language = "en-US";
    auto section = std::make_unique<SampleSection>();
    section->bodyWidth = 500;
    section->bodyHeight = 100;
    section->page.headerHeight = header.empty() ? 0 : 20;
    section->header = std::move(header);
    section->items = std::move(items);
    report->sections.push_back(std::move(section));
    return report;
}

}  // namespace rdl::writers::test
