// SPDX-License-Identifier: GPL-3.0-or-later
// Items that the user draws, and the report that a new window begins with (MS-RDL).
#pragma once

#include <string>
#include <string_view>

#include "designer/document/document.h"
#include "designer/document/report_items.h"
#include "designer/graphics/new_graphics.h"

namespace designer {

enum class NewItem {
    TextBox,
    Line,
    Rectangle,
    Image,
    Table,
    Matrix,
    List,
    Chart,
    Gauge,
    Indicator,
    BarCode,
    Subreport
};

// Returns the name of the kind's elements: "Textbox".
std::string_view ElementOf(NewItem kind);

// Returns the size in points of an item that is inserted without a rectangle.
Rect UsualSize(NewItem kind);

// Inserts an item at a place of the band, in points from its corner, and returns its id. The band grows for
// it. An image shows nothing until it has a picture. Tables show the first data set of the report.
ElementId InsertItem(Document& document, const ReportBand& band, NewItem kind, const Rect& place,
                     const GraphicChoice& choice = {});

// Embeds a picture in the report and shows it in the image item. `type` is "image/png" or the like, `bytes`
// those of the file, `wish` the name that it should have.
void EmbedPicture(Document& document, ElementId image, std::string_view type, std::string_view bytes,
                  const std::string& wish);

// Returns the page header or the page footer of the section, or NoElement.
ElementId PageBandOf(const Document& document, BandKind kind, std::size_t section = 0);
// Makes one, which is on all pages, and returns it. An edit of the step that is open.
ElementId InsertPageBand(Document& document, BandKind kind, std::size_t section = 0);

// Returns the text of an empty report on A4, in the schema 2016/01.
std::string BlankReport();

}  // namespace designer
