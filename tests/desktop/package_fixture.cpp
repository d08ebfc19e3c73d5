// SPDX-License-Identifier: GPL-3.0-or-later
#include "package_fixture.h"

#include <QLineEdit>
#include <QPushButton>

#include "platform/controls/combo_box.h"
#include "support/modal.h"

namespace {

const char* const Path = "Z:\\reports\\sales.rpt";

}  // namespace

void PackageTest::SetUp() {
    HistoryTest::SetUp();
    engine.reports[Path] = {};
    Global::CurrentReport.reset();
    Global::ParValues.clear();
    Global::ParCaller.clear();
    Global::ParCancelled = false;
}

frmDesk& PackageTest::OpenPackage(const std::string& name) {
    frmDesk& root = OpenRoot();
    DoubleClickItem(root, name);
    frmDesk& window = Window(Global::DeskCount);
    EXPECT_EQ(window.Caption(), "Package - " + name);
    database.TakeStatements();
    return window;
}

frmViewer& PackageTest::OpenHistory() {
    frmViewer& viewer = Open();
    ClickTab(viewer, 2);
    viewer.tvBatch->expandAll();
    database.TakeStatements();
    return viewer;
}

void PackageTest::Store(int package, int report, const Texts& values) {
    for (const std::string& value : values) {
        database.Run("insert into ReportBatchPar(ReportID,DetailID,ParValue) values(" +
                     std::to_string(package) + "," + std::to_string(report) + ",'" + value + "')");
    }
}

Texts PackageTest::Stored() {
    return database.Rows("select ReportID, DetailID, ParValue from ReportBatchPar order by ParID");
}

Texts PackageTest::Reports() {
    return database.Rows("select ReportID, ReportTitle from ReportBatchDtls order by DetailID");
}

void PackageTest::GiveParameters(const Texts& names, const std::vector<Texts>& defaults) {
    database.Run("update ReportBatchDtls set ReportPath='" + std::string(Path) + "'");
    fakes::FakeReportSpec& report = engine.reports[Path];
    report.parameterNames = names;
    report.parameterTypes.assign(names.size(), report::StringField);
    report.defaultValues = defaults;
}

void PackageTest::ChooseOf(frmDesk& window, const std::string& text, const char* entry) {
    ClickItem(window, text, Qt::RightButton);
    QApplication::processEvents();
    ASSERT_EQ(Popup(), "mnubtchPop2");
    Choose(entry);
}

void PackageTest::WhileAsked(const char* entry, const std::function<void(frmPar&)>& act) {
    fakes::WhileModal<frmPar>([this, entry] { ClickEntry(entry); }, act);
}

void PackageTest::Answer(frmPar& form, const Texts& values, const char* button) {
    const QList<ComboBox*> boxes = form.findChildren<ComboBox*>();
    ASSERT_EQ(boxes.size(), static_cast<qsizetype>(values.size()));
    for (qsizetype index = 0; index < boxes.size(); ++index) {
        boxes[index]->setFocus();
        boxes[index]->lineEdit()->selectAll();
        QTest::keyClick(boxes[index], Qt::Key_Delete);
        QTest::keyClicks(boxes[index], QString::fromStdString(values[static_cast<std::size_t>(index)]));
    }
    QTest::mouseClick(form.findChild<QPushButton*>(button), Qt::LeftButton);
}
