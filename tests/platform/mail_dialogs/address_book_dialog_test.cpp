// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail_dialogs/address_book_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include "platform/mail_dialogs/address_list_model.h"
#include "support/growth.h"

namespace {

using Texts = std::vector<std::string>;
using Entries = std::vector<mailer::AddressEntry>;

const Entries Book = {{"Ann Archer", {"Boss"}, "ann@example.com"},
                      {"Bob Bowman", {}, "bob@example.org"},
                      {"Cy Müller", {}, "cy@example.com"},
                      {"<b>Dan</b>", {}, "dan@example.com"}};

class AddressBookOnScreen : public testing::Test {
 protected:
    void Show(const Entries& entries, MAPI::Choice choice = MAPI::Choice::Several) {
        m_dialog = std::make_unique<AddressBookDialog>(entries, choice);
        m_dialog->show();
        m_dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_dialog.get()));
    }
    template <typename Control>
    Control& Find(const char* name) const {
        return *m_dialog->findChild<Control*>(name);
    }
    QLineEdit& Search() const { return Find<QLineEdit>("txtSearch"); }
    QTreeView& List() const { return Find<QTreeView>("lsvEntries"); }
    QListWidget& ChosenList() const { return Find<QListWidget>("lstChosen"); }
    QPushButton& Button(const char* name) const { return Find<QPushButton>(name); }

    Texts Listed() const {
        Texts names;
        for (int row = 0; row < List().model()->rowCount(); ++row) {
            names.push_back(List().model()->index(row, 0).data().toString().toStdString());
        }
        return names;
    }
    Texts ChosenShown() const {
        Texts names;
        for (int row = 0; row < ChosenList().count(); ++row) {
            names.push_back(ChosenList().item(row)->text().toStdString());
        }
        return names;
    }
    Texts Chosen() const {
        Texts addresses;
        for (const mailer::AddressEntry& entry : m_dialog->Chosen()) {
            addresses.push_back(entry.address);
        }
        return addresses;
    }
    void Type(const char* text) const {
        Search().clear();
        QTest::keyClicks(&Search(), text);
    }
    QPoint RowCentre(int row) const { return List().visualRect(List().model()->index(row, 0)).center(); }
    void ClickRow(int row, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, modifiers, RowCentre(row));
    }
    void DoubleClickRow(int row) const {
        ClickRow(row);
        QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, RowCentre(row));
    }
    bool Accepted() const { return !m_dialog->isVisible() && m_dialog->result() == QDialog::Accepted; }

    std::unique_ptr<AddressBookDialog> m_dialog;
};

}  // namespace

TEST_F(AddressBookOnScreen, ShowsNamesAndAddresses) {
    Show(Book);
    EXPECT_EQ(Listed(), (Texts{"Ann Archer", "Bob Bowman", "Cy Müller", "<b>Dan</b>"}));
    EXPECT_EQ(List().model()->index(1, 1).data().toString(), "bob@example.org");
    EXPECT_EQ(Find<QLabel>("lblFound").text(), "4 of 4 names");
    EXPECT_FALSE(Button("cmdOK").isEnabled());
}

TEST_F(AddressBookOnScreen, SearchesNameAddressAndNicknameWhileTyping) {
    Show(Book);
    const std::pair<const char*, Texts> searches[] = {
        {"bow", {"Bob Bowman"}},
        {"EXAMPLE.ORG", {"Bob Bowman"}},
        {"boss", {"Ann Archer"}},
        {"muller", {"Cy Müller"}},
        {"com an", {"Ann Archer", "<b>Dan</b>"}},
        {"archer boss", {"Ann Archer"}},
        {"nobody", {}},
    };
    for (const auto& [typed, found] : searches) {
        Type(typed);
        EXPECT_EQ(Listed(), found) << typed;
    }
    EXPECT_EQ(Find<QLabel>("lblFound").text(), "No name matches.");
    EXPECT_FALSE(Button("cmdOK").isEnabled());
    Search().clear();
    EXPECT_EQ(Listed().size(), 4U);
}

TEST_F(AddressBookOnScreen, TypingAndEnterTakesTheBestMatchAndASecondEnterIsOk) {
    Show(Book);
    Type("bob");
    QTest::keyClick(&Search(), Qt::Key_Return);
    EXPECT_EQ(ChosenShown(), Texts{"Bob Bowman <bob@example.org>"});
    EXPECT_TRUE(m_dialog->isVisible());
    QTest::keyClicks(&Search(), "ann");  // replaces the last search
    EXPECT_EQ(Listed(), Texts{"Ann Archer"});
    QTest::keyClick(&Search(), Qt::Key_Return);
    QTest::keyClick(&Search(), Qt::Key_Return);
    EXPECT_TRUE(Accepted());
    EXPECT_EQ(Chosen(), (Texts{"bob@example.org", "ann@example.com"}));
}

TEST_F(AddressBookOnScreen, EnterWithNothingChosenDoesNothing) {
    Show(Book);
    QTest::keyClick(&Search(), Qt::Key_Return);
    EXPECT_TRUE(m_dialog->isVisible());
}

TEST_F(AddressBookOnScreen, ArrowsOfTheSearchBoxMoveInTheList) {
    Show(Book);
    Type("example");
    QTest::keyClick(&Search(), Qt::Key_Down);
    QTest::keyClick(&Search(), Qt::Key_Down);
    QTest::keyClick(&Search(), Qt::Key_Up);
    EXPECT_EQ(Chosen(), Texts{"bob@example.org"});
    QTest::keyClick(&Search(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Chosen(), (Texts{"bob@example.org", "cy@example.com"}));
}

TEST_F(AddressBookOnScreen, SeveralAreChosenByKeysInTheList) {
    Show(Book);
    List().setFocus();
    QTest::keyClick(&List(), Qt::Key_Space);
    QTest::keyClick(&List(), Qt::Key_Down, Qt::ControlModifier);
    QTest::keyClick(&List(), Qt::Key_Down, Qt::ControlModifier);
    QTest::keyClick(&List(), Qt::Key_Space, Qt::ControlModifier);
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_EQ(ChosenShown(), (Texts{"Ann Archer <ann@example.com>", "Cy Müller <cy@example.com>"}));
}

TEST_F(AddressBookOnScreen, OkTakesHighlightedNamesToo) {
    Show(Book);
    DoubleClickRow(2);
    ClickRow(0);
    ClickRow(1, Qt::ControlModifier);
    QTest::mouseClick(&Button("cmdOK"), Qt::LeftButton);
    EXPECT_TRUE(Accepted());
    EXPECT_EQ(Chosen(), (Texts{"cy@example.com", "ann@example.com", "bob@example.org"}));
}

TEST_F(AddressBookOnScreen, DoubleClickAddsAndNobodyIsChosenTwice) {
    Show(Book);
    DoubleClickRow(1);
    DoubleClickRow(1);
    EXPECT_EQ(ChosenShown(), Texts{"Bob Bowman <bob@example.org>"});
    EXPECT_TRUE(m_dialog->isVisible());
}

TEST_F(AddressBookOnScreen, ChosenNamesAreRemovedByButtonAndKey) {
    Show(Book);
    for (int row : {0, 1, 2}) {
        DoubleClickRow(row);
    }
    EXPECT_FALSE(Button("cmdRemove").isEnabled());
    ChosenList().setCurrentRow(1);
    QTest::mouseClick(&Button("cmdRemove"), Qt::LeftButton);
    EXPECT_EQ(Chosen(), (Texts{"ann@example.com", "cy@example.com"}));
    ChosenList().setCurrentRow(0);
    QTest::keyClick(&ChosenList(), Qt::Key_Delete);
    EXPECT_EQ(Chosen(), Texts{"cy@example.com"});
}

TEST_F(AddressBookOnScreen, EscAndCancelGiveNothing) {
    for (const bool esc : {true, false}) {
        QTimer::singleShot(0, [esc] {
            QWidget* shown = QApplication::activeModalWidget();
            ASSERT_NE(shown, nullptr);
            auto* search = shown->findChild<QLineEdit*>("txtSearch");
            QTest::keyClicks(search, "ann");
            if (esc) {
                QTest::keyClick(search, Qt::Key_Escape);
            } else {
                shown->findChild<QPushButton*>("cmdCancel")->click();
            }
        });
        EXPECT_EQ(ChooseAddresses(Book, MAPI::Choice::Several), std::nullopt);
    }
}

TEST_F(AddressBookOnScreen, EnterOnCancelGivesNothingAndOnAddAddsAndStays) {
    QTimer::singleShot(0, [] {
        QWidget* shown = QApplication::activeModalWidget();
        ASSERT_NE(shown, nullptr);
        QTest::keyClicks(shown->findChild<QLineEdit*>("txtSearch"), "ann");
        const auto enterOn = [shown](const char* name) {
            auto* button = shown->findChild<QPushButton*>(name);
            button->setFocus();
            QTest::keyClick(button, Qt::Key_Return);
        };
        enterOn("cmdAdd");
        EXPECT_TRUE(shown->isVisible());
        enterOn("cmdCancel");
        EXPECT_FALSE(shown->isVisible());
    });
    EXPECT_EQ(ChooseAddresses(Book, MAPI::Choice::Several), std::nullopt);
}

TEST_F(AddressBookOnScreen, NothingIsRememberedFromOneShowingToTheNext) {
    QTimer::singleShot(0, [] {
        auto* search = QApplication::activeModalWidget()->findChild<QLineEdit*>("txtSearch");
        QTest::keyClicks(search, "ann");
        QTest::keyClick(search, Qt::Key_Return);
        QTest::keyClick(search, Qt::Key_Return);
    });
    const auto chosen = ChooseAddresses(Book, MAPI::Choice::Several);
    ASSERT_TRUE(chosen);
    ASSERT_EQ(chosen->size(), 1U);
    EXPECT_EQ(chosen->front().name, "Ann Archer");
    Show(Book);
    EXPECT_EQ(Search().text(), "");
    EXPECT_TRUE(ChosenShown().empty());
}

TEST_F(AddressBookOnScreen, OneAddressIsTheHighlightedOne) {
    Show(Book, MAPI::Choice::One);
    EXPECT_FALSE(ChosenList().isVisible());
    EXPECT_FALSE(Button("cmdAdd").isVisible());
    ClickRow(0);
    ClickRow(1, Qt::ControlModifier);
    EXPECT_EQ(Chosen(), Texts{"bob@example.org"});
    DoubleClickRow(2);
    EXPECT_TRUE(Accepted());
    EXPECT_EQ(Chosen(), Texts{"cy@example.com"});
    Show(Book, MAPI::Choice::One);
    Type("ann");
    QTest::keyClick(&Search(), Qt::Key_Return);
    EXPECT_TRUE(Accepted());
    EXPECT_EQ(Chosen(), Texts{"ann@example.com"});
}

TEST_F(AddressBookOnScreen, EmptyBookSaysSoAndWhatSetsIt) {
    Show({});
    const QLabel& notice = Find<QLabel>("lblEmpty");
    EXPECT_TRUE(notice.isVisible());
    EXPECT_EQ(notice.text(),
              "The address book is empty. The program oxc-mail sets the vCard file that it is read from.");
    EXPECT_FALSE(List().isVisible());
    EXPECT_FALSE(Button("cmdOK").isEnabled());
    Show(Book);
    EXPECT_FALSE(Find<QLabel>("lblEmpty").isVisible());
}

TEST_F(AddressBookOnScreen, TagsInNamesAreShownAsTheyStand) {
    Show(Book);
    EXPECT_EQ(List().model()->index(3, 0).data(Qt::ToolTipRole).toString(),
              "<qt>&lt;b&gt;Dan&lt;/b&gt; &lt;dan@example.com&gt;</qt>");
    EXPECT_EQ(List().model()->index(0, 0).data(Qt::ToolTipRole).toString(),
              "<qt>Ann Archer &lt;ann@example.com&gt;<br>Boss</qt>");
}

TEST_F(AddressBookOnScreen, TenThousandNamesAreSearchedInStepWithTheirNumber) {
    const auto search = [this](int count) {
        Entries many;
        for (int i = 0; i < count; ++i) {
            const std::string number = std::to_string(i);
            many.push_back({"Person Number" + number, {"nick" + number}, "p" + number + "@example.com"});
        }
        Show(many);
        const double begun = ThreadSeconds();
        Type("nick 777 p");
        QApplication::processEvents();
        EXPECT_EQ(Listed().size(), count == 10'000 ? 19U : 1U);
        return ThreadSeconds() - begun;
    };
    EXPECT_LT(CostOfTenTimes(1000, search), SquareBegins);
}

TEST_F(AddressBookOnScreen, TenThousandNamesAreChosenAndRemovedInStepWithTheirNumber) {
    const auto choose = [this](int count) {
        Entries many;
        for (int i = 0; i < count; ++i) {
            many.push_back({"Person" + std::to_string(i), {}, "p" + std::to_string(i) + "@example.com"});
        }
        Show(many);
        const double begun = ThreadSeconds();
        List().setFocus();
        List().selectAll();
        QTest::mouseClick(&Button("cmdAdd"), Qt::LeftButton);
        EXPECT_EQ(ChosenList().count(), count);
        List().selectAll();
        EXPECT_FALSE(Button("cmdAdd").isEnabled());
        ChosenList().selectAll();
        QTest::mouseClick(&Button("cmdRemove"), Qt::LeftButton);
        EXPECT_EQ(ChosenList().count(), 0);
        return ThreadSeconds() - begun;
    };
    EXPECT_LT(CostOfTenTimes(1000, choose), SquareBegins);
}

TEST_F(AddressBookOnScreen, LargeFontsMakeALargerDialogThatStillFitsTheScreen) {
    Show(Book);
    const QSize usual = m_dialog->size();
    const QFont font = QApplication::font();
    QFont large = font;
    large.setPointSize(font.pointSize() * 3);
    QApplication::setFont(large);
    Show(Book);
    QApplication::setFont(font);
    EXPECT_GT(m_dialog->height(), usual.height());
    EXPECT_LE(m_dialog->width(), m_dialog->screen()->availableSize().width());
    EXPECT_LE(m_dialog->height(), m_dialog->screen()->availableSize().height());
    EXPECT_TRUE(m_dialog->rect().contains(
        QRect(Button("cmdCancel").mapTo(m_dialog.get(), QPoint()), Button("cmdCancel").size())));
}
