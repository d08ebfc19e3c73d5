// SPDX-License-Identifier: GPL-3.0-or-later
// Reports with several sections: the page and its bands are those of the section of the selection.
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QTreeWidget>

#include "window_fixture.h"

namespace designer::test {
namespace {

std::string Sections() {
    const auto section = [](const std::string& name, const std::string& width) {
        return "<ReportSection><Body><ReportItems><Rectangle Name=\"" + name +
               "\"><Height>1cm</Height><Width>2cm</Width></Rectangle></ReportItems><Height>4cm</Height></"
               "Body>"
               "<Width>10cm</Width><Page><PageHeight>15cm</PageHeight><PageWidth>" +
               width + "</PageWidth></Page></ReportSection>";
    };
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition\">"
           "<ReportSections>" +
           section("First", "11cm") + section("Second", "12cm") + "</ReportSections></Report>";
}

class SectionTest : public WindowTest {
 protected:
    SectionTest() : WindowTest(Sections()) {}
    // Opens the dialog for the page, types a width, and returns what was there with the title.
    std::string TypeWidth(const QString& width) {
        std::string was;
        QTimer::singleShot(0, m_window, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            ASSERT_NE(dialog, nullptr);
            auto* line = dialog->findChild<QLineEdit*>("width");
            auto* section = dialog->findChild<QLabel*>("section");
            ASSERT_NE(section, nullptr);
            was = dialog->windowTitle().toStdString() + "|" + section->text().toStdString() + "|" +
                  line->text().toStdString();
            QTest::keyClick(line, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(line, width);
            QTest::keyClick(line, Qt::Key_Return);
        });
        Run("reportPage");
        return was;
    }
    std::string PageWidths() {
        std::string widths;
        const Document& document = Model().Source();
        for (const ElementId section : document.Children(document.Find(document.Root(), "ReportSections"))) {
            widths += document.TextAt(section, "Page/PageWidth").value_or("-") + " ";
        }
        return widths;
    }
};

TEST_F(SectionTest, ThePageIsThatOfTheSelection) {
    Click(At("Second"));
    EXPECT_EQ(TypeWidth("13cm"), "Page Set-up, section 2|2 of 2|12cm");
    EXPECT_EQ(PageWidths(), "11cm 13cm ");
    EXPECT_EQ(UndoName(), "Set Up Page");
    Click(At("First"));
    EXPECT_EQ(TypeWidth("14cm"), "Page Set-up, section 1|1 of 2|11cm");
    EXPECT_EQ(PageWidths(), "14cm 13cm ");
    // Without a selection it is the first.
    Model().Select({});
    EXPECT_EQ(TypeWidth("15cm"), "Page Set-up, section 1|1 of 2|14cm");
    Model().Select({Model().Items().bands.back().element});
    EXPECT_EQ(TypeWidth("16cm"), "Page Set-up, section 2|2 of 2|13cm");
}

TEST_F(SectionTest, ADoubleClickOnABuiltInFieldPutsItIntoTheSection) {
    Click(At("Second"));
    auto& data = Find<QTreeWidget>("reportData");
    QTreeWidgetItem* row = data.findItems("PageNumber", Qt::MatchExactly | Qt::MatchRecursive).at(0);
    data.scrollToItem(row);
    const QPoint at = data.visualItemRect(row).center();
    QTest::mouseClick(data.viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(data.viewport(), Qt::LeftButton, {}, at);
    Settle();
    EXPECT_EQ(Selected(), "Textbox1");
    EXPECT_EQ(Model().Items().bands.at(Model().Item(Id("Textbox1"))->band).section, 1u);
}

TEST_F(SectionTest, PageHeaderAndFooterAreThoseOfTheSection) {
    Click(At("Second"));
    EXPECT_FALSE(Find<QAction>("pageHeader").isChecked());
    Run("pageHeader");
    EXPECT_TRUE(Find<QAction>("pageHeader").isChecked());
    const Document& document = Model().Source();
    const auto sections = document.Children(document.Find(document.Root(), "ReportSections"));
    EXPECT_EQ(document.Find(sections[0], "Page/PageHeader"), NoElement);
    EXPECT_NE(document.Find(sections[1], "Page/PageHeader"), NoElement);
    Click(At("First"));
    EXPECT_FALSE(Find<QAction>("pageHeader").isChecked());
    Click(At("Second"));
    Run("pageHeader");
    EXPECT_EQ(Model().Source().Text(), Sections());
}

}  // namespace
}  // namespace designer::test
