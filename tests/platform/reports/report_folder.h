// SPDX-License-Identifier: GPL-3.0-or-later
// A folder for one test, and report files in it.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "platform/base/paths.h"
#include "platform/reports/rdl_engine.h"
#include "platform/reports/rdl_report.h"

namespace reports::test {

class ReportFolder : public testing::Test {
 protected:
    void SetUp() override {
        std::string name = (std::filesystem::temp_directory_path() / "oxc-engine-test-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_folder = name;
        SetAppPath(paths::FromMachine(m_folder / "app"));  // the user's own folder is not touched
    }
    void TearDown() override {
        SetAppPath("");
        std::filesystem::remove_all(m_folder);
    }

    std::string Path(const std::string& name) const { return (m_folder / name).string(); }
    std::string Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(Path(name), std::ios::binary) << bytes;
        return Path(name);
    }
    std::string Read(const std::string& name) const {
        std::ifstream file(Path(name), std::ios::binary);
        std::ostringstream bytes;
        bytes << file.rdbuf();
        return bytes.str();
    }
    int FileCount() const {
        int count = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(m_folder)) {
            ++count;
        }
        return count;
    }

    // A report over three rows of its own: Ann 1, Bob 2, Cleo 3. `extra` is inserted into the report.
    static std::string PeopleReport(const std::string& extra = "") {
        return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition\">"
               "<Width>6in</Width><DataSets><DataSet Name=\"People\"><Query/><Fields><Field "
               "Name=\"Name\"><DataField>Name"
               "</DataField></Field><Field "
               "Name=\"Number\"><DataField>Number</DataField><TypeName>System.Int32</TypeName>"
               "</Field></Fields><Rows><Row><Name>Ann</Name><Number>1</Number></Row><Row><Name>Bob</"
               "Name><Number>2</Number>"
               "</Row><Row><Name>Cleo</Name><Number>3</Number></Row></Rows></DataSet></"
               "DataSets><Body><Height>1in</Height>"
               "<ReportItems><Table "
               "Name=\"t\"><DataSetName>People</DataSetName><TableColumns><TableColumn><Width>2in</Width>"
               "</TableColumn></TableColumns><Details><TableRows><TableRow><Height>1cm</"
               "Height><TableCells><TableCell>"
               "<ReportItems><Textbox "
               "Name=\"n\"><Value>=Fields!Name.Value</Value></Textbox></ReportItems></TableCell>"
               "</TableCells></TableRow></TableRows></Details></Table></ReportItems></Body>" +
               extra + "</Report>";
    }
    static std::string Parameter(const std::string& name, const std::string& type,
                                 const std::string& rest = "") {
        return "<ReportParameter Name=\"" + name + "\"><DataType>" + type + "</DataType>" + rest +
               "</ReportParameter>";
    }
    static std::string Parameters(const std::string& parameters) {
        return "<ReportParameters>" + parameters + "</ReportParameters>";
    }
    std::shared_ptr<RdlReport> OpenPeople(const std::string& extra = "",
                                          const std::string& name = "people.rpt") const {
        return OpenRdlReport(Write(name, PeopleReport(extra)));
    }

    std::filesystem::path m_folder;
};

// Returns the error that the work raises; number 0 without an error.
template <typename Work>
RuntimeError ErrorOf(Work work) {
    try {
        work();
    } catch (const RuntimeError& error) {
        return error;
    }
    return RuntimeError(0, "");
}

}  // namespace reports::test
