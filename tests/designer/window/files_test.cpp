// SPDX-License-Identifier: GPL-3.0-or-later
#include <sys/stat.h>

#include <QPlainTextEdit>
#include <QPushButton>
#include <cerrno>
#include <system_error>

#include "answered_box.h"
#include "designer/document/report_file.h"
#include "designer/window/designer_program.h"
#include "designer/window/designer_settings.h"
#include "designer/window/recovery.h"
#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"
#include "platform/shell/desktop_shell.h"
#include "window_fixture.h"

namespace designer::test {
namespace {

using Files = WindowTest;

TEST_F(Files, SavingChangesTheLinesOfTheItemOnly) {
    Select({"Title"});
    Key(Qt::Key_Right);
    EXPECT_TRUE(m_window->isWindowModified());
    EXPECT_EQ(m_window->windowTitle().toStdString(), "sales.rdl[*] - Oxbow Courier Designer");
    Run("fileSave");
    EXPECT_FALSE(m_window->isWindowModified());
    std::string expected = SmallReport();
    const std::string before = "<Left>1cm</Left>";
    expected.replace(expected.find(before), before.size(), "<Left>1.25cm</Left>");
    EXPECT_EQ(Written(), expected);
}

TEST_F(Files, SavingKeepsLinkAndRights) {
    const std::filesystem::path link = m_home / "link.rdl";
    std::filesystem::create_symlink("sales.rdl", link);
    chmod(File().c_str(), 0664);
    EXPECT_TRUE(m_window->OpenFile(link));
    Select({"Title"});
    Key(Qt::Key_Right);
    Run("fileSave");
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_NE(Written(), SmallReport());
    EXPECT_EQ(static_cast<int>(std::filesystem::status(File()).permissions()), 0664);
}

TEST_F(Files, SavingKeepsAllNamesOfAFile) {
    const std::filesystem::path other = m_home / "other.rdl";
    std::filesystem::create_hard_link(File(), other);
    Select({"Title"});
    Key(Qt::Key_Delete);
    Run("fileSave");
    EXPECT_LT(Written().size(), SmallReport().size());
    EXPECT_EQ(ReadBytes(other), Written());
    EXPECT_EQ(Written(), Model().Source().Bytes());
    EXPECT_EQ(std::filesystem::hard_link_count(File()), 2U);
    EXPECT_FALSE(m_window->isWindowModified());
}

TEST_F(Files, AFileWithSeveralNamesThatCannotBeWrittenIsReported) {
    std::filesystem::create_directory(m_home / "folder");
    const std::filesystem::path file = m_home / "folder" / "gone.rdl";
    EXPECT_THROW(WriteReportFile(m_home / "no" / "gone.rdl", "x"), RuntimeError);
    WriteReportFile(file, "first");
    std::filesystem::create_hard_link(file, m_home / "folder" / "other.rdl");
    WriteReportFile(file, "2nd");
    EXPECT_EQ(ReadBytes(m_home / "folder" / "other.rdl"), "2nd");
}

TEST_F(Files, ACopyIsKeptWhileWorkGoesOn) {
    Select({"Title"});
    for (int i = 0; i < 12; ++i) {  // a change every quarter of a second
        Key(Qt::Key_Right);
        QTest::qWait(250);
    }
    EXPECT_FALSE(std::filesystem::is_empty(RecoveryFolder()));
}

TEST_F(Files, QuittingAsksBeforeItClosesAnything) {
    DesignerProgram program;
    DesignWindow* unchanged = program.NewWindow();
    DesignWindow* changed = program.NewWindow();
    ASSERT_TRUE(changed->OpenFile(File()));
    changed->Model().Edit("Change",
                          [](Document& document) { InsertPageBand(document, BandKind::PageHeader); });
    const auto quit = [&] { unchanged->findChild<QAction*>("fileQuit")->trigger(); };
    EXPECT_EQ(Answer(quit, "Cancel"), "\"sales.rdl\" has changes that are not saved. Save them?");
    Settle();
    EXPECT_EQ(program.Windows(), (QList<DesignWindow*>{unchanged, changed}));
    Answer(quit, "Discard");
    EXPECT_TRUE(program.Windows().isEmpty());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Written(), SmallReport());
}

TEST_F(Files, AFileAndALinkToItHaveOneWindow) {
    DesignerProgram program;
    DesignWindow* window = program.Open(QString::fromStdString(File().string()));
    std::filesystem::create_symlink("sales.rdl", m_home / "link.rdl");
    std::filesystem::create_hard_link(File(), m_home / "second.rdl");
    window->showMinimized();
    EXPECT_EQ(program.Open(QString::fromStdString((m_home / "link.rdl").string())), window);
    EXPECT_FALSE(window->isMinimized());
    EXPECT_EQ(program.Open(QString::fromStdString((m_home / "second.rdl").string())), window);
    EXPECT_EQ(program.Windows().size(), 1);
    program.Quit();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(Files, AScheduleIsMadeOfTheSavedFile) {
    Select({"Title"});
    Key(Qt::Key_Right);
    EXPECT_EQ(
        Answer([&] { Find<QAction>("fileSchedule").trigger(); }, "Cancel"),
        "The report has changes that are not saved. A schedule is made of the saved file. Save them now?");
    EXPECT_EQ(Written(), SmallReport());
    Run("fileSave");
    // There is no editor beside the test.
    const std::string editor = DesktopShell::InstalledProgram().string();
    EXPECT_EQ(Answer([&] { Find<QAction>("fileSchedule").trigger(); }, "OK"),
              "The editor \"" + editor + "\" cannot be started: " + std::generic_category().message(ENOENT));
}

TEST_F(Files, TheHelpBookIsThatOfTheApplication) {
    SetAppPath(paths::FromUser(m_home.Path().string()));
    EXPECT_EQ(Answer([&] { Find<QAction>("helpBook").trigger(); }, "OK"), "The help book is not installed");
    SetAppPath("");
}

TEST_F(Files, ClosingAsks) {
    Select({"Title"});
    Key(Qt::Key_Right);
    EXPECT_EQ(Answer([&] { m_window->close(); }, "Cancel"),
              "\"sales.rdl\" has changes that are not saved. Save them?");
    EXPECT_TRUE(m_window->isVisible());
    Answer([&] { m_window->close(); }, "Save");
    EXPECT_NE(Written(), SmallReport());
    EXPECT_TRUE(!m_window || !m_window->isVisible());
}

TEST_F(Files, DiscardLeavesTheFile) {
    Select({"Title"});
    Key(Qt::Key_Right);
    Answer([&] { m_window->close(); }, "Discard");
    EXPECT_EQ(Written(), SmallReport());
}

TEST_F(Files, AFileThatCannotBeReadIsReported) {
    const std::string missing = (m_home / "missing.rdl").string();
    EXPECT_EQ(Answer([&] { EXPECT_FALSE(m_window->OpenFile(missing)); }, "OK"),
              "\"" + missing + "\" does not exist");
    EXPECT_EQ(Selected(), "");
    EXPECT_EQ(m_window->File(), File());
}

TEST_F(Files, AnotherProgramsChangeIsNoticed) {
    std::string changed = SmallReport();
    changed.replace(changed.find("Sales<"), 5, "Costs");
    WriteBytes(File(), changed);
    EXPECT_EQ(Answer([&] { QTest::qWait(2500); }, "Reload"), "Another program has changed \"sales.rdl\".");
    EXPECT_EQ(Value("Title"), "Costs");
    EXPECT_FALSE(m_window->isWindowModified());
    m_window->activateWindow();
    WriteBytes(File(), SmallReport());
    Answer([&] { QTest::qWait(2500); }, "Keep What Is Here");
    EXPECT_EQ(Value("Title"), "Costs");
    EXPECT_TRUE(m_window->isWindowModified());
    Run("fileSave");
    EXPECT_EQ(Written(), changed);
}

TEST_F(Files, AFileWithAnotherRootIsAText) {
    WriteBytes(File(), "<html>\n<body>x</body></html>");
    EXPECT_TRUE(m_window->OpenFile(File()));
    Settle();
    EXPECT_TRUE(Find<QPlainTextEdit>("txtSource").isVisible());
    EXPECT_EQ(Find<QLabel>("lblFlaw").text().toStdString(),
              "The file cannot be designed. Line 1, column 1: this is no report: its root is \"html\", not "
              "\"Report\"");
    EXPECT_FALSE(Find<QAction>("insertTextBox").isEnabled());
}

TEST_F(Files, ABrokenFileIsATextThatCanBeMended) {
    std::string broken = SmallReport();
    broken.replace(broken.find("</Body>"), 7, "</Boby>");
    WriteBytes(File(), broken);
    EXPECT_TRUE(m_window->OpenFile(File()));
    Settle();
    auto& text = Find<QPlainTextEdit>("txtSource");
    EXPECT_TRUE(text.isVisible());
    EXPECT_EQ(text.extraSelections().size(), 1);
    const int line =
        static_cast<int>(std::count(broken.begin(), broken.begin() + broken.find("</Boby>"), '\n'));
    EXPECT_EQ(text.textCursor().blockNumber(), line);
    EXPECT_EQ(Find<QLabel>("lblFlaw").text().toStdString().find("The file cannot be designed. Line " +
                                                                std::to_string(line + 1) + ", column "),
              0u);
    EXPECT_FALSE(m_window->isWindowModified());
    QTest::mouseClick(&Find("cmdOpenDesign"), Qt::LeftButton);
    EXPECT_TRUE(text.isVisible());
    QTextCursor cursor = text.document()->find("</Boby>");
    text.setTextCursor(cursor);
    QTest::keyClicks(&text, "</Body>");
    EXPECT_TRUE(m_window->isWindowModified());
    QTest::mouseClick(&Find("cmdOpenDesign"), Qt::LeftButton);
    Settle();
    EXPECT_TRUE(Canvas().isVisible());
    EXPECT_EQ(Model().Items().items.size(), 4u);
    EXPECT_TRUE(m_window->isWindowModified());
    Run("fileSave");
    EXPECT_EQ(Written(), SmallReport());
}

// What a window leaves that was ended by force while its report was changed.
class EndedByForce : public WindowTest {
 protected:
    EndedByForce() {
        Select({"Title"});
        Key(Qt::Key_Right);
        m_changed = Model().Source().Bytes();
        QTest::qWait(2200);
        // The copy belongs to this process, which lives.
        EXPECT_TRUE(FindLostReports().empty());
        for (const auto& entry : std::filesystem::directory_iterator(RecoveryFolder())) {
            m_copy = entry.path().extension() == ".unsaved" ? entry.path() : m_copy;
        }
        const std::string bytes = ReadBytes(m_copy);
        Answer([&] { m_window->close(); }, "Discard");
        EXPECT_FALSE(std::filesystem::exists(m_copy));
        WriteBytes(m_copy, bytes);
    }
    ~EndedByForce() override { qDeleteAll(m_program.Windows()); }
    DesignWindow& Recover() {
        EXPECT_EQ(Answer([&] { m_program.Start({}); }, "Recover"),
                  "The designer was ended before the changes of \"" + File().string() + "\" were saved.");
        EXPECT_EQ(m_program.Windows().size(), 1);
        return *m_program.Windows().front();
    }
    static void Save(DesignWindow& window) { window.findChild<QAction*>("fileSave")->trigger(); }

    std::string m_changed;
    std::filesystem::path m_copy;
    DesignerProgram m_program;
};

TEST_F(EndedByForce, WhatWasNotSavedIsOffered) {
    DesignWindow& recovered = Recover();
    EXPECT_EQ(recovered.File(), File());
    EXPECT_TRUE(recovered.isWindowModified());
    EXPECT_EQ(recovered.Model().Source().Bytes(), m_changed);
    EXPECT_FALSE(std::filesystem::exists(m_copy));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&recovered));
    QTest::qWait(2200);  // the window looks at the file, which is as it was
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    Save(recovered);
    EXPECT_EQ(Written(), m_changed);
}

TEST_F(EndedByForce, SavingAsksWhenTheFileWasChangedBeforeItIsRecovered) {
    const std::string other = SmallReport() + "<!-- other -->\n";
    WriteBytes(File(), other);
    DesignWindow& recovered = Recover();
    EXPECT_EQ(Answer([&] { Save(recovered); }, "Cancel"),
              "Another program has changed \"sales.rdl\" since it was opened here.");
    EXPECT_EQ(Written(), other);
    EXPECT_TRUE(recovered.isWindowModified());
    Answer([&] { Save(recovered); }, "Overwrite");
    EXPECT_EQ(Written(), m_changed);
}

TEST_F(EndedByForce, AChangeOfTheFileBeforeItIsRecoveredIsNoticed) {
    WriteBytes(File(), SmallReport() + "<!-- other -->\n");
    DesignWindow& recovered = Recover();
    EXPECT_EQ(Answer([] { QTest::qWait(2500); }, "Keep What Is Here"),
              "Another program has changed \"sales.rdl\".");
    EXPECT_EQ(recovered.Model().Source().Bytes(), m_changed);
    Save(recovered);
    EXPECT_EQ(Written(), m_changed);
}

TEST_F(Files, RecentFilesAreKept) {
    EXPECT_EQ(RecentFiles(), QStringList{QString::fromStdString(File().string())});
    EXPECT_TRUE(std::filesystem::exists(m_config.Folder() / "designer.ini"));
    EXPECT_FALSE(std::filesystem::exists(m_config.Folder() / "settings.reg"));
}

TEST_F(Files, EachFileHasOneWindow) {
    DesignerProgram program;
    program.Start({});
    ASSERT_EQ(program.Windows().size(), 1);
    const QString file = QString::fromStdString(File().string());
    DesignWindow* window = program.Open(file);
    EXPECT_EQ(program.Windows(), QList<DesignWindow*>{window});  // the blank one took it
    EXPECT_EQ(program.Open(file), window);
    program.NewWindow();
    EXPECT_EQ(program.Windows().size(), 2);
    qDeleteAll(program.Windows());
}

TEST(PlainTexts, ComeBackAsTheyWere) {
    for (const std::string bytes : {"a\nb", "a\r\nb\r\n", "\xef\xbb\xbf<a>", "caf\xe9\n", "", "\xc3\xa9"}) {
        EXPECT_EQ(BytesOf(PlainTextOf(bytes)), bytes);
    }
}

}  // namespace
}  // namespace designer::test
