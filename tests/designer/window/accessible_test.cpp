// SPDX-License-Identifier: GPL-3.0-or-later
// Every control has a name for those who do not see it, no key means two things, and no text is cut at large
// fonts: in the window with each of its tabs, and in its dialogs. With OXC_PICTURES set to a folder, pictures
// of them are left there, in light and dark colours.
#include <Qsci/qscilexer.h>

#include <QAbstractSpinBox>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyleOptionFrame>
#include <QTabBar>
#include <QTabWidget>
#include <QTreeWidget>
#include <QWizard>

#include "../tables/small_tables.h"
#include "designer/report_dialogs/code_editor.h"
#include "support/modal.h"
#include "window_fixture.h"

namespace designer::test {
namespace {

std::string NameFor(const QWidget& widget) {
    return std::string(widget.metaObject()->className()) + " \"" + widget.objectName().toStdString() + "\"";
}

// Parts of controls have the name of the whole.
bool IsPart(const QWidget& widget) {
    const QWidget* const whole = widget.parentWidget();
    return widget.objectName().startsWith("qt_") || qobject_cast<const QComboBox*>(whole) ||
           qobject_cast<const QAbstractSpinBox*>(whole);
}

std::vector<std::string> Nameless(QWidget& window) {
    std::vector<std::string> faults;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || !(widget->focusPolicy() & Qt::TabFocus) || IsPart(*widget) ||
            qobject_cast<QTabBar*>(widget)) {
            continue;
        }
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
        if (!face || face->text(QAccessible::Name).isEmpty()) {
            faults.push_back(NameFor(*widget));
        }
    }
    return faults;
}

std::vector<std::string> CutTexts(QWidget& window) {
    std::vector<std::string> faults;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        const QString text = label ? label->text() : button ? button->text() : QString();
        if (!widget->isVisible() || text.isEmpty() || IsPart(*widget)) {
            continue;
        }
        const QSize size = widget->size();
        const bool wraps = label && label->wordWrap();
        const int height = wraps ? label->heightForWidth(size.width()) : widget->minimumSizeHint().height();
        if ((!wraps && size.width() < widget->minimumSizeHint().width()) || size.height() < height) {
            faults.push_back(NameFor(*widget) + ": " + text.toStdString());
        }
    }
    return faults;
}

// Keys that two visible controls, or a control and a menu, have in common.
std::vector<std::string> KeysTwice(QWidget& window) {
    std::vector<std::string> faults;
    std::map<QString, QString> known;
    const auto take = [&](const QString& text) {
        const QString key = QKeySequence::mnemonic(text).toString();
        if (!key.isEmpty() && !known.emplace(key, text).second) {
            faults.push_back(known[key].toStdString() + " and " + text.toStdString());
        }
    };
    if (const auto* main = qobject_cast<const QMainWindow*>(&window)) {
        for (const QAction* menu : main->menuBar()->actions()) {
            take(menu->text());
        }
    }
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        take(button->isVisible() ? button->text() : QString());
    }
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        take(label->isVisible() && label->buddy() ? label->text() : QString());
    }
    return faults;
}

// Keys of labels that lead elsewhere than to what is typed or chosen there.
std::vector<std::string> KeysAstray(QWidget& window) {
    std::vector<std::string> faults;
    QTest::qWait(1);  // a key of a label that was just shown is not known before
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        const QKeySequence key = QKeySequence::mnemonic(label->text());
        const QWidget* const named = label->buddy();
        if (!label->isVisible() || key.isEmpty() || (named && !named->isEnabled())) {
            continue;
        }
        if (QWidget* const before = QApplication::focusWidget()) {
            before->clearFocus();
        }
        QTest::keySequence(&window, key);
        const QWidget* const reached = QApplication::focusWidget();
        const bool isWithin = named && reached && (reached == named || named->isAncestorOf(reached));
        if (!isWithin || qobject_cast<const QAbstractButton*>(reached)) {
            faults.push_back(label->text().toStdString() + " leads to " +
                             (reached ? NameFor(*reached) : "nothing"));
        }
    }
    return faults;
}

using Faults = std::vector<std::string>;

void TakePictures(QWidget& window, const std::string& what) {
    const char* const folder = std::getenv("OXC_PICTURES");
    if (!folder) {
        return;
    }
    const QPalette light = QApplication::palette();
    QPalette dark(QColor(45, 45, 48), QColor(45, 45, 48));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Disabled, QPalette::Text, QColor(120, 120, 120));
    const std::string size = std::to_string(QApplication::font().pointSize());
    for (const auto& [palette, name] : {std::pair(light, "light"), std::pair(dark, "dark")}) {
        QApplication::setPalette(palette);
        QTest::qWait(20);
        window.grab().save(
            QString::fromStdString(std::string(folder) + "/" + what + "-" + size + "-" + name + ".png"));
    }
    QApplication::setPalette(light);
}

void ExpectNoFaults(QWidget& window, const char* what) {
    SCOPED_TRACE(what);
    TakePictures(window, what);
    EXPECT_EQ(Nameless(window), Faults());
    EXPECT_EQ(KeysTwice(window), Faults());
    EXPECT_EQ(CutTexts(window), Faults());
    EXPECT_EQ(KeysAstray(window), Faults());
}

// On each of its pages.
void ExpectNoFaultsOnPages(QWidget& dialog, const std::string& what) {
    auto* pages = dialog.findChild<QTabWidget*>();
    for (int page = 0; page < (pages ? pages->count() : 1); ++page) {
        if (pages) {
            pages->setCurrentIndex(page);
        }
        QTest::qWait(1);
        ExpectNoFaults(dialog, (what + (page > 0 ? "-" + std::to_string(page) : "")).c_str());
    }
}

// A report with a parameter of each kind, a table and a data source.
std::string Everything() {
    std::string report = SmallReport();
    report.insert(
        report.find("  <ReportSections>"),
        "<ReportParameters>"
        "<ReportParameter Name=\"A\"><DataType>Boolean</DataType><Prompt>Closed</Prompt></ReportParameter>"
        "<ReportParameter Name=\"B\"><DataType>DateTime</DataType><Nullable>true</Nullable><Prompt>From"
        "</Prompt></ReportParameter><ReportParameter Name=\"C\"><DataType>Integer</DataType><MultiValue>"
        "true</MultiValue><Prompt>Numbers</Prompt></ReportParameter><ReportParameter Name=\"D\">"
        "<DataType>String</DataType><ValidValues><ParameterValues><ParameterValue><Value>N</Value>"
        "</ParameterValue></ParameterValues></ValidValues><MultiValue>true</MultiValue><Prompt>Regions"
        "</Prompt></ReportParameter></ReportParameters>\n");
    return report;
}

class Accessible : public WindowTest, public testing::WithParamInterface<int> {
 protected:
    Accessible() : WindowTest(Everything()), m_font(QApplication::font()) {
        QFont font = m_font;
        font.setPointSize(GetParam());
        QApplication::setFont(font);
        m_window->resize(1600, 1000);
        Settle();
    }
    ~Accessible() override { QApplication::setFont(m_font); }
    void ExpectOf(const char* command) {
        fakes::WhileModal<QDialog>([&] { Find<QAction>(command).trigger(); },
                                   [&](QDialog& dialog) { ExpectNoFaultsOnPages(dialog, command); });
    }
    const QFont m_font;
};

TEST_P(Accessible, AreTheTabsOfTheWindow) {
    Select({"Title"});
    ExpectNoFaults(*m_window, "design");
    const auto& properties = Find<QTreeWidget>("properties");
    EXPECT_GE(properties.columnWidth(0), properties.fontMetrics().horizontalAdvance("Property"));
    Run("viewPreview");
    EXPECT_TRUE(Find("parameterBar").isVisible());
    ExpectNoFaults(*m_window, "preview");
    Run("viewXml");
    ExpectNoFaults(*m_window, "XML");
}

// Texts of fixed width are as large as all others.
std::vector<std::string> SmallEditors(const QWidget& window) {
    std::vector<std::string> faults;
    for (const QPlainTextEdit* editor : window.findChildren<QPlainTextEdit*>()) {
        if (editor->font().pointSize() != QApplication::font().pointSize()) {
            faults.push_back(NameFor(*editor));
        }
    }
    return faults;
}

TEST_P(Accessible, AreTextsOfFixedWidth) {
    EXPECT_EQ(SmallEditors(*m_window), Faults());
    Select({"Title"});
    for (const char* command : {"reportExpression", "reportDataSet"}) {
        fakes::WhileModal<QDialog>([&] { Find<QAction>(command).trigger(); },
                                   [](QDialog& dialog) {
                                       EXPECT_NE(dialog.findChild<QPlainTextEdit*>(), nullptr);
                                       EXPECT_EQ(SmallEditors(dialog), Faults());
                                   });
    }
    fakes::WhileModal<QDialog>([&] { Find<QAction>("reportCode").trigger(); },
                               [](QDialog& dialog) {
                                   const auto& code = *dialog.findChild<CodeEditor*>();
                                   EXPECT_EQ(code.lexer()->font(0).pointSize(),
                                             QApplication::font().pointSize());
                               });
}

TEST_P(Accessible, IsTheHintForFindingProperties) {
    const auto& find = Find<QLineEdit>("findProperty");
    QStyleOptionFrame frame;
    frame.initFrom(&find);
    auto& dock = Find<QDockWidget>("dockProperties");
    m_window->resizeDocks({&dock}, {1}, Qt::Horizontal);
    Settle();
    const QRect room = find.style()->subElementRect(QStyle::SE_LineEditContents, &frame, &find);
    EXPECT_GE(room.width(), find.fontMetrics().horizontalAdvance(find.placeholderText()));
}

// As on a desktop whose colours have none for hints.
TEST_P(Accessible, AreHintsOnDarkColours) {
    const QPalette before = QApplication::palette();
    QPalette dark = before;
    for (const auto role : {QPalette::Base, QPalette::Window, QPalette::Button}) {
        dark.setColor(role, QColor(30, 30, 30));
    }
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
    QApplication::setPalette(dark);
    Settle();
    const QColor hint = Find<QLineEdit>("findProperty").palette().color(QPalette::PlaceholderText);
    EXPECT_GT(hint.lightness(), 128);
    QApplication::setPalette(before);
    Settle();
    EXPECT_LT(Find<QLineEdit>("findProperty").palette().color(QPalette::PlaceholderText).lightness(), 128);
}

TEST_P(Accessible, AreItsDialogs) {
    Select({"Title"});
    for (const char* command :
         {"reportDataSource", "reportDataSet", "reportParameters", "reportPage", "reportPictures",
          "reportCode", "itemLinks", "reportExpression", "formatStyle", "formatVisibility"}) {
        ExpectOf(command);
    }
}

TEST_P(Accessible, AreDialogsOfSharedFiles) {
    WriteBytes(m_home / "Far.rds",
               "<RptDataSource><ConnectionProperties><Extension>PostgreSQL</Extension><ConnectString>Host=db;"
               "Database=sales</ConnectString></ConnectionProperties></RptDataSource>");
    WriteBytes(m_home / "People.rsd",
               "<SharedDataSet><DataSet Name=\"\"><Query><DataSourceReference>Far</DataSourceReference>"
               "<CommandText>select 1</CommandText></Query></DataSet></SharedDataSet>");
    fakes::WhileModal<QDialog>([&] { Find<QAction>("reportDataSource").trigger(); },
                               [&](QDialog& dialog) {
                                   dialog.findChild<QCheckBox*>("isShared")->setChecked(true);
                                   dialog.findChild<QLineEdit*>("reference")->setText("Far");
                                   ExpectNoFaults(dialog, "shared data source");
                                   fakes::WhileModal<QDialog>(
                                       [&] { dialog.findChild<QPushButton*>("changeShared")->click(); },
                                       [](QDialog& file) { ExpectNoFaults(file, "file of a data source"); });
                               });
    fakes::WhileModal<QDialog>([&] { Find<QAction>("reportDataSet").trigger(); },
                               [](QDialog& dialog) {
                                   dialog.findChild<QCheckBox*>("isShared")->setChecked(true);
                                   dialog.findChild<QLineEdit*>("sharedSet")->setText("People");
                                   ExpectNoFaults(dialog, "shared data set");
                                   fakes::WhileModal<QDialog>(
                                       [&] { dialog.findChild<QPushButton*>("changeSharedSet")->click(); },
                                       [](QDialog& file) { ExpectNoFaults(file, "file of a data set"); });
                               });
}

TEST_P(Accessible, AreDialogsOfChartsAndGauges) {
    Model().Edit("Items", [this](Document& document) {
        InsertXml(
            document, document.Root(),
            "<DataSets><DataSet Name=\"Sales\"><Fields><Field Name=\"Region\"><DataField>Region</DataField>"
            "</Field></Fields><Rows><Row><Region>North</Region></Row></Rows></DataSet></DataSets>");
        const ReportBand band = Model().Items().bands[0];
        InsertItem(document, band, NewItem::Chart, {0, 0, 100, 100}, {});
        InsertItem(document, band, NewItem::Gauge, {0, 0, 100, 100}, {});
    });
    Select({"Chart1"});
    fakes::WhileModal<QDialog>([&] { Find<QAction>("reportItem").trigger(); },
                               [](QDialog& dialog) {
                                   dialog.findChild<QPushButton*>("categoriesAdd")->click();
                                   QTest::qWait(1);
                                   ExpectNoFaults(dialog, "chart");
                               });
    Select({"Gauge1"});
    ExpectOf("reportItem");
}

TEST_P(Accessible, AreDialogsOfBarCodesAndSubreports) {
    for (const NewItem kind : {NewItem::BarCode, NewItem::Subreport}) {
        ElementId made = NoElement;
        Model().Edit("Item", [&](Document& document) {
            made = InsertItem(document, Model().Items().bands[0], kind, {0, 0, 100, 100},
                              {.report = "other.rdl"});
        });
        Model().Select({made});
        Settle();
        ExpectOf("reportItem");
    }
}

TEST_P(Accessible, AreDialogsOfTablesAndGroups) {
    WriteBytes(m_home / "table.rdl",
               Placed(Report(ListTablix(
                   "<TablixMember><Group Name=\"ByRegion\"><GroupExpressions><GroupExpression>="
                   "Fields!Region.Value</GroupExpression></GroupExpressions></Group><TablixMembers>"
                   "<TablixMember/></TablixMembers></TablixMember><TablixMember><Group Name=\"Details\"/>"
                   "</TablixMember>"))));
    ASSERT_TRUE(m_window->OpenFile(m_home / "table.rdl"));
    Settle();
    Click(At("A"));
    for (const char* command : {"groupProperties", "tableSortFilter", "groupParent"}) {
        ExpectOf(command);
    }
}

TEST_P(Accessible, AreThePagesOfTheWizard) {
    WriteBytes(m_home / "orders.csv", "Region,Amount\nNorth,120.50\n");
    fakes::WhileModal<QDialog>(
        [&] { Find<QAction>("fileNewFromData").trigger(); },
        [&](QDialog& dialog) {
            auto& wizard = dynamic_cast<QWizard&>(dialog);
            wizard.findChild<QComboBox*>("provider")->setCurrentText("CSV or text file");
            wizard.findChild<QLineEdit*>("file")->setText(
                QString::fromStdString((m_home / "orders.csv").string()));
            for (int page = 0; page < 5; ++page) {
                QTest::qWait(50);
                const std::string name = wizard.currentPage()->objectName().toStdString();
                ExpectNoFaults(wizard, name.c_str());
                wizard.next();
            }
        });
}

INSTANTIATE_TEST_SUITE_P(Fonts, Accessible, testing::Values(9, 20));

}  // namespace
}  // namespace designer::test
