// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDialog>
#include <QFileDialog>
#include <QPrinter>
#include <QTimer>
#include <filesystem>
#include <fstream>

#include "platform/contracts/export_formats.h"
#include "platform/viewer/report_printer.h"
#include "platform/viewer/report_saver.h"
#include "platform/viewer/viewer_fixture.h"
#include "support/temporary_folder.h"

namespace viewer::test {
namespace {

class ViewerOutput : public ViewerTest {
 protected:
    // Waits for the dialog of that name and acts on it.
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

    // A program of that name, found before all others until the end of the test.
    void WriteProgram(const std::string& name, const std::string& text) {
        const std::filesystem::path file = m_folder.Path() / "bin" / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << "#!/bin/sh\n" << text << "\n";
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        qputenv("PATH", QByteArray::fromStdString(file.parent_path().string()) + ":" + m_path);
    }
    ~ViewerOutput() override { qputenv("PATH", m_path); }

    const QByteArray m_path = qgetenv("PATH");
    TemporaryFolder m_folder;
};

TEST_F(ViewerOutput, EveryFormatIsExportedFromWhatIsShown) {
    Show(1);
    const std::pair<const char*, const char*> formats[] = {
        {"a.pdf", "format 31"},  {"a.rtf", "format 35"}, {"a.xls", "format 27"}, {"a.doc", "format 14"},
        {"a.html", "format 32"}, {"a.PDF", "format 31"}, {"a.csv", "format 36"}, {"a.xlsx", "format 37"},
        {"a.png", "format 38"},  {"a.docx", "format 39"}};
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
        m_viewer.SaveAs("/srv/out/a.tiff");
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 5);
        EXPECT_EQ(error.Description(), "There is no format for files \".tiff\"");
    }
}

TEST_F(ViewerOutput, SaveAsAsksForTheFile) {
    Show(1);
    const std::string folder = m_folder.Path().string();
    OnDialog<QFileDialog>("dlgSave", [&](QFileDialog& dialog) {
        EXPECT_EQ(QFileInfo(dialog.selectedFiles().first()).fileName(), "Sales.pdf");
        EXPECT_EQ(dialog.nameFilters().size(), static_cast<qsizetype>(report::FormatTable.size()));
        EXPECT_EQ(dialog.nameFilters().first(), "PDF document (*.pdf)");
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

TEST_F(ViewerOutput, PrintingToAFileMakesTheDocumentOfThePages) {
    Show(4);
    m_engine.calls.clear();
    PrintJob job;
    job.file = QString::fromStdString((m_folder.Path() / "out.pdf").string());
    EXPECT_EQ(m_viewer.Print(job, 2, 3), 2);
    EXPECT_EQ(m_engine.calls, std::vector<std::string>{"pdf 2 to 3"}) << "nothing is drawn";
    EXPECT_TRUE(std::filesystem::exists(job.file.toStdString()));
}

TEST_F(ViewerOutput, PrintersAreGivenTheDocumentByTheCommandLp) {
    const std::string note = (m_folder.Path() / "note").string();
    WriteProgram("lp",
                 "printf '%s\\n' \"$@\" > " + note + "; for file; do :; done; cat \"$file\" >> " + note);
    Show(4);
    PrintJob job;
    job.printer = "Office";
    job.title = "Sales \"North\"";
    job.copies = 3;
    job.options = QStringList{"media=A4", "fit-to-page"};
    EXPECT_EQ(m_viewer.Print(job, 1, 1000), 4);
    const std::string said = Run("cat " + note);
    EXPECT_EQ(said.substr(0, said.find("--\n")),
              "-d\nOffice\n-t\nSales \"North\"\n-n\n3\n-o\nmedia=A4\n-o\nfit-to-page\n");
    EXPECT_TRUE(said.ends_with("Sales _North_.pdf\n%PDF")) << said;
    EXPECT_EQ(Calls("pdf 1 to 4"), 1);
}

TEST_F(ViewerOutput, APrinterThatRefusesIsAnErrorThatSaysWhy) {
    WriteProgram("lp", "echo \"lp: The printer 'x' does not exist.\" >&2; exit 1");
    Show(1);
    PrintJob job;
    job.printer = "x";
    try {
        m_viewer.Print(job, 1, 1);
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 57);
        EXPECT_EQ(error.Description(),
                  "The printer does not take the job: lp: The printer \"x\" does not exist.");
    }
}

TEST_F(ViewerOutput, WithoutThePrintingSystemsCommandTheErrorNamesIt) {
    std::filesystem::create_directory(m_folder.Path() / "bin");
    qputenv("PATH", QByteArray::fromStdString((m_folder.Path() / "bin").string()));
    Show(1);
    PrintJob job;
    job.printer = "Office";
    try {
        m_viewer.Print(job, 1, 1);
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Description(), "The printer does not take the job: the program \"lp\" is missing");
    }
}

TEST_F(ViewerOutput, WhatTheDialogHoldsIsToldToThePrintingSystem) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    SetPaper(printer, {842, 595});
    PrintJob job = JobOf(printer, "Sales", false);
    EXPECT_EQ(job.options.join(" ").toStdString(), "media=A4 sides=one-sided collate=true");
    SetPaper(printer, {200, 300});
    printer.setCopyCount(2);
    printer.setCollateCopies(false);
    printer.setColorMode(QPrinter::GrayScale);
    printer.setPageOrder(QPrinter::LastPageFirst);
    job = JobOf(printer, "Sales", true);
    EXPECT_EQ(job.copies, 2);
    EXPECT_EQ(job.options.join(" ").toStdString(),
              "media=Custom.200x300 fit-to-page sides=one-sided collate=false "
              "print-color-mode=monochrome outputorder=reverse");
}

TEST_F(ViewerOutput, PagesAfterTheLastAreAnErrorAndNoEmptyJob) {
    Show(3);
    PrintJob job;
    job.file = QString::fromStdString((m_folder.Path() / "out.pdf").string());
    try {
        m_viewer.Print(job, 7, 9);
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 9);
        EXPECT_EQ(error.Description(), "The report has no page 7");
    }
    EXPECT_FALSE(std::filesystem::exists(job.file.toStdString()));
    EXPECT_EQ(m_viewer.Print(job, 3, 9), 1);
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
