// SPDX-License-Identifier: GPL-3.0-or-later
// Texts of small reports, laid out as a designer writes them.
#pragma once

#include <string>
#include <vector>

namespace designer::test {

// A data source of the report's own.
inline std::string SourceText(const std::string& name, const std::string& provider,
                              const std::string& connectString) {
    return "    <DataSource Name=\"" + name +
           "\">\n"
           "      <ConnectionProperties>\n"
           "        <DataProvider>" +
           provider +
           "</DataProvider>\n"
           "        <ConnectString>" +
           connectString +
           "</ConnectString>\n"
           "      </ConnectionProperties>\n"
           "    </DataSource>\n";
}

// A data source in another file.
inline std::string SharedSourceText(const std::string& name, const std::string& reference) {
    return "    <DataSource Name=\"" + name + "\">\n      <DataSourceReference>" + reference +
           "</DataSourceReference>\n    </DataSource>\n";
}

// A field that is a column of the query; `more` is further lines within it.
inline std::string FieldText(const std::string& name, const std::string& column,
                             const std::string& more = {}) {
    return "        <Field Name=\"" + name + "\">\n          <DataField>" + column + "</DataField>\n" + more +
           "        </Field>\n";
}

// A field that is computed.
inline std::string ComputedText(const std::string& name, const std::string& value) {
    return "        <Field Name=\"" + name + "\">\n          <Value>" + value +
           "</Value>\n        </Field>\n";
}

// A data set; `query` is the command's element, `fields` are texts of fields, `more` what follows them.
inline std::string SetText(const std::string& name, const std::string& source, const std::string& query,
                           const std::string& fields, const std::string& more = {}) {
    return "    <DataSet Name=\"" + name +
           "\">\n"
           "      <Query>\n"
           "        <DataSourceName>" +
           source + "</DataSourceName>\n        " + query +
           "\n"
           "      </Query>\n"
           "      <Fields>\n" +
           fields + "      </Fields>\n" + more + "    </DataSet>\n";
}

inline std::string CommandText(const std::string& text) {
    return "<CommandText>" + text + "</CommandText>";
}
inline constexpr const char* NoCommand = "<CommandText/>";

inline std::string TextboxText(const std::string& name, const std::string& value) {
    return "          <Textbox Name=\"" + name +
           "\">\n"
           "            <Paragraphs><Paragraph><TextRuns><TextRun><Value>" +
           value +
           "</Value></TextRun></TextRuns></Paragraph></Paragraphs>\n"
           "          </Textbox>\n";
}

// One section whose body has these items; without items it has no list of them.
inline std::string SectionsText(const std::string& items) {
    return "  <ReportSections>\n"
           "    <ReportSection>\n" +
           (items.empty() ? std::string("      <Body><Height>8cm</Height></Body>\n")
                          : "      <Body>\n        <ReportItems>\n" + items +
                                "        </ReportItems>\n        <Height>8cm</Height>\n      </Body>\n") +
           "      <Width>16cm</Width>\n"
           "      <Page/>\n"
           "    </ReportSection>\n"
           "  </ReportSections>\n";
}

// The whole report. `more` stands after the sections.
inline std::string ReportText(const std::string& sources, const std::string& sets,
                              const std::string& sections = "  <ReportSections/>\n",
                              const std::string& more = {}) {
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition\" "
           "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
           "xmlns:rd=\"http://schemas.microsoft.com/SQLServer/reporting/reportdesigner\">\n"
           "  <DataSources>\n" +
           sources + "  </DataSources>\n  <DataSets>\n" + sets + "  </DataSets>\n" + sections + more +
           "</Report>\n";
}

}  // namespace designer::test
