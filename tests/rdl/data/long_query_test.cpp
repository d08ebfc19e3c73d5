// SPDX-License-Identifier: GPL-3.0-or-later
// Queries that hold their rows and are read in pieces.
#include <gtest/gtest.h>

#include "rdl/data/files/xml_cursor.h"
#include "rdl/data/files/xml_pieces.h"
#include "rdl/raises.h"

namespace rdl::data {
namespace {

// Columns and cells, each row in a line.
std::string All(Cursor& cursor) {
    std::string all;
    for (const std::string& column : cursor.Columns()) {
        all += column + "|";
    }
    std::size_t rows = 0;
    for (; cursor.Next(); ++rows) {
        all += "\n";
        for (std::size_t i = 0; i < cursor.Columns().size(); ++i) {
            const Value value = cursor.Cell(i);
            all += (value.IsNull()   ? "(null)"
                    : value.IsText() ? std::string(value.AsText())
                                     : std::to_string(value.AsInteger())) +
                   "|";
        }
    }
    EXPECT_GE(cursor.RowCount(), rows);
    return all;
}

// Empty when the query must be read whole.
std::string InPieces(const std::string& query) {
    Spool spool;
    spool.Append(query);
    const std::unique_ptr<Cursor> cursor = OpenLongXml(spool);
    return cursor ? All(*cursor) : std::string();
}

std::string Repeated(const std::string& row, int count) {
    std::string rows;
    for (int i = 0; i < count; ++i) {
        rows += row;
    }
    return rows;
}

std::string Query(const std::string& data, const std::string& path = {}) {
    return "\n <?xml version='1.0'?><Query><XmlData>" + data + "</XmlData>" +
           (path.empty() ? "" : "<ElementPath>" + path + "</ElementPath>") + "</Query>";
}

TEST(LongQuery, RowsAreThoseOfTheWhole) {
    const std::string many = Repeated("<Row a='1' b='&lt;&#228;'/>", 20'000);
    for (const std::string& query :
         {Query("<Data>" + many + "<Row a='2' c='3'/></Data>"),
          Query("<Data>" + Repeated("<Row><x>1</x><y>2</y></Row>\n", 20'000) +
                "<Row><z/><x>3</x></Row></Data>"),
          Query("<Data><Row/><Row><x>1</x></Row>" + many + "</Data>"),
          Query("<Data of='7'>" + many + "</Data>", "Data/Row"),
          Query("<Data of='7'>" + many + "</Data>", "Data{}/Row{@b,@a(Integer)}"),
          Query("<Data>" + Repeated("<C n='1'><O p='2'/><O p='3'/></C>", 10'000) + "</Data>", "Data{}/C/O"),
          Query("<Data>" + many + "</Data><Other/>") + "\n ", Query("<Data xmlns='u'>" + many + "</Data>"),
          Query("<Data>" + Repeated("<Row a='1'/>", 30'000) + "<Row><x>1</x></Row></Data>")}) {
        const std::string whole = All(*OpenXml(query, ""));
        EXPECT_GT(whole.size(), 1000u);
        EXPECT_TRUE(InPieces(query) == whole) << query.substr(0, 80) << "\n"
                                              << InPieces(query).substr(0, 80) << "\n"
                                              << whole.substr(0, 80);
    }
}

TEST(LongQuery, WhatNeedsTheWholeIsLeftToIt) {
    const std::string rows = Repeated("<Row a='1'/>", 30'000);
    for (const std::string& query :
         {Query("<Data><Title>x</Title>" + rows + "</Data>", "Data/Row"),
          Query("<Data>" + rows + "</Data>", "Data"), Query("<Data>" + rows + "</Data>", "Date/Row"),
          Query("<Data>" + rows + "</Data>", "Data(Base64)/Row"), Query("<Data>" + rows + "<Row></Data>"),
          Query(""), std::string("<Query><ElementPath>a</ElementPath></Query>"),
          "<Queries><XmlData><Data>" + rows + "</Data></XmlData></Queries>",
          Query("<Data>" + rows + "<Row a='&none;'/></Data>"), Query("<Empty/><Data>" + rows + "</Data>")}) {
        EXPECT_EQ(InPieces(query).substr(0, 80), "") << query.substr(0, 80);
    }
}

}  // namespace
}  // namespace rdl::data
