#include <QDialog>
#include <QFileDialog>
#include <QPainter>
#include <QPrinter>
#include <QTimer>
#include <filesystem>

#include "platform/viewer/report_saver.h"
#include "platform/viewer/viewer_fixture.h"
#include "support/temporary_folder.h"

namespace viewer::test {
namespace {

class ViewerOutput : public ViewerTest {
 protected:
    // Waits for the dialog of that name and does something to it.
    template <typename Dialog>
    static void OnDialog(const char* name, std::function<void(Dialog&)> work) {
        QTimer::singleShot(50, [name, work] {
            for (QWidget* window : QApplication::topLevelWidgets()) {
                if (window->objectName() == name && window->isVisible()) {
                    work(*qobject_cast<Dialog*>(window));
                    return;
                }
            }
            OnDialog<Dialog>(name, work);
        });
    }
    static std::string Run(const std::string& command) {
        std::string said;
        std::FILE* pipe = popen(command.c_str(), "r");
        char piece[4096];
        while (std::fgets(piece, sizeof piece, pipe)) {
            said += piece;
        }
        pclose(pipe);
        return said;
    }

    TemporaryFolder m_folder;
};

TEST_F(ViewerOutput, EveryFormatIsExportedFromWhatIsShown) {
    Show(1);
    const std::pair<const char*, const char*> formats[] = {{"a.pdf", "format 31"},  {"a.rtf", "format 35"},
                                                           {"a.xls", "format 27"},  {"a.doc", "format 14"},
                                                           {"a.html", "format 32"}, {"a.PDF", "format 31"}};
    for (const auto& [name, format] : formats) {
        m_engine.calls.clear();
        m_viewer.SaveAs("/srv/out/" + std::string(name));
        const std::string file = (std::string(name) == "a.html" ? "html file " : "disk file ") +
                                 ("Z:\\srv\\out\\" + std::string(name));
        EXPECT_EQ(m_engine.calls, (std::vector<std::string>{"destination 1", format, file, "export False"}));
    }
}

TEST_F(ViewerOutput, AnExtensionWithoutAFormatIsAnError) {
    Show(1);
    try {
        m_viewer.SaveAs("/srv/out/a.png");
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 5);
        EXPECT_EQ(error.Description(), "There is no format for files \".png\"");
    }
}

TEST_F(ViewerOutput, SaveAsAsksForTheFile) {
    Show(1);
    const std::string folder = m_folder.Path().string();
    OnDialog<QFileDialog>("dlgSave", [&](QFileDialog& dialog) {
        EXPECT_EQ(QFileInfo(dialog.selectedFiles().first()).fileName(), "Sales.pdf");
        EXPECT_EQ(dialog.nameFilters().size(), 5);
        auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
        name->setText(QString::fromStdString(folder + "/mine"));
        QTest::keyClick(name, Qt::Key_Return);
    });
    Key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(Calls("export False"), 1);
    ASSERT_GE(m_engine.calls.size(), 2U);
    EXPECT_TRUE(m_engine.calls[m_engine.calls.size() - 2].ends_with("\\mine.pdf"))
        << m_engine.calls[m_engine.calls.size() - 2];
}

TEST_F(ViewerOutput, AFailedSaveIsALine) {
    m_engine.reports["sales.rpt"].exportError = RuntimeError(76, "Path not found");
    Show(1);
    const std::string folder = m_folder.Path().string();
    OnDialog<QFileDialog>("dlgSave", [&](QFileDialog& dialog) {
        auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
        name->setText(QString::fromStdString(folder + "/mine.pdf"));
        QTest::keyClick(name, Qt::Key_Return);
    });
    Click("cmdSave");
    EXPECT_EQ(Message(), "The report cannot be saved: Path not found [76]");
}

TEST_F(ViewerOutput, ASaveThatIsGivenUpExportsNothing) {
    Show(1);
    OnDialog<QFileDialog>("dlgSave", [](QFileDialog& dialog) { dialog.reject(); });
    Click("cmdSave");
    EXPECT_EQ(Calls("export False"), 0);
}

TEST_F(ViewerOutput, FileNamesComeFromTitlesThatMayHoldAnything) {
    EXPECT_EQ(NameFor("Sales / \"North\""), "Sales _ _North_");
    EXPECT_EQ(NameFor("  "), "report");
}

TEST_F(ViewerOutput, PagesArePrintedInTheirOwnSizesAsVectors) {
    fakes::FakePages pages = Pages(4);
    pages.pages[2].width = 842;
    pages.pages[2].height = 595;
    pages.onDraw = [](int, QPainter& painter) { painter.fillRect(QRectF(0, 0, 72, 72), Qt::black); };
    Show(std::move(pages));
    const std::string file = (m_folder.Path() / "out.pdf").string();
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(file));
    EXPECT_EQ(m_viewer.Print(printer, 2, 3, false), 2);
    if (std::system("command -v pdfinfo >/dev/null 2>&1") != 0) {
        GTEST_SKIP() << "this machine has no program pdfinfo";
    }
    const std::string info = Run("pdfinfo -f 1 -l 2 " + file);
    EXPECT_NE(info.find("Pages:           2"), std::string::npos) << info;
    EXPECT_NE(info.find("612 x 792"), std::string::npos) << info;
    EXPECT_NE(info.find("842 x 595"), std::string::npos) << info;
    EXPECT_EQ(Run("pdfimages -list " + file + " | tail -n +3"), "");
}

TEST_F(ViewerOutput, OnOtherPaperAPageIsTurnedAndMadeSmaller) {
    fakes::FakePages pages = Pages(1);
    pages.pages[0].width = 1684;
    pages.pages[0].height = 1190;
    QTransform used;
    pages.onDraw = [&used](int, QPainter& painter) { used = painter.worldTransform(); };
    Show(std::move(pages));
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString((m_folder.Path() / "out.pdf").string()));
    printer.setPageSize(QPageSize(QPageSize::A4));
    EXPECT_EQ(m_viewer.Print(printer, 1, 1, true), 1);
    const QRectF area = used.mapRect(QRectF(0, 0, 1684, 1190));
    const QRectF sheet = printer.pageLayout().fullRectPixels(printer.resolution());
    EXPECT_TRUE(sheet.adjusted(-20, -20, 20, 20).contains(area));
    EXPECT_GT(area.height(), sheet.height() * 0.95);
    EXPECT_NE(used.m12(), 0) << "turned";
}

TEST_F(ViewerOutput, PagesBehindTheLastAreAnErrorAndNoEmptyJob) {
    Show(3);
    const std::string file = (m_folder.Path() / "out.pdf").string();
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(file));
    try {
        m_viewer.Print(printer, 7, 9, false);
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 9);
        EXPECT_EQ(error.Description(), "The report has no page 7");
    }
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_EQ(m_viewer.Print(printer, 3, 9, false), 1);
}

TEST_F(ViewerOutput, APrintDialogThatIsGivenUpPrintsNothing) {
    Show(1);
    m_engine.calls.clear();
    OnDialog<QDialog>("dlgPrint", [](QDialog& dialog) { dialog.reject(); });
    Key(Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(Calls("draw 1"), 0);
}

}  // namespace
}  // namespace viewer::test
