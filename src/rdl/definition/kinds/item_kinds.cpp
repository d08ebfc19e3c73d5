// SPDX-License-Identifier: GPL-3.0-or-later
// Every kind of report item, and what reads it: this is where the readers of items come together.
#include "rdl/definition/barcode.h"
#include "rdl/definition/chart_reader.h"
#include "rdl/definition/gauge_reader.h"
#include "rdl/definition/item_reader.h"
#include "rdl/definition/map/map_reader.h"
#include "rdl/definition/regions.h"
#include "rdl/definition/textbox_reader.h"
#include "rdl/values/named.h"

namespace rdl {
namespace {

struct Element {
    std::string_view name;                                 // of its element
    ItemPtr (*read)(Context&, const XmlElement&, Extent);  // null: known, but there is no drawing it yet
};

// Every report item of the schemas, and whether it can be drawn.
constexpr Element Kinds[] = {
    {"Textbox", ReadTextbox},
    {"Line", ReadLine},
    {"Rectangle", ReadRectangle},
    {"Image", ReadImage},
    {"List", ReadList},
    {"Table", ReadTable},
    {"Matrix", ReadMatrix},
    {"Tablix", ReadTablix},
    {"Subreport", ReadSubreport},
    {"Chart", ReadChart},
    {"GaugePanel", ReadGaugePanel},
    {"Map", ReadMap},
    {"Gauge", nullptr},
    {"CustomReportItem", ReadCustomItem},
    {"BarCode", ReadBarcode},
};
static_assert(NamesDiffer(Kinds));

}  // namespace

ItemPtr ReadItem(Context& context, const XmlElement& element, Extent container) {
    context.CountItem(element);
    const Element* const kind = FindNamed(Kinds, element.name);
    if (!kind) {
        context.Fail(element, PlaceOf(element), "there is no report item of this kind");
    }
    if (!kind->read) {
        context.Fail(element, PlaceOf(element), "an item of this kind cannot be drawn");
    }
    return kind->read(context, element, container);
}

std::vector<ItemElement> ItemElements() {
    std::vector<ItemElement> elements;
    for (const Element& kind : Kinds) {
        elements.push_back({kind.name, kind.read != nullptr});
    }
    return elements;
}

}  // namespace rdl
