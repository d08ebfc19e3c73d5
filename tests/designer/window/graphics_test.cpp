// SPDX-License-Identifier: GPL-3.0-or-later
// Charts, gauges, bar codes and subreports, made and changed by hand.
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <map>
#include <set>

#include "../graphics/sales_report.h"
#include "designer/graphics/chart_parts.h"
#include "window_fixture.h"

namespace designer::test {
namespace {

class GraphicItems : public WindowTest {
 protected:
    GraphicItems() : WindowTest(SalesReport()) {}

    // Runs `work` on the next dialog, which it must close.
    template <typename Work>
    void OnDialog(const Work& work) {
        QTimer::singleShot(20, m_window, [this, work] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog) {
                return OnDialog(work);
            }
            work(*dialog);
            m_dialogs += 1;
            if (dialog->isVisible()) {
                dialog->reject();
            }
        });
    }
    std::string Problem() {
        QTest::qWait(500);  // the engine is asked after a pause
        return WindowTest::Problem();
    }
    template <typename T = QWidget>
    static T& In(QWidget& dialog, const char* name) {
        T* found = dialog.findChild<T*>(name);
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }

    int m_dialogs = 0;
};

TEST_F(GraphicItems, ANewChartAsksForItsTypeAndRuns) {
    OnDialog([](QDialog& dialog) {
        auto& gallery = In<QListWidget>(dialog, "gallery");
        EXPECT_EQ(gallery.count(), 29);
        EXPECT_EQ(gallery.currentItem()->text(), "Columns");
        QTest::keyClicks(&gallery, "Pie");
        EXPECT_EQ(gallery.currentItem()->text(), "Pie");
        QTest::keyClick(&gallery, Qt::Key_Return);
    });
    Run("insertChart");
    EXPECT_EQ(m_dialogs, 1);
    EXPECT_EQ(Selected(), "Chart1");
    EXPECT_EQ(Text("Chart1", "ChartData/ChartSeriesCollection/ChartSeries/Subtype"), "Pie");
    EXPECT_EQ(UndoName(), "Insert Chart");
    EXPECT_EQ(Problem(), "No problems");
}

TEST_F(GraphicItems, ANewChartThatIsCancelledIsNone) {
    const std::string before = Model().Source().Text();
    OnDialog([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    Run("insertChart");
    EXPECT_EQ(m_dialogs, 1);
    EXPECT_EQ(Model().Source().Text(), before);
}

TEST_F(GraphicItems, WhatIsInsertedDoesNotCoverOthers) {
    for (const char* command : {"insertGauge", "insertIndicator", "insertTextBox", "insertTextBox"}) {
        Run(command);
    }
    const auto& items = Model().Items().items;
    ASSERT_EQ(items.size(), 4u);
    for (const ReportItem& a : items) {
        for (const ReportItem& b : items) {
            const QRectF first(a.place.left, a.place.top, a.place.width, a.place.height);
            const QRectF second(b.place.left, b.place.top, b.place.width, b.place.height);
            EXPECT_TRUE(a.id == b.id || !first.intersects(second)) << a.name << " " << b.name;
        }
    }
}

TEST_F(GraphicItems, TheToolboxMakesGaugeIndicatorAndBarCode) {
    for (const char* tool : {"toolGauge", "toolIndicator", "toolBarCode"}) {
        QTest::mouseDClick(&Find<QToolButton>(tool), Qt::LeftButton);
        Settle();
    }
    EXPECT_EQ(Selected(), "Barcode1");
    EXPECT_EQ(Model().Source().Name(Id("Gauge1")), "GaugePanel");
    EXPECT_EQ(Model().Source().Name(Id("Indicator1")), "GaugePanel");
    EXPECT_EQ(Problem(), "No problems");
    EXPECT_EQ(Canvas().Failure(), "");
}

TEST_F(GraphicItems, ADoubleClickOpensTheDialogOfAChart) {
    OnDialog([](QDialog& dialog) { dialog.accept(); });
    Run("insertChart");
    OnDialog([this](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Chart Chart1");
        auto& fields = In<QListWidget>(dialog, "fields");
        auto& values = In<QListWidget>(dialog, "values");
        EXPECT_EQ(values.item(0)->text(), "Amount: =Sum(Fields!Amount.Value)");
        fields.setCurrentRow(3);
        QTest::mouseClick(&In<QAbstractButton>(dialog, "valuesAdd"), Qt::LeftButton);
        ASSERT_EQ(values.count(), 2);
        EXPECT_EQ(values.item(1)->text(), "Pieces: =Sum(Fields!Pieces.Value)");
        auto& aggregate = In<QComboBox>(dialog, "entryAggregate");
        QTest::keyClicks(&aggregate, "Max");
        emit aggregate.textActivated("Max");
        EXPECT_EQ(values.item(1)->text(), "Pieces: =Max(Fields!Pieces.Value)");
        QTest::mouseClick(&In<QAbstractButton>(dialog, "valuesUp"), Qt::LeftButton);
        fields.setCurrentRow(1);
        QTest::mouseClick(&In<QAbstractButton>(dialog, "seriesAdd"), Qt::LeftButton);
        EXPECT_EQ(In<QListWidget>(dialog, "series").item(0)->text(), "=Fields!City.Value");
        In<QListWidget>(dialog, "gallery").setCurrentRow(1);
        In<QComboBox>(dialog, "chartTitle").setEditText("Sales");
        dialog.accept();
    });
    QTest::mouseDClick(Canvas().viewport(), Qt::LeftButton, {}, At("Chart1"));
    Settle();
    EXPECT_EQ(m_dialogs, 2);
    EXPECT_EQ(UndoName(), "Change Chart1");
    const ChartDesign design = ReadChartDesign(Model().Source(), Id("Chart1"));
    EXPECT_EQ(design.type + " " + design.subtype, "Column Stacked");
    EXPECT_EQ(design.title, "Sales");
    ASSERT_EQ(design.values.size(), 2u);
    EXPECT_EQ(design.values[0].values.at("Y"), "=Max(Fields!Pieces.Value)");
    EXPECT_EQ(design.values[1].label, "Amount");
    EXPECT_EQ(design.series.at(0).expression, "=Fields!City.Value");
    EXPECT_EQ(Problem(), "No problems");
}

// No key means two things, and every control has a name.
TEST_F(GraphicItems, TheirDialogsAreUsedByKeys) {
    const auto look = [](QDialog& dialog) {
        std::map<QString, QString> known;
        const auto take = [&](const QString& text) {
            const QString key = QKeySequence::mnemonic(text).toString();
            EXPECT_TRUE(key.isEmpty() || known.emplace(key, text).second)
                << known[key].toStdString() << " and " << text.toStdString();
        };
        for (const QTabBar* tabs : dialog.findChildren<QTabBar*>()) {
            for (int tab = 0; tab < tabs->count(); ++tab) {
                take(tabs->tabText(tab));
            }
        }
        for (const QAbstractButton* button : dialog.findChildren<QAbstractButton*>()) {
            take(button->isVisible() ? button->text() : QString());
        }
        std::set<const QWidget*> named;
        for (const QLabel* label : dialog.findChildren<QLabel*>()) {
            take(label->isVisible() && label->buddy() ? label->text() : QString());
            named.insert(label->buddy());
        }
        for (const QComboBox* list : dialog.findChildren<QComboBox*>()) {
            EXPECT_TRUE(!list->isVisible() || named.contains(list) || !list->accessibleName().isEmpty())
                << list->objectName().toStdString();
        }
    };
    OnDialog([&](QDialog& dialog) {
        look(dialog);
        In<QListWidget>(dialog, "gallery").setCurrentRow(25);  // prices
        dialog.accept();
    });
    Run("insertChart");
    OnDialog([&](QDialog& dialog) {
        for (int tab = 0; tab < 3; ++tab) {
            In<QTabWidget>(dialog, "chartTabs").setCurrentIndex(tab);
            look(dialog);
        }
    });
    Run("reportItem");
    for (const char* command : {"insertGauge", "insertIndicator", "insertBarCode"}) {
        Run(command);
        OnDialog(look);
        Run("reportItem");
    }
    Model().Edit("Subreport", [&](Document& document) {
        const ElementId made = InsertItem(document, Model().Items().bands[0], NewItem::Subreport,
                                          {0, 0, 100, 50}, {.report = "detail.rdl"});
        EXPECT_NE(made, NoElement);
    });
    Settle();
    Select({"Subreport1"});
    OnDialog(look);
    Run("reportItem");
    EXPECT_EQ(m_dialogs, 6);
}

// Of a file that another program has written.
TEST_F(GraphicItems, TheDialogOfAChartWithoutMembers) {
    Model().Edit("Chart", [this](Document& document) {
        InsertXml(
            document, EnsureChild(document, BodyOf(document), "ReportItems"),
            "<Chart Name=\"C\"><ChartSeriesHierarchy/><ChartData><ChartSeriesCollection>"
            "<ChartSeries Name=\"S\"/></ChartSeriesCollection></ChartData><DataSetName>Sales</DataSetName>"
            "<Height>3cm</Height><Width>5cm</Width></Chart>");
    });
    Settle();
    Select({"C"});
    OnDialog([this](QDialog& dialog) {
        for (const auto& [line, path] :
             {std::pair("entryLabel", "Name in the legend"), std::pair("entryValue", "Value"),
              std::pair("valueTitle", "Title of the value axis")}) {
            OnDialog([path = path](QDialog& expression) {
                EXPECT_EQ(expression.windowTitle(), QString("Expression: %1").arg(path));
                In<QPlainTextEdit>(expression, "expression").setPlainText("=Sum(Fields!Amount.Value)");
                expression.accept();
            });
            In<QComboBox>(dialog, line).parentWidget()->findChild<QToolButton*>()->click();
        }
        dialog.accept();
        EXPECT_FALSE(dialog.isVisible()) << In<QLabel>(dialog, "chartTabsNote").text().toStdString();
    });
    Run("reportItem");
    EXPECT_EQ(m_dialogs, 4);
    EXPECT_EQ(Text("C", "ChartSeriesHierarchy/ChartMembers/ChartMember/Label"), "=Sum(Fields!Amount.Value)");
    EXPECT_EQ(Problem(), "No problems");
}

TEST_F(GraphicItems, FieldsAreDraggedToTheListsOfTheDialog) {
    OnDialog([](QDialog& dialog) { dialog.accept(); });
    Run("insertChart");
    OnDialog([](QDialog& dialog) {
        auto& fields = In<QListWidget>(dialog, "fields");
        for (const auto& [list, row] : {std::pair("values", 3), std::pair("categories", 1)}) {
            const std::unique_ptr<QMimeData> data(fields.model()->mimeData({fields.model()->index(row, 0)}));
            QWidget* view = In<QListWidget>(dialog, list).viewport();
            EXPECT_TRUE(DropOn(*view, *data, {5, 5}));
        }
        dialog.accept();
    });
    Run("reportItem");
    const ChartDesign design = ReadChartDesign(Model().Source(), Id("Chart1"));
    ASSERT_EQ(design.values.size(), 2u);
    EXPECT_EQ(design.values[1].values.at("Y"), "=Sum(Fields!Pieces.Value)");
    ASSERT_EQ(design.categories.size(), 2u);
    EXPECT_EQ(design.categories[1].expression, "=Fields!City.Value");
}

TEST_F(GraphicItems, TheDialogOfAChartRefusesWhatTheEngineRefuses) {
    OnDialog([](QDialog& dialog) { dialog.accept(); });
    Run("insertChart");
    const std::string before = Model().Source().Text();
    OnDialog([](QDialog& dialog) {
        auto& value = In<QComboBox>(dialog, "entryValue");
        value.setEditText("=Sum(Fields!Profit.Value)");
        dialog.accept();
        auto& note = In<QLabel>(dialog, "chartTabsNote");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(note.text().left(13), "Chart Chart1,") << note.text().toStdString();
        value.setEditText("");
        dialog.accept();
        EXPECT_EQ(note.text(), "Value 1 has no expression");
        QTest::mouseClick(&In<QAbstractButton>(dialog, "valuesRemove"), Qt::LeftButton);
        dialog.accept();
        EXPECT_EQ(note.text(), "The chart needs a value");
        auto& fields = In<QListWidget>(dialog, "fields");
        fields.setCurrentRow(0);
        QTest::mouseClick(&In<QAbstractButton>(dialog, "valuesAdd"), Qt::LeftButton);
        QTest::mouseClick(&In<QAbstractButton>(dialog, "seriesAdd"), Qt::LeftButton);
        In<QComboBox>(dialog, "entryValue").setEditText("City");
        dialog.accept();
        EXPECT_EQ(note.text(), "A group needs an expression, not \"City\": =Fields!Region.Value");
    });
    Run("reportItem");
    EXPECT_EQ(m_dialogs, 2);
    EXPECT_EQ(Model().Source().Text(), before);
}

TEST_F(GraphicItems, AValueOfTheDialogIsMadeInTheDialogForExpressions) {
    OnDialog([](QDialog& dialog) { dialog.accept(); });
    Run("insertChart");
    OnDialog([this](QDialog& dialog) {
        OnDialog([](QDialog& expression) {
            EXPECT_EQ(expression.windowTitle(), "Expression: Value");
            In<QPlainTextEdit>(expression, "expression").setPlainText("=Avg(Fields!Amount.Value)");
            expression.accept();
        });
        auto* field = In<QComboBox>(dialog, "entryValue").parentWidget();
        QTest::mouseClick(field->findChild<QToolButton*>(), Qt::LeftButton);
        OnDialog([](QDialog& expression) {
            EXPECT_EQ(expression.windowTitle(), "Expression: Title of the category axis");
            In<QPlainTextEdit>(expression, "expression").setPlainText("=\"In \" & Globals!ReportName");
            expression.accept();
        });
        field = In<QComboBox>(dialog, "categoryTitle").parentWidget();
        field->findChild<QToolButton*>()->click();
        dialog.accept();
    });
    Run("reportItem");
    EXPECT_EQ(m_dialogs, 4);
    const ChartDesign design = ReadChartDesign(Model().Source(), Id("Chart1"));
    EXPECT_EQ(design.values.at(0).values.at("Y"), "=Avg(Fields!Amount.Value)");
    EXPECT_EQ(design.categoryTitle, "=\"In \" & Globals!ReportName");
}

TEST_F(GraphicItems, PartsAreInTheOutlineWithTheirProperties) {
    OnDialog([](QDialog& dialog) { dialog.accept(); });
    Run("insertChart");
    auto& outline = Find<QTreeWidget>("outline");
    const auto axes = outline.findItems("Value axis", Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(axes.size(), 1);
    EXPECT_FALSE(axes[0]->parent()->parent()->isExpanded());
    outline.scrollToItem(axes[0]);
    QTest::mouseClick(outline.viewport(), Qt::LeftButton, {}, outline.visualItemRect(axes[0]).center());
    Settle();
    EXPECT_EQ(Selected(), "ChartAxis");
    auto& properties = Find<QTreeWidget>("properties");
    const auto rows = properties.findItems("Maximum", Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(rows.size(), 1);
    rows[0]->setText(1, "500");
    Settle();
    EXPECT_EQ(Text("Chart1", "ChartAreas/ChartArea/ChartValueAxes/ChartAxis/Maximum"), "500");
    EXPECT_EQ(UndoName(), "Change Maximum of ChartAxis");
    Canvas().setFocus();
    Key(Qt::Key_Escape);
    EXPECT_EQ(Selected(), "Chart1");
}

TEST_F(GraphicItems, DeleteInTheOutlineDeletesTheItem) {
    Run("insertGauge");
    auto& outline = Find<QTreeWidget>("outline");
    const auto gauges = outline.findItems("Gauge1", Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(gauges.size(), 1);
    QTest::mouseClick(outline.viewport(), Qt::LeftButton, {}, outline.visualItemRect(gauges[0]).center());
    QTest::keyClick(&outline, Qt::Key_Delete);
    Settle();
    EXPECT_EQ(Id("Gauge1"), NoElement);
    EXPECT_EQ(UndoName(), "Delete Gauge1");
    QTest::keyClick(&outline, Qt::Key_Delete);
    EXPECT_EQ(UndoName(), "Delete Gauge1");
}

TEST_F(GraphicItems, TheDialogOfAGauge) {
    Run("insertGauge");
    OnDialog([this](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Gauge Gauge1");
        EXPECT_EQ(In<QComboBox>(dialog, "gaugeValue").currentText(), "=Avg(Fields!Amount.Value)");
        In<QComboBox>(dialog, "gaugeMost").setEditText("100");
        auto& table = In<QTableWidget>(dialog, "parts");
        for (const auto& [from, to, colour] :
             {std::tuple("0", "50", "Green"), std::tuple("50", "100", "#12")}) {
            QTest::mouseClick(&In<QAbstractButton>(dialog, "partsAdd"), Qt::LeftButton);
            const int row = table.rowCount() - 1;
            table.item(row, 0)->setText(from);
            table.item(row, 1)->setText(to);
            table.item(row, 2)->setText(colour);
        }
        dialog.accept();
        EXPECT_EQ(In<QLabel>(dialog, "note").text(),
                  "\"#12\" is no value of Background colour: a colour is a name or #RRGGBB");
        table.item(1, 2)->setText("#ff0000");
        dialog.accept();
        EXPECT_FALSE(dialog.isVisible());
    });
    Run("reportItem");
    EXPECT_EQ(m_dialogs, 1);
    EXPECT_EQ(UndoName(), "Change Gauge1");
    const std::string scale = "RadialGauges/RadialGauge/GaugeScales/RadialScale/";
    EXPECT_EQ(Text("Gauge1", (scale + "MaximumValue/Value").c_str()), "100");
    const ElementId ranges = Model().Source().Find(Id("Gauge1"), scale + "ScaleRanges");
    ASSERT_EQ(Model().Source().Children(ranges).size(), 2u);
    const ElementId last = Model().Source().Children(ranges)[1];
    EXPECT_EQ(Model().Source().TextAt(last, "StartValue/Value"), "50");
    EXPECT_EQ(Model().Source().TextAt(last, "Style/BackgroundColor"), "#ff0000");
    EXPECT_EQ(Problem(), "No problems");
    OnDialog([this](QDialog& dialog) {
        In<QTableWidget>(dialog, "parts").setCurrentCell(0, 0);
        QTest::mouseClick(&In<QAbstractButton>(dialog, "partsRemove"), Qt::LeftButton);
        dialog.accept();
    });
    Run("reportItem");
    EXPECT_EQ(Model().Source().Children(ranges), std::vector{last});
}

TEST_F(GraphicItems, TheDialogOfAnIndicatorHasItsStates) {
    Run("insertIndicator");
    OnDialog([this](QDialog& dialog) {
        auto& table = In<QTableWidget>(dialog, "parts");
        ASSERT_EQ(table.rowCount(), 3);
        EXPECT_EQ(table.item(1, 3)->text(), "ArrowSide");
        table.item(1, 3)->setText("TriangleDash");
        dialog.accept();
    });
    Run("reportItem");
    const std::string before = UndoName();
    EXPECT_EQ(before, "Change Indicator1");
    EXPECT_EQ(Problem(), "No problems");
    EXPECT_NE(Model().Source().Text().find("<IndicatorStyle>TriangleDash</IndicatorStyle>"),
              std::string::npos);
}

TEST_F(GraphicItems, TheDialogOfASubreportTakesTheParametersOfTheFile) {
    const std::string parameters =
        "<ReportParameters><ReportParameter Name=\"Year\"><DataType>Integer</DataType></ReportParameter>"
        "<ReportParameter Name=\"Region\"><DataType>String</DataType></ReportParameter></ReportParameters>";
    std::string detail = SalesReport();
    detail.insert(detail.find("</DataSets>") + 11, parameters);
    WriteBytes(m_home / "detail.rdl", detail);
    Model().Edit("Subreport", [&](Document& document) {
        InsertItem(document, Model().Items().bands[0], NewItem::Subreport, {0, 0, 100, 50},
                   {.report = "detail.rdl"});
    });
    Settle();
    Select({"Subreport1"});
    OnDialog([this](QDialog& dialog) {
        auto& table = In<QTableWidget>(dialog, "parts");
        QTest::mouseClick(&In<QAbstractButton>(dialog, "parametersOfFile"), Qt::LeftButton);
        ASSERT_EQ(table.rowCount(), 2);
        EXPECT_EQ(table.item(1, 0)->text(), "Region");
        table.item(0, 1)->setText("2026");
        table.setCurrentCell(1, 1);
        OnDialog([](QDialog& expression) {
            EXPECT_EQ(expression.windowTitle(), "Expression: Value");
            In<QPlainTextEdit>(expression, "expression").setPlainText("=\"North\"");
            expression.accept();
        });
        In<QAbstractButton>(dialog, "parameterExpression").click();
        dialog.accept();
    });
    Run("reportItem");
    EXPECT_EQ(m_dialogs, 2);
    const ElementId list = Model().Source().Find(Id("Subreport1"), "Parameters");
    ASSERT_NE(list, NoElement);
    ASSERT_EQ(Model().Source().Children(list).size(), 2u);
    EXPECT_EQ(Model().Source().TextAt(Model().Source().Children(list)[1], "Value"), "=\"North\"");
    const std::string before = Model().Source().Text();
    OnDialog([this](QDialog& dialog) {
        In<QLineEdit>(dialog, "subreportFile").setText("");
        dialog.accept();
        EXPECT_EQ(In<QLabel>(dialog, "note").text(), "The subreport needs the file of a report");
        EXPECT_TRUE(dialog.isVisible());
    });
    Run("reportItem");
    EXPECT_EQ(Model().Source().Text(), before);
}

TEST_F(GraphicItems, TheDialogOfABarCode) {
    Run("insertBarCode");
    OnDialog([](QDialog& dialog) {
        EXPECT_EQ(In<QComboBox>(dialog, "symbology").currentText(), "Code128");
        In<QComboBox>(dialog, "symbology").setEditText("QRCode");
        In<QComboBox>(dialog, "correction").setEditText("H");
        In<QComboBox>(dialog, "barcodeValue").setEditText("https://example.org");
        dialog.accept();
    });
    Run("reportItem");
    EXPECT_EQ(UndoName(), "Change Barcode1");
    EXPECT_NE(Model().Source().Text().find("<Name>ErrorCorrection</Name>"), std::string::npos);
    EXPECT_NE(Model().Source().Text().find("<Value>QRCode</Value>"), std::string::npos);
    EXPECT_EQ(Problem(), "No problems");
}

TEST_F(GraphicItems, WithoutADataSetAChartSaysWhy) {
    Model().Edit("No data", [](Document& document) { RemoveAt(document, document.Root(), "DataSets"); });
    Run("insertChart");
    EXPECT_EQ(Find<QListWidget>("problems").item(0)->text(),
              "The report has no data set that a chart could show");
}

TEST_F(GraphicItems, ASubreportAsksForItsFile) {
    std::filesystem::create_directory(m_home / "parts");
    WriteBytes(m_home / "parts" / "detail.rdl", SalesReport());
    OnDialog([this](QDialog& dialog) {
        In<QLineEdit>(dialog, "fileNameEdit")
            .setText(QString::fromStdString((m_home / "parts" / "detail.rdl").string()));
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
    });
    Run("insertSubreport");
    EXPECT_EQ(m_dialogs, 1);
    EXPECT_EQ(Text("Subreport1", "ReportName"), "parts/detail.rdl");
    EXPECT_EQ(Problem(), "No problems");
}

}  // namespace
}  // namespace designer::test
