// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include <QMimeData>
#include <QUrl>

#include "platform/base/paths.h"
#include "platform/controls/folders/dir_list_box.h"
#include "platform/controls/folders/file_list_box.h"
#include "shown_form.h"
#include "support/raises.h"
#include "support/temporary_folder.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class FolderLists : public testing::Test {
 protected:
    void SetUp() override {
        for (const char* folder : {"reports/2003", "reports/Archive", "reports/.trash", "other"}) {
            std::filesystem::create_directories(m_root / folder);
        }
        for (const char* file : {"b.rpt", "A.RPT", "notes.txt", ".hidden.rpt", "c.rpt.bak"}) {
            WriteBytes(m_root / "reports" / file, "x");
        }
        form.Show(&folders, &files);
        QObject::connect(&folders, &DirListBox::Change, [this] {
            ++changes;
            files.Path(folders.Path());
        });
        files.Pattern("*.rpt");
        folders.Path(Of("reports"));
    }
    std::string Of(const std::string& name) { return paths::FromMachine(m_root / name); }
    static std::vector<std::string> TextsOf(const QListWidget& list) {
        std::vector<std::string> texts;
        for (int i = 0; i < list.count(); ++i) {
            texts.push_back(list.item(i)->text().toStdString());
        }
        return texts;
    }
    QListWidgetItem* Folder(const char* name) { return folders.findItems(name, Qt::MatchExactly).value(0); }

    TemporaryFolder m_root;
    ShownForm form;
    DirListBox folders;
    FileListBox files;
    int changes = 0;
};

}  // namespace

TEST_F(FolderLists, FoldersAreThoseAboveItselfAndThoseIn) {
    const std::vector<std::string> texts = TextsOf(folders);
    EXPECT_EQ(texts.front(), "/");
    EXPECT_THAT(std::vector(texts.end() - 3, texts.end()), ElementsAre("reports", "2003", "Archive"));
    EXPECT_EQ(folders.currentItem()->text(), "reports");
    EXPECT_EQ(folders.Path(), Of("reports"));
    EXPECT_EQ(changes, 1);
}

TEST_F(FolderLists, FilesFitThePatternInAnyCase) {
    EXPECT_THAT(TextsOf(files), ElementsAre("A.RPT", "b.rpt"));
    EXPECT_EQ(files.Path(), Of("reports"));
    EXPECT_EQ(files.FileName(), "");
    files.ListIndex(1);
    EXPECT_EQ(files.FileName(), "b.rpt");
    files.Pattern("*.txt;*.bak");
    EXPECT_THAT(TextsOf(files), ElementsAre("c.rpt.bak", "notes.txt"));
}

TEST_F(FolderLists, DoubleClickGoesToAFolder) {
    const QPoint place = folders.visualItemRect(Folder("Archive")).center();
    QTest::mouseClick(folders.viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(folders.Path(), Of("reports"));
    QTest::mouseDClick(folders.viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(folders.Path(), Of("reports/Archive"));
    EXPECT_EQ(changes, 2);
    EXPECT_THAT(TextsOf(files), IsEmpty());
}

TEST_F(FolderLists, EnterGoesToAFolder) {
    folders.setFocus();
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    EXPECT_EQ(folders.Path(), Of("reports/2003"));
    Press(Qt::Key_Up);
    Press(Qt::Key_Up);
    Press(Qt::Key_Return);
    EXPECT_EQ(folders.Path(), paths::FromMachine(m_root.Path()));
    EXPECT_EQ(changes, 3);
}

TEST_F(FolderLists, KeysAreToldButForTabAndThoseHeldWithOthers) {
    std::vector<int> keys;
    QObject::connect(&folders, &DirListBox::KeyDown, [&](int code) { keys.push_back(code); });
    folders.setFocus();
    for (const Qt::Key key :
         {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_X, Qt::Key_Space, Qt::Key_F5}) {
        Press(key);
    }
    EXPECT_THAT(keys, ElementsAre(88, 32, 116));
    Press(Qt::Key_Tab);
    EXPECT_TRUE(files.hasFocus());
    EXPECT_EQ(keys.size(), 3U);
}

TEST_F(FolderLists, KeyWhoseHandlerSetsAnotherPathDoesNothingElse) {
    QObject::connect(&folders, &DirListBox::KeyDown, [&] { folders.Path(Of("other")); });
    folders.setFocus();
    Press(Qt::Key_Up);
    EXPECT_EQ(folders.Path(), Of("other"));
    EXPECT_EQ(folders.currentItem()->text(), "other");
}

TEST_F(FolderLists, MissingFolderIsRefusedAndChangesNothing) {
    for (const std::string& path : {Of("nowhere"), Of("reports/b.rpt"), std::string("Q:\\reports")}) {
        EXPECT_EQ(NumberRaisedBy([&] { folders.Path(path); }), 76) << path;
        EXPECT_EQ(NumberRaisedBy([&] { files.Path(path); }), 76) << path;
    }
    EXPECT_EQ(folders.Path(), Of("reports"));
    EXPECT_THAT(TextsOf(files), ElementsAre("A.RPT", "b.rpt"));
    EXPECT_EQ(changes, 1);
}

TEST_F(FolderLists, FolderThatIsGoneSinceIsNotEntered) {
    std::filesystem::remove(m_root / "reports/Archive");
    folders.setCurrentItem(Folder("Archive"));
    folders.setFocus();
    Press(Qt::Key_Return);
    EXPECT_EQ(folders.Path(), Of("reports"));
    EXPECT_EQ(changes, 1);
}

TEST_F(FolderLists, SamePathIsNoChangeAndAnEmptyOneNone) {
    folders.Path(Of("reports") + "\\");
    folders.Path("");
    files.Path("");
    EXPECT_EQ(folders.Path(), Of("reports"));
    EXPECT_EQ(files.Path(), Of("reports"));
    EXPECT_EQ(changes, 1);
}

TEST_F(FolderLists, RootIsAFolder) {
    folders.Path("Z:\\");
    EXPECT_EQ(folders.Path(), "Z:\\");
    EXPECT_EQ(TextsOf(folders).front(), "/");
}

TEST_F(FolderLists, BeginInTheCurrentFolder) {
    const std::string here = paths::FromMachine(std::filesystem::current_path());
    EXPECT_EQ(DirListBox().Path(), here);
    EXPECT_EQ(FileListBox().Path(), here);
}

TEST_F(FolderLists, EnterOnAFileIsADoubleClick) {
    int doubled = 0;
    QObject::connect(&files, &FileListBox::DblClick, [&] { ++doubled; });
    files.setFocus();
    Press(Qt::Key_Return);
    EXPECT_EQ(doubled, 0);
    files.ListIndex(0);
    Press(Qt::Key_Return);
    EXPECT_EQ(doubled, 1);
}

TEST_F(FolderLists, FilesAreDraggedAsAFileManagerDoes) {
    const std::unique_ptr<QMimeData> dragged(files.model()->mimeData({files.model()->index(1, 0)}));
    EXPECT_EQ(dragged->urls(),
              QList<QUrl>{QUrl::fromLocalFile(QString::fromStdString((m_root / "reports/b.rpt").string()))});
    EXPECT_TRUE(files.dragEnabled());
}
