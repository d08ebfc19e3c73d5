// SPDX-License-Identifier: GPL-3.0-or-later
// The package wizard on report files of the fake engine, driven as a user does.
#pragma once

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <optional>

#include "dialogs/frmPar.h"
#include "dialogs/frmWiz.h"
#include "dialogs/frmWizDone.h"
#include "platform/base/paths.h"
#include "platform/contracts/prompts.h"
#include "platform/controls/check_box.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/date_picker.h"
#include "platform/controls/folders/common_dialog.h"
#include "platform/controls/folders/dir_list_box.h"
#include "platform/controls/folders/file_list_box.h"
#include "platform/controls/masked_edit.h"
#include "platform/controls/multi_line_text_box.h"
#include "platform/controls/text_box.h"
#include "shared/Global.h"
#include "shared/ShellMod.h"
#include "support/database.h"
#include "support/fake_shell.h"
#include "support/fakes.h"
#include "support/form_driver.h"
#include "support/modal.h"
#include "support/temporary_folder.h"

class PackageWizard : public testing::Test, public fakes::FormDriver {
 protected:
    using Texts = std::vector<std::string>;
    using Boxes = std::vector<fakes::Box>;

    void SetUp() override {
        frame.commonDialog = &commonDialog;
        Global::DeskWindows = {nullptr, &desk};
        Global::DeskCount = Global::DeskIndex = 1;
        Global::DefPath = paths::FromMachine(reports.Path());
        Global::OutputPath = "Z:\\srv\\out\\";
        Global::MailBatchFlag = "T";
        Global::PackageCounter = 0;
        Global::PackageFormat.clear();
        Global::ParCaller.clear();
        std::filesystem::create_directories(reports / "old");
        AddReport("sales.rpt");
        AddReport("stock.rpt", {"Region", "Year"});
        WriteBytes(reports / "notes.txt", "no report");
        SetFileChooser([this](const CommonDialog& asked) {
            askedOf = {asked.DialogTitle, asked.CancelError ? "T" : "F", asked.InitDir};
            return pick;
        });
        Show();
    }
    void TearDown() override {
        SetFileChooser({});
        frmWizDone::Unload();
        if (form) {
            form->cmdCancel_Click();
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Global::DeskWindows.clear();
        Global::DeskCount = Global::DeskIndex = 0;
        Global::DefPath.clear();
        Global::OutputPath.clear();
    }

    void Show() {
        form = &frmWiz::Instance();
        form->ShowForm();
        Activate();
        database.TakeStatements();
    }
    // Activates the form as a window manager does after a dialog is closed.
    void Activate() const {
        QCoreApplication::processEvents();
        form->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form));
        QApplication::setActiveWindow(form);  // the test platform does not report it after a hide
    }
    // Adds a file of the wizard's first folder.
    void AddReport(const std::string& name, const Texts& parameters = {}) {
        WriteBytes(reports / name, name);
        fakes::FakeReportSpec spec;
        spec.parameterNames = parameters;
        spec.parameterTypes.assign(parameters.size(), report::StringField);
        engine.reports[PathOf(name)] = spec;
    }
    std::string PathOf(const std::string& name) const { return paths::FromMachine(reports / name); }

    QWidget* Form() const override { return form; }
    std::string TextOf(const char* name) const { return The<TextBox>(name).Text(); }
    std::string Page() const {
        return The<QStackedWidget>("pages").currentWidget()->objectName().toStdString();
    }
    Boxes TakeBoxes() { return std::exchange(prompts.boxes, {}); }

    void Choose(const char* combo, const char* entry) const { The<ComboBox>(combo).Text(entry); }
    void GoToSchedule() const {
        Type("txtTitle", "Month end");
        Click("cmdSave");
    }
    void GoToReports() const {
        GoToSchedule();
        Choose("cmbFreq1", "Weekly");
        Choose("cmbFormat1", "MS Excel");
        Click("cmdSave");
    }
    void GoToEmail() const {
        GoToReports();
        Add("sales.rpt");
        Click("cmdSave");
    }
    void Select(const std::string& file) const {
        auto& files = The<FileListBox>("filList");
        const auto found = files.findItems(QString::fromStdString(file), Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << file;
        files.setCurrentItem(found.front());
    }
    void Add(const std::string& file) const {
        Select(file);
        Click("cmbBrowse1");
    }
    void TickMail() const { QTest::keyClick(&The<CheckBox>("chkMail"), Qt::Key_Space); }
    // Adds a report with the parameters Region and Year.
    void AddWithValues(const std::string& file, const char* region, const char* year) const {
        Select(file);
        fakes::WhileModal<frmPar>([this] { Click("cmbBrowse1"); },
                                  [&](frmPar& par) {
                                      par.findChild<ComboBox*>("cmbRegion")->setEditText(region);
                                      par.findChild<ComboBox*>("cmbYear")->setEditText(year);
                                      QTest::mouseClick(par.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
                                  });
        Activate();
    }
    Texts Lines(const char* list) const {
        Texts lines;
        const auto& box = The<ListBox>(list);
        for (int i = 0; i < box.ListCount(); ++i) {
            lines.push_back(box.List(i));
        }
        return lines;
    }
    Texts WaitingRows() const { return database.Rows("select rptName, parName, parValue from tmpPar"); }

    static fakes::Box Warning(const std::string& text) { return {text, vbExclamation, "Oxbow Courier"}; }
    static fakes::Box Information(const std::string& text) { return {text, vbInformation, "Oxbow Courier"}; }

    fakes::FakeClock clock{fakes::At(2026, 11, 21, 9, 5)};
    fakes::FakeLoop loop{clock};
    fakes::FakeEngine engine;
    fakes::FakePrompts prompts;
    fakes::FakeProcess process;
    fakes::FakeRegistry registry;
    fakes::FakeShell shell;
    fakes::FakeMailSystem mail;
    fakes::FakeFrame frame;
    fakes::FakeDesk desk;
    fakes::TestDatabase database;
    CommonDialog commonDialog;
    TemporaryFolder reports;
    Texts askedOf;                    // title, cancel raises an error, folder
    std::optional<std::string> pick;  // chosen in the file dialog; nullopt: cancelled
    QPointer<frmWiz> form;            // null once events have run after its unload
};
