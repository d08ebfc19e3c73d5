// SPDX-License-Identifier: GPL-3.0-or-later
// Charts with groups beside each other and of older schemas, and panels with several gauges.
#include <sys/stat.h>

#include <QListWidget>
#include <QSpinBox>

#include "../graphics/sales_report.h"
#include "designer/graphics/chart_parts.h"
#include "designer/graphics/gauge_parts.h"
#include "dialog_test.h"

namespace designer::test {
namespace {

class MoreGraphics : public DialogTest {
 protected:
    explicit MoreGraphics(const std::string& report = SalesReport()) : DialogTest(report) {}

    static QListWidget& Entries(QDialog& dialog, const char* name) {
        return *dialog.findChild<QListWidget*>(name);
    }
    static void Push(QDialog& dialog, const char* button) {
        QTest::mouseClick(dialog.findChild<QAbstractButton*>(button), Qt::LeftButton);
    }
    static void SetLine(QDialog& dialog, const char* name, const QString& text) {
        List(dialog, name).setEditText(text);
    }
    static QString LineOf(QDialog& dialog, const char* name) { return List(dialog, name).currentText(); }
};

TEST_F(MoreGraphics, ACategoryStandsBesideAnother) {
    Model().Edit("Chart", [this](Document& document) {
        InsertItem(document, Model().Items().bands[0], NewItem::Chart, {0, 0, 200, 150}, {});
    });
    Select({"Chart1"});
    InDialog("reportItem", [](QDialog& dialog) {
        auto& categories = Entries(dialog, "categories");
        Entries(dialog, "fields").setCurrentRow(1);
        Push(dialog, "categoriesAdd");
        ASSERT_EQ(categories.count(), 2);
        EXPECT_EQ(categories.item(1)->text(), "   =Fields!City.Value");
        dialog.findChild<QSpinBox*>("entryLevel")->setValue(1);
        EXPECT_EQ(categories.item(1)->text(), "=Fields!City.Value");
        Push(dialog, "categoriesAdd");
        SetLine(dialog, "entryValue", "All");
        EXPECT_EQ(categories.item(2)->text(), "   All");
        QTest::keyClick(dialog.findChild<QSpinBox*>("entryLevel"), Qt::Key_Down);
        dialog.accept();
        EXPECT_FALSE(dialog.isVisible()) << dialog.findChild<QLabel*>("chartTabsNote")->text().toStdString();
    });
    const ChartDesign design = ReadChartDesign(Model().Source(), Id("Chart1"));
    ASSERT_EQ(design.categories.size(), 3u);
    EXPECT_EQ(design.categories[2].expression, "All");
    EXPECT_EQ(design.categories[1].level + design.categories[2].level, 2);
    EXPECT_EQ(Canvas().Failure(), "");
    Run("editUndo");
    EXPECT_EQ(ReadChartDesign(Model().Source(), Id("Chart1")).categories.size(), 1u);
}

TEST_F(MoreGraphics, EachSymbologyOfABarCodeIsOfferedByOneName) {
    Run("insertBarCode");
    InDialog("reportItem", [](QDialog& dialog) {
        const QComboBox& names = List(dialog, "symbology");
        EXPECT_EQ(names.count(), 26);
        EXPECT_EQ(names.itemText(0), "Code128");
        EXPECT_NE(names.findText("QRCode"), -1);
        EXPECT_EQ(names.findText("QR", Qt::MatchFixedString), -1);
    });
}

TEST_F(MoreGraphics, TheFileOfASubreportIsFoundAsARunFindsIt) {
    std::string detail = SalesReport();
    detail.insert(detail.find("</DataSets>") + 11,
                  "<ReportParameters><ReportParameter Name=\"Year\"/></ReportParameters>");
    WriteBytes(m_home / "Detail.rdl", detail);
    WriteBytes(m_home / "torn.rdl", "<Report><Body>");
    ASSERT_EQ(mkfifo((m_home / "pipe.rdl").c_str(), 0600), 0);
    Model().Edit("Subreport", [&](Document& document) {
        InsertItem(document, Model().Items().bands[0], NewItem::Subreport, {0, 0, 100, 50},
                   {.report = "Detail.rdl"});
    });
    Settle();
    Select({"Subreport1"});
    InDialog("reportItem", [](QDialog& dialog) {
        auto& table = *dialog.findChild<QTableWidget*>("parts");
        auto& file = *dialog.findChild<QLineEdit*>("subreportFile");
        const auto take = [&](const QString& name) {
            table.setRowCount(0);
            file.setText(name);
            Push(dialog, "parametersOfFile");
            return table.rowCount();
        };
        EXPECT_EQ(take("Nowhere"), 0);
        EXPECT_EQ(Message(dialog), "there is no report \"Nowhere\" beside this one");
        for (const char* const name : {"Detail", "detail", "/Sales/Detail", "\\Detail.RDL"}) {
            EXPECT_EQ(take(name), 1) << name;
            EXPECT_EQ(Message(dialog), "") << name;
        }
        EXPECT_EQ(take("pipe.rdl"), 0);
        EXPECT_EQ(Message(dialog), "there is no report \"pipe.rdl\" beside this one");
        EXPECT_EQ(take("torn"), 0);
        EXPECT_NE(Message(dialog), "");
    });
}

class OlderChartDialog : public MoreGraphics {
 protected:
    OlderChartDialog()
        : MoreGraphics(
              "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition\" "
              "xmlns:rd=\"http://schemas.microsoft.com/SQLServer/reporting/"
              "reportdesigner\"><DataSets><DataSet "
              "Name=\"Sales\"><Fields><Field Name=\"Region\"><DataField>Region</DataField></Field><Field "
              "Name=\"Amount\"><DataField>Amount</DataField><rd:TypeName>System.Int32</rd:TypeName></Field></"
              "Fields>"
              "<Rows><Row><Region>North</Region><Amount>10</Amount></Row></Rows></DataSet></DataSets><Body>"
              "<ReportItems><Chart "
              "Name=\"Chart1\"><Type>Column</Type><DataSetName>Sales</DataSetName><Top>1cm</Top>"
              "<Left>1cm</Left><Height>5cm</Height><Width>8cm</Width><CategoryAxis><Axis><Visible>true</"
              "Visible></Axis>"
              "</CategoryAxis></Chart></ReportItems><Height>8cm</Height></Body><Width>10cm</Width></"
              "Report>") {}
};

TEST_F(OlderChartDialog, MakesAChartFromNothing) {
    const std::string before = Model().Source().Text();
    Select({"Chart1"});
    InDialog("reportItem", [](QDialog& dialog) {
        auto& gallery = Entries(dialog, "gallery");
        int shown = 0;
        for (int row = 0; row < gallery.count(); ++row) {
            shown += gallery.item(row)->isHidden() ? 0 : 1;
        }
        EXPECT_EQ(shown, 19);
        Entries(dialog, "fields").setCurrentRow(1);
        Push(dialog, "valuesAdd");
        Entries(dialog, "fields").setCurrentRow(0);
        Push(dialog, "categoriesAdd");
        Push(dialog, "seriesAdd");
        Push(dialog, "seriesAdd");
        EXPECT_EQ(dialog.findChild<QSpinBox*>("entryLevel"), nullptr);
        Push(dialog, "seriesRemove");
        SetLine(dialog, "chartTitle", "Old");
        SetLine(dialog, "legend", "BottomCenter");
        dialog.accept();
        EXPECT_FALSE(dialog.isVisible()) << dialog.findChild<QLabel*>("chartTabsNote")->text().toStdString();
    });
    const std::string& text = Model().Source().Text();
    EXPECT_NE(text.find("<Value>=Sum(Fields!Amount.Value)</Value>"), std::string::npos);
    EXPECT_NE(text.find("<DynamicCategories>"), std::string::npos);
    EXPECT_NE(text.find("<DynamicSeries>"), std::string::npos);
    EXPECT_EQ(text.find("ChartSeriesHierarchy"), std::string::npos);
    EXPECT_EQ(Text("Chart1", "Legend/Position"), "BottomCenter");
    EXPECT_EQ(Canvas().Failure(), "");
    Run("editUndo");
    EXPECT_EQ(Model().Source().Text(), before);
}

TEST_F(OlderChartDialog, ANewChartIsOfTheSchema) {
    InDialog("insertChart", [](QDialog& dialog) {
        auto& gallery = Entries(dialog, "gallery");
        EXPECT_TRUE(gallery.item(gallery.count() - 1)->isHidden());
    });
    Model().Edit("Chart", [this](Document& document) {
        InsertItem(document, Model().Items().bands[0], NewItem::Chart, {0, 0, 200, 150}, {});
    });
    Settle();
    Model().Edit("Delete", [this](Document& document) { Remove(document, Id("Chart1")); });
    Canvas().Refresh();
    EXPECT_EQ(Text("Chart2", "Type") + Text("Chart2", "Title/Caption"), "ColumnAmount by Region");
    EXPECT_EQ(ReadChartDesign(Model().Source(), Id("Chart2")).categories.size(), 1u);
    EXPECT_EQ(Canvas().Failure(), "");
}

// Parts of charts have a style, too.
TEST_F(MoreGraphics, APartOfAChartIsFormatted) {
    Model().Edit("Chart", [this](Document& document) {
        InsertItem(document, Model().Items().bands[0], NewItem::Chart, {0, 0, 200, 150}, {});
    });
    const ElementId title = Model().Source().Find(Id("Chart1"), "ChartTitles/ChartTitle");
    Model().Select({title});
    Settle();
    EXPECT_FALSE(Find<QAction>("formatRight").isEnabled());
    EXPECT_FALSE(Find<QAction>("bordersAll").isEnabled());
    Run("formatItalic");
    InDialog("formatStyle", [](QDialog& dialog) {
        Type(dialog, "Font size", "14");
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(Model().Source().TextAt(title, "Style/FontStyle"), "Italic");
    EXPECT_EQ(Model().Source().TextAt(title, "Style/FontSize"), "14pt");
    EXPECT_EQ(Canvas().Failure(), "");
}

TEST_F(MoreGraphics, ASecondGaugeAndAnotherKind) {
    Run("insertGauge");
    InDialog("reportItem", [](QDialog& dialog) {
        auto& gauges = *dialog.findChild<QComboBox*>("gauges");
        EXPECT_EQ(gauges.count(), 1);
        SetLine(dialog, "gaugeMost", "50");
        Push(dialog, "addLinear");
        ASSERT_EQ(gauges.count(), 2);
        EXPECT_EQ(gauges.currentIndex(), 1);
        EXPECT_EQ(LineOf(dialog, "gaugeValue"), "=Avg(Fields!Amount.Value)");
        SetLine(dialog, "gaugeValue", "=Max(Fields!Pieces.Value)");
        Push(dialog, "addIndicator");
        gauges.setCurrentIndex(0);
        EXPECT_EQ(LineOf(dialog, "gaugeMost"), "50");
        auto& kind = *dialog.findChild<QComboBox*>("gaugeKind");
        kind.setCurrentIndex(1);
        gauges.setCurrentIndex(2);
        EXPECT_FALSE(kind.isEnabled());
        dialog.accept();
        EXPECT_FALSE(dialog.isVisible()) << Message(dialog);
    });
    EXPECT_EQ(UndoName(), "Change Gauge1");
    auto designs = ReadGauges(Model().Source(), Id("Gauge1"));
    ASSERT_EQ(designs.size(), 3u);
    EXPECT_EQ(Text("Gauge1", "RadialGauges"), "-");
    EXPECT_EQ(Text("Gauge1", "LinearGauges/LinearGauge/GaugeScales/LinearScale/MaximumValue/Value"), "50");
    EXPECT_EQ(Canvas().Failure(), "");
    InDialog("reportItem", [](QDialog& dialog) {
        Push(dialog, "removeGauge");
        Push(dialog, "removeGauge");
        EXPECT_EQ(dialog.findChild<QComboBox*>("gauges")->count(), 1);
        EXPECT_FALSE(dialog.findChild<QAbstractButton*>("removeGauge")->isEnabled());
        dialog.accept();
    });
    EXPECT_EQ(ReadGauges(Model().Source(), Id("Gauge1")).size(), 1u);
    Run("editUndo");
    Run("editUndo");
    EXPECT_EQ(ReadGauges(Model().Source(), Id("Gauge1")).at(0).kind, GaugeKind::Dial);
}

TEST_F(MoreGraphics, LimitsOfAGaugeDoNotContradictEachOther) {
    Run("insertGauge");
    InDialog("reportItem", [](QDialog& dialog) {
        const auto note = [&dialog] {
            dialog.accept();
            EXPECT_TRUE(dialog.isVisible());
            return Message(dialog);
        };
        SetLine(dialog, "gaugeLeast", "10");
        SetLine(dialog, "gaugeMost", "-7");
        EXPECT_EQ(note(), "The minimum 10 is not below the maximum -7");
        SetLine(dialog, "gaugeMost", "=Max(Fields!Amount.Value)");
        auto& table = *dialog.findChild<QTableWidget*>("parts");
        Push(dialog, "partsAdd");
        const int row = table.rowCount() - 1;
        table.item(row, 0)->setText("20");
        const std::string range = "Range " + std::to_string(row + 1);
        EXPECT_EQ(note(), range + " has a From and no To");
        table.item(row, 1)->setText("15");
        EXPECT_EQ(note(), range + " goes from 20 down to 15");
        table.item(row, 0)->setText("");
        EXPECT_EQ(note(), range + " has a To and no From");
        table.item(row, 0)->setText("=20");
        dialog.accept();
        EXPECT_FALSE(dialog.isVisible()) << Message(dialog);
    });
    EXPECT_EQ(UndoName(), "Change Gauge1");
}

}  // namespace
}  // namespace designer::test
