// SPDX-License-Identifier: GPL-3.0-or-later
// An invoice and a matrix, built from a blank report on the page alone, as the designer's tutorial tells it.
// With OXC_PICTURES set to a folder, the pictures of the tutorial are left there.
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>

#include "designer/dialogs/data_source_dialog.h"
#include "designer/model/new_items.h"
#include "designer/report_dialogs/data_set_dialog.h"
#include "designer/window/window_fixture.h"
#include "platform/viewer/report_viewer.h"
#include "support/modal.h"
#include "support/source_dir.h"

namespace designer::test {
namespace {

// Returns the query of the tutorial with this number, from 0: what the page says is what is run here.
std::string QueryOfTutorial(int number) {
    const std::string page = ReadBytes(std::filesystem::path(SourceDir()) / "docs/designer-tutorial.md");
    const std::string mark = "```sql\n";
    std::size_t begin = page.find(mark);
    for (; number > 0 && begin != std::string::npos; --number) {
        begin = page.find(mark, begin + 1);
    }
    EXPECT_NE(begin, std::string::npos);
    begin += mark.size();
    return page.substr(begin, page.find("```", begin) - begin);
}

class FromNothing : public WindowTest {
 protected:
    FromNothing() {
        const std::string command =
            "python3 \"" + SourceDir() + "/samples/make_samples.py\" \"" + m_home.Path().string() + "\"";
        EXPECT_EQ(std::system(command.c_str()), 0);
        QImage logo(96, 96, QImage::Format_ARGB32);
        logo.fill(QColor("#1f3a5f"));
        QPainter painter(&logo);
        painter.setPen(QPen(Qt::white, 10));
        painter.drawPolyline(QPolygon{{28, 72}, {28, 24}, {68, 72}, {68, 24}});
        painter.end();
        logo.save(QString::fromStdString((m_home / "logo.png").string()));
        // The report begins in a window of its own.
        delete m_window;
        m_window = new DesignWindow;
        m_window->resize(1180, 860);
        m_window->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_window));
        Settle();
    }

    void Picture(const char* name) {
        if (const char* folder = std::getenv("OXC_PICTURES")) {
            Canvas().Refresh();
            Settle();
            m_window->grab().save(QString("%1/%2.png").arg(folder, name));
        }
    }

    void SaveAs(const char* name) {
        fakes::WhileModal<QDialog>([&] { Find<QAction>("fileSave").trigger(); },
                                   [&](QDialog& dialog) {
                                       auto* line = dialog.findChild<QLineEdit*>("fileNameEdit");
                                       line->setText(QString::fromStdString((m_home / name).string()));
                                       QTest::keyClick(line, Qt::Key_Return);
                                   });
        EXPECT_EQ(m_window->File(), m_home / name);
    }
    static void Ok(QDialog& dialog) {
        ClickOk(dialog);
        EXPECT_FALSE(dialog.isVisible());
    }
    void AddData(const std::string& query) {
        fakes::WhileModal<DataSourceDialog>([&] { Find<QAction>("reportDataSource").trigger(); },
                                            [&](DataSourceDialog& dialog) {
                                                QTest::keyClicks(dialog.findChild<QLineEdit*>("file"),
                                                                 "sales.db");
                                                Ok(dialog);
                                            });
        fakes::WhileModal<DataSetDialog>([&] { Find<QAction>("reportDataSet").trigger(); },
                                         [&](DataSetDialog& dialog) {
                                             Paste(*dialog.findChild<QPlainTextEdit*>("query"), query);
                                             Ok(dialog);
                                         });
        Settle();
    }

    static void Paste(QPlainTextEdit& text, const std::string& query) {
        QGuiApplication::clipboard()->setText(QString::fromStdString(query));
        QTest::keyClick(&text, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(text.toPlainText().toStdString(), query);
    }

    // A place of a band in centimetres.
    QPoint In(BandKind kind, double x, double y) {
        const double scale = Canvas().Zoom() / 100 * Canvas().logicalDpiX() / 2.54;
        const ElementId band =
            kind == BandKind::Body ? BodyOf(Model().Source()) : PageBandOf(Model().Source(), kind);
        return (Canvas().AreaOf(band).topLeft() + QPointF(x, y) * scale).toPoint();
    }
    // Draws an item with a tool of the toolbox. The corners are in centimetres of the band.
    void Draw(const char* tool, BandKind band, QRectF place) {
        QTest::mouseClick(&Find(tool), Qt::LeftButton);
        Drag(In(band, place.left(), place.top()), In(band, place.right(), place.bottom()));
    }
    // Types the text of what is selected; a line feed begins a line.
    void TypeText(const std::string& text) {
        // A dialog before it has taken the activation.
        m_window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_window));
        Key(Qt::Key_Return);
        QWidget& editor = *QApplication::focusWidget();
        ASSERT_EQ(editor.objectName(), "txtInPlace");
        QTest::keyClick(&editor, Qt::Key_A, Qt::ControlModifier);
        for (const char c : text) {
            c == '\n' ? QTest::keyClick(&editor, Qt::Key_Return, Qt::ShiftModifier)
                      : QTest::keyClick(&editor, c);
        }
        QTest::keyClick(&editor, Qt::Key_Return);
        Settle();
    }
    void DrawText(BandKind band, QRectF place, const std::string& text) {
        Draw("toolTextBox", band, place);
        TypeText(text);
    }
    void Set(const QString& property, const QString& value) {
        TypeInRow(Row("properties", property), value);
        Canvas().setFocus();
    }
    void Drop(const std::string& field, QPoint at) { DropField(field, at, "Rows"); }
    QPoint MiddleOf(ElementId item) { return Canvas().AreaOf(item).center().toPoint(); }
    ElementId CellOf(const char* table, std::size_t row, std::size_t column) {
        for (const GridCell& cell : GridOf(Model().Source(), Id(table)).cells) {
            if (cell.part == GridCell::Part::Body && cell.row == row && cell.column == column) {
                return cell.item;
            }
        }
        ADD_FAILURE() << "no cell " << row << " " << column;
        return NoElement;
    }
    // Drags the right border of a cell by centimetres.
    void DragRight(ElementId cell, double centimetres) {
        const QRectF area = Canvas().AreaOf(cell);
        const QPoint border(qRound(area.right()), qRound(area.center().y()));
        Drag(border, border + In(BandKind::Body, centimetres, 0) - In(BandKind::Body, 0, 0));
    }
    void ClickCell(const char* table, std::size_t row, std::size_t column) {
        Click(MiddleOf(CellOf(table, row, column)));
    }

    // The texts of the first page of the preview, a line each.
    std::string Preview(const char* picture) {
        Run("viewPreview");
        auto& viewer = Find<ReportViewer>("preview");
        EXPECT_TRUE(QTest::qWaitFor([&] { return viewer.CurrentPage() == 1 && !Find("cmdStop").isVisible(); },
                                    10000));
        Picture(picture);
        QWidget* pages = viewer.findChild<QWidget*>("pages");
        pages->actions().at(1)->trigger();
        pages->actions().at(0)->trigger();
        return QGuiApplication::clipboard()->text().toStdString();
    }
};

class Invoice : public FromNothing {
 protected:
    // The letterhead is the page header: taller than it begins, with a picture and the sender.
    void PutLetterhead() {
        Drag(In(BandKind::PageHeader, 5, 1.5), In(BandKind::PageHeader, 5, 3));
        fakes::WhileModal<QDialog>(
            [&] {
                Draw("toolImage", BandKind::PageHeader, {0, 0.25, 2, 2});
            },
            [&](QDialog& dialog) {
                auto* line = dialog.findChild<QLineEdit*>("fileNameEdit");
                line->setText(QString::fromStdString((m_home / "logo.png").string()));
                QTest::keyClick(line, Qt::Key_Return);
            });
        DrawText(BandKind::PageHeader, {2.5, 0.25, 8, 0.75}, "Norvale Trading");
        Set("Font size", "18pt");
        Set("Font weight", "Bold");
        DrawText(BandKind::PageHeader, {2.5, 1.25, 8, 1}, "Quay 7, 1010 Bergen\nVAT 123 456 789");
        Picture("designer-invoice-head");
    }

    // Address, number and date are of the first row of the data.
    void PutAddress() {
        DrawText(BandKind::Body, {0, 0.5, 8, 1.5},
                 "=First(Fields!company.Value, \"Rows\") & vbCrLf & First(Fields!street.Value, \"Rows\") & "
                 "vbCrLf & "
                 "First(Fields!city.Value, \"Rows\")");
        DrawText(BandKind::Body, {0, 2.75, 9, 1}, "=\"Invoice \" & First(Fields!number.Value, \"Rows\")");
        Set("Font size", "16pt");
        Picture("designer-invoice-address");
    }

    // The lines: fields dragged to the page and beside the table.
    void PutLines() {
        Drop("product", In(BandKind::Body, 0, 4.5));
        ASSERT_EQ(Selected(), "Tablix1");
        for (const char* field : {"quantity", "price", "amount"}) {
            const QRectF table = Canvas().AreaOf(Id("Tablix1"));
            Drop(field, QPointF(table.right() + 5, table.top() + 8).toPoint());
        }
        ClickCell("Tablix1", 1, 0);
        DragRight(CellOf("Tablix1", 1, 0), 4);
        Picture("designer-invoice-lines");
    }

    // Sum, tax and total are rows below the lines.
    void PutSums() {
        for (int row = 0; row < 3; ++row) {
            ClickCell("Tablix1", 1, 0);
            Run("tableRowBelowGroup");
        }
        Drop("amount", MiddleOf(CellOf("Tablix1", 2, 3)));
        const std::pair<std::size_t, std::string> texts[] = {{2, "Net"}, {3, "VAT 19 %"}, {4, "To pay"}};
        for (const auto& [row, text] : texts) {
            ClickCell("Tablix1", row, 0);
            TypeText(text);
        }
        ClickCell("Tablix1", 3, 3);
        TypeText("=Sum(Fields!amount.Value) * 0.19");
        ClickCell("Tablix1", 4, 3);
        TypeText("=Sum(Fields!amount.Value) * 1.19");
        Set("Font weight", "Bold");
        ClickCell("Tablix1", 1, 2);
        Click(MiddleOf(CellOf("Tablix1", 4, 3)), Qt::ShiftModifier);
        Set("Format", "N2");
        Picture("designer-invoice-sums");
    }
};

TEST_F(Invoice, IsMadeFromNothing) {
    SaveAs("invoice.rdl");
    AddData(QueryOfTutorial(0));
    ASSERT_NE(Row("reportData", "amount"), nullptr);

    PutLetterhead();
    PutAddress();
    PutLines();
    ASSERT_FALSE(HasFatalFailure());
    PutSums();
    DrawText(BandKind::PageFooter, {12, 0.5, 5, 0.75},
             "=\"Page \" & Globals!PageNumber & \" of \" & Globals!TotalPages");
    Set("Text alignment", "Right");
    Run("fileSave");
    EXPECT_EQ(
        Preview("designer-invoice-preview"),
        "Norvale Trading\nQuay 7, 1010 Bergen\nVAT 123 456 789\nHájek Delicatessen AB\nStation Street 61\n"
        "411 05 Göteborg\nInvoice 10017\nProduct Quantity Price Amount\n"
        "Espresso Blend, 1 kg 24 16.50 396.00\nHighland Arabica, 1 kg 10 18.90 189.00\n"
        "Rapeseed Oil, 5 l 24 21.40 513.60\nAceto Balsamico, 500 ml 6 13.90 83.40\n"
        "Decaf Filter, 500 g 12 9.80 117.60\nNet 1,299.60\nVAT 19 % 246.92\nTo pay 1,546.52\nPage 1 of 1");
}

TEST_F(FromNothing, AMatrix) {
    SaveAs("matrix.rdl");
    AddData(QueryOfTutorial(1));
    ASSERT_NE(Row("reportData", "amount"), nullptr);
    DrawText(BandKind::Body, {0, 0.5, 10, 1}, "Sales by region and year");
    Set("Font size", "16pt");
    Draw("toolMatrix", BandKind::Body, {0, 2, 5, 1.5});
    Picture("designer-matrix-new");
    ASSERT_EQ(Selected(), "Tablix1");
    ClickCell("Tablix1", 0, 0);
    Set("Format", "N0");
    // Totals of both groups, which are picked in the pane of the groups.
    for (const char* group : {"regionGroup", "yearGroup"}) {
        auto& groups = Find<QTreeWidget>("groups");
        const auto rows = groups.findItems(group, Qt::MatchStartsWith | Qt::MatchRecursive);
        ASSERT_EQ(rows.size(), 1) << group;
        groups.setCurrentItem(rows.front());
        Settle();
        if (group == std::string("regionGroup")) {
            Set("Header size", "4cm");
        }
        Run("totalAfter");
    }
    Picture("designer-matrix-total");
    Run("fileSave");
    const std::string text = Preview("designer-matrix-preview");
    EXPECT_EQ(text,
              "Sales by region and year\nRegion 2024 2025 2026 Total\n"
              "Central Europe 100,672 95,432 100,656 296,759\nNorth America 31,674 44,246 50,847 126,767\n"
              "Northern Europe 57,091 73,750 75,882 206,723\nSouthern Europe 74,183 86,255 89,976 250,414\n"
              "Western Europe 68,975 97,455 137,155 303,585\nTotal 332,595 397,137 454,516 1,184,248");
}

}  // namespace
}  // namespace designer::test
