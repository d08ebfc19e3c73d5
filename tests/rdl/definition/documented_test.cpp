// SPDX-License-Identifier: GPL-3.0-or-later
// The guide to report files lists every report item and chart type, and no other.
#include "rdl/definition/chart_reader.h"
#include "rdl/definition/item_reader.h"
#include "rdl/guide.h"

namespace rdl {
namespace {

TEST(DocumentedReport, ItemsAreThoseThatAreRead) {
    std::set<std::string> drawn, refused;
    for (const ItemElement& element : ItemElements()) {
        AddOnce(element.isDrawn ? drawn : refused, LowerAscii(element.name));
    }
    EXPECT_EQ(GuideNames("items"), drawn);
    EXPECT_EQ(GuideNames("items that are not drawn"), refused);
}

TEST(DocumentedReport, ChartTypesAreThoseThatAreDrawn) {
    std::set<std::string> listed, known;
    for (const std::string& line : GuideLines("chart types")) {
        const std::size_t types = line.find('|', 1);
        const std::size_t subtypes = line.find('|', types + 1);
        for (const std::string& type : Quoted(line.substr(0, types))) {
            for (const std::string& subtype : Quoted(line.substr(types, subtypes - types))) {
                AddOnce(listed, type + " " + subtype);
            }
        }
    }
    for (const ChartType& row : ChartTypes()) {
        AddOnce(known, std::string(row.type) + " " + std::string(row.subtype));
    }
    EXPECT_EQ(listed, known);
}

TEST(DocumentedReport, ChartAttributesAreThoseThatAreUnderstood) {
    std::set<std::string> known;
    for (const std::string_view name : ChartAttributeNames) {
        AddOnce(known, LowerAscii(name));
    }
    EXPECT_EQ(GuideNames("chart attributes"), known);
}

}  // namespace
}  // namespace rdl
