// SPDX-License-Identifier: GPL-3.0-or-later
// The single report wizard on reports of the fake engine, driven as a user does.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <optional>

#include "dialogs/frmAddReport.h"
#include "dialogs/frmAdvanced.h"
#include "dialogs/frmPar.h"
#include "execution/frmTest.h"
#include "platform/base/paths.h"
#include "platform/controls/check_box.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/date_picker.h"
#include "platform/controls/items/list_view.h"
#include "platform/controls/masked_edit.h"
#include "platform/controls/multi_line_text_box.h"
#include "platform/controls/option_button.h"
#include "platform/controls/text_box.h"
#include "shared/Global.h"
#include "shared/ShellMod.h"
#include "support/database.h"
#include "support/form_driver.h"
#include "support/mdi_frame.h"
#include "support/modal.h"
#include "support/temporary_folder.h"

class Wizard : public testing::Test, public fakes::FormDriver {
 protected:
    using Texts = std::vector<std::string>;
    using Boxes = std::vector<fakes::Box>;

    void SetUp() override {
        Global::DeskWindows = {nullptr, &desk};
        Global::DeskCount = Global::DeskIndex = 1;
        Global::CurrentFolder.clear();
        Global::DefPath = "Z:\\srv";
        Global::ParNames.clear();
        Global::ParValues.clear();
        std::filesystem::create_directories(database.Folder() / "Cache");
        database.Run("insert into Folders(FolderName, Parent) values('Sales', 0), ('Stock', 0), ('Old', 1)");
        fakes::FakeReportSpec spec;
        spec.title = "Sales by region";
        sales = AddReport("sales.rpt", spec);
        SetFileChooser([this](const CommonDialog& asked) {
            askedOf = {asked.DialogTitle, asked.Filter, asked.CancelError ? "T" : "F", asked.InitDir};
            return pick;
        });
        Show();
    }
    void TearDown() override {
        SetFileChooser({});
        form->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Global::DeskWindows.clear();
        Global::DeskCount = Global::DeskIndex = 0;
        Global::CurrentFolder.clear();
        Global::DefPath.clear();
    }

    void Show() {
        form = &frmAddReport::Instance();
        form->ShowForm();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form));
    }
    // Makes a file that the engine opens as the report. Returns its path.
    std::string AddReport(const std::string& name, const fakes::FakeReportSpec& spec) {
        const std::filesystem::path file = database.Folder() / name;
        std::filesystem::create_directories(file.parent_path());
        WriteBytes(file, name);
        const std::string path = paths::FromMachine(file.string());
        engine.reports[path] = spec;
        return path;
    }
    static fakes::FakeReportSpec WithParameters(const Texts& names) {
        fakes::FakeReportSpec spec;
        spec.parameterNames = names;
        spec.parameterTypes.assign(names.size(), report::StringField);
        return spec;
    }

    QWidget* Form() const override { return form; }
    TextBox& Box(const char* name) const { return The<TextBox>(name); }
    void TypeTime(const char* digits) const {
        auto& time = The<MaskEdBox>("msTime");
        time.setFocus();
        time.selectAll();
        QTest::keyClick(&time, Qt::Key_Delete);
        time.setCursorPosition(0);
        QTest::keyClicks(&time, digits);
    }
    // Returns the focused control of the form, whichever window is in front; for a part of a control its
    // name.
    std::string FocusedName() const {
        const QWidget* focused = form->focusWidget();
        while (focused != nullptr &&
               (focused->objectName().isEmpty() || focused->objectName().startsWith("qt_"))) {
            focused = focused->parentWidget();
        }
        return focused == nullptr ? std::string() : focused->objectName().toStdString();
    }
    // Returns the visible page.
    std::string Page() const {
        Texts shown;
        for (const char* name : {"Frame1", "Step1", "Step2", "Step3", "Step4", "Step5"}) {
            if (The<QFrame>(name).isVisible()) {
                shown.emplace_back(name);
            }
        }
        return shown.size() == 1 ? shown.front() : std::to_string(shown.size()) + " pages";
    }

    void Browse(const std::string& path) {
        pick = path;
        Click("cmdBrowse");
    }
    // Opens the list and chooses with keys.
    void ChooseFolder(int line) {
        auto& folders = The<ComboBox>("cmbFolder");
        folders.showPopup();
        folders.hidePopup();
        folders.setFocus();
        for (int i = 0; i <= line; ++i) {
            QTest::keyClick(&folders, Qt::Key_Down);
        }
    }
    void SetParameters(const Texts& values) {
        fakes::WhileModal<frmPar>([this] { Click("cmdPar"); },
                                  [&values](frmPar& dialog) {
                                      const auto boxes = dialog.findChildren<ComboBox*>();
                                      for (std::size_t i = 0; i < values.size(); ++i) {
                                          boxes[static_cast<int>(i)]->Text(values[i]);
                                      }
                                      QTest::mouseClick(dialog.findChild<QPushButton*>("cmdOK"),
                                                        Qt::LeftButton);
                                  });
    }
    // Goes on from the current page: fills each page before this one so that it can be left, for the report.
    void GoTo(const std::string& page, const std::string& path) {
        const std::vector<std::pair<std::string, std::function<void()>>> fillings = {
            {"Frame1", [] {}},
            {"Step1",
             [&] {
                 Browse(path);
                 ChooseFolder(0);
             }},
            {"Step2", [] {}},
            {"Step3", [this] { Type("txtRecipient", "ann@example.com"); }},
            {"Step4", [this] { The<ComboBox>("cmbFormat").Text("Acrobat Format (PDF)"); }},
        };
        for (const auto& [name, fill] : fillings) {
            if (Page() == page) {
                return;
            }
            if (Page() == name) {
                fill();
                Click("cmdNext");
            }
        }
    }
    void GoTo(const std::string& page) { GoTo(page, sales); }

    static Boxes Exclamation(const std::string& text) { return {{text, vbExclamation, "Oxbow Courier"}}; }
    Texts Stored(const std::string& columns) const {
        return database.Rows("select " + columns + " from ReportScheduler order by ReportID");
    }
    // Key, text and first sub-item of each line of lsvPar.
    Texts Lines() const {
        ListItems& items = The<ListView>("lsvPar").ListItems();
        Texts lines;
        for (int i = 1; i <= items.Count(); ++i) {
            lines.push_back(items(i).Key + "|" + items(i).Text() + "|" + items(i).SubItems(1));
        }
        return lines;
    }
    // Unloaded, and not on the screen.
    bool Unloaded() const { return !form->isVisible(); }

    fakes::FakeClock clock{fakes::At(2026, 11, 21, 10, 47, 14)};
    fakes::FakeLoop loop{clock};
    fakes::FakeEngine engine;
    fakes::FakeMailSystem mail;
    fakes::FakePrompts prompts;
    fakes::FakeProcess process;
    fakes::FakeRegistry registry;
    fakes::TestDatabase database;
    fakes::MdiFrame frame;
    fakes::FakeDesk desk;
    frmAddReport* form = nullptr;
    std::string sales;                // a report without parameters
    std::optional<std::string> pick;  // the answer of the open dialog; nullopt: cancelled
    Texts askedOf;                    // the open dialog: title, filter, cancel as error, folder
};
