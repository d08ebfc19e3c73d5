// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/engine/definitions.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "rdl/api/report.h"
#include "rdl/raises.h"

namespace rdl::engine {
namespace {

class Definitions : public testing::Test {
 protected:
    Definitions() { std::filesystem::create_directories(m_folder); }
    ~Definitions() override { std::filesystem::remove_all(m_folder); }

    std::filesystem::path Write(const std::string& name, const std::string& value) const {
        const std::filesystem::path file = m_folder / name;
        std::ofstream(file) << "<Report><Body><Height>1in</Height><ReportItems><Textbox Name=\"t\"><Value>"
                            << value << "</Value></Textbox></ReportItems></Body></Report>";
        return file;
    }

 private:
    const std::filesystem::path m_folder =
        std::filesystem::temp_directory_path() / ("oxc-definitions-" + std::to_string(getpid()));
};

TEST_F(Definitions, OfAFileThatIsTheSameAreParsedOnce) {
    const std::filesystem::path file = Write("a.rpt", "one");
    const auto first = OpenDefinition(file);
    EXPECT_EQ(OpenDefinition(file), first);
    Write("a.rpt", "one");
    EXPECT_EQ(OpenDefinition(file), first);
    EXPECT_NE(OpenDefinition(Write("b.rpt", "one")), first);  // errors name the file
}

TEST_F(Definitions, OfAChangedFileAreParsedAgainWhateverItsDate) {
    const std::filesystem::path file = Write("a.rpt", "one");
    const auto date = std::filesystem::last_write_time(file);
    const auto first = OpenDefinition(file);
    Write("a.rpt", "two");
    std::filesystem::last_write_time(file, date);
    EXPECT_NE(OpenDefinition(file), first);
    Write("a.rpt", "=Oops(");
    EXPECT_NE(ErrorRaisedBy([&] { OpenDefinition(file); }), "");
    std::filesystem::remove(file);
    EXPECT_EQ(ErrorRaisedBy([&] { OpenDefinition(file); }),
              "a.rpt cannot be read: No such file or directory");
}

TEST_F(Definitions, OfFewFilesAreKept) {
    const std::filesystem::path file = Write("a.rpt", "one");
    std::weak_ptr<const Definition> first = OpenDefinition(file);
    EXPECT_FALSE(first.expired());
    for (int i = 0; i < 15; ++i) {
        OpenDefinition(Write(std::to_string(i) + ".rpt", "one"));
    }
    EXPECT_FALSE(first.expired());
    OpenDefinition(Write("15.rpt", "one"));
    EXPECT_TRUE(first.expired());
}

TEST_F(Definitions, OfLongFilesAreNotKept) {
    const std::filesystem::path file = Write("a.rpt", std::string(300'000, 'x'));
    EXPECT_NE(OpenDefinition(file), OpenDefinition(file));
    std::weak_ptr<const Definition> first = OpenDefinition(Write("b.rpt", std::string(200'000, 'x')));
    for (int i = 0; i < 5; ++i) {
        OpenDefinition(Write(std::to_string(i) + ".rpt", std::string(200'000, 'x')));
    }
    EXPECT_TRUE(first.expired());
}

TEST(ReportTexts, NeedNoFile) {
    const std::filesystem::path file = "/nowhere/sales.rdl";
    const std::string body = "<Report><Body><Height>1in</Height></Body></Report>";
    EXPECT_EQ(OpenReportText(body, file)->Title(), "sales");
    const std::string wrong = ErrorRaisedBy([&] { OpenReportText("<Report><Body/></Reprt>", file); });
    EXPECT_EQ(wrong.substr(0, 9), "sales.rdl") << wrong;
}

}  // namespace
}  // namespace rdl::engine
