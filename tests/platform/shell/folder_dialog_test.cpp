// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <vector>

#include "platform/base/paths.h"
#include "platform/shell/desktop_shell.h"
#include "platform/shell/window_handle.h"
#include "support/temporary_folder.h"

namespace {

// Acts on the dialog as a user would, as soon as it is shown.
void WhenShown(const std::function<void(QFileDialog&)>& act) {
    QTimer::singleShot(0, qApp, [act] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) {
            WhenShown(act);
            return;
        }
        act(*dialog);
    });
}

void Choose(QFileDialog& dialog, const std::filesystem::path& folder) {
    auto* const name = dialog.findChild<QLineEdit*>("fileNameEdit");
    name->setText(QString::fromStdString(folder.string()));
    QTest::keyClick(name, Qt::Key_Return);
}

}  // namespace

TEST(FolderDialog, GivesTheFolderAsTheSystemWritesIt) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "out put");
    WhenShown([&](QFileDialog& dialog) { Choose(dialog, folder / "out put"); });
    EXPECT_EQ(
        DesktopShell().BrowseForFolder({}, "Pick"), "Z:" + [&] {
            std::string path = (folder / "out put").string();
            std::replace(path.begin(), path.end(), '/', '\\');
            return path;
        }());
}

TEST(FolderDialog, BeginsInTheUsersFolderAndThenWhereOneWasChosenLast) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "out");
    DesktopShell shell;
    std::vector<std::string> begins;
    const auto note = [&begins](const QFileDialog& dialog) {
        begins.push_back(dialog.directory().absolutePath().toStdString());
    };
    WhenShown([&](QFileDialog& dialog) {
        note(dialog);
        Choose(dialog, folder / "out");
    });
    shell.BrowseForFolder({}, "Pick");
    for (int time = 0; time < 2; ++time) {
        WhenShown([&](QFileDialog& dialog) {
            note(dialog);
            dialog.reject();
        });
        shell.BrowseForFolder({}, "Pick");
        std::filesystem::remove(folder / "out");
    }
    EXPECT_EQ(begins, (std::vector<std::string>{QDir::homePath().toStdString(), (folder / "out").string(),
                                                QDir::homePath().toStdString()}));
}

TEST(FolderDialog, BeginsInTheFolderThatIsAskedForWhenThereIsOne) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "out");
    DesktopShell shell;
    const auto begin = [&shell](const std::string& start) {
        std::string begun;
        WhenShown([&begun](QFileDialog& dialog) {
            begun = dialog.directory().absolutePath().toStdString();
            dialog.reject();
        });
        shell.BrowseForFolder({}, "Pick", start);
        return begun;
    };
    const std::string place = paths::FromMachine(folder.Path());
    EXPECT_EQ(begin(place + "\\out\\"), (folder / "out").string());
    EXPECT_EQ(begin(place + "\\OUT"), (folder / "out").string());
    EXPECT_EQ(begin((folder / "out").string()), (folder / "out").string());
    for (const std::string& none :
         {place + "\\gone", std::string("C:\\Reports"), std::string("out"), std::string()}) {
        EXPECT_EQ(begin(none), QDir::homePath().toStdString()) << none;
    }
}

TEST(FolderDialog, GivesAnEmptyTextWhenCancelled) {
    WhenShown([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(DesktopShell().BrowseForFolder({}, "Pick"), "");
}

TEST(FolderDialog, BelongsToItsOwnerAndBearsTheTitle) {
    QWidget window;
    QWidget form(&window);
    window.show();
    QWidget* parent = nullptr;
    std::string title;
    WhenShown([&](QFileDialog& dialog) {
        parent = dialog.parentWidget();
        title = dialog.windowTitle().toStdString();
        dialog.reject();
    });
    DesktopShell().BrowseForFolder(HandleOf(form), "Where the reports go");
    EXPECT_EQ(parent, &window);
    EXPECT_EQ(title, "Where the reports go");
}

TEST(FolderDialog, BelongsToTheActiveWindowWithoutAnOwner) {
    QWidget window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QWidget* parent = nullptr;
    WhenShown([&](QFileDialog& dialog) {
        parent = dialog.parentWidget();
        dialog.reject();
    });
    DesktopShell().BrowseForFolder({}, "Pick");
    EXPECT_EQ(parent, &window);
}
