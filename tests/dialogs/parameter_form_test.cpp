// SPDX-License-Identifier: GPL-3.0-or-later
// The contents of the parameter dialog, and its handling.
#include "dialogs/parameter_form_fixture.h"

#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

#include "platform/contracts/regional.h"

namespace {

class ParameterFormLooks : public ParameterForm {
 protected:
    static std::vector<Parameter> Many(int count) {
        std::vector<Parameter> parameters;
        for (int i = 1; i <= count; ++i) {
            parameters.push_back({"Name " + std::to_string(i)});
        }
        return parameters;
    }
    static std::string FocusedName() {
        const QWidget* focused = QApplication::focusWidget();
        return focused == nullptr ? std::string() : focused->objectName().toStdString();
    }
};

}  // namespace

TEST_F(ParameterFormLooks, OneLabelledBoxStandsForEachParameterInTheirOrder) {
    Open({{"Region"}, {"First Day of Year"}});
    Show([](frmPar& form) {
        EXPECT_EQ(form.windowTitle().toStdString(), "Add Report Parameters");
        EXPECT_TRUE(form.isModal());
        const auto* first = form.findChild<QLabel*>("iLabel1");
        const auto* second = form.findChild<QLabel*>("iLabel2");
        EXPECT_EQ(first->text().toStdString(), "Region");
        EXPECT_EQ(second->text().toStdString(), "First Day of Year");
        const ComboBox &region = Combo(form, "cmbRegion"), &day = Combo(form, "cmbFirstDayofYear");
        EXPECT_TRUE(region.isEditable() && region.isVisible() && first->isVisible());
        EXPECT_LT(first->y(), region.y());
        EXPECT_LT(region.y(), second->y());
        EXPECT_LT(second->y(), day.y());
        EXPECT_GE(region.width(), 257);  // 3855 twips
        EXPECT_EQ(region.x(), first->x());
        EXPECT_EQ(Button(form, "cmdOK").text().toStdString(), "&OK");
        EXPECT_EQ(Button(form, "cmdCancel").text().toStdString(), "&Cancel");
    });
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(ParameterFormLooks, PendingEventsRunBeforeItIsBuilt) {
    Open({{"Region"}});
    Global::ParValues = {"untouched"};
    loop.onYield = [] { EXPECT_EQ(Global::ParValues, Texts{"untouched"}); };
    Show([](frmPar&) {});
    EXPECT_EQ(loop.yields, 1);
}

TEST_F(ParameterFormLooks, DefaultsAreListedAndTheFirstStandsInTheBox) {
    Open({{"Region", report::StringField, {"North", "South", "north"}}});
    Show([](frmPar& form) {
        const ComboBox& box = Combo(form, "cmbRegion");
        EXPECT_EQ(box.Text(), "North");
        EXPECT_EQ(box.ListCount(), 3);
        EXPECT_EQ(box.List(0) + "," + box.List(1) + "," + box.List(2), "North,South,north");
    });
}

TEST_F(ParameterFormLooks, DefaultIsChosenWithTheKeyboard) {
    Open({{"Region", report::StringField, {"North", "South"}}});
    Show([](frmPar& form) {
        QTest::keyClick(&Combo(form, "cmbRegion"), Qt::Key_Down);
        QTest::keyClick(&Combo(form, "cmbRegion"), Qt::Key_Return);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(Global::ParValues, (Texts{"", "South"}));
}

TEST_F(ParameterFormLooks, FirstDefaultIsTheChosenEntryOfItsList) {
    Open({{"Region", report::StringField, {"North", "South"}}, {"Size"}});
    Show([](frmPar& form) {
        EXPECT_EQ(Combo(form, "cmbRegion").ListIndex(), 0);
        EXPECT_EQ(Combo(form, "cmbSize").ListIndex(), -1);
        EXPECT_EQ(Combo(form, "cmbSize").Text(), "");
        QTest::keyClick(&Combo(form, "cmbRegion"), Qt::Key_Up);
        EXPECT_EQ(Combo(form, "cmbRegion").Text(), "North");
    });
}

TEST_F(ParameterFormLooks, ValidValuesAreListedAfterTheDefaultsAndChooseNothing) {
    Open({{"Region", report::StringField, {"South"}, {}, {"North", "South", "West"}},
          {"Year", report::NumberField, {}, {}, {"2025", "2026"}}});
    Show([](frmPar& form) {
        const ComboBox &region = Combo(form, "cmbRegion"), &year = Combo(form, "cmbYear");
        EXPECT_EQ(region.ListCount(), 3);
        EXPECT_EQ(region.List(0) + "," + region.List(1) + "," + region.List(2), "South,North,West");
        EXPECT_EQ(region.Text(), "South");
        EXPECT_EQ(year.ListCount(), 2);
        EXPECT_EQ(year.Text(), "");
        EXPECT_EQ(year.ListIndex(), -1);
        QTest::keyClick(&Combo(form, "cmbYear"), Qt::Key_Down);
        EXPECT_EQ(year.Text(), "2025");
    });
}

TEST_F(ParameterFormLooks, ReadingOfADateOrANumberFollowsWhatIsTyped) {
    SetRegional({DateOrder::MonthDayYear, '/'});
    Open({{"From", report::DateTimeField, {"2026-01-02"}}, {"Least", report::NumberField}, {"Region"}});
    Show([](frmPar& form) {
        const auto& from = *form.findChild<QLabel*>("iReading1");
        const auto& least = *form.findChild<QLabel*>("iReading2");
        EXPECT_EQ(form.findChild<QLabel*>("iReading3"), nullptr);
        EXPECT_TRUE(from.isVisible());
        EXPECT_EQ(from.text(), "2 January 2026");
        EXPECT_EQ(least.text(), "");
        Type(form, "cmbFrom", "07/03/2026");
        EXPECT_EQ(from.text(), "3 July 2026");
        EXPECT_EQ(Combo(form, "cmbFrom").accessibleDescription(), "3 July 2026");
        Type(form, "cmbFrom", "soon");
        EXPECT_EQ(from.text(), "not a date");
        Type(form, "cmbLeast", "12.50");
        EXPECT_EQ(least.text(), "12.5");
        EXPECT_GE(from.x(), Combo(form, "cmbFrom").geometry().right());
        EXPECT_TRUE(form.rect().contains(QRect(from.mapTo(&form, QPoint()), from.size())));
    });
    SetRegional({DateOrder::YearMonthDay, '-'});
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(ParameterFormLooks, EveryTypeGetsTheSameBoxThatTakesAnyText) {
    Open({{"A", 7}, {"B", 9}, {"C", 12}, {"D", 16}, {"E", 22}, {"F", 99}});
    Show([](frmPar& form) {
        for (const char* name : {"cmbA", "cmbB", "cmbC", "cmbD", "cmbE", "cmbF"}) {
            Type(form, name, "any text");
            EXPECT_EQ(Combo(form, name).Text(), "any text") << name;
        }
    });
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(ParameterFormLooks, ListsOfTheCallerAreMadeAgainAndEmpty) {
    Open({{"A"}, {"B"}});
    Global::ParNames = {"", "old"};
    Global::ParValues = {"", "old", "older", "oldest"};
    Show([](frmPar&) {
        EXPECT_EQ(Global::ParNames, Texts(3));
        EXPECT_EQ(Global::ParValues, Texts(3));
    });
}

TEST_F(ParameterFormLooks, BoxesOpenEmptyForPackageReportsWhateverTheirDefaultsAndTheOldValues) {
    Global::ParCaller = "frmViewer";
    Open({{"Region", report::StringField, {"North", "South"}}, {"Size"}});
    Global::ParValues = {"", "East", "Large"};
    Show([](frmPar& form) {
        EXPECT_EQ(Combo(form, "cmbRegion").Text(), "");
        EXPECT_EQ(Combo(form, "cmbRegion").ListCount(), 2);
        EXPECT_EQ(Combo(form, "cmbSize").Text(), "");
    });
}

TEST_F(ParameterFormLooks, SecondVisitStartsFromTheDefaultsNotFromWhatWasEntered) {
    Open({{"Region", report::StringField, {"North"}}, {"Size"}});
    Show([](frmPar& form) {
        Type(form, "cmbRegion", "East");
        Type(form, "cmbSize", "7");
        Click(form, "cmdOK");
    });
    Show([](frmPar& form) {
        EXPECT_EQ(Combo(form, "cmbRegion").Text(), "North");
        EXPECT_EQ(Combo(form, "cmbRegion").ListCount(), 1);
        EXPECT_EQ(Combo(form, "cmbSize").Text(), "");
    });
}

TEST_F(ParameterFormLooks, NamesThatDifferInBlanksOnlyAskForOneControlAndFail) {
    for (const char* second : {"Region Name", "Regionname"}) {
        prompts.boxes.clear();
        process.ends.clear();
        Open({{"RegionName"}, {second}});
        EXPECT_FALSE(ComesUp());
        EXPECT_EQ(
            prompts.boxes,
            (Boxes{{"Run-time error \"727\":\n\nThere is already a control with the name "
                    "\"cmb" +
                        std::string(second == std::string("Regionname") ? "Regionname" : "RegionName") + "\"",
                    16, "Oxbow Courier"}}));
        EXPECT_EQ(process.ends, std::vector<int>{1});
    }
}

TEST_F(ParameterFormLooks, FiftyParametersAreAskedForAndTheFiftyFirstFails) {
    Open(Many(50));
    Show([](frmPar& form) { EXPECT_EQ(form.findChildren<ComboBox*>().size(), 50); });
    EXPECT_TRUE(prompts.boxes.empty());
    Open(Many(51));
    EXPECT_FALSE(ComesUp());
    EXPECT_EQ(prompts.boxes,
              (Boxes{{"Run-time error \"9\":\n\nSubscript out of range", 16, "Oxbow Courier"}}));
    EXPECT_EQ(process.ends, std::vector<int>{1});
}

TEST_F(ParameterFormLooks, HeightFollowsTheLastBox) {
    Open(Many(1));
    int one = 0, four = 0;
    Show([&one](frmPar& form) { one = form.height(); });
    Open(Many(4));
    Show([&four](frmPar& form) {
        four = form.height();
        const auto& bar = *form.findChild<QScrollArea*>("scroll")->verticalScrollBar();
        EXPECT_EQ(bar.maximum(), 0);
    });
    EXPECT_GE(one, (480 + 960) / 15);
    EXPECT_GE(four, (480 + 3 * 780 + 960) / 15);
    EXPECT_GT(four, one + 3 * 40);
}

TEST_F(ParameterFormLooks, MoreBoxesThanTheScreenHoldsAreScrolledAndTheButtonsStay) {
    Open(Many(50));
    Show([](frmPar& form) {
        EXPECT_LE(form.height(), form.screen()->availableSize().height());
        const auto& area = *form.findChild<QScrollArea*>("scroll");
        EXPECT_GT(area.verticalScrollBar()->maximum(), 0);
        EXPECT_EQ(area.horizontalScrollBar()->maximum(), 0);
        for (const char* name : {"cmdOK", "cmdCancel"}) {
            const QPushButton& button = Button(form, name);
            EXPECT_TRUE(form.rect().contains(QRect(button.mapTo(&form, QPoint()), button.size()))) << name;
        }
        // Tab from the last button to the first box, and back to the last box: each is completely visible.
        const auto seen = [&area](const ComboBox& box) {
            const QRect place(box.mapTo(area.viewport(), QPoint()), box.size());
            return area.viewport()->rect().contains(place);
        };
        Combo(form, "cmbName50").setFocus();
        EXPECT_TRUE(seen(Combo(form, "cmbName50")));
        Button(form, "cmdCancel").setFocus();
        QTest::keyClick(&Button(form, "cmdCancel"), Qt::Key_Tab);
        EXPECT_EQ(FocusedName(), "cmbName1");
        EXPECT_TRUE(seen(Combo(form, "cmbName1")));
    });
}

TEST_F(ParameterFormLooks, BoxesAreWiderInALargeFont) {
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPixelSize(31);
    QApplication::setFont(large);
    Open(Many(1));
    Show([](frmPar& form) {
        const ComboBox& box = Combo(form, "cmbName1");
        EXPECT_GE(box.width(), box.fontMetrics().horizontalAdvance("a value of 16 xx"));
        EXPECT_GT(box.width(), 257);
    });
    QApplication::setFont(usual);
}

TEST_F(ParameterFormLooks, TabGoesFromTheFirstBoxThroughAllToTheButtons) {
    Open(Many(3));
    Show([](frmPar&) {
        Texts order;
        for (int i = 0; i < 5; ++i) {
            order.push_back(FocusedName());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        EXPECT_EQ(order, (Texts{"cmbName1", "cmbName2", "cmbName3", "cmdOK", "cmdCancel"}));
    });
}

TEST_F(ParameterFormLooks, LongDefaultsAndNamesDoNotMakeItWiderThanTheScreen) {
    Open({{std::string(3000, 'n'), report::StringField, {std::string(3000, 'x')}}});
    Show([](frmPar& form) {
        EXPECT_LE(form.width(), form.screen()->availableSize().width());
        EXPECT_TRUE(form.rect().contains(Button(form, "cmdOK").geometry()));
    });
}

// Texts of a report file are not trusted.
TEST_F(ParameterFormLooks, NamesAndPromptsAreShownAsTheyStand) {
    Open({{"<b>A & B</b>", report::StringField, {}, "<img src=\"x\"> & more"}, {"C"}});
    Show([](frmPar& form) {
        EXPECT_EQ(form.findChild<QLabel*>("iLabel1")->textFormat(), Qt::PlainText);
        EXPECT_EQ(form.findChild<QLabel*>("iLabel1")->text().toStdString(), "<b>A & B</b>");
        EXPECT_EQ(Combo(form, "cmb<b>A&B</b>").toolTip().toStdString(),
                  "<qt>&lt;img src=&quot;x&quot;&gt; &amp; more");
        EXPECT_EQ(Combo(form, "cmbC").toolTip().toStdString(), "");
    });
}
