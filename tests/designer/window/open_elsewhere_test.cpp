// SPDX-License-Identifier: GPL-3.0-or-later
// Files that another window, another process of the designer or another program has, too.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "answered_box.h"
#include "designer/window/designer_program.h"
#include "designer/window/file_claim.h"
#include "designer/window/recovery.h"
#include "named_file.h"
#include "window_fixture.h"

namespace designer::test {
namespace {

// A process of the designer that has a file open until it is ended.
class OtherProcess {
 public:
    explicit OtherProcess(const std::filesystem::path& file) {
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        m_process = fork();
        if (m_process == 0) {
            FileClaim claim;
            const char answer = claim.Take(file) ? 'y' : 'n';
            [[maybe_unused]] const ssize_t written = write(ready[1], &answer, 1);
            for (;;) {
                pause();
            }
        }
        char answer = 0;
        EXPECT_EQ(read(ready[0], &answer, 1), 1);
        EXPECT_EQ(answer, 'y');
        close(ready[0]);
        close(ready[1]);
    }
    ~OtherProcess() { Kill(); }
    void Kill() {
        if (m_process > 0) {
            kill(m_process, SIGKILL);
            waitpid(m_process, nullptr, 0);
        }
        m_process = 0;
    }

 private:
    pid_t m_process = 0;
};

class OpenElsewhere : public WindowTest {
 protected:
    OpenElsewhere() { WriteBytes(Other(), SmallReport()); }
    std::filesystem::path Other() const { return m_home / "other.rdl"; }
    std::string Title() { return m_window->windowTitle().toStdString(); }
};

TEST_F(OpenElsewhere, AFileOfAnotherProcessIsOpenedToBeRead) {
    OtherProcess process(Other());
    EXPECT_EQ(Answer([&] { EXPECT_FALSE(m_window->OpenFile(Other())); }, "Cancel"),
              "\"other.rdl\" is open in another window of the designer.");
    EXPECT_EQ(m_window->File(), File());
    Answer([&] { EXPECT_TRUE(m_window->OpenFile(Other())); }, "Open Read-Only");
    EXPECT_EQ(Title(), "other.rdl[*] (read-only) - Oxbow Courier Designer");
    Settle();
    Select({"Title"});
    Key(Qt::Key_Right);
    // It is saved under another name.
    const std::filesystem::path copy = m_home / "copy.rdl";
    EXPECT_EQ(NameFile(copy, [&] { Run("fileSave"); }), "");
    EXPECT_EQ(ReadBytes(Other()), SmallReport());
    EXPECT_NE(ReadBytes(copy), SmallReport());
    EXPECT_EQ(Title(), "copy.rdl[*] - Oxbow Courier Designer");
}

TEST_F(OpenElsewhere, OnceTheOtherWindowIsClosedItIsSaved) {
    OtherProcess process(Other());
    Answer([&] { EXPECT_TRUE(m_window->OpenFile(Other())); }, "Open Read-Only");
    Settle();
    Select({"Title"});
    Key(Qt::Key_Right);
    process.Kill();
    Run("fileSave");
    EXPECT_NE(ReadBytes(Other()), SmallReport());
    EXPECT_EQ(Title(), "other.rdl[*] - Oxbow Courier Designer");
}

TEST_F(OpenElsewhere, AKilledProcessHoldsNothing) {
    OtherProcess(Other()).Kill();
    EXPECT_TRUE(m_window->OpenFile(Other()));
    EXPECT_EQ(Title(), "other.rdl[*] - Oxbow Courier Designer");
    // What it left goes with the next window that has the file.
    const auto locks = [] {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(RecoveryFolder())) {
            count += entry.path().extension() == ".open" ? 1 : 0;
        }
        return count;
    };
    EXPECT_EQ(locks(), 1u);
    m_window->close();
    EXPECT_EQ(locks(), 0u);
}

TEST_F(OpenElsewhere, AFileThatAnotherWindowHasIsNotSavedOver) {
    DesignerProgram program;
    DesignWindow* second = program.Open(QString::fromStdString(Other().string()));
    ASSERT_NE(second, nullptr);
    second->Model().Select({second->Model().Items().items.front().id});
    EXPECT_NE(NameFile(File(), [&] { second->findChild<QAction*>("fileSaveAs")->trigger(); })
                  .find("\"sales.rdl\" is open in another window of the designer. Save under another name."),
              std::string::npos);
    EXPECT_EQ(Written(), SmallReport());
    EXPECT_EQ(second->File(), Other());
    program.Quit();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(OpenElsewhere, SavingAsksWhenAnotherProgramHasChangedTheFile) {
    Select({"Title"});
    Key(Qt::Key_Right);
    const std::string changed = SmallReport() + "<!-- other -->\n";
    WriteBytes(File(), changed);
    const auto save = [&] { Find<QAction>("fileSave").trigger(); };
    EXPECT_EQ(Answer(save, "Cancel"), "Another program has changed \"sales.rdl\" since it was opened here.");
    EXPECT_EQ(Written(), changed);
    EXPECT_TRUE(m_window->isWindowModified());
    Answer(save, "Overwrite");
    EXPECT_EQ(Written(), Model().Source().Bytes());
    EXPECT_FALSE(m_window->isWindowModified());
}

TEST_F(OpenElsewhere, AFileThatWasOnlyTouchedIsSavedWithoutAQuestion) {
    Select({"Title"});
    Key(Qt::Key_Right);
    WriteBytes(File(), SmallReport());
    QTest::qWait(2200);  // the window looks at the file, too
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    Run("fileSave");
    EXPECT_EQ(Written(), Model().Source().Bytes());
}

}  // namespace
}  // namespace designer::test
