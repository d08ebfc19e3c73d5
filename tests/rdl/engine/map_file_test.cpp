// SPDX-License-Identifier: GPL-3.0-or-later
// A map whose shapes are in a shapefile beside the report.
#include <gtest/gtest.h>

#include "rdl/api/report.h"
#include "rdl/spatial/shape_files.h"
#include "rdl/string_output.h"
#include "support/temporary_folder.h"

namespace rdl {
namespace {

class MapFile : public testing::Test {
 protected:
    void SetUp() override {
        using namespace spatial::test;
        Save("areas.shp", ShapeFile({Parts(5, {0}, 4, Reals({0, 0, 0, 9, 9, 9, 0, 0}))}));
        Save("areas.dbf", ShapeTable({"North    12"}));
    }

    void Save(const std::string& name, const std::string& bytes) const { WriteBytes(m_folder / name, bytes); }

    std::string Export(const std::string& source) const {
        Save("map.rdl",
             "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition\">"
             "<ReportSections><ReportSection><Body><ReportItems><Map "
             "Name=\"World\"><MapLayers><MapPolygonLayer "
             "Name=\"Areas\"><MapPolygonTemplate><Label>#NAME</Label></MapPolygonTemplate><MapPolygonRules>"
             "<MapColorPaletteRule><DataValue>#COUNT</DataValue><LegendName>Key</LegendName></"
             "MapColorPaletteRule>"
             "</MapPolygonRules><MapShapefile><Source>" +
                 source +
                 "</Source></MapShapefile></MapPolygonLayer></MapLayers><MapLegends><MapLegend Name=\"Key\"/>"
                 "</MapLegends><Width>200pt</Width><Height>200pt</Height></Map></ReportItems><Height>200pt</"
                 "Height>"
                 "</Body><Width>200pt</Width><Page/></ReportSection></ReportSections></Report>");
        StringOutput output;
        try {
            OpenReport((m_folder / "map.rdl").string())->Write(DocumentFormat::Html, output);
        } catch (const std::exception& error) {
            return error.what();
        }
        return output.bytes.find("<svg") == std::string::npos ? "no drawing" : "a drawing";
    }

    TemporaryFolder m_folder;
};

TEST_F(MapFile, IsFoundBesideTheReport) {
    EXPECT_EQ(Export("areas.shp"), "a drawing");
    EXPECT_EQ(Export("AREAS.SHP"), "a drawing");
    EXPECT_EQ(Export("=\"areas\" &amp; \".shp\""), "a drawing");
}

TEST_F(MapFile, WhatCannotBeReadNamesTheLayerAndTheFile) {
    EXPECT_EQ(Export("none.shp"), "Map \"World\", layer \"Areas\": the file \"" +
                                      (m_folder / "none.shp").string() + "\" does not exist");
    Save("short.shp", "abc");
    EXPECT_EQ(Export("short.shp"),
              "Map \"World\", layer \"Areas\": the file \"short.shp\": it is not a shapefile");
    EXPECT_EQ(Export("http://example.org/a.shp"),
              "Map \"World\", layer \"Areas\": data from the web address \"http://example.org/a.shp\" is not "
              "read; save "
              "it as a file");
}

}  // namespace
}  // namespace rdl
