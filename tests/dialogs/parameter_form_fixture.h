// SPDX-License-Identifier: GPL-3.0-or-later
// The parameter dialog on a report of the fake engine, driven as a user does.
#pragma once

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>

#include "dialogs/frmPar.h"
#include "platform/base/convert.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/items/list_view.h"
#include "shared/Global.h"
#include "support/database.h"
#include "support/fakes.h"
#include "support/modal.h"

class ParameterForm : public testing::Test {
 protected:
    using Texts = std::vector<std::string>;
    using Boxes = std::vector<fakes::Box>;

    void SetUp() override {
        Global::ParCaller = "frmAddReport";
        Global::ParReportName = "1>sales.rpt";
        Global::ParCancelled = false;
        Global::ParNames.clear();
        Global::ParValues.clear();
    }

    struct Parameter {
        std::string name;
        int type = report::StringField;
        Texts defaults = {};
        std::string prompt = {};
        Texts valid = {};
    };
    void Open(const std::vector<Parameter>& parameters) {
        fakes::FakeReportSpec spec;
        for (const Parameter& parameter : parameters) {
            spec.parameterNames.push_back(parameter.name);
            spec.parameterTypes.push_back(parameter.type);
            spec.defaultValues.push_back(parameter.defaults);
            spec.parameterPrompts.push_back(parameter.prompt);
            spec.validValues.push_back(parameter.valid);
        }
        engine.reports["sales"] = spec;
        Global::OpenReport("sales");
        engine.calls.clear();
        database.TakeStatements();
    }
    void Show(const std::function<void(frmPar&)>& act) {
        fakes::WhileModal<frmPar>([this] { frmPar::ShowModal(&lsvPar); }, act);
    }
    bool ComesUp() {
        return fakes::ComesUp<frmPar>([this] { frmPar::ShowModal(&lsvPar); }, [](frmPar&) {});
    }

    static ComboBox& Combo(const frmPar& form, const char* name) { return *form.findChild<ComboBox*>(name); }
    static void Type(const frmPar& form, const char* name, const char* text) {
        ComboBox& combo = Combo(form, name);
        combo.setFocus();
        combo.lineEdit()->selectAll();
        QTest::keyClick(&combo, Qt::Key_Delete);
        QTest::keyClicks(&combo, text);
    }
    static QPushButton& Button(const frmPar& form, const char* name) {
        return *form.findChild<QPushButton*>(name);
    }
    static void Click(const frmPar& form, const char* name) {
        QTest::mouseClick(&Button(form, name), Qt::LeftButton);
    }
    // Key, text and first sub-item of each line of the caller's list.
    Texts Lines() {
        Texts lines;
        for (int i = 1; i <= lsvPar.ListItems().Count(); ++i) {
            const ListItem& line = lsvPar.ListItems()(i);
            lines.push_back(line.Key + "|" + line.Text() + "|" + line.SubItems(1));
        }
        return lines;
    }
    Texts WaitingRows() const {
        return database.Rows("select rptName, parName, parValue from tmpPar order by rowid");
    }

    fakes::FakeClock clock{fakes::At(2026, 11, 21)};
    fakes::FakeLoop loop{clock};
    fakes::FakeEngine engine;
    fakes::FakePrompts prompts;
    fakes::FakeProcess process;
    fakes::TestDatabase database;
    ListView lsvPar;
};
