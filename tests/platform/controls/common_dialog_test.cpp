// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/folders/common_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <filesystem>

#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"
#include "support/raises.h"
#include "support/temporary_folder.h"

namespace {

// The state of the dialog on the screen when it was answered.
struct Seen {
    std::string title, folder, typed;
    QStringList filters;
};

class FileDialog : public testing::Test {
 protected:
    void SetUp() override {
        std::filesystem::create_directories(m_folder / "reports");
        WriteBytes(m_folder / "reports" / "sales.rpt", "x");
        dialog.InitDir = paths::FromMachine(m_folder / "reports");
    }
    void TearDown() override { SetFileChooser({}); }

    // Types a name into the next dialog and presses a button.
    void Answer(const QString& name, QDialogButtonBox::StandardButton button) {
        QTimer::singleShot(0, [this, name, button] {
            auto* shown = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(shown, nullptr);
            auto* edit = shown->findChild<QLineEdit*>("fileNameEdit");
            seen = {shown->windowTitle().toStdString(), shown->directory().absolutePath().toStdString(),
                    edit->text().toStdString(), shown->nameFilters()};
            if (!name.isNull()) {
                edit->setText(name);
            }
            shown->findChild<QDialogButtonBox*>()->button(button)->click();
        });
    }
    std::string Folder(const char* name) const { return (m_folder / name).string(); }

    TemporaryFolder m_folder;
    CommonDialog dialog;
    Seen seen;
};

}  // namespace

TEST_F(FileDialog, StartsWhereItIsToldAndGivesThePathAsTheSystemWritesIt) {
    dialog.DialogTitle = "Select the report to schedule...";
    dialog.Filter = "Crystal Reports (*.rpt)|*.rpt|";
    Answer("sales.rpt", QDialogButtonBox::Open);
    dialog.ShowOpen();
    EXPECT_EQ(seen.title, "Select the report to schedule...");
    EXPECT_EQ(seen.folder, Folder("reports"));
    EXPECT_EQ(seen.filters, QStringList{"Crystal Reports (*.rpt)"});
    EXPECT_EQ(dialog.FileName, paths::FromMachine(m_folder / "reports" / "sales.rpt"));
}

TEST_F(FileDialog, FiltersArePairsOfNameAndPatterns) {
    dialog.Filter = "Pictures|*.png;*.jpg|All files (*.*)|*.*";
    Answer({}, QDialogButtonBox::Cancel);
    dialog.ShowOpen();
    EXPECT_EQ(seen.filters, (QStringList{"Pictures (*.png *.jpg)", "All files (*.*)"}));
}

TEST_F(FileDialog, CancelRaisesOnlyWhenAskedTo) {
    dialog.FileName = "Z:\\before.rpt";
    Answer({}, QDialogButtonBox::Cancel);
    EXPECT_EQ(NumberRaisedBy([this] { dialog.ShowOpen(); }), 0);
    dialog.CancelError = true;
    Answer({}, QDialogButtonBox::Cancel);
    EXPECT_EQ(NumberRaisedBy([this] { dialog.ShowOpen(); }), 32755);
    EXPECT_EQ(dialog.FileName, "Z:\\before.rpt");
}

TEST_F(FileDialog, FileChosenTheTimeBeforeIsOfferedInItsFolderOnly) {
    dialog.FileName = paths::FromMachine(m_folder / "reports" / "sales.rpt");
    Answer({}, QDialogButtonBox::Cancel);
    dialog.ShowOpen();
    EXPECT_EQ(seen.typed, "sales.rpt");
    dialog.InitDir = paths::FromMachine(m_folder.Path());
    Answer({}, QDialogButtonBox::Cancel);
    dialog.ShowOpen();
    EXPECT_EQ(seen.typed, "");
    EXPECT_EQ(seen.folder, m_folder.Path().string());
}

TEST_F(FileDialog, FolderThatIsGoneStartsInTheNearestThatIsThere) {
    dialog.InitDir += "\\2024\\may\\";
    Answer({}, QDialogButtonBox::Cancel);
    dialog.ShowOpen();
    EXPECT_EQ(seen.folder, Folder("reports"));
}

TEST_F(FileDialog, DriveThatIsNotThereStartsInTheUsersFolder) {
    dialog.InitDir = "Q:\\reports";
    Answer({}, QDialogButtonBox::Cancel);
    dialog.ShowOpen();
    EXPECT_EQ(seen.folder, QDir::homePath().toStdString());
}

TEST_F(FileDialog, FileThatDoesNotExistMayBeNamed) {
    Answer("new.rpt", QDialogButtonBox::Open);
    dialog.ShowOpen();
    EXPECT_EQ(dialog.FileName, paths::FromMachine(m_folder / "reports" / "new.rpt"));
}

TEST_F(FileDialog, ChooserStandsInForTheScreen) {
    SetFileChooser([](const CommonDialog& asked) { return std::optional(asked.InitDir + "\\x.rpt"); });
    dialog.InitDir = "Z:\\srv";
    dialog.ShowOpen();
    EXPECT_EQ(dialog.FileName, "Z:\\srv\\x.rpt");
    SetFileChooser([](const CommonDialog&) { return std::nullopt; });
    dialog.CancelError = true;
    EXPECT_EQ(DescriptionRaisedBy([this] { dialog.ShowOpen(); }), "Cancel was selected.");
}
