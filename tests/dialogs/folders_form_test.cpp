// SPDX-License-Identifier: GPL-3.0-or-later
// The choice of a Desktop folder for a report.
#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>

#include "dialogs/frmFolders.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/items/tree_view.h"
#include "support/database.h"
#include "support/fakes.h"
#include "support/modal.h"

namespace {

using Texts = std::vector<std::string>;
using Boxes = std::vector<fakes::Box>;

class FoldersForm : public testing::Test {
 protected:
    void SetUp() override {
        cmbFolder.setEditable(true);
        cmbFolder.Text("Desktop");
    }
    // Four levels: Sales > North > Cities > Streets, and Stock next to Sales.
    void AddFolders() const {
        database.Run(
            "insert into Folders(FolderID, FolderName, Parent) values"
            " (1,'Sales',0), (2,'North',1), (3,'Cities',2), (4,'Streets',3), (5,'Stock',0)");
    }
    void Show(const std::function<void(frmFolders&)>& act) {
        fakes::WhileModal<frmFolders>([this] { frmFolders::ShowModal(cmbFolder); }, act);
    }
    bool ComesUp() {
        return fakes::ComesUp<frmFolders>([this] { frmFolders::ShowModal(cmbFolder); }, [](frmFolders&) {});
    }
    static TreeView& Tree(const frmFolders& form) { return *form.findChild<TreeView*>("tvwFolder"); }
    static QPushButton& Button(const frmFolders& form, const char* name) {
        return *form.findChild<QPushButton*>(name);
    }
    static QPoint Place(const frmFolders& form, const char* key) {
        return Tree(form).visualItemRect(&Tree(form).Nodes()(key)).center();
    }
    static void ClickNode(const frmFolders& form, const char* key) {
        QTest::mouseClick(Tree(form).viewport(), Qt::LeftButton, {}, Place(form, key));
    }
    static void Click(const frmFolders& form, const char* name) {
        QTest::mouseClick(&Button(form, name), Qt::LeftButton);
    }
    // Key, text, image and the parent's key of each node, in the order in which they were added.
    static Texts Nodes(const frmFolders& form) {
        Texts texts;
        for (int i = 1; i <= Tree(form).Nodes().Count(); ++i) {
            const Node& node = Tree(form).Nodes()(i);
            texts.push_back(node.Key + "|" + node.Text() + "|" + std::to_string(node.Image()) + "|" +
                            (node.Parent() == nullptr ? "" : node.Parent()->Key));
        }
        return texts;
    }

    fakes::FakePrompts prompts;
    fakes::FakeProcess process;
    fakes::TestDatabase database;
    ComboBox cmbFolder;
};

}  // namespace

TEST_F(FoldersForm, ShowsThreeLevelsOfFoldersWithoutTheDesktop) {
    AddFolders();
    Show([](frmFolders& form) {
        EXPECT_EQ(form.windowTitle().toStdString(), "Browse for Folder...");
        EXPECT_TRUE(form.isModal());
        EXPECT_EQ(form.findChild<QLabel*>("Label1")->text().toStdString(),
                  "Select the location of the report below:");
        EXPECT_EQ(Button(form, "cmdOK").text().toStdString(), "OK");
        EXPECT_EQ(Button(form, "cmdCancel").text().toStdString(), "Cancel");
        EXPECT_EQ(Nodes(form), (Texts{"1Sales|Sales|1|", "North2|North|1|1Sales", "Cities3|Cities|1|North2",
                                      "5Stock|Stock|1|"}));
        EXPECT_TRUE(Tree(form).visualItemRect(&Tree(form).Nodes()("Cities3")).isValid());
        EXPECT_FALSE(Tree(form).Nodes()("1Sales").icon(0).isNull());
    });
}

TEST_F(FoldersForm, FolderAtLevelFourHasNoNode) {
    AddFolders();
    Show([](frmFolders& form) {
        for (int i = 1; i <= Tree(form).Nodes().Count(); ++i) {
            EXPECT_NE(Tree(form).Nodes()(i).Text(), "Streets");
        }
    });
}

TEST_F(FoldersForm, ReadsEachFolderOfTheFirstTwoLevelsAndNoDeeperOne) {
    AddFolders();
    database.TakeStatements();
    Show([](frmFolders&) {});
    const std::string select = "select foldername, folderid from folders where parent = ";
    EXPECT_EQ(database.TakeStatements(), (Texts{select + "0", select + "1", select + "2", select + "5"}));
}

TEST_F(FoldersForm, NothingIsChosenAtFirstAndOKWaitsForAClick) {
    AddFolders();
    Show([](frmFolders& form) {
        EXPECT_FALSE(Tree(form).HasSelection());
        EXPECT_FALSE(Button(form, "cmdOK").isEnabled());
        EXPECT_TRUE(Tree(form).hasFocus());
        ClickNode(form, "North2");
        EXPECT_TRUE(Button(form, "cmdOK").isEnabled());
    });
    EXPECT_EQ(cmbFolder.Text(), "Desktop");
}

TEST_F(FoldersForm, FolderWithoutANameTurnsOKOff) {
    AddFolders();
    database.Run("insert into Folders(FolderID, FolderName, Parent) values(6,'',0)");
    Show([](frmFolders& form) {
        ClickNode(form, "1Sales");
        ClickNode(form, "6");
        EXPECT_FALSE(Button(form, "cmdOK").isEnabled());
    });
}

TEST_F(FoldersForm, OKHandsTheChosenNameToTheCaller) {
    AddFolders();
    Show([](frmFolders& form) {
        ClickNode(form, "Cities3");
        Click(form, "cmdOK");
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(cmbFolder.Text(), "Cities");
}

TEST_F(FoldersForm, CancelEscAndTheCloseBoxLeaveTheCallerAsItWas) {
    AddFolders();
    const std::function<void(frmFolders&)> ways[] = {
        [](frmFolders& form) { Click(form, "cmdCancel"); },
        [](frmFolders& form) {
            Button(form, "cmdCancel").setFocus();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        },
        [](frmFolders& form) { QTest::keyClick(&Tree(form), Qt::Key_Escape); },
        [](frmFolders& form) { form.close(); }};
    for (const auto& leave : ways) {
        Show([&leave](frmFolders& form) {
            ClickNode(form, "5Stock");
            leave(form);
            EXPECT_FALSE(form.isVisible());
        });
        EXPECT_EQ(cmbFolder.Text(), "Desktop");
    }
}

TEST_F(FoldersForm, KeysMoveChooseAndConfirm) {
    AddFolders();
    Show([](frmFolders& form) {
        QTest::keyClick(&Tree(form), Qt::Key_Down);
        QTest::keyClick(&Tree(form), Qt::Key_End);
        EXPECT_TRUE(Button(form, "cmdOK").isEnabled());
        QTest::keyClick(&Tree(form), Qt::Key_Return);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(cmbFolder.Text(), "Stock");
}

TEST_F(FoldersForm, DoubleClickChooses) {
    AddFolders();
    Show([](frmFolders& form) {
        ClickNode(form, "North2");
        QTest::mouseDClick(Tree(form).viewport(), Qt::LeftButton, {}, Place(form, "North2"));
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(cmbFolder.Text(), "North");
}

TEST_F(FoldersForm, EnterWithNothingChosenDoesNothing) {
    AddFolders();
    Show([](frmFolders& form) {
        QTest::keyClick(&Tree(form), Qt::Key_Return);
        EXPECT_TRUE(form.isVisible());
    });
    EXPECT_EQ(cmbFolder.Text(), "Desktop");
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(FoldersForm, TabGoesFromTheTreeToTheButtons) {
    AddFolders();
    Show([](frmFolders& form) {
        ClickNode(form, "1Sales");
        Texts order;
        for (int i = 0; i < 3; ++i) {
            order.push_back(QApplication::focusWidget()->objectName().toStdString());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        EXPECT_EQ(order, (Texts{"tvwFolder", "cmdOK", "cmdCancel"}));
    });
}

TEST_F(FoldersForm, DatabaseWithoutFoldersShowsAnEmptyTree) {
    Show([](frmFolders& form) { EXPECT_EQ(Tree(form).Nodes().Count(), 0); });
    EXPECT_TRUE(prompts.boxes.empty());
}

// A key has no separator between number and name: 1 and 23 give the same key as 12 and 3.
TEST_F(FoldersForm, KeysThatComeOutAlikeEndTheProcessWithTheRunTimeBox) {
    database.Run("insert into Folders(FolderID, FolderName, Parent) values(1,'23',0), (12,'3',0)");
    EXPECT_FALSE(ComesUp());
    EXPECT_EQ(prompts.boxes,
              (Boxes{{"Run-time error \"35602\":\n\nKey is not unique in collection", 16, "Oxbow Courier"}}));
    EXPECT_EQ(process.ends, std::vector<int>{1});
}

TEST_F(FoldersForm, TableThatIsMissingEndsTheProcessWithTheRunTimeBox) {
    database.Run("drop table Folders");
    EXPECT_FALSE(ComesUp());
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_EQ(prompts.boxes[0].text.rfind("Run-time error \"-2147217865\":\n\n", 0), 0U)
        << prompts.boxes[0].text;
    EXPECT_EQ(process.ends, std::vector<int>{1});
}
