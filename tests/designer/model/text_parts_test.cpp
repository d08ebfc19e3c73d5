// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/text_parts.h"

#include <gtest/gtest.h>

#include "designer/document/editing.h"

namespace designer {
namespace {

constexpr const char* First =
    "<TextRun a=\"1\"><!-- kept --><Value>Dear </Value><Style><Color>Red</Color></Style></TextRun>";
constexpr const char* Field = "<TextRun><Value>=Fields!Name.Value</Value></TextRun>";

std::string Letter(const std::string& first, const std::string& second) {
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition\">"
           "<Body><ReportItems><Textbox Name=\"T\"><Paragraphs><Paragraph><TextRuns>" +
           first + "</TextRuns></Paragraph><Paragraph><TextRuns>" + second +
           "</TextRuns></Paragraph></Paragraphs></Textbox></ReportItems></Body></Report>";
}

class TextPartsOfBox : public testing::Test {
 protected:
    ElementId Box() const { return m_model.Items().items.at(0).id; }
    std::string Cut(const TextPart& part) {
        std::string values;
        m_model.SelectMade("Mark", [&](Document& document) { return CutTextPart(document, Box(), part); });
        for (const ElementId id : m_model.Selection()) {
            values += m_model.Source().TextAt(id, "Value").value_or("") + "|";
        }
        return values;
    }
    DesignModel m_model{Document(
        Letter(std::string(First) + Field, "<TextRun><Value>Größe \xF0\x9F\x98\x80!</Value></TextRun>"))};
};

TEST_F(TextPartsOfBox, AreRunsThatKeepAllOfWhatTheyAreCutOff) {
    EXPECT_EQ(Cut({0, 2, 0, 6}), "ar |=Fields!Name.Value|");
    EXPECT_NE(
        m_model.Source().Text().find(
            "<TextRun a=\"1\"><!-- kept --><Value>De</Value><Style><Color>Red</Color></Style></TextRun>"
            "<TextRun a=\"1\"><!-- kept --><Value>ar </Value><Style><Color>Red</Color></Style></TextRun>" +
            std::string(Field)),
        std::string::npos)
        << m_model.Source().Text();
    EXPECT_EQ(TextPartOf(m_model.Source(), Box(), m_model.Selection()), (TextPart{0, 2, 0, 6}));
}

TEST_F(TextPartsOfBox, GoOverParagraphsAndCountUnits) {
    EXPECT_EQ(Cut({0, 5, 1, 8}), "=Fields!Name.Value|Größe \xF0\x9F\x98\x80|");
    EXPECT_EQ(Cut({1, 0, 1, 5}), "Größe|");
}

TEST_F(TextPartsOfBox, NothingIsCutBetweenRuns) {
    const std::string before = m_model.Source().Text();
    EXPECT_EQ(Cut({0, 5, 0, 6}), "=Fields!Name.Value|");
    EXPECT_EQ(m_model.Source().Text(), before);
    EXPECT_EQ(m_model.Source().UndoCount(), 0u);
}

// The step of what was made belongs to the edit after it, and goes without one.
TEST_F(TextPartsOfBox, AreTakenBackIfNothingIsDoneWithThem) {
    const std::string before = m_model.Source().Text();
    Cut({0, 1, 0, 2});
    m_model.Select({Box()});
    EXPECT_EQ(m_model.Source().Text(), before);
    EXPECT_EQ(m_model.Source().UndoCount() + m_model.Source().RedoCount(), 0u);
    Cut({0, 1, 0, 2});
    const ElementId run = m_model.Leader();
    m_model.Edit("Colour", [&](Document& document) { SetText(document, run, "Style/Color", "Blue"); });
    m_model.Edit("Size", [&](Document& document) { SetText(document, run, "Style/FontSize", "8pt"); });
    m_model.Select({Box()});
    EXPECT_EQ(m_model.Source().UndoName(), "Size");
    m_model.Undo();
    EXPECT_EQ(m_model.Source().UndoName(), "Colour");
    m_model.Undo();
    EXPECT_EQ(m_model.Source().Text(), before);
}

TEST_F(TextPartsOfBox, StayIfAPieceOfThemIsSelectedOrAnEditIsRefused) {
    const std::string before = m_model.Source().Text();
    Cut({0, 1, 0, 2});
    EXPECT_FALSE(m_model.Edit("Refused", [&](Document& document) {
        SetText(document, m_model.Leader(), "Style/Color", "Blue");
        throw EditError("no");
    }));
    m_model.Select({});
    EXPECT_EQ(m_model.Source().Text(), before);
    Cut({0, 1, 0, 2});
    m_model.Select({m_model.Leader(), Box()});
    EXPECT_NE(m_model.Source().Text(), before);
    EXPECT_EQ(m_model.Source().UndoCount(), 1u);
}

TEST_F(TextPartsOfBox, AreStyledWithTheirParagraphs) {
    Cut({0, 0, 0, 5});
    std::string names;
    for (const ElementId id : StyledElements(m_model)) {
        names += m_model.Source().Name(id) + " ";
    }
    EXPECT_EQ(names, "Paragraph TextRun ");
    EXPECT_EQ(StepName(m_model, "Format", m_model.Selection()), "Format part of T");
}

}  // namespace
}  // namespace designer
