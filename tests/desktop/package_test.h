// Packages in the Desktop's windows and in the Schedule History window, driven as a user drives them.
#pragma once

#include "dialogs/frmPar.h"
#include "history_test.h"
#include "platform/contracts/prompts.h"
#include "support/fake_shell.h"

class PackageTest : public HistoryTest {
 protected:
    using Boxes = std::vector<fakes::Box>;

    void SetUp() override;
    // Its reports opened in a window of their own, behind that of the root.
    frmDesk& OpenPackage(const std::string& name);
    // The tree of packages, with all of its nodes to be seen.
    frmViewer& OpenHistory();

    // Stores values of a report of a package, in order.
    void Store(int package, int report, const Texts& values);
    Texts Stored();   // "ReportID|DetailID|ParValue" in the order of the rows
    Texts Reports();  // "ReportID|ReportTitle"
    // The reports of all packages are this one, with parameters of type text.
    void GiveParameters(const Texts& names, const std::vector<Texts>& defaults = {});

    // Chooses an entry of the menu that an item of the list has.
    void ChooseOf(frmDesk& window, const std::string& text, const char* entry);
    // Chooses an entry for an item that is selected, and drives the parameter dialog that it brings up.
    void WhileAsked(const char* entry, const std::function<void(frmPar&)>& act);
    // Types into the boxes of the parameters, one after the other, and leaves the dialog by a button.
    static void Answer(frmPar& form, const Texts& values, const char* button = "cmdOK");

    fakes::FakeLoop loop{clock};
    fakes::FakeShell shell;
};
