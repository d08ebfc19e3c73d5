// SPDX-License-Identifier: GPL-3.0-or-later

#include "data_fixture.h"
#include "rdl/data/common/field_type.h"
#include "rdl/expr/operations/compare.h"
#include "rdl/format/format.h"
#include "support/sanitizer.h"

namespace rdl::data {
namespace {

class FileData : public DataFixture {};

TEST_F(FileData, XmlPathJoinsLevels) {
    Write("c.xml",
          "<x:C xmlns:x='urn:x'><x:K ID='1'><Name>Ann</Name><O><Sum>5</Sum></O><O><Sum>7</Sum></O></x:K>"
          "<x:K ID='2'><Name>Bob</Name><O><Sum>9</Sum></O></x:K></x:C>");
    AddSource("XML", "c.xml");
    DataSet& set = AddSet("C {}/K {@ID(Integer), Name}/O {Sum(Decimal)}", {"ID", "Name", "Sum"});
    EXPECT_EQ(Rows(), "1|Ann|5 1|Ann|7 2|Bob|9");
    set.commandText = ExprOf("C{}/K");
    EXPECT_EQ(Rows(), "1|Ann| 2|Bob|");
    set.commandText = ExprOf("D{}/K");
    EXPECT_NE(Failure().find("begins with the element \"C\""), std::string::npos);
}

TEST_F(FileData, LaterColumnsOfOneNameHaveNumbers) {
    Write("c.csv", "Amount,amount,Amount_2,,,Amount\n1,2,3,4,5,6\n");
    AddSource("CSV", "c.csv");
    AddSet("", {"Amount", "amount_3", "Amount_2", "Amount_4"});
    EXPECT_EQ(Rows(), "1|2|3|6");
}

TEST_F(FileData, FieldsDeclaredAsDecimalAreExact) {
    Write("c.xml", "<C><K><Sum>1.10</Sum><Tax>1.10</Tax></K></C>");
    Write("c.csv", "Sum,Tax\n1.10,1.10\n");
    Write("c.json", R"([{"Sum": 1.1, "Tax": 1.1}])");
    const char* const sources[][3] = {{"XML", "c.xml", ""}, {"CSV", "c.csv", ""}, {"JSON", "c.json", "$"}};
    for (const auto& [provider, file, path] : sources) {
        definition = Definition();
        AddSource(provider, file);
        AddSet(path, {"Sum:System.Decimal", "Tax"});
        const Table table = Load();
        EXPECT_EQ(table.At(0, 0).kind(), Kind::Decimal) << provider;
        EXPECT_EQ(expr::Compare(table.At(0, 0), Value::Real(1.1)), 0) << provider;
        EXPECT_NE(table.At(0, 1).kind(), Kind::Decimal) << provider;
    }
    definition = Definition();
    AddSource("XML", "c.xml");
    AddSet("C{}/K{Sum(Decimal), Tax(Float)}", {"Sum", "Tax"});
    EXPECT_EQ(Rows(), "1.10|1.1");
}

TEST_F(FileData, JsonNumbersDeclaredAsDecimalKeepTheirDigits) {
    Write(
        "c.json",
        R"([{"a": 1.10, "b": 1.10, "c": [1.10, 2, {"x": 1e2}], "d": "say \"1.10\"", "o": {"a": 12345678901234567.890}},)"
        R"( {"a": -0.00, "b": 5, "c": 1e400E, "d": null, "o": {"a": 1.5e3}}])");
    AddSource("JSON", "c.json");
    AddSet("$", {"a:System.Decimal", "b", "c", "d", "o.a:System.Decimal"});
    EXPECT_NE(Failure().find("the JSON is not usable at byte"), std::string::npos);
    Write(
        "c.json",
        R"([{"a": 1.10, "b": 1.10, "c": [1.10, 2, {"x": 1e2}], "d": "say \"1.10\"", "o": {"a": 12345678901234567.890}},)"
        R"( {"a": -0.00, "b": 5, "c": {"y": 2.50}, "d": null, "o": {"a": 1.5e3}},)"
        R"( {"a": 1e30, "b": -0, "c": 9223372036854775808, "d": true, "o": {"a": 7}}])");
    EXPECT_EQ(Rows(),
              "1.10|1.1|[1.1,2,{\"x\":100}]|say \"1.10\"|12345678901234567.890 0.00|5|||1500 "
              "1E+30|0|9.22337203685478E+18|True|7");
    const Table table = Load();
    EXPECT_EQ(table.At(0, 0).kind(), Kind::Decimal);
    EXPECT_EQ(table.At(0, 1).kind(), Kind::Real);
    EXPECT_EQ(table.At(1, 1).kind(), Kind::Integer);
    EXPECT_EQ(table.At(2, 0).kind(), Kind::Real);  // too large for a Decimal
}

// A report that declares no decimal number gets the values of the parser; with one, all others stay the same.
TEST_F(FileData, OtherJsonNumbersAreThoseOfTheParser) {
    const std::string numbers =
        "0, -0, -0.0, 1.0, 1e3, 1E-3, 0.1, 9007199254740993, 9223372036854775807, -9223372036854775808, "
        "9223372036854775808, 18446744073709551616, 1.7976931348623157e308, 12345678901234567890.5";
    for (const char* declared : {"other", "other:System.Decimal"}) {
        definition = Definition();
        Write("c.json", "{\"rows\": [" + numbers + "]}");
        AddSource("JSON", "c.json");
        AddSet("$.rows", {"value", declared});
        const Table table = Load();
        std::string kinds;
        for (std::size_t row = 0; row < table.RowCount(); ++row) {
            kinds += table.At(row, 0).kind() == Kind::Integer ? "i" : "r";
        }
        EXPECT_EQ(kinds, "iiiiirriiirrrr") << declared;
        EXPECT_EQ(table.At(7, 0).AsDouble(), 9007199254740993.0) << declared;
    }
}

TEST_F(FileData, DamagedJsonNumbersAreErrorsAtTheirPlace) {
    for (const char* number : {"01", "-", "1e", "+1", "1.5.2", "1e400", "--1"}) {
        std::string failures[2];
        for (const bool isDecimal : {false, true}) {
            definition = Definition();
            Write("c.json", std::string("[{\"a\": 1.25, \"b\": ") + number + "}]");
            AddSource("JSON", "c.json");
            AddSet("$", {isDecimal ? "a:System.Decimal" : "a"});
            failures[isDecimal ? 1 : 0] = Failure();
        }
        EXPECT_EQ(failures[0], failures[1]);
        EXPECT_NE(failures[0].find("the JSON is not usable at byte"), std::string::npos) << number;
    }
}

// The parser takes some that the format does not have.
TEST_F(FileData, NumbersThatTheParserTakesAreTakenBesideDecimals) {
    for (const char* number : {"1.", ".5"}) {
        std::string rows[2];
        for (const bool isDecimal : {false, true}) {
            definition = Definition();
            Write("c.json", std::string("[{\"a\": 1.25, \"b\": ") + number + "}]");
            AddSource("JSON", "c.json");
            AddSet("$", {isDecimal ? "a:System.Decimal" : "a", "b"});
            rows[isDecimal ? 1 : 0] = Rows();
        }
        EXPECT_EQ(rows[0], rows[1]);
    }
}

// Whatever the other rows hold, a value keeps its decimals where the report wants them.
TEST_F(FileData, CsvColumnsOfADeclaredTypeAreNotGuessed) {
    AddSource("CSV", "c.csv");
    AddSet("", {"Sum:System.Decimal", "Code:System.String", "Day:System.DateTime", "n:System.Int32"});
    for (const char* other : {"3.25,x,2024-01-02,2", "$3,x,,b"}) {
        Write("c.csv", std::string("Sum,Code,Day,n\n2.50,7.10,2024-02-29,1\n") + other + "\n");
        const Table table = Load();
        EXPECT_EQ(table.At(0, 0).kind(), Kind::Decimal) << other;
        EXPECT_EQ(ToText(table.At(0, 0), FindCulture("")), "2.50") << other;
        EXPECT_EQ(ToText(table.At(0, 1), FindCulture("")), "7.10") << other;
        EXPECT_EQ(table.At(0, 2).kind(), Kind::DateTime) << other;
        EXPECT_EQ(table.At(0, 3).kind(), Kind::Integer) << other;
    }
    Write("d.csv", "Code,Sum,Day,n\n7.10,2.50,,1\n8,3,,2\n");
    request.rowFiles["Set1"] = (folder / "d.csv").string();
    EXPECT_EQ(Rows(), "2.50|7.10||1 3|8||2");
}

TEST_F(FileData, DocumentInTheTextOfAnElementIsRead) {
    const std::string inner = "&lt;List&gt;&lt;Item n='1'/&gt;&lt;Item n='2'/&gt;&lt;/List&gt;";
    Write("e.xml", "<s:E xmlns:s='urn:s'><B><R>" + inner +
                       "</R><Q>PExpc3Q+PEl0ZW0gbj0nMycvPjwvTGlzdD4=</Q></B></s:E>");
    AddSource("XML", "e.xml");
    DataSet& set = AddSet("s:E{}/B{}/R(HTMLEncoded){}/List{}/Item{@n(Integer)}", {"n"});
    EXPECT_EQ(Rows(), "1 2");
    set.commandText = ExprOf("E{}/B{}/Q(Base64Encoded){}/List{}/Item{@n}");
    EXPECT_EQ(Rows(), "3");
    set.commandText = ExprOf("E{}/B{}/R(Base64Encoded){}/List{}/Item{@n}");
    EXPECT_NE(Failure().find("the text of the element \"R\" is not base64"), std::string::npos) << Failure();
    set.commandText = ExprOf("E{}/B{}/R(Zipped){}/List");
    EXPECT_NE(Failure().find("asks for an encoding that is not known"), std::string::npos) << Failure();
}

TEST_F(FileData, QueryElementHoldsPathAndNamespaces) {
    Write("c.xml", "<C xmlns='urn:c'><K><Name>Ann</Name><Born>1990-02-03</Born><Fit>true</Fit></K></C>");
    AddSource("XML", "c.xml");
    AddSet(
        "<Query xmlns:ns='urn:c'><ElementPath IgnoreNamespaces='true'>ns:C{}/ns:K{ns:Name, Born(Date), "
        "Fit(Boolean)}</ElementPath></Query>",
        {"Name", "Born", "Fit"});
    const Table table = Load();
    EXPECT_EQ(table.At(0, 0).AsText(), "Ann");
    EXPECT_EQ(table.At(0, 1).kind(), Kind::DateTime);
    EXPECT_EQ(table.At(0, 2).kind(), Kind::Boolean);
    definition.dataSets[0].commandText = ExprOf("<Query><Method Name='Get' Namespace='urn:x'/></Query>");
    EXPECT_NE(Failure().find("asks a web service, which is not read"), std::string::npos);
}

TEST_F(FileData, JsonPathGivesRows) {
    Write("c.json", R"({"list": [{"n": 1, "a": {"city": "Rome"}, "ok": true}, {"n": 2.5, "t": "x"}]})");
    AddSource("JSON", "file=c.json");
    DataSet& set = AddSet("$.list[*]", {"n", "a.city", "ok", "t"});
    EXPECT_EQ(Rows(), "1|Rome|True| 2.5|||x");
    EXPECT_EQ(Load().At(0, 0).kind(), Kind::Integer);
    set.commandText = ExprOf("$.list");
    EXPECT_EQ(Rows(), "1|Rome|True| 2.5|||x");
    set.commandText = ExprOf("$['list'][-1]");
    EXPECT_EQ(Rows(), "2.5|||x");
    set.commandText = ExprOf("$..a");
    set.fields = {{"city", "city", {}, ""}};
    EXPECT_EQ(Rows(), "Rome");
    set.commandText = ExprOf("$.list[x]");
    EXPECT_NE(Failure().find("around neither a number, a name nor *"), std::string::npos);
    Write("c.json", "{\"list\": [");
    EXPECT_NE(Failure().find("the JSON is not usable at byte"), std::string::npos);
}

// Without rows and without a word the path of another document would look like a day without sales.
TEST_F(FileData, JsonPathThatFindsNothingIsAnError) {
    Write("c.json", R"({"list": [{"n": 1}, {"n": 2}], "none": [], "empty": {}})");
    AddSource("JSON", "file=c.json");
    DataSet& set = AddSet("$.lists", {"n"});
    const std::pair<const char*, const char*> paths[] = {
        {"$.lists", "the JSON path \"$.lists\" finds nothing: there is no \"lists\""},
        {"select * from list", "finds nothing: there is no \"select * from list\""},
        {"$.list[2]", "finds nothing: there is no element 2"},
        {"$.list[*].m", "finds nothing: there is no \"m\""},
        {"$..m", "finds nothing: there is no \"m\""},
        {"$.list[0].n[*]", "finds nothing: there is no element"},
    };
    for (const auto& [path, error] : paths) {
        set.commandText = ExprOf(path);
        EXPECT_NE(Failure().find(error), std::string::npos) << path << ": " << Failure();
    }
}

TEST_F(FileData, JsonListWithoutElementsHasNoRows) {
    Write("c.json", R"({"none": [], "empty": {}})");
    AddSource("JSON", "file=c.json");
    DataSet& set = AddSet("$.none", {"n"});
    for (const char* path :
         {"$.none", "$.none[*]", "$.none[0]", "$.none[*].n", "$.empty.list", "$.empty[*]"}) {
        set.commandText = ExprOf(path);
        EXPECT_EQ(Rows(), "") << path;
    }
    Write("c.json", R"({"none": null})");
    set.commandText = ExprOf("$.none[*]");
    EXPECT_EQ(Rows(), "");
    Write("c.json", "[]");
    set.commandText = ExprOf("$..n");
    EXPECT_EQ(Rows(), "");
}

TEST_F(FileData, JsonMayStandInTheConnectString) {
    AddSource("JSON", R"([{"v": "a=1;b"}, {"v": null}])");
    AddSet("$", {"v"});
    EXPECT_EQ(Rows(), "a=1;b ");
}

TEST_F(FileData, CsvReadsQuotesNumbersAndCodes) {
    Write("c.csv", "\xEF\xBB\xBFname;zip;sum;n\r\n\"A;\"\"B\"\"\nC\";00123;1.5;7\r\n\r\nD;45678;-2;\r\n");
    AddSource("CSV", "Data Source=c.csv");
    AddSet("", {"name", "zip", "sum", "n"});
    const Table table = Load();
    ASSERT_EQ(table.RowCount(), 2u);
    EXPECT_EQ(table.At(0, 0).AsText(), "A;\"B\"\nC");
    EXPECT_EQ(table.At(0, 1).AsText(), "00123");
    EXPECT_DOUBLE_EQ(table.At(1, 2).AsReal(), -2);
    EXPECT_EQ(table.At(0, 3).AsInteger(), 7);
    EXPECT_TRUE(table.At(1, 3).IsNull());
}

TEST_F(FileData, CsvFolderTakesTheFileFromTheQuery) {
    Write("Names.txt", "1\tAnn\n2\tM\xFCller\n");
    AddSource("FileDirectory", "Data Source=.;Header=no;Delimiter=tab;Charset=latin1");
    AddSet("SELECT * FROM [names.txt]", {"Column1", "Column2"});
    EXPECT_EQ(Rows(), "1|Ann 2|Müller");
}

TEST_F(FileData, CsvLineWithMoreValuesThanColumnsIsAnErrorThatShowsIt) {
    Write("c.csv", "id,name,sum\n1,A,5,,\n2,B\n3,C,1,234\n");
    AddSource("CSV", "c.csv");
    AddSet("", {"id", "name", "sum"});
    EXPECT_NE(Failure().find("the file has 3 columns, but 4 values in the line that begins \"3,C,1,234\""),
              std::string::npos)
        << Failure();
    Write("c.csv", "id,name,sum\n1,A,5,,\n2,B\n");
    EXPECT_EQ(Rows(), "1|A|5 2|B|");
}

TEST_F(FileData, CsvQuoteThatIsNotClosedIsAnErrorInsteadOfLostRows) {
    Write("c.csv", "id,name\n1,\"A\"\n2,\"B\n3,C\n");
    AddSource("CSV", "c.csv");
    AddSet("", {"id", "name"});
    EXPECT_NE(Failure().find("a text in quotes that does not end, in the line that begins \"2,"),
              std::string::npos)
        << Failure();
}

TEST_F(FileData, CsvThatIsNoUtf8IsReadInTheLettersOfWindows) {
    Write("c.csv", "id;name\n1;M\xFCller\n2;5 \x80\n");
    AddSource("CSV", "c.csv");
    AddSet("", {"id", "name"});
    EXPECT_EQ(Rows(), "1|Müller 2|5 €");
    Write("c.csv", "id;name\n1;Łódź\n");
    EXPECT_EQ(Rows(), "1|Łódź");
}

TEST_F(FileData, CsvLineThatTellsTheSeparatorIsNoData) {
    Write("c.csv", "sep=|\r\nid|name, first\r\n1|A;B\r\n");
    AddSource("CSV", "c.csv");
    AddSet("", {"id", "name, first"});
    EXPECT_EQ(Rows(), "1|A;B");
}

TEST_F(FileData, MissingFilesAndWebAddressesAreErrors) {
    AddSource("CSV", "Data Source=gone.csv");
    AddSet("", {"a"});
    EXPECT_NE(Failure().find("gone.csv\" does not exist"), std::string::npos);
    definition.dataSources[0].connectString = ExprOf("Data Source=http://example.com/a.csv");
    EXPECT_NE(Failure().find("web address"), std::string::npos);
    definition.dataSources[0].connectString = ExprOf("Data Source=C:\\data\\a.csv");
    EXPECT_NE(Failure().find("does not exist"), std::string::npos);
}

TEST_F(FileData, TooManyOpenFilesAreToldAsSuch) {
    if (ChecksNeedDescriptors) {
        GTEST_SKIP() << "the sanitizers need file descriptors of their own";
    }
    Write("a.csv", "a\n1\n");
    AddSource("CSV", "Data Source=a.csv");
    AddSet("", {"a"});
    EXPECT_EXIT(FailWithoutFiles(), testing::ExitedWithCode(0),
                "a.csv\" cannot be read: Too many open files$");
}

TEST_F(FileData, WhatIsNotBesideTheReportIsLookedForInTheOtherFolders) {
    const std::filesystem::path first = folder / "first", second = folder / "second";
    std::filesystem::create_directories(first);
    std::filesystem::create_directories(second / "data");
    Write("second/data/c.json", R"([{"v": "second"}])");
    request.folder = (folder / "cache").string();
    request.folders = {first.string(), second.string()};
    AddSource("JSON", "file=data\\C.json");
    AddSet("$", {"v"});
    EXPECT_EQ(Rows(), "second");
    std::filesystem::create_directories(folder / "cache" / "data");
    Write("cache/data/c.json", R"([{"v": "beside"}])");
    EXPECT_EQ(Rows(), "beside");
}

TEST_F(FileData, AFileThatNoFolderHasIsNamedInTheReportsOwn) {
    std::filesystem::create_directories(folder / "elsewhere");
    request.folders = {(folder / "elsewhere").string()};
    AddSource("JSON", "file=c.json");
    AddSet("$", {"v"});
    EXPECT_NE(Failure().find((folder / "c.json").string() + "\" does not exist"), std::string::npos)
        << Failure();
}

TEST_F(FileData, CsvNumbersHaveFifteenDigitsAtMost) {
    Write("c.csv", "a,b,c\n123456789012345,1234567890123456,-123456789012345\n1,1,1\n");
    AddSource("CSV", "c.csv");
    AddSet("", {"a", "b", "c"});
    const Table table = Load();
    EXPECT_EQ(table.At(0, 0).kind(), Kind::Integer);
    EXPECT_EQ(table.At(0, 0).AsInteger(), 123456789012345);
    EXPECT_EQ(table.At(0, 1).kind(), Kind::Text);
    EXPECT_EQ(table.At(1, 1).kind(), Kind::Text);
    EXPECT_EQ(table.At(0, 2).AsInteger(), -123456789012345);
}

TEST_F(FileData, JsonPathAtAnyDepthKeepsTheOrderOfTheDocument) {
    Write("c.json", R"([{"name": "a"}, {"name": "b", "in": [{"name": "c"}, {"name": "d"}]}, {"name": "e"}])");
    AddSource("JSON", "c.json");
    AddSet("$..name", {"value"});
    EXPECT_EQ(Rows(), "a b c d e");
}

TEST_F(FileData, JsonNamesOfObjectsInObjectsHaveAllTheirLevels) {
    Write("c.json", R"([{"a": {"b": {"c": {"d": 1}}, "e": 2}}])");
    AddSource("JSON", "c.json");
    AddSet("$", {"a.b.c.d", "a.e"});
    EXPECT_EQ(Rows(), "1|2");
}

TEST_F(FileData, XmlElementsMarkedAsNilAreNullAndTheMarkIsNoColumn) {
    Write("c.xml",
          "<C xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'><K xsi:nil='false'><Name>Ann</Name>"
          "<Sum xsi:nil='true'/></K><K><Name/><Sum>5</Sum></K></C>");
    AddSource("XML", "c.xml");
    AddSet("", {});
    const Table table = Load();
    ASSERT_EQ(table.fieldNames, (std::vector<std::string>{"Name", "Sum"}));
    ASSERT_EQ(table.RowCount(), 2U);
    EXPECT_TRUE(table.At(0, 1).IsNull());
    EXPECT_FALSE(table.At(1, 0).IsNull());
    EXPECT_EQ(table.At(1, 0).AsText(), "");
}

TEST_F(FileData, XmlAttributesAndElementsOfOneNameAreTwoColumns) {
    Write("c.xml", "<C><K id='1'><id>2</id></K></C>");
    AddSource("XML", "c.xml");
    AddSet("C{}/K{@id, id}", {});
    EXPECT_EQ(Rows(), "1|2");
}

TEST_F(FileData, DecimalsWithAPlusAreExactToo) {
    Write("c.csv", "a\n+12345678901234567.89\n-0.1\n");
    AddSource("CSV", "c.csv");
    AddSet("", {"a:System.Decimal"});
    const Table table = Load();
    ASSERT_EQ(table.At(0, 0).kind(), Kind::Decimal);
    EXPECT_EQ(table.At(0, 0).AsDecimal().Text(), "12345678901234567.89");
    EXPECT_EQ(table.At(1, 0).AsDecimal().Text(), "-0.1");
}

TEST(StoredValues, DatesAreSecondsOrJulianDays) {
    const auto stored = [](const Value& value) { return ConvertStored(value, FieldType::DateTime); };
    EXPECT_EQ(stored(Value::Integer(0)).AsTicks(), MakeTicks(1970, 1, 1));
    EXPECT_EQ(stored(Value::Integer(951'782'400 + 3661)).AsTicks(), MakeTicks(2000, 2, 29, 1, 1, 1));
    EXPECT_EQ(stored(Value::Real(2'440'587.5)).AsTicks(), MakeTicks(1970, 1, 1));
    EXPECT_EQ(stored(Value::Real(2'440'588.25)).AsTicks(), MakeTicks(1970, 1, 1, 18));
}

}  // namespace
}  // namespace rdl::data
