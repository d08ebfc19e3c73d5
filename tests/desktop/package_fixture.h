// SPDX-License-Identifier: GPL-3.0-or-later
// Packages in the Desktop's windows and in the Schedule History window, driven as a user drives them.
#pragma once

#include "dialogs/frmPar.h"
#include "history_fixture.h"
#include "platform/contracts/prompts.h"
#include "support/fake_shell.h"

class PackageTest : public HistoryTest {
 protected:
    using Boxes = std::vector<fakes::Box>;

    void SetUp() override;
    // Opens its reports in a window of their own, after that of the root.
    frmDesk& OpenPackage(const std::string& name);
    // Opens the tree of packages and expands all nodes.
    frmViewer& OpenHistory();

    // Stores values of a package's report, in order.
    void Store(int package, int report, const Texts& values);
    Texts Stored();   // "ReportID|DetailID|ParValue" in the order of the rows
    Texts Reports();  // "ReportID|ReportTitle"
    // Makes all packages use this report, with parameters of type text.
    void GiveParameters(const Texts& names, const std::vector<Texts>& defaults = {});

    // Chooses an entry of the item's context menu.
    void ChooseOf(frmDesk& window, const std::string& text, const char* entry);
    // Chooses an entry for the selected item and drives the parameter dialog that it opens.
    void WhileAsked(const char* entry, const std::function<void(frmPar&)>& act);
    // Types into the boxes of the parameters in order and leaves the dialog with a button.
    static void Answer(frmPar& form, const Texts& values, const char* button = "cmdOK");

    fakes::FakeLoop loop{clock};
    fakes::FakeShell shell;
};
