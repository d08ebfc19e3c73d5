// SPDX-License-Identifier: GPL-3.0-or-later
// What the parameter dialog does with the typed values.
#include "dialogs/parameter_form_fixture.h"

namespace {

class ParameterFormValues : public ParameterForm {
 protected:
    static fakes::Box Refusal(const std::string& what) {
        return {what + " Type mismatch [13]", vbExclamation, "Oxbow Courier"};
    }
};

}  // namespace

TEST_F(ParameterFormValues, OKClearsTheReportAndHandsEveryValueOverByItsType) {
    Open({{"Count", 7}, {"Open", 9}, {"Region", 12}, {"From", 16}, {"Sizes", 22}, {"Other", 99}});
    Show([](frmPar& form) {
        Type(form, "cmbCount", "12.5");
        Type(form, "cmbOpen", "true");
        Type(form, "cmbRegion", "North");
        Type(form, "cmbFrom", "2002-03-07");
        Type(form, "cmbSizes", "S, M");
        Type(form, "cmbOther", "kept");
        Click(form, "cmdOK");
        EXPECT_FALSE(form.isVisible());
    });
    const std::string midnight = TimeText(DateValue());
    EXPECT_EQ(engine.calls, (Texts{"clear 1", "clear 2", "clear 3", "clear 4", "clear 5", "clear 6",
                                   "value 1 double 12.5", "value 2 boolean True", "value 3 text North",
                                   "value 4 date " + DateText(DateSerial(2002, 3, 7)) + " " + midnight,
                                   "value 5 field S, M"}));
    EXPECT_EQ(Global::ParNames, (Texts{"", "Count", "Open", "Region", "From", "Sizes", "Other"}));
    EXPECT_EQ(Global::ParValues, (Texts{"", "12.5", "true", "North", "2002-03-07", "S, M", "kept"}));
    EXPECT_FALSE(Global::ParCancelled);
    EXPECT_TRUE(prompts.boxes.empty());
}

class ParameterFormLists : public ParameterFormValues, public testing::WithParamInterface<const char*> {};

TEST_P(ParameterFormLists, ListOfTheCallerIsFilledAgain) {
    Global::ParCaller = GetParam();
    Open({{"Region"}, {"First Day"}});
    lsvPar.ListItems().Add("Region1", "Region").SubItems(1, "old");
    lsvPar.ListItems().Add("gone2", "gone");
    Show([](frmPar& form) {
        Type(form, "cmbRegion", "North");
        Type(form, "cmbFirstDay", "Monday");
        Click(form, "cmdOK");
    });
    EXPECT_EQ(Lines(), (Texts{"Region1|Region|North", "First Day2|First Day|Monday"}));
    EXPECT_TRUE(database.TakeStatements().empty());
}

TEST_P(ParameterFormLists, TextThatDoesNotConvertIsToldByItsParameterAndNothingIsTaken) {
    Global::ParCaller = GetParam();
    Open({{"Region"}, {"Count", 7}, {"Size"}});
    lsvPar.ListItems().Add("Region1", "Region").SubItems(1, "South");
    lsvPar.ListItems().Add("Count2", "Count").SubItems(1, "7");
    Show([](frmPar& form) {
        Type(form, "cmbRegion", "North");
        Type(form, "cmbCount", "many");
        Type(form, "cmbSize", "L");
        Click(form, "cmdOK");
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(prompts.boxes,
              (Boxes{Refusal("The value \"many\" of the parameter \"Count\" is not a number.")}));
    EXPECT_TRUE(process.ends.empty());
    EXPECT_EQ(Lines(), (Texts{"Region1|Region|South", "Count2|Count|7"}));
    EXPECT_EQ(engine.calls, (Texts{"clear 1", "clear 2", "clear 3", "value 1 text North"}));
    EXPECT_EQ(Global::ParNames, Texts(4));
    EXPECT_EQ(Global::ParValues, Texts(4));
    EXPECT_TRUE(Global::ParCancelled);
}

INSTANTIATE_TEST_SUITE_P(WizardAndProperties, ParameterFormLists, testing::Values("frmAddReport", "frmPar"));

TEST_F(ParameterFormValues, EmptyBoxOfAStringParameterGivesAnEmptyValue) {
    Open({{"Region"}});
    Show([](frmPar& form) {
        EXPECT_EQ(Combo(form, "cmbRegion").Text(), "");
        Click(form, "cmdOK");
    });
    EXPECT_EQ(engine.calls, (Texts{"clear 1", "value 1 text "}));
    EXPECT_EQ(Lines(), Texts{"Region1|Region|"});
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(ParameterFormValues, EmptyBoxOfANumberABooleanOrADateIsTold) {
    for (const auto& [type, what] :
         {std::pair(7, "a number"), {9, "True or False"}, {16, "a date or a time"}}) {
        prompts.boxes.clear();
        Open({{"Value", type}});
        Show([](frmPar& form) { Click(form, "cmdOK"); });
        EXPECT_EQ(
            prompts.boxes,
            (Boxes{Refusal("The parameter \"Value\" is empty, which is not " + std::string(what) + ".")}));
        EXPECT_TRUE(process.ends.empty()) << type;
    }
}

TEST_F(ParameterFormValues, InvalidDateIsTold) {
    Open({{"From", 16}});
    Show([](frmPar& form) {
        Type(form, "cmbFrom", "2002-02-30x");
        Click(form, "cmdOK");
    });
    EXPECT_EQ(prompts.boxes,
              (Boxes{Refusal("The value \"2002-02-30x\" of the parameter \"From\" is not a date "
                             "or a time.")}));
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(ParameterFormValues, SecondVisitAfterARefusalGoesThrough) {
    Open({{"Count", 7}});
    Show([](frmPar& form) {
        Type(form, "cmbCount", "many");
        Click(form, "cmdOK");
    });
    Global::ParCancelled = false;
    Show([](frmPar& form) {
        Type(form, "cmbCount", "7");
        Click(form, "cmdOK");
    });
    EXPECT_EQ(Lines(), Texts{"Count1|Count|7"});
    EXPECT_EQ(Global::ParValues, (Texts{"", "7"}));
    EXPECT_FALSE(Global::ParCancelled);
}

TEST_F(ParameterFormValues, QuoteReachesTheEngineButNotTheListsNorTheTables) {
    Open({{"Name"}});
    const auto enter = [](frmPar& form) {
        Type(form, "cmbName", "O'Hara's");
        Click(form, "cmdOK");
    };
    Show(enter);
    EXPECT_EQ(engine.calls.back(), "value 1 text O'Hara's");
    EXPECT_EQ(Lines(), Texts{"Name1|Name|OHaras"});
    Global::ParCaller = "frmWiz";
    Show(enter);
    EXPECT_EQ(engine.calls.back(), "value 1 text O'Hara's");
    EXPECT_EQ(WaitingRows(), Texts{"1>sales.rpt|Name|OHaras"});
}

// The conversion gets the quote as well.
TEST_F(ParameterFormValues, QuoteInANumberFails) {
    Open({{"Count", 7}});
    Show([](frmPar& form) {
        Type(form, "cmbCount", "'7");
        Click(form, "cmdOK");
    });
    EXPECT_EQ(prompts.boxes,
              (Boxes{Refusal("The value \"'7\" of the parameter \"Count\" is not a number.")}));
}

TEST_F(ParameterFormValues, PackageWizardsValuesWaitInTheWorkTable) {
    Global::ParCaller = "frmWiz";
    Global::ParReportName = "3>stock.rpt";
    Open({{"Region", 12, {"North"}}, {"First Day", 16}});
    Show([](frmPar& form) {
        Type(form, "cmbFirstDay", "2002-03-07");
        Click(form, "cmdOK");
    });
    EXPECT_EQ(database.TakeStatements(),
              (Texts{"insert into tmpPar(rptName, parName, parValue) values('3>stock.rpt','Region','North')",
                     "insert into tmpPar(rptName, parName, parValue) values('3>stock.rpt','First "
                     "Day','2002-03-07')"}));
    EXPECT_EQ(WaitingRows(), (Texts{"3>stock.rpt|Region|North", "3>stock.rpt|First Day|2002-03-07"}));
    EXPECT_TRUE(Lines().empty());
}

TEST_F(ParameterFormValues, RefusedValueLeavesNoWaitingRowsOfItsReport) {
    Global::ParCaller = "frmWiz";
    database.Run("insert into tmpPar values('0>stock.rpt', 'Region', 'West')");
    Open({{"Region"}, {"Open", 9}, {"Size"}});
    Show([](frmPar& form) {
        Type(form, "cmbOpen", "perhaps");
        Click(form, "cmdOK");
    });
    EXPECT_EQ(prompts.boxes,
              (Boxes{Refusal("The value \"perhaps\" of the parameter \"Open\" is not True or False.")}));
    EXPECT_EQ(WaitingRows(), Texts{"0>stock.rpt|Region|West"});
    EXPECT_TRUE(Global::ParCancelled);
}

TEST_F(ParameterFormValues, DatabaseErrorLeavesTheHandlerAsWell) {
    Global::ParCaller = "frmWiz";
    Open({{"Region"}});
    database.Run("drop table tmpPar");
    Show([](frmPar& form) { Click(form, "cmdOK"); });
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_EQ(prompts.boxes[0].text.rfind("Run-time error \"-2147217865\":\n\n", 0), 0U)
        << prompts.boxes[0].text;
    EXPECT_EQ(process.ends, std::vector<int>{1});
}

TEST_F(ParameterFormValues, PackageReportsValuesAreLeftToTheirCaller) {
    Global::ParCaller = "frmViewer";
    Open({{"Region"}, {"Count", 7}});
    lsvPar.ListItems().Add("kept", "kept");
    Show([](frmPar& form) {
        Type(form, "cmbRegion", "North");
        Type(form, "cmbCount", "7");
        Click(form, "cmdOK");
    });
    EXPECT_EQ(Global::ParNames, (Texts{"", "Region", "Count"}));
    EXPECT_EQ(Global::ParValues, (Texts{"", "North", "7"}));
    EXPECT_EQ(Lines(), Texts{"kept|kept|"});
    EXPECT_TRUE(database.TakeStatements().empty());
    EXPECT_FALSE(Global::ParCancelled);
}

TEST_F(ParameterFormValues, CancelEscAndTheCloseBoxSetTheFlagAndChangeNothing) {
    const std::function<void(frmPar&)> ways[] = {
        [](frmPar& form) { Click(form, "cmdCancel"); },
        [](frmPar& form) {
            Button(form, "cmdCancel").setFocus();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        },
        [](frmPar& form) { QTest::keyClick(&Combo(form, "cmbRegion"), Qt::Key_Escape); },
        [](frmPar& form) { form.close(); }};
    for (const auto& leave : ways) {
        Open({{"Region", 12, {"North"}}});
        lsvPar.ListItems().Clear();
        lsvPar.ListItems().Add("Region1", "Region").SubItems(1, "old");
        Global::ParCancelled = false;
        Show([&leave](frmPar& form) {
            leave(form);
            EXPECT_FALSE(form.isVisible());
        });
        EXPECT_TRUE(Global::ParCancelled);
        EXPECT_EQ(Lines(), Texts{"Region1|Region|old"});
        EXPECT_TRUE(engine.calls.empty());
    }
}

TEST_F(ParameterFormValues, PackageWizardHasNoCancelAndNoWayAroundIt) {
    Global::ParCaller = "frmWiz";
    Open({{"Region", 12, {"North"}}});
    Show([](frmPar& form) {
        EXPECT_TRUE(Button(form, "cmdCancel").isHidden());
        EXPECT_FALSE(form.windowFlags().testFlag(Qt::WindowCloseButtonHint));
        QTest::keyClick(&Combo(form, "cmbRegion"), Qt::Key_Escape);
        EXPECT_TRUE(form.isVisible());
        EXPECT_FALSE(form.close());
        EXPECT_TRUE(form.isVisible());
        Click(form, "cmdOK");
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_FALSE(Global::ParCancelled);
    EXPECT_EQ(WaitingRows(), Texts{"1>sales.rpt|Region|North"});
}

TEST_F(ParameterFormValues, EnterInABoxIsOK) {
    Open({{"Region"}});
    Show([](frmPar& form) {
        Type(form, "cmbRegion", "North");
        QTest::keyClick(&Combo(form, "cmbRegion"), Qt::Key_Return);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(Lines(), Texts{"Region1|Region|North"});
}

TEST_F(ParameterFormValues, ReportThatWasExchangedMeanwhileHasNoBoxesForWhatItHasMore) {
    Global::ParCaller = "frmViewer";
    Open({{"Region"}, {"Size"}});
    const std::shared_ptr<report::Report> larger = Global::CurrentReport;
    Open({{"Region"}});
    Show([&larger](frmPar& form) {
        Global::CurrentReport = larger;
        Click(form, "cmdOK");
    });
    EXPECT_EQ(prompts.boxes,
              (Boxes{{"Run-time error \"91\":\n\nObject variable or With block variable not set", 16,
                      "Oxbow Courier"}}));
    EXPECT_EQ(process.ends, std::vector<int>{1});
}
