// SPDX-License-Identifier: GPL-3.0-or-later
// Every report of the project through the document: unchanged, and changed at random.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "designer/document/all_reports.h"
#include "designer/document/design_copy.h"
#include "designer/document/document.h"
#include "designer/document/editing.h"
#include "designer/document/names.h"
#include "designer/document/properties/properties.h"
#include "designer/document/report_items.h"
#include "rdl/api/failure.h"
#include "rdl/api/report.h"
#include "rdl/xml/parse.h"
#include "support/temporary_folder.h"

namespace designer {
namespace {

TEST(RoundTrip, EveryReportIsSavedWithTheSameBytes) {
    for (const std::filesystem::path& file : AllReports()) {
        const std::string bytes = ReadBytes(file);
        EXPECT_EQ(Document(bytes).Bytes(), bytes) << file;
    }
}

// Makes edits of all kinds by a generator with a fixed seed.
class RandomEditor {
 public:
    RandomEditor(Document& document, unsigned seed) : m_document(document), m_random(seed) {}

    // Returns whether the edit was possible.
    bool Edit() {
        try {
            switch (Pick(11)) {
                case 0:
                    Remove(m_document, AnyElement());
                    break;
                case 1:
                    DuplicateSmall(AnyElement());
                    break;
                case 2:
                    Move(m_document, AnyElement(), AnyElement());
                    break;
                case 3:
                    InsertXml(m_document, AnyElement(),
                              "<Textbox Name=\"New\"><Value>a &amp; b</Value>\n</Textbox>");
                    break;
                case 4:
                    SetText(m_document, AnyElement(), "Style/Border/Color", "=\"<\" & \"]]>\" & vbCrLf");
                    break;
                case 5:
                    Rename(m_document, AnyElement(), "N" + std::to_string(Pick(1000)));
                    break;
                case 6:
                    SetAttribute(m_document, AnyElement(), "Name", "it's \"quoted\" & <odd>");
                    break;
                case 7:
                    SpaceTwoTags();
                    break;
                default:
                    ChangeProperty();
            }
            return true;
        } catch (const EditError&) {
            return false;
        }
    }

 private:
    std::size_t Pick(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_random);
    }
    ElementId AnyElement() {
        return m_document.IdAt(static_cast<int>(Pick(static_cast<std::size_t>(m_document.Tree().Count()))));
    }

    // Else the report would soon be huge.
    void DuplicateSmall(ElementId id) {
        constexpr std::uint32_t Largest = 2000;
        if (m_document.Tree()[m_document.IndexOf(id)].whole.Size() < Largest) {
            Duplicate(m_document, id);
        }
    }

    // One edit of two places, both of which grow.
    void SpaceTwoTags() {
        const SourceTree& tree = m_document.Tree();
        int first = m_document.IndexOf(AnyElement()), second = m_document.IndexOf(AnyElement());
        if (first == second) {
            return;
        }
        std::tie(first, second) = std::minmax({first, second});
        m_document.Apply("Space", {{tree[first].nameEnd, 0, "  ", {}}, {tree[second].nameEnd, 0, "\n", {}}});
    }

    void ChangeProperty() {
        const ElementId element = AnyElement();
        const std::vector<const Property*> properties = PropertiesOf(m_document, element);
        if (properties.empty()) {
            return;
        }
        const Property& property = *properties[Pick(properties.size())];
        static const char* const Values[] = {"1in", "Red", "true", "3", "Solid", "=1", "x\ny", "Bold"};
        if (Pick(4) == 0) {
            ResetValue(m_document, element, property);
        } else {
            SetValue(m_document, element, property, Values[Pick(std::size(Values))]);
        }
    }

    Document& m_document;
    std::mt19937 m_random;
};

// The engine opens the report, or says why not.
void OpenByEngine(const std::string& bytes) {
    const TemporaryFolder folder;
    WriteBytes(folder / "changed.rdl", bytes);
    try {
        rdl::OpenReport(folder / "changed.rdl");
    } catch (const rdl::Failure& failure) {
        EXPECT_EQ(failure.stage(), rdl::Stage::Open);
        EXPECT_STRNE(failure.what(), "");
    }
}

void EditAtRandom(const std::string& bytes, int edits, unsigned seed) {
    Document document(bytes);
    RandomEditor editor(document, seed);
    int made = 0;
    for (int i = 0; i < edits; ++i) {
        made += editor.Edit() ? 1 : 0;
    }
    EXPECT_GT(made, edits / 4);
    const std::string changed = document.Bytes();
    const std::size_t steps = document.UndoCount();
    // The positions of a tree that was kept up to date are those of a new one.
    const Document again(changed);
    ASSERT_EQ(again.Tree().Count(), document.Tree().Count());
    for (int index = 0; index < document.Tree().Count(); ++index) {
        ASSERT_EQ(document.IndexOf(document.IdAt(index)), index);
    }
    EXPECT_EQ(again.Bytes(), changed);
    OpenByEngine(changed);
    MakeDesignCopy(document);
    while (document.Undo()) {
    }
    EXPECT_EQ(document.Bytes(), bytes);
    while (document.Redo()) {
    }
    EXPECT_EQ(document.UndoCount(), steps);
    EXPECT_EQ(document.Bytes(), changed);
}

// Whether the document takes the bytes; if so they are saved alike.
bool IsTaken(const std::string& bytes) {
    try {
        EXPECT_EQ(Document(bytes).Bytes(), bytes);
        return true;
    } catch (const SourceFlaw&) {
        return false;
    }
}

bool IsTakenByEngine(const std::string& bytes) {
    try {
        rdl::xml::Parse(bytes, {200, 1'000'000, 256});
        return true;
    } catch (const rdl::xml::Flaw&) {
        return false;
    }
}

TEST(RoundTrip, DamagedFilesAreRefusedWhereTheEngineRefusesThem) {
    const std::string sample =
        "<?xml version=\"1.0\"?>\n<!-- c --><R xmlns='u' xmlns:p=\"v\" a='1' p:a='2'>\r\n<B "
        "c=\"&lt;\"/><C>&#65;&amp;"
        "</C><![CDATA[x<]]><p:D><?i j?></p:D>\xC3\xA4</R>\n";
    const std::string bytes = "<>/!?-[]&;#'\"= \n:pxR\xC3\xA4\x01";
    std::mt19937 random(1);
    const auto pick = [&random](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };
    int taken = 0;
    for (int i = 0; i < 20'000; ++i) {
        std::string damaged = sample;
        for (std::size_t changes = 1 + pick(2); changes > 0; --changes) {
            const std::size_t at = pick(damaged.size());
            const std::string one(1, bytes[pick(bytes.size())]);
            switch (pick(3)) {
                case 0:
                    damaged.erase(at, 1);
                    break;
                case 1:
                    damaged.insert(at, one);
                    break;
                default:
                    damaged.replace(at, 1, one);
            }
        }
        const bool isTaken = IsTaken(damaged);
        taken += isTaken ? 1 : 0;
        EXPECT_EQ(isTaken, IsTakenByEngine(damaged)) << damaged;
    }
    EXPECT_GT(taken, 2'000);
}

TEST(RoundTrip, AThousandEditsAreUndoneAndRedone) {
    const std::string sample = R"(<?xml version='1.0'?>
<!-- kept -->
<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition"
        xmlns:rd='http://schemas.microsoft.com/SQLServer/reporting/reportdesigner'>
  <Body><ReportItems>
    <Textbox Name='A'><Value><![CDATA[<b>]]></Value><rd:DefaultName>A</rd:DefaultName></Textbox>
    <Rectangle Name="R"><!-- also --><ReportItems><Line Name="L" /></ReportItems></Rectangle>
  </ReportItems><Height>2in</Height></Body>
  <Width>6in</Width><Page><?keep me?><Style /></Page>
</Report>
)";
    std::string lines = sample;
    for (std::size_t at = 0; (at = lines.find('\n', at)) != std::string::npos; at += 2) {
        lines.replace(at, 1, "\r\n");
    }
    for (unsigned seed = 1; seed <= 2; ++seed) {
        EditAtRandom(sample, 1000, seed);
        EditAtRandom("\xEF\xBB\xBF" + lines, 1000, seed);
    }
}

TEST(RoundTrip, EveryReportIsEditedAndComesBack) {
    unsigned seed = 1;
    for (const std::filesystem::path& file : AllReports()) {
        SCOPED_TRACE(file.string());
        EditAtRandom(ReadBytes(file), 25, seed++);
    }
}

}  // namespace
}  // namespace designer
